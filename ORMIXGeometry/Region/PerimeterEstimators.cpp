#include <ORMIXGeometry/Entity/2d/Shape/ContourRings.h>
#include <ORMIXGeometry/Region/ContourPerimeters.h>
#include <ORMIXGeometry/Region/PerimeterEstimators.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ellipse.h>
#include <ORMIXMath/Shape/ShortestLoop.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom {

namespace {

using detail::ContourRings;
using detail::PixelCorner;

/// A side of a boundary ring: its direction, 0 to 3 counter-clockwise from that of x, and its length in pixels.
struct Side {
  unsigned direction;
  omUInt32 length;
};

Side sideBetween(const PixelCorner& from, const PixelCorner& to) {
  if (from.y == to.y) return to.x > from.x ? Side{0, to.x - from.x} : Side{2, from.x - to.x};
  return to.y > from.y ? Side{1, to.y - from.y} : Side{3, from.y - to.y};
}

/// Calls for each corner of the ring with the sides before and after it, so that the region, or the hole, is on the
/// left.
template <class Function>
void visitCorners(const ContourRings& contours, const ContourRings::Ring& ring, const Function& function) {
  const std::size_t count = ring.end - ring.begin;
  const auto corner = [&](std::size_t index) -> const PixelCorner& {
    const std::size_t at = index % count;
    return contours.corners[ring.isHole ? ring.end - 1 - at : ring.begin + at];
  };
  for (std::size_t index = 0; index < count; ++index)
    function(corner(index), sideBetween(corner(index + count - 1), corner(index)),
             sideBetween(corner(index), corner(index + 1)));
}

bool turnsLeft(const Side& before, const Side& after) { return after.direction == (before.direction + 1) % 4; }

/// The estimate of one ring. A side of n pixels is n - 1 steps from pixel to pixel, a turn to the right a diagonal one,
/// a turn to the left none.
omReal64 cornerCountOf(const ContourRings& contours, const ContourRings::Ring& ring, const PixelSpacing& spacing) {
  constexpr omReal64 straightWeight = 0.980, diagonalWeight = 1.406, cornerWeight = -0.091;
  constexpr unsigned none = 8;
  omUInt64 nbAlongX = 0, nbAlongY = 0, nbDiagonal = 0, nbChanges = 0;
  unsigned first = none, last = none;
  const auto step = [&](unsigned direction) {
    if (last == none)
      first = direction;
    else if (direction != last)
      ++nbChanges;
    last = direction;
  };
  visitCorners(contours, ring, [&](const PixelCorner&, const Side& before, const Side& after) {
    if (!turnsLeft(before, after)) {
      ++nbDiagonal;
      step((2 * before.direction + 7) % 8);
    }
    if (after.length > 1) {
      (after.direction % 2 == 0 ? nbAlongX : nbAlongY) += after.length - 1;
      step(2 * after.direction);
    }
  });
  if (first != last) ++nbChanges;
  return straightWeight * (static_cast<omReal64>(nbAlongX) * spacing.x + static_cast<omReal64>(nbAlongY) * spacing.y) +
         diagonalWeight * static_cast<omReal64>(nbDiagonal) * std::hypot(spacing.x, spacing.y) / std::sqrt(2.0) +
         cornerWeight * static_cast<omReal64>(nbChanges) * std::sqrt(spacing.x * spacing.y) +
         detail::pixelDiskPerimeter(spacing);
}

/// The estimate of one ring: the gates between the pixel inside and the one outside of each corner, in order.
omReal64 minimumLengthOf(const ContourRings& contours, const ContourRings::Ring& ring, const PixelSpacing& spacing) {
  std::vector<PathGate> gates;
  gates.reserve(ring.end - ring.begin);
  visitCorners(contours, ring, [&](const PixelCorner& corner, const Side& before, const Side& after) {
    // Half a pixel to the left of both sides.
    constexpr omReal64 leftX[4] = {0, -0.5, 0, 0.5}, leftY[4] = {0.5, 0, -0.5, 0};
    const omReal64 dx = leftX[before.direction] + leftX[after.direction];
    const omReal64 dy = leftY[before.direction] + leftY[after.direction];
    const auto x = static_cast<omReal64>(corner.x), y = static_cast<omReal64>(corner.y);
    gates.push_back({{x + dx, y + dy}, {x - dx, y - dy}});
  });
  return shortestLoopLength(gates, spacing.x, spacing.y) + detail::pixelDiskPerimeter(spacing);
}

template <class Estimate>
omReal64 sumOverRings(const ContourRings& contours, const PixelSpacing& spacing, const Estimate& estimate) {
  omReal64 sum = 0;
  for (const ContourRings::Ring& ring : contours.rings) sum += estimate(contours, ring, spacing);
  return sum;
}

/// The number of pixels that a row and another one, shifted to the right, have in common.
omUInt64 nbCommon(const RowIntersections::Row& row, const RowIntersections::Row& other, omInt64 shift) {
  omUInt64 count = 0;
  const PixelRun* b = other.begin();
  for (const PixelRun& a : row) {
    while (b != other.end() && omInt64{b->end} + shift <= omInt64{a.begin}) ++b;
    for (const PixelRun* c = b; c != other.end() && omInt64{c->begin} + shift < omInt64{a.end}; ++c)
      count += static_cast<omUInt64>(std::min(omInt64{a.end}, omInt64{c->end} + shift) -
                                     std::max(omInt64{a.begin}, omInt64{c->begin} + shift));
  }
  return count;
}

/// How often lines of pixels cross the boundary, by their direction.
struct Crossings {
  omUInt64 alongRows = 0;
  omUInt64 alongColumns = 0;
  omUInt64 alongDiagonals = 0;  // both
};

Crossings crossingsOf(const RowIntersections& pixels) {
  Crossings crossings;
  omUInt64 nbCommonRight = 0, nbCommonBelow = 0, nbCommonDiagonal = 0;
  for (omUInt64 y = pixels.getStartRow(); y < pixels.getEndRow(); ++y) {
    const RowIntersections::Row row = pixels.getRow(y);
    for (const PixelRun& run : row) {
      nbCommonRight += run.end - run.begin - 1;
      if (&run != row.begin() && (&run)[-1].end == run.begin) ++nbCommonRight;
    }
    if (y + 1 == pixels.getEndRow()) break;
    const RowIntersections::Row below = pixels.getRow(y + 1);
    nbCommonBelow += nbCommon(row, below, 0);
    nbCommonDiagonal += nbCommon(row, below, -1) + nbCommon(row, below, 1);
  }
  // Each pixel ends a line on both sides unless its neighbour goes on with it.
  const omUInt64 nbPixels = pixels.getNbPixels();
  crossings.alongRows = 2 * (nbPixels - nbCommonRight);
  crossings.alongColumns = 2 * (nbPixels - nbCommonBelow);
  crossings.alongDiagonals = 2 * (2 * nbPixels - nbCommonDiagonal);
  return crossings;
}

}  // namespace

omReal64 detail::pixelDiskPerimeter(const PixelSpacing& spacing) {
  if (spacing.x == spacing.y) return s_pi * spacing.x;
  return 2 * std::max(spacing.x, spacing.y) * std::comp_ellint_2(ellipseExcentricity(spacing.x, spacing.y));
}

omReal64 detail::cornerCountPerimeter(const ContourRings& contours, const PixelSpacing& spacing) {
  return sumOverRings(contours, spacing, cornerCountOf);
}

omReal64 detail::minimumLengthPerimeter(const ContourRings& contours, const PixelSpacing& spacing) {
  return sumOverRings(contours, spacing, minimumLengthOf);
}

omReal64 cornerCountPerimeter(const RowIntersections& pixels, ePixelConnectivity connectivity,
                              const PixelSpacing& spacing) {
  return detail::cornerCountPerimeter(detail::traceRings(pixels, connectivity), spacing);
}

omReal64 minimumLengthPerimeter(const RowIntersections& pixels, ePixelConnectivity connectivity,
                                const PixelSpacing& spacing) {
  return detail::minimumLengthPerimeter(detail::traceRings(pixels, connectivity), spacing);
}

omReal64 croftonPerimeter(const RowIntersections& pixels, const PixelSpacing& spacing) {
  const Crossings crossings = crossingsOf(pixels);
  // Each direction stands for the angles that are nearest to it; half the sum over directions of angle, distance of
  // lines and crossings is the length.
  const omReal64 diagonal = std::atan2(spacing.y, spacing.x);
  const omReal64 betweenDiagonals = spacing.x * spacing.y / std::hypot(spacing.x, spacing.y);
  return 0.5 * (diagonal * spacing.y * static_cast<omReal64>(crossings.alongRows) +
                (s_pi / 2 - diagonal) * spacing.x * static_cast<omReal64>(crossings.alongColumns) +
                s_pi / 4 * betweenDiagonals * static_cast<omReal64>(crossings.alongDiagonals));
}

omReal64 edgePerimeter(const RowIntersections& pixels, const PixelSpacing& spacing) {
  const Crossings crossings = crossingsOf(pixels);
  return spacing.y * static_cast<omReal64>(crossings.alongRows) +
         spacing.x * static_cast<omReal64>(crossings.alongColumns);
}

}  // namespace ormix::geom
