#pragma once

#include <ORMIXGeometry/Entity/2d/Skeleton/Skeleton2d.h>

#include <vector>

/// \file
/// The paths of skeletons: their branches and the longest one. Lengths are those of the curves, in the unit of the
/// region.

namespace ormix::geom {

/// An edge and the direction in which a path runs along it.
struct SkeletonStep {
  omUInt32 edgeIdx;  ///< index of the edge
  bool isReversed;   ///< whether the path runs from the edge's last vertex to its first
};

/// Edges that follow each other.
struct SkeletonPath {
  std::vector<SkeletonStep> steps;  ///< in order
  omUInt32 startVertexIdx = 0;      ///< where it begins
  omUInt32 endVertexIdx = 0;        ///< where it ends; where it begins, of a cycle
  omReal64 length = 0;              ///< of all steps
};

/// Numbers of the whole skeleton.
struct SkeletonCounts {
  std::size_t nbComponents = 0;    ///< connected parts
  std::size_t nbCycles = 0;        ///< independent cycles
  std::size_t nbEndPoints = 0;     ///< vertices with one edge
  std::size_t nbBranchPoints = 0;  ///< vertices with three or more
  omReal64 length = 0;             ///< of all edges
};
ORMIX_GEOMETRY_API SkeletonCounts countsOf(const Skeleton2d& skeleton);

/// The branches: paths between end points and branch points without such a vertex inside, and cycles without branch
/// points, which start at their vertex with the lowest index. In order of their first vertex, then of their first edge.
/// Linear.
ORMIX_GEOMETRY_API std::vector<SkeletonPath> branchesOf(const Skeleton2d& skeleton);

/// The longest path that visits no vertex twice, over all components; without steps in an empty skeleton. Each cycle is
/// cut first at the edge where the region is narrowest, so that the path follows the wide parts around a hole. Of a
/// worm-like region it is the middle line. O(n log n).
ORMIX_GEOMETRY_API SkeletonPath longestPath(const Skeleton2d& skeleton);

}  // namespace ormix::geom
