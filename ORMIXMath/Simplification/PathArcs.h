#pragma once

#include <ORMIXMath/Simplification/SimplifyPaths.h>

#include <vector>

/// \file
/// Paths and rings as sequences of arcs, each of which is simplified by itself; not installed.

namespace ormix::detail {

/// A run of points of PathArcs. Of an arc that is a whole ring the last point repeats the first.
struct Arc {
  std::size_t first;
  std::size_t nbPoints;
};

/// How a path goes along an arc.
struct ArcUse {
  omUInt32 arc;
  bool isReversed;
  std::size_t start;  ///< number of the arc's first vertex along the way, among the path's numbered vertices
};

/// The arcs of a set of paths. A ring without a vertex that divides it is one arc, which begins at its first vertex in
/// order of x, then y.
struct PathArcs {
  std::vector<PlanarPoint> points;  ///< of all arcs, scaled
  std::vector<Arc> arcs;
  std::vector<ArcUse> uses;
  std::vector<std::size_t> useEnds;  ///< for each path, where its uses end
  /// For each path, the indices of its vertices that do not repeat the one before; empty when no vertex does.
  std::vector<std::vector<omUInt32>> numbers;
};

/// One arc for each path.
/// \param scale factor of all coordinates, a power of two
PathArcs separateArcs(const std::vector<PathView>& paths, omReal64 scale);

/// Arcs from node to node, each only once, whatever paths go along it and in whatever direction. Nodes are the ends of
/// open paths, the tips of spikes, and the vertices at which paths meet themselves or each other and do not go on
/// together. Vertices that repeat the one before are left out.
PathArcs sharedArcs(const std::vector<PathView>& paths, omReal64 scale);

}  // namespace ormix::detail
