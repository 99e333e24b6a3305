#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Measure/2d/HuMomentsMsr2d.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.ipp>

#include <algorithm>
#include <cmath>

ORMIX_GEOMETRY_MEASURE_LEVELS(, HuMomentsMsr2d, BaseTypedGeometryMeasure2d<geom::HuMoments2dO3>)

namespace ormix::geom {

HuMoments2dO3 HuMomentsMsr2d::measure(const BaseGeometryEntity2d& entity) {
  return measureOrThrow<HuMomentsMsr2d>(entity, __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class Measured,
          std::enable_if_t<std::conjunction_v<std::is_class<Measured>, HuMomentsMsr2d::Supports<Measured>>, int>>
bool HuMomentsMsr2d::process(const Measured& entity, HuMoments2dO3& value) const {
  MomentsMsr2d measure;
  measure.setHoleMsrPolicy(getHoleMsrPolicy());
  Moments2dO3 moments;
  if (!measure.process<Measured>(entity, moments) || moments.getMoment(0, 0) == 0) return false;
  value = HuMoments2dO3(moments);
  const auto& values = value.getValues();
  return std::all_of(values.begin(), values.end(), [](omReal64 invariant) { return std::isfinite(invariant); });
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::processOfAll<HuMomentsMsr2d>(PlanarEntityList());
}  // namespace

}  // namespace ormix::geom
