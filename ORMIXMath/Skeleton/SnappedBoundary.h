#pragma once

#include <ORMIXMath/Skeleton/MedialAxis.h>

#include <cmath>
#include <limits>

/// \file
/// Rings on a grid of integers, without crossings; not installed.

namespace ormix::detail {

/// The index that stands for "none".
inline constexpr omUInt32 s_none = std::numeric_limits<omUInt32>::max();

/// A point of the grid.
struct GridPoint {
  omInt32 x;
  omInt32 y;
  friend bool operator==(const GridPoint& a, const GridPoint& b) { return a.x == b.x && a.y == b.y; }
  friend bool operator!=(const GridPoint& a, const GridPoint& b) { return !(a == b); }
  friend bool operator<(const GridPoint& a, const GridPoint& b) { return a.x < b.x || (a.x == b.x && a.y < b.y); }
};

/// (a − origin) × (b − origin), exactly: twice the area of a triangle in a square of side 2^31 is at most 2^62.
inline omInt64 cross(const GridPoint& origin, const GridPoint& a, const GridPoint& b) {
  const omInt64 ax = omInt64{a.x} - origin.x, ay = omInt64{a.y} - origin.y;
  const omInt64 bx = omInt64{b.x} - origin.x, by = omInt64{b.y} - origin.y;
  return ax * by - ay * bx;
}

/// A directed edge with the region to its left.
struct GridEdge {
  GridPoint start;
  GridPoint end;
  omUInt32 ringIdx;        ///< of the edge of the caller that it is a part of
  omUInt32 pointIdx;       ///< of that edge, as in AxisPart
  omUInt32 startPointIdx;  ///< of the vertex where that edge starts, in the direction of this one
  omUInt32 next;           ///< index of the edge that follows in the ring
};

/// How the caller's coordinates correspond to those of the grid: turned by an angle, moved and scaled by a power of
/// two.
class SnapGrid {
 public:
  SnapGrid() = default;
  /// \param low, high the box around all points
  SnapGrid(const PlanarPoint& low, const PlanarPoint& high, omReal64 angle);

  /// The point in units of the grid, not rounded.
  PlanarPoint toGrid(const PlanarPoint& point) const;
  /// Back to the unit of the caller.
  PlanarPoint fromGrid(const PlanarPoint& point) const;
  omReal64 getUnit() const { return std::ldexp(1.0, -_exponent); }
  omReal64 lengthFromGrid(omReal64 length) const { return std::ldexp(length, -_exponent); }

 private:
  PlanarPoint _center{};
  int _exponent = 0;
  omReal64 _cos = 1;
  omReal64 _sin = 0;
};

/// The edges of all rings.
struct SnappedBoundary {
  SnapGrid grid;
  std::vector<GridEdge> edges;
};

/// Snaps rings to the grid of their box, turned by an angle, and divides edges where they touch, so that edges have at
/// most their ends in common. Edges that cover each other from both sides cancel out.
/// \param report gets the numbers of vertices and edges
/// \return a failure for what is not finite or has no extent, and where rings cross or cover each other
BoolResult snapBoundary(const std::vector<BoundaryRing>& rings, omReal64 angle, SnappedBoundary& boundary,
                        MedialAxisReport& report);

}  // namespace ormix::detail
