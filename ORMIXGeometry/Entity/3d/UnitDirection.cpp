#include <ORMIXGeometry/Entity/3d/UnitDirection.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>

#include <cmath>

namespace ormix::geom::detail {

using ormix::detail::cross;
using ormix::detail::dot;

Point3dData<omReal64> unitDirection(const Point3dData<omReal64>& direction) {
  const SpatialPoint unit = unitVector(toSpatial(direction));
  if (!std::isfinite(unit.x + unit.y + unit.z))
    logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_NoDirection, direction.getX(), direction.getY(),
                                              direction.getZ()),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return toData(unit);
}

bool isUnitDirection(const Point3dData<omReal64>& direction) {
  const SpatialPoint d = toSpatial(direction);
  constexpr omReal64 tolerance = 1e-9;
  return std::abs(std::hypot(d.x, d.y, d.z) - 1) <= tolerance;
}

bool areDirectionsNear(const Point3dData<omReal64>& a, const Point3dData<omReal64>& b, omReal64 angle) {
  const SpatialPoint u = toSpatial(a), v = toSpatial(b), n = cross(u, v);
  return std::atan2(std::hypot(n.x, n.y, n.z), dot(u, v)) <= angle;
}

}  // namespace ormix::geom::detail
