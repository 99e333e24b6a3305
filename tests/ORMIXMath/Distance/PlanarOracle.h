#pragma once

#include <ORMIXMath/Distance/PlanarSegment.h>

#include <algorithm>
#include <boost/multiprecision/cpp_bin_float.hpp>
#include <cmath>
#include <ostream>
#include <random>

/// \file
/// Distances in 200-digit arithmetic, in which sums and products of the tests' coordinates are exact, and hostile
/// cases.

namespace ormix::oracle {

/// What the distances may be off in units of the last place of the largest coordinate: 5.6, which is 1.1 of the
/// distance itself, is the largest error seen in five million cases.
inline constexpr omReal64 allowedUlps = 6;

using Exact = boost::multiprecision::number<boost::multiprecision::cpp_bin_float<200>, boost::multiprecision::et_off>;

struct ExactPoint {
  Exact x, y;
  ExactPoint(Exact px, Exact py) : x(px), y(py) {}
  ExactPoint(const PlanarPoint& p) : x(p.x), y(p.y) {}  // NOLINT: every point is exact
};

inline ExactPoint operator-(const ExactPoint& p, const ExactPoint& q) { return {p.x - q.x, p.y - q.y}; }
inline Exact dot(const ExactPoint& p, const ExactPoint& q) { return p.x * q.x + p.y * q.y; }
inline Exact cross(const ExactPoint& p, const ExactPoint& q) { return p.x * q.y - p.y * q.x; }
inline Exact norm(const ExactPoint& p) { return sqrt(dot(p, p)); }

inline int side(const ExactPoint& a, const ExactPoint& b, const ExactPoint& c) { return cross(b - a, c - a).sign(); }

inline Exact distance(const ExactPoint& p, const PlanarSegment& s) {
  const ExactPoint u = ExactPoint(s.p1) - s.p0;
  const Exact along = dot(p - s.p0, u);
  if (along <= 0) return norm(p - s.p0);
  if (along >= dot(u, u)) return norm(p - s.p1);
  return abs(cross(p - s.p0, u)) / norm(u);
}

inline bool crosses(const PlanarSegment& s, const PlanarSegment& r) {
  return side(s.p0, s.p1, r.p0) * side(s.p0, s.p1, r.p1) < 0 && side(r.p0, r.p1, s.p0) * side(r.p0, r.p1, s.p1) < 0;
}

inline ExactPoint crossing(const PlanarSegment& s, const PlanarSegment& r) {
  const ExactPoint u = ExactPoint(s.p1) - s.p0;
  const ExactPoint v = ExactPoint(r.p1) - r.p0;
  const Exact t = cross(ExactPoint(r.p0) - s.p0, v) / cross(u, v);
  return {s.p0.x + t * u.x, s.p0.y + t * u.y};
}

inline Exact distance(const PlanarSegment& s, const PlanarSegment& r) {
  if (crosses(s, r)) return 0;
  return std::min(std::min(distance(s.p0, r), distance(s.p1, r)), std::min(distance(r.p0, s), distance(r.p1, s)));
}

/// Unit in the last place of the largest of the coordinates.
inline omReal64 ulp(const PlanarSegment& s, const PlanarSegment& r) {
  const omReal64 largest = std::max({std::abs(s.p0.x), std::abs(s.p0.y), std::abs(s.p1.x), std::abs(s.p1.y),
                                     std::abs(r.p0.x), std::abs(r.p0.y), std::abs(r.p1.x), std::abs(r.p1.y)});
  return largest > 0 ? std::ldexp(1.0, std::max(std::ilogb(largest) - 52, -1074)) : 1.0;
}

inline omReal64 ulps(const Exact& difference, omReal64 ulp) {
  return std::abs(difference.convert_to<omReal64>()) / ulp;
}

/// Pairs of segments chosen to hurt: nearly parallel, touching, overlapping, crossing flatly, of very different
/// lengths, of no length, near the origin and far from it.
class HostileSegments {
 public:
  explicit HostileSegments(unsigned seed) : _draw(seed) {}

  std::pair<PlanarSegment, PlanarSegment> next() {
    const omReal64 offsets[] = {0, 0, 1, 1e6, 1e8, -3e12};
    const PlanarPoint origin{offsets[_draw() % 6] * uniform(), offsets[_draw() % 6] * uniform()};
    const omReal64 size = std::pow(10.0, std::floor(5 * uniform()));
    const PlanarPoint along{size * uniform(), _draw() % 4 == 0 ? 0 : size * uniform()};
    const PlanarSegment first{moved(origin, along, -1), moved(origin, along, 1)};
    const omReal64 angle = _draw() % 3 == 0 ? 0 : std::pow(10.0, -17 * std::abs(uniform()));
    const PlanarPoint turned{along.x - angle * along.y, along.y + angle * along.x};
    const PlanarPoint start = _draw() % 2 == 0 ? origin : moved(moved(origin, along, 2 * uniform()), jitter(size), 1);
    PlanarSegment second{moved(start, turned, -2 * std::abs(uniform())), moved(start, turned, 2 * std::abs(uniform()))};
    if (_draw() % 6 == 0) second.p0 = first.p1;
    if (_draw() % 12 == 0) second.p1 = second.p0;
    if (_draw() % 12 == 0) second.p1 = {size * uniform() + origin.x, size * uniform() + origin.y};
    if (_draw() % 2 == 0) return {first, second};
    return {second, {first.p1, first.p0}};
  }

 private:
  omReal64 uniform() { return std::uniform_real_distribution<omReal64>(-1, 1)(_draw); }
  PlanarPoint jitter(omReal64 size) {
    const omReal64 small = size * std::pow(10.0, -16 * std::abs(uniform()));
    return {small * uniform(), small * uniform()};
  }
  static PlanarPoint moved(const PlanarPoint& p, const PlanarPoint& v, omReal64 t) {
    return {p.x + t * v.x, p.y + t * v.y};
  }
  std::mt19937 _draw;
};

}  // namespace ormix::oracle

namespace ormix {
inline std::ostream& operator<<(std::ostream& out, const PlanarPoint& p) {
  return out << std::hexfloat << '(' << p.x << ", " << p.y << ')' << std::defaultfloat;
}
inline std::ostream& operator<<(std::ostream& out, const PlanarSegment& s) { return out << s.p0 << '-' << s.p1; }
}  // namespace ormix
