#pragma once

#include <ORMIXMath/Distance/SegmentSet.h>
#include <ORMIXMath/Location/PreparedRings.h>

/// \file
/// The point of one set that is farthest from another; not installed.

namespace ormix::detail {

/// A set of the plane: segments, and where they bound one, a region.
struct PlanarSet {
  const SegmentSet& boundary;
  const PreparedRings* region = nullptr;  ///< what is inside it belongs to the set
};

/// The largest distance of a point of a from b, the directed Hausdorff distance, where it exceeds `floor`; else a
/// distance that does not. `onA` is the farthest point and `onB` the point of b that is nearest to it.
///
/// Branch and bound, the largest upper bound first: of the nodes of a tree over the segments of a, then of segments,
/// then of parts of segments. The distance to one segment of b is convex, so on a part its maximum is at an end, and
/// the least of these maxima, of the segments nearest to both ends, bounds the distance to b. A part is split where its
/// ends' nearest segments are equally far: the distance is largest there or at a vertex (Alt1995), and a part is done
/// after as many splits as it has nearest segments. Where a part begins inside b it is split at crossings instead. The
/// answer is right to 1e-14 of itself and the rounding errors of distances.
///
/// Where a has a region the distance may be largest inside of it, at a point that is equally far from several segments
/// of b. Such points are searched in squares. One is left where its bound, the least of the convex combinations of
/// distances to near segments at its corners, is not above the largest distance known, where it is outside of a or
/// inside of b, and where the distance has no maximum: the directions from all segments that may be nearest lie in a
/// half plane, or these are a nearly straight chain. This is right to 1e-12 of the answer; if s_mostSquares are not
/// enough, `excess` says how much larger it may be.
struct DirectedHausdorff {
  static constexpr std::size_t s_mostSquares = 100000;

  PlanarNearestPair farthest;
  omReal64 excess = 0;

  ORMIX_MATH_API DirectedHausdorff(const PlanarSet& a, const PlanarSet& b, omReal64 floor);
};

}  // namespace ormix::detail
