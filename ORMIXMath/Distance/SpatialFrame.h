#pragma once

#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXMath/Scalar/Twofold.h>

/// \file
/// What the spatial distances compute with; not installed.

namespace ormix::detail {

constexpr SpatialSegment operator*(const SpatialSegment& s, omReal64 factor) { return {s.p0 * factor, s.p1 * factor}; }

/// A vector of space with twice the precision.
struct TwofoldVector {
  Twofold x;
  Twofold y;
  Twofold z;
};

/// The vector from one point to another, without error.
inline TwofoldVector between(const SpatialPoint& from, const SpatialPoint& to) {
  return {difference(to.x, from.x), difference(to.y, from.y), difference(to.z, from.z)};
}

inline TwofoldVector difference(const TwofoldVector& a, const TwofoldVector& b) {
  return {difference(a.x, b.x), difference(a.y, b.y), difference(a.z, b.z)};
}

inline TwofoldVector times(const Twofold& factor, const TwofoldVector& a) {
  return {product(factor, a.x), product(factor, a.y), product(factor, a.z)};
}

inline Twofold dot(const TwofoldVector& a, const TwofoldVector& b) {
  return sum(sum(product(a.x, b.x), product(a.y, b.y)), product(a.z, b.z));
}

inline TwofoldVector cross(const TwofoldVector& a, const TwofoldVector& b) {
  return {difference(product(a.y, b.z), product(a.z, b.y)), difference(product(a.z, b.x), product(a.x, b.z)),
          difference(product(a.x, b.y), product(a.y, b.x))};
}

/// Largest component in size.
omReal64 largestOf(const TwofoldVector& a);

/// Euclidean length without spurious underflow; for components up to 2^500 in size.
omReal64 length(const TwofoldVector& a);

/// A segment as origin + t · direction with 0 <= t <= extent. The extent is a power of two and the direction's largest
/// component about 1, so that products of directions neither overflow nor underflow; both are zero for a segment
/// without length.
struct Ray {
  SpatialPoint origin;
  TwofoldVector direction;
  omReal64 extent;
};

Ray rayOf(const SpatialSegment& segment);

/// Whether a parameter is below the extent; near the end of a ray only its second number tells.
bool isBeforeEnd(const Twofold& parameter, const Ray& ray);

/// The parameter, from 0 to the extent, of the ray's point nearest to that at the offset from its origin.
Twofold parameterOf(const TwofoldVector& offset, const Ray& ray);

/// The point of a segment at a parameter of its ray: the ends themselves, else rounded and kept in the segment's box.
SpatialPoint pointAt(const Twofold& parameter, const Ray& ray, const SpatialSegment& segment);

}  // namespace ormix::detail
