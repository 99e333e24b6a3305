#pragma once

#include <ORMIXMath/Distance/SpatialSegment.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <random>
#include <utility>

#include "PlanarOracle.h"

/// \file
/// Spatial distances in 200-digit arithmetic and hostile cases.

namespace ormix::oracle {

struct ExactVector {
  Exact x, y, z;
  ExactVector(Exact px, Exact py, Exact pz) : x(px), y(py), z(pz) {}
  ExactVector(const SpatialPoint& p) : x(p.x), y(p.y), z(p.z) {}  // NOLINT: every point is exact
};

inline ExactVector operator-(const ExactVector& p, const ExactVector& q) { return {p.x - q.x, p.y - q.y, p.z - q.z}; }
inline ExactVector operator+(const ExactVector& p, const ExactVector& q) { return {p.x + q.x, p.y + q.y, p.z + q.z}; }
inline ExactVector operator*(const Exact& t, const ExactVector& p) { return {t * p.x, t * p.y, t * p.z}; }
inline Exact dot(const ExactVector& p, const ExactVector& q) { return p.x * q.x + p.y * q.y + p.z * q.z; }
inline ExactVector cross(const ExactVector& p, const ExactVector& q) {
  return {p.y * q.z - p.z * q.y, p.z * q.x - p.x * q.z, p.x * q.y - p.y * q.x};
}
inline Exact norm(const ExactVector& p) { return sqrt(dot(p, p)); }

inline Exact distance(const ExactVector& p, const SpatialSegment& s) {
  const ExactVector u = ExactVector(s.p1) - s.p0;
  const Exact along = dot(p - s.p0, u);
  if (along <= 0) return norm(p - s.p0);
  if (along >= dot(u, u)) return norm(p - s.p1);
  return norm(cross(p - s.p0, u)) / norm(u);
}

inline Exact distance(const SpatialSegment& s, const SpatialSegment& r) {
  const Exact ends =
      std::min(std::min(distance(s.p0, r), distance(s.p1, r)), std::min(distance(r.p0, s), distance(r.p1, s)));
  const ExactVector u = ExactVector(s.p1) - s.p0;
  const ExactVector v = ExactVector(r.p1) - r.p0;
  const ExactVector w = ExactVector(r.p0) - s.p0;
  const ExactVector n = cross(u, v);
  const Exact a = dot(cross(w, v), n);
  const Exact b = dot(cross(w, u), n);
  const Exact square = dot(n, n);
  const bool inside = square > 0 && a >= 0 && a <= square && b >= 0 && b <= square;
  return inside ? std::min(ends, Exact(abs(dot(w, n)) / sqrt(square))) : ends;
}

inline omReal64 ulp(const SpatialSegment& s, const SpatialSegment& r) {
  return std::max(ulp(PlanarSegment{{s.p0.x, s.p0.y}, {s.p1.x, s.p1.y}}, {{s.p0.z, s.p1.z}, {r.p0.z, r.p1.z}}),
                  ulp(PlanarSegment{{r.p0.x, r.p0.y}, {r.p1.x, r.p1.y}}, {{s.p0.z, s.p1.z}, {r.p0.z, r.p1.z}}));
}

/// Pairs of segments chosen to hurt: nearly parallel, touching, crossing, skew by little, of very different lengths, of
/// no length, along axes, on a grid, near the origin and far from it.
class HostileSpatialSegments {
 public:
  explicit HostileSpatialSegments(unsigned seed) : _draw(seed) {}

  std::pair<SpatialSegment, SpatialSegment> next() {
    const omReal64 size = std::pow(10.0, std::floor(5 * uniform()));
    const SpatialPoint middle = vector(1.0);
    const SpatialPoint origin{middle.x * offset(), middle.y * offset(), middle.z * offset()};
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

 private:
  bool chance(unsigned oneIn) { return _draw() % oneIn == 0; }
  omReal64 uniform() { return std::uniform_real_distribution<omReal64>(-1, 1)(_draw); }
  omReal64 offset() {
    const omReal64 offsets[] = {0, 0, 1, 1e6, 1e8, -3e12};
    return offsets[_draw() % 6];
  }
  SpatialPoint vector(omReal64 size) { return {size * uniform(), size * uniform(), size * uniform()}; }
  static SpatialPoint moved(const SpatialPoint& p, const SpatialPoint& v, omReal64 t) {
    return {p.x + t * v.x, p.y + t * v.y, p.z + t * v.z};
  }
  std::mt19937 _draw;
};

}  // namespace ormix::oracle

namespace ormix {
inline std::ostream& operator<<(std::ostream& out, const SpatialPoint& p) {
  return out << std::hexfloat << '(' << p.x << ", " << p.y << ", " << p.z << ')' << std::defaultfloat;
}
inline std::ostream& operator<<(std::ostream& out, const SpatialSegment& s) { return out << s.p0 << '-' << s.p1; }
}  // namespace ormix
