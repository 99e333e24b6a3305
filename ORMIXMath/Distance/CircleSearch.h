#pragma once

#include <ORMIXMath/Distance/RoundParts.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <vector>

/// \file
/// The least value of a function along a circle, certain by bounds; not installed.
///
/// Bounds are of second order, so that the number of cells grows with the logarithm of the tolerance: a convex function
/// of the points of space is at least its tangent anywhere, a concave one on an arc at least its least value at the
/// ends and where the tangents at these meet, as the arc is in the triangle of the three.

namespace ormix::detail {

/// The circle c + r (cos t · u + sin t · v).
struct TurnedCircle {
  SpatialPoint center;
  SpatialPoint u;
  SpatialPoint v;
  SpatialPoint axis;
  omReal64 radius;

  TurnedCircle(const SpatialPoint& c, const SpatialPoint& n, omReal64 r)
      : center(c), u(directionAcross(n)), v(cross(n, u)), axis(n), radius(r) {}

  SpatialPoint direction(omReal64 angle) const { return u * std::cos(angle) + v * std::sin(angle); }
  SpatialPoint at(omReal64 angle) const { return center + direction(angle) * radius; }

  /// The least value of n · (p − center) over the points p of an arc with half that angle; the greatest of −n is it.
  omReal64 leastAlong(const SpatialPoint& n, omReal64 angle, omReal64 half) const {
    const omReal64 x = dot(n, u) * radius, y = dot(n, v) * radius;
    const omReal64 turn = std::remainder(angle - std::atan2(-y, -x), 2 * s_pi);
    return -std::hypot(x, y) * (std::abs(turn) <= half ? 1 : std::cos(std::abs(turn) - half));
  }

  /// Both ends of an arc and the point where its tangents there meet, for a half below a quarter turn.
  std::array<SpatialPoint, 3> corners(omReal64 angle, omReal64 half) const {
    return {at(angle - half), at(angle + half), center + direction(angle) * (radius / std::cos(half))};
  }
};

/// What is found: where and what.
struct LeastOfTurn {
  omReal64 angle;
  omReal64 value;
};

/// The value at the middle of a cell, and a bound of it from below in all of the cell.
struct CellValue {
  omReal64 value;
  omReal64 bound;
};

/// The number of cells after which a search ends with what it has: one whose function hardly changes.
inline constexpr std::size_t s_maxNbSearchCells = std::size_t(1) << 16;

/// The least value over a full turn to a tolerance. It ends at once where the value is not above `least`.
/// \param look `look(angle, half)` answers a CellValue of an arc
template <class Look>
LeastOfTurn leastOfTurn(const Look& look, omReal64 tolerance, omReal64 least) {
  struct Cell {
    omReal64 bound;
    omReal64 angle;
    omReal64 half;
    bool operator<(const Cell& other) const { return bound > other.bound; }
  };
  constexpr int nbFirst = 8;
  LeastOfTurn best{0, std::numeric_limits<omReal64>::infinity()};
  std::vector<Cell> waiting;
  omReal64 halfOfBest = 0;
  const auto add = [&](omReal64 angle, omReal64 half) {
    const CellValue found = look(angle, half);
    if (found.value < best.value) {
      best = {angle, found.value};
      halfOfBest = half;
    }
    if (!(found.bound < best.value - tolerance)) return;
    waiting.push_back({found.bound, angle, half});
    std::push_heap(waiting.begin(), waiting.end());
  };
  for (int i = 0; i < nbFirst && best.value > least; ++i) add(2 * s_pi * (i + 0.25) / nbFirst, s_pi / nbFirst);
  for (std::size_t nbCells = nbFirst; !waiting.empty() && best.value > least && nbCells < s_maxNbSearchCells;
       nbCells += 2) {
    const Cell cell = waiting.front();
    if (!(cell.bound < best.value - tolerance)) break;
    std::pop_heap(waiting.begin(), waiting.end());
    waiting.pop_back();
    add(cell.angle - cell.half / 2, cell.half / 2);
    add(cell.angle + cell.half / 2, cell.half / 2);
  }
  // Down to the bottom of the hollow that was found.
  constexpr int maxNbTrials = 300;
  omReal64 step = halfOfBest;
  for (int trial = 0; trial < maxNbTrials && step > 1e-17 && best.value > least; ++trial) {
    bool isBetter = false;
    for (const omReal64 to : {best.angle - step, best.angle + step}) {
      const omReal64 value = look(to, 0).value;
      if (!(value < best.value)) continue;
      best = {to, value};
      isBetter = true;
      break;
    }
    if (!isBetter) step /= 2;
  }
  return best;
}

/// The nearest points of a circle and a convex body or its surface. Where the circle crosses the surface, that is
/// searched for: a common point.
/// \param isInside set to whether the point of the circle is inside the body
SpatialNearestPair circleToConvex(const TurnedCircle& circle, const ConvexBody& body, bool isFilled, bool& isInside);

}  // namespace ormix::detail
