#pragma once

#include <ORMIXMath/Distance/PlanarSegment.h>
#include <ORMIXMath/Distance/SpatialSegment.h>

#include <boost/multiprecision/cpp_bin_float.hpp>
#include <ostream>

#include "support/Checks.h"
#include "support/Random.h"

/// \file
/// Distances in 200-digit arithmetic, in which sums and products of the tests' coordinates are exact, and hostile
/// cases. What lies in the plane is what lies in space at z = 0.

namespace ormix::oracle {

using Exact = boost::multiprecision::number<boost::multiprecision::cpp_bin_float<200>, boost::multiprecision::et_off>;

struct ExactPoint {
  Exact x, y, z;
  ExactPoint(Exact px, Exact py, Exact pz) : x(px), y(py), z(pz) {}
  ExactPoint(const PlanarPoint& p) : x(p.x), y(p.y), z(0) {}     // NOLINT: every point is exact
  ExactPoint(const SpatialPoint& p) : x(p.x), y(p.y), z(p.z) {}  // NOLINT: every point is exact
};

inline ExactPoint operator-(const ExactPoint& p, const ExactPoint& q) { return {p.x - q.x, p.y - q.y, p.z - q.z}; }
inline ExactPoint operator+(const ExactPoint& p, const ExactPoint& q) { return {p.x + q.x, p.y + q.y, p.z + q.z}; }
inline ExactPoint operator*(const Exact& t, const ExactPoint& p) { return {t * p.x, t * p.y, t * p.z}; }
inline Exact dot(const ExactPoint& p, const ExactPoint& q) { return p.x * q.x + p.y * q.y + p.z * q.z; }
inline ExactPoint cross(const ExactPoint& p, const ExactPoint& q) {
  return {p.y * q.z - p.z * q.y, p.z * q.x - p.x * q.z, p.x * q.y - p.y * q.x};
}
inline Exact norm(const ExactPoint& p) { return sqrt(dot(p, p)); }

template <class Segment>
Exact pointDistance(const ExactPoint& p, const Segment& s) {
  const ExactPoint u = ExactPoint(s.p1) - s.p0;
  const Exact along = dot(p - s.p0, u);
  if (along <= 0) return norm(p - s.p0);
  if (along >= dot(u, u)) return norm(p - s.p1);
  return norm(cross(p - s.p0, u)) / norm(u);
}

/// Where the common perpendicular of two segments stands on the first, from 0 to 1; outside unless it meets both
/// within.
template <class Segment>
Exact perpendicularPlace(const Segment& s, const Segment& r) {
  const ExactPoint u = ExactPoint(s.p1) - s.p0, v = ExactPoint(r.p1) - r.p0, w = ExactPoint(r.p0) - s.p0;
  const ExactPoint n = cross(u, v);
  const Exact square = dot(n, n), b = dot(cross(w, u), n);
  return square > 0 && b >= 0 && b <= square ? Exact(dot(cross(w, v), n) / square) : Exact(-1);
}

template <class Segment>
Exact segmentDistance(const Segment& s, const Segment& r) {
  const Exact ends = std::min(std::min(pointDistance(s.p0, r), pointDistance(s.p1, r)),
                              std::min(pointDistance(r.p0, s), pointDistance(r.p1, s)));
  const Exact place = perpendicularPlace(s, r);
  if (place < 0 || place > 1) return ends;
  const ExactPoint n = cross(ExactPoint(s.p1) - s.p0, ExactPoint(r.p1) - r.p0);
  return std::min(ends, Exact(abs(dot(ExactPoint(r.p0) - s.p0, n)) / norm(n)));
}

inline omReal64 largestOf(const PlanarPoint& p) { return std::max(std::abs(p.x), std::abs(p.y)); }
inline omReal64 largestOf(const SpatialPoint& p) { return std::max({std::abs(p.x), std::abs(p.y), std::abs(p.z)}); }
/// Unit in the last place of the largest of the coordinates.
template <class Segment>
omReal64 ulp(const Segment& s, const Segment& r) {
  const omReal64 largest = std::max({largestOf(s.p0), largestOf(s.p1), largestOf(r.p0), largestOf(r.p1)});
  return largest > 0 ? std::ldexp(1.0, std::max(std::ilogb(largest) - 52, -1074)) : 1.0;
}
inline omReal64 ulps(const Exact& difference, omReal64 ulp) {
  return std::abs(difference.convert_to<omReal64>()) / ulp;
}

/// Wherever one of the coordinates is not finite, the distance and the nearest points that are given are NaN.
template <std::size_t n, class Distance>
void expectNaN(const std::array<omReal64, n>& coordinates, Distance distance) {
  for (const omReal64 bad : {support::s_nan, support::s_infinity, -support::s_infinity})
    for (std::size_t place = 0; place < n; ++place) {
      std::array<omReal64, n> broken = coordinates;
      broken[place] = bad;
      for (const omReal64 value : distance(broken)) EXPECT_TRUE(std::isnan(value)) << bad << " at " << place;
    }
}

inline PlanarSegment flat(const SpatialSegment& s) { return {{s.p0.x, s.p0.y}, {s.p1.x, s.p1.y}}; }

/// Pairs of segments chosen to hurt: nearly parallel, touching, crossing, skew by little, of very different lengths, of
/// no length, along axes, near the origin and far from it.
class HostileSegments {
 public:
  explicit HostileSegments(unsigned seed) : _random(seed) {}

  std::pair<SpatialSegment, SpatialSegment> next() {
    const omReal64 size = std::pow(10.0, std::floor(5 * uniform()));
    const SpatialPoint middle = vector(1.0), origin{middle.x * offset(), middle.y * offset(), middle.z * offset()};
    SpatialPoint along = vector(size);
    if (chance(4)) along.y = 0;
    if (chance(6)) along.z = along.y = 0;
    const SpatialSegment first{moved(origin, along, -1), moved(origin, along, 1)};
    const omReal64 angle = chance(4) ? 0 : chance(3) ? 1 : std::pow(10.0, -20 * std::abs(uniform()));
    const SpatialPoint turned = moved(along, vector(size), angle);
    const SpatialPoint apart = vector(size * std::pow(10.0, -18 * std::abs(uniform())));
    const SpatialPoint start = chance(3) ? origin : moved(moved(origin, along, 2 * uniform()), apart, 1);
    const omReal64 reach = chance(5) ? 1e-6 : 2;
    SpatialSegment second{moved(start, turned, -reach * std::abs(uniform())),
                          moved(start, turned, reach * std::abs(uniform()))};
    if (chance(6)) second.p0 = first.p1;
    if (chance(10)) second.p0 = moved(first.p0, along, std::abs(uniform()));
    if (chance(12)) second.p1 = second.p0;
    if (chance(2)) return {first, second};
    return {second, {first.p1, first.p0}};
  }
  std::pair<PlanarSegment, PlanarSegment> nextFlat() {
    const auto [s, r] = next();
    return {flat(s), flat(r)};
  }

 private:
  bool chance(unsigned oneIn) { return _random.below(oneIn) == 0; }
  omReal64 uniform() { return _random.uniform(); }
  omReal64 offset() {
    const omReal64 offsets[] = {0, 0, 1, 1e6, 1e8, -3e12};
    return offsets[_random.below(6)];
  }
  SpatialPoint vector(omReal64 size) { return {size * uniform(), size * uniform(), size * uniform()}; }
  static SpatialPoint moved(const SpatialPoint& p, const SpatialPoint& v, omReal64 t) {
    return {p.x + t * v.x, p.y + t * v.y, p.z + t * v.z};
  }
  support::Random _random;
};

}  // namespace ormix::oracle

namespace ormix {
inline std::ostream& operator<<(std::ostream& out, const PlanarPoint& p) {
  return out << std::hexfloat << '(' << p.x << ", " << p.y << ')' << std::defaultfloat;
}
inline std::ostream& operator<<(std::ostream& out, const SpatialPoint& p) {
  return out << std::hexfloat << '(' << p.x << ", " << p.y << ", " << p.z << ')' << std::defaultfloat;
}
inline std::ostream& operator<<(std::ostream& out, const PlanarSegment& s) { return out << s.p0 << '-' << s.p1; }
inline std::ostream& operator<<(std::ostream& out, const SpatialSegment& s) { return out << s.p0 << '-' << s.p1; }
}  // namespace ormix
