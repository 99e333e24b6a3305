#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

#include <cstddef>
#include <memory>
#include <vector>

/// \file
/// Boundaries of sets of pixels as rings of whole numbers, for whatever needs them: polygons, estimators of the
/// perimeter; not installed.

namespace ormix::geom::detail {

/// A corner of a boundary; left unset when created, so that large arrays are not written twice.
struct PixelCorner {
  omUInt32 x;  ///< column at whose left side the corner is
  omUInt32 y;  ///< row at whose upper side the corner is, counted from the start row
};

/// The boundaries of a set of pixels. Rings are in order of their first corners, row by row, so that a ring stands
/// behind its parent; each begins with its first corner, and the last corner does not repeat it. Corners of a ring
/// alternate between horizontal and vertical sides. Pixels are on the left of the direction (x to the right, y up),
/// that is, boundaries of regions are counter-clockwise and boundaries of holes clockwise.
struct ContourRings {
  static constexpr std::size_t s_noParent = static_cast<std::size_t>(-1);  ///< parent of an outermost ring

  /// One closed boundary.
  struct Ring {
    std::size_t begin;   ///< index of its first corner
    std::size_t end;     ///< index after its last corner
    std::size_t parent;  ///< the ring that immediately encloses it: the region of a hole, the hole of an island
    bool isHole;         ///< whether the pixels are outside
  };

  omUInt64 startRow = 0;                   ///< row of the corners with y = 0
  std::unique_ptr<PixelCorner[]> corners;  ///< of all rings, one ring after the other
  std::vector<Ring> rings;                 ///< in the order of their corners
};

/// The boundaries of pixels. Where two pixels touch at a corner only, the boundary turns so that they are in one region
/// for ePC_8 and in two for ePC_4; boundaries touch there and never cross. Adjacent runs are joined. Linear in the rows
/// and runs; takes 8 bytes a run besides the result, and 8 more if there are adjacent ones.
/// \throw ORMIXGeometryException, logged, if there are 2³⁰ runs or more
ContourRings traceRings(const RowIntersections& rows, ePixelConnectivity connectivity);

}  // namespace ormix::geom::detail
