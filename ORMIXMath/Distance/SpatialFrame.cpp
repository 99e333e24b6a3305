#include <ORMIXMath/Distance/PlanarFrame.h>
#include <ORMIXMath/Distance/SpatialFrame.h>

#include <algorithm>
#include <cmath>

namespace ormix::detail {

namespace {

// Squares of lengths below this one lose digits to underflow.
constexpr omReal64 s_smallestSafeSquare = 0x1p-900;

// The reciprocal of a smaller extent overflows.
constexpr int s_lowestExponent = -1021;

omReal64 coordinateAt(omReal64 origin, const Twofold& offset, omReal64 end) {
  return clampBetween(sum({origin, 0}, offset).high, origin, end);
}

}  // namespace

omReal64 largestOf(const TwofoldVector& a) {
  return std::max({std::abs(a.x.high), std::abs(a.y.high), std::abs(a.z.high)});
}

omReal64 length(const TwofoldVector& a) {
  const Twofold square = dot(a, a);
  if (square.high < s_smallestSafeSquare) return std::hypot(a.x.high, a.y.high, a.z.high);
  // One correction of the root, as half of the rest over the root.
  const omReal64 root = std::sqrt(square.high);
  return root + difference(square, product({root, 0}, {root, 0})).high / (2 * root);
}

Ray rayOf(const SpatialSegment& segment) {
  const TwofoldVector along = between(segment.p0, segment.p1);
  const omReal64 largest = largestOf(along);
  if (largest == 0) return {segment.p0, along, 0};
  int exponent = 0;
  std::frexp(largest, &exponent);
  const omReal64 extent = std::ldexp(1.0, std::max(exponent, s_lowestExponent));
  return {segment.p0, times({1 / extent, 0}, along), extent};
}

bool isBeforeEnd(const Twofold& parameter, const Ray& ray) {
  return parameter.high < ray.extent || (parameter.high == ray.extent && parameter.low < 0);
}

Twofold parameterOf(const TwofoldVector& offset, const Ray& ray) {
  if (ray.extent == 0) return {0, 0};
  const Twofold parameter = quotient(dot(offset, ray.direction), dot(ray.direction, ray.direction));
  if (!(parameter.high > 0)) return {0, 0};
  return isBeforeEnd(parameter, ray) ? parameter : Twofold{ray.extent, 0};
}

SpatialPoint pointAt(const Twofold& parameter, const Ray& ray, const SpatialSegment& segment) {
  if (parameter.high == 0) return segment.p0;
  if (!isBeforeEnd(parameter, ray)) return segment.p1;
  const TwofoldVector offset = times(parameter, ray.direction);
  return {coordinateAt(segment.p0.x, offset.x, segment.p1.x), coordinateAt(segment.p0.y, offset.y, segment.p1.y),
          coordinateAt(segment.p0.z, offset.z, segment.p1.z)};
}

}  // namespace ormix::detail
