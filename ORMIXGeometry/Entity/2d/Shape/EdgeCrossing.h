#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <cmath>

/// \file
/// Where edges of polygons cross horizontal lines, relative to columns of pixels, decided exactly; not installed.

namespace ormix::geom::detail {

/// Columns and rows are cut here: beyond it reals have no fractions.
constexpr omInt64 s_largestColumn = omInt64{1} << 53;

/// The largest whole number that is not above the value, cut to [-s_largestColumn, s_largestColumn].
inline omInt64 floorColumn(omReal64 value) {
  constexpr auto limit = static_cast<omReal64>(s_largestColumn);
  if (!(value > -limit)) return -s_largestColumn;
  if (value >= limit) return s_largestColumn;
  const auto truncated = static_cast<omInt64>(value);
  return truncated - (static_cast<omReal64>(truncated) > value ? 1 : 0);
}

/// The smallest whole number that is not below the value, cut likewise.
inline omInt64 ceilColumn(omReal64 value) { return -floorColumn(-value); }

/// The first column (or row) whose centre is at the value or above it. Exact, also where value - 0.5 is rounded.
inline omInt64 firstCentre(omReal64 value) {
  constexpr omReal64 rounder = 0x1.8p52;  // added and subtracted, it rounds to a whole number
  const omReal64 nearest = (value + rounder) - rounder;
  if (std::abs(value) < 0x1p50) return static_cast<omInt64>(nearest) - (value - nearest == -0.5 ? 1 : 0);
  const omInt64 below = floorColumn(value);
  return below + (value - static_cast<omReal64>(below) > 0.5 && below < s_largestColumn ? 1 : 0);
}

/// A place on a line: exactly at a whole number `column` (side 0), or less than 1 below it (side -1) or above it (1).
struct ColumnPosition {
  omInt64 column;
  int side;

  omInt64 floor() const { return column - (side < 0 ? 1 : 0); }  ///< the largest whole number not above the place
  omInt64 ceil() const { return column + (side > 0 ? 1 : 0); }   ///< the smallest one not below it
};

/// An edge with y0 < y1 and finite coordinates, prepared for many crossings.
///
/// The crossing with the line y is computed as x0 + (y - y0) slope, for y in [y0, y1]. With u = 2^-53 and M the larger
/// of |x0| and |x1|, each of x1 - x0, y1 - y0, the slope, y - y0 and the product adds a relative error u to a number of
/// at most |x1 - x0| <= 2 M, the sum and the subtraction of an offset of at most 1/2 add u (M + |x| + 1): together less
/// than 13 u M + 2 u to first order. Where the slope underflows, the error of the product stays below 2^-1075 (y1 - y0)
/// < 2^-50, as long as y1 - y0 is finite. Overflow leaves an x that is not finite, or a bound that is not.
struct DownEdge {
  omReal64 x0, y0, x1, y1;
  omReal64 slope;  ///< (x1 - x0) / (y1 - y0), rounded
  omReal64 bound;  ///< of the error of a computed crossing

  /// Sets all fields from the ends.
  void set(omReal64 upperX, omReal64 upperY, omReal64 lowerX, omReal64 lowerY) {
    x0 = upperX;
    y0 = upperY;
    x1 = lowerX;
    y1 = lowerY;
    slope = (x1 - x0) / (y1 - y0);
    bound = 0x1p-49 * std::max(std::abs(x0), std::abs(x1)) + 0x1p-50;
  }
};

/// The crossing where the rounded one does not decide.
ColumnPosition exactCrossing(const DownEdge& edge, omReal64 y, omReal64 offset);

/// x - offset as a place among whole numbers, for the x where the edge crosses the line y, y in [y0, y1]. Exact.
/// \param offset 0 or 0.5
inline ColumnPosition crossing(const DownEdge& edge, omReal64 y, omReal64 offset) {
  constexpr omReal64 rounder = 0x1.8p52;  // added and subtracted, it rounds to a whole number
  const omReal64 x = edge.x0 + (y - edge.y0) * edge.slope - offset;
  const omReal64 nearest = (x + rounder) - rounder;
  const omReal64 beyond = x - nearest;
  if (std::abs(beyond) > edge.bound && std::abs(x) < 0x1p50)
    return {static_cast<omInt64>(nearest), beyond > 0 ? 1 : -1};
  return exactCrossing(edge, y, offset);
}

}  // namespace ormix::geom::detail
