#pragma once

#include <ORMIXMath/Distance/NearestPair.h>
#include <ORMIXMath/Distance/PlanarSegment.h>
#include <ORMIXMath/Export.h>
#include <ORMIXMath/Index/BoxTree.h>

#include <vector>

/// \file
/// Many segments of the plane, for distances between sets of them; not installed.

namespace ormix::detail {

/// Segments in a tree of boxes; one without length is a point. Coordinates should be finite and at most 2^500 in size,
/// so that their products do not overflow. Several threads may ask at once.
class SegmentSet {
 public:
  SegmentSet() = default;
  /// \param order eBO_Given where segments that follow each other are close together
  ORMIX_MATH_API SegmentSet(std::vector<PlanarSegment> segments, eBoxOrder order);

  std::size_t size() const { return _segments.size(); }
  const PlanarSegment& operator[](std::size_t i) const { return _segments[i]; }
  const std::vector<PlanarSegment>& segments() const { return _segments; }
  const BoxTree<2>& tree() const { return _tree; }
  /// Largest magnitude of a coordinate.
  omReal64 magnitude() const { return _magnitude; }

 private:
  std::vector<PlanarSegment> _segments;
  BoxTree<2> _tree;
  omReal64 _magnitude = 0;
};

/// The nearest points of two sets as nearestOnSegments() answers them for their nearest segments: exactly 0 if and only
/// if two of these have a point in common. Infinite where one set has no segments. Both trees are descended at once,
/// the nearest boxes first; the time is that of the pairs of boxes which are nearer to each other than the answer.
ORMIX_MATH_API PlanarNearestPair nearestOfSegments(const SegmentSet& a, const SegmentSet& b);

}  // namespace ormix::detail
