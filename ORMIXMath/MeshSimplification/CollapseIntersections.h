#pragma once

#include <ORMIXMath/Index/IndexBox.h>
#include <ORMIXMath/MeshSimplification/CollapsingMesh.h>

#include <vector>

/// \file
/// Whether a surface would intersect itself after a collapse; not installed.

namespace ormix::detail {

/// A tree of boxes over the triangles of a mesh while its edges collapse. A node is the box of eight that follow each
/// other, in the order that a packed tree of all triangles has at the beginning; collapses move triangles by little, so
/// that the order remains a good one and only boxes are computed again. Triangles have no boxes of their own: one of
/// eight costs little to compute.
class CollapseIntersections {
 public:
  /// O(n log n).
  explicit CollapseIntersections(const CollapsingMesh& mesh);

  /// Whether triangles around an edge intersect others, or each other, when both of its ends are at a position; also
  /// where they do so now. Exact, O(log n) for the triangles nearby. True without a look when far more triangles were
  /// looked at than is common, as where the boxes of most triangles meet, so that n triangles take no n² steps.
  bool wouldIntersect(const CollapsingMesh& mesh, const CollapsingEdge& edge, const SpatialPoint& position);

  /// Computes boxes again for triangles that have moved or gone.
  /// \param sides one of each triangle
  void update(const CollapsingMesh& mesh, const std::vector<omUInt32>& sides);

 private:
  static constexpr std::size_t s_width = 8;
  using Box = IndexBox<3>;

  struct Corners {
    SpatialPoint points[3];
    omUInt32 numbers[3];
  };

  static Corners cornersOf(const CollapsingMesh& mesh, omUInt32 triangle);
  static bool cross(const Corners& a, const Corners& b);
  Box boxOfEight(const CollapsingMesh& mesh, std::size_t node) const;
  Box boxOfNodes(std::size_t level, std::size_t node) const;
  bool meetsOthers(const CollapsingMesh& mesh, const Corners& moved);

  /// Triangles looked at for each one that there was; about 100 are common.
  static constexpr std::size_t s_looksOfTriangle = 1000;

  std::size_t _nbLooksLeft;
  std::vector<omUInt32> _triangles;                           ///< in the order of the tree
  std::vector<omUInt32> _places;                              ///< of the triangles in that order
  std::vector<std::vector<Box>> _levels;                      ///< of nodes, from the lowest
  std::vector<Corners> _moved;                                ///< the triangles around the edge looked at
  std::vector<omUInt32> _changed;                             ///< those and the ones that go, ascending
  std::vector<std::pair<std::size_t, std::size_t>> _pending;  ///< level and index of nodes
};

}  // namespace ormix::detail
