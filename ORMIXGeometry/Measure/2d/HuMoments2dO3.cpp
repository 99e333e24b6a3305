#include <ORMIXGeometry/Measure/2d/HuMoments2dO3.h>
#include <ORMIXGeometry/Message/MeasureMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <algorithm>
#include <cmath>
#include <ostream>

namespace ormix {
template class VersionedLevel<geom::HuMoments2dO3, BaseSerializationObject>;
template class RegisteredObject<geom::HuMoments2dO3, BaseSerializationObject>;
}  // namespace ormix

namespace ormix::geom {

namespace {

// Rounding errors of moments, relative to the power of the extent: those of a ring of a million vertices, about one of
// its vertices, are below this.
constexpr omReal64 s_noise = 1e-13;

/// Sets numbers that are rounding errors to 0. Those of second order are relative to the sum of the two second moments,
/// the squared extent, those of third order to its power 3/2.
void clearNoise(std::array<omReal64, PlanarMoments::s_nbMoments>& n) {
  const auto index = PlanarMoments::index;
  const omReal64 square = std::abs(n[index(2, 0)] + n[index(0, 2)]);
  const omReal64 cube = square * std::sqrt(square);
  const auto isNoise = [](omReal64 value, omReal64 scale) { return std::abs(value) <= s_noise * scale; };
  if (isNoise(n[index(1, 1)], square)) n[index(1, 1)] = 0;
  if (isNoise(n[index(2, 0)] - n[index(0, 2)], square)) n[index(2, 0)] = n[index(0, 2)];
  for (std::size_t k = index(3, 0); k <= index(0, 3); ++k)
    if (isNoise(n[k], cube)) n[k] = 0;
}

}  // namespace

HuMoments2dO3::HuMoments2dO3(const Moments2dO3& moments) {
  std::array<omReal64, PlanarMoments::s_nbMoments> normalized = moments.getNormalizedMoments();
  clearNoise(normalized);
  _values = huInvariants(normalized);
}

omReal64 HuMoments2dO3::getValue(omUInt32 i) const {
  if (i >= s_nbValues)
    logAndThrow(formatMessage<eMeasureMessage>(eMeasureMessage::eMM_HuMomentIndex, i, s_nbValues), __PRETTY_FUNCTION__,
                __FILE__, __LINE__);
  return _values[i];
}

BoolResult HuMoments2dO3::validate(const HuMoments2dO3& moments) {
  const auto& h = moments._values;
  return std::all_of(h.begin(), h.end(), [](omReal64 value) { return std::isfinite(value); })
             ? BoolResult()
             : failure("Hu moments are not finite");
}

bool compare(const HuMoments2dO3& a, const HuMoments2dO3& b, omReal64 tolerance) {
  return std::equal(a.getValues().begin(), a.getValues().end(), b.getValues().begin(),
                    [tolerance](omReal64 x, omReal64 y) { return std::abs(x - y) <= tolerance; });
}

std::ostream& operator<<(std::ostream& stream, const HuMoments2dO3& moments) {
  const char* separator = "[";
  for (const omReal64 value : moments.getValues()) {
    stream << separator << value;
    separator = ", ";
  }
  return stream << ']';
}

}  // namespace ormix::geom
