#pragma once

#include <ORMIXMath/Distance/PlanarSegment.h>

#include <initializer_list>

/// \file
/// What the distances compute with, those of the plane first; not installed.

namespace ormix {

namespace detail {

constexpr PlanarPoint operator*(const PlanarPoint& p, omReal64 factor) { return {p.x * factor, p.y * factor}; }
constexpr PlanarPoint operator/(const PlanarPoint& p, omReal64 divisor) { return {p.x / divisor, p.y / divisor}; }
constexpr PlanarPoint operator-(const PlanarPoint& p, const PlanarPoint& q) { return {p.x - q.x, p.y - q.y}; }
constexpr PlanarSegment operator*(const PlanarSegment& s, omReal64 factor) { return {s.p0 * factor, s.p1 * factor}; }

/// Moves a computed coordinate between those of two ends, given in any order.
omReal64 clampBetween(omReal64 value, omReal64 end0, omReal64 end1);

/// Moves a computed point into the smallest axis-parallel box of the segment, which its exact position never leaves.
PlanarPoint clampToBox(const PlanarPoint& point, const PlanarSegment& segment);

/// Euclidean length without spurious underflow; for components up to 2^500 in size.
omReal64 length(const PlanarPoint& vector);

/// Power of two by which coordinates are multiplied so that products of two of them neither overflow nor lose the
/// digits the exact predicates live on: 1 unless the largest coordinate leaves [2^-400, 2^500]; NaN when one of them is
/// not finite, which then makes the whole answer NaN.
omReal64 safeScale(std::initializer_list<omReal64> coordinates);
omReal64 safeScale(const PlanarPoint& point, const PlanarSegment& segment);
omReal64 safeScale(const PlanarSegment& first, const PlanarSegment& second);

}  // namespace detail

}  // namespace ormix
