#pragma once

#include <ORMIXMath/Location/NearestOnRing.h>

#include <array>
#include <memory>
#include <vector>

namespace ormix {

/// The edges of rings in a tree of boxes, for many questions as nearestOnRing() answers them. Made in linear time;
/// about 90 bytes an edge. A question takes logarithmic time on average, and at worst that of all edges, as from the
/// center of a circle. Questions change nothing: several threads may ask at once.
class ORMIX_MATH_API NearestEdges {
 public:
  /// No edges.
  NearestEdges();
  ~NearestEdges();
  NearestEdges(NearestEdges&&) noexcept;
  NearestEdges& operator=(NearestEdges&&) noexcept;

  /// Adds the edges of a ring, whose last vertex need not repeat the first. Questions are for after build(), which must
  /// not be called again.
  template <class T>
  void add(const T* xy, std::size_t nbPoints) {
    std::size_t nbEdges = 0;
    for (std::size_t i = 0; i < nbPoints; ++i) {
      const std::size_t next = i + 1 < nbPoints ? i + 1 : 0;
      nbEdges += addEdge(toPlanarPoint(xy[2 * i], xy[2 * i + 1]), toPlanarPoint(xy[2 * next], xy[2 * next + 1]));
    }
    if (nbEdges == 0 && nbPoints > 0) addPoint(toPlanarPoint(xy[0], xy[1]));
  }
  /// Makes the tree.
  /// \return false, without edges, when a coordinate is not finite
  bool build();

  /// The nearest point, as pointSegmentDistance() answers for its edge; `index` is that of the edge in the order in
  /// which edges were added, those of length 0 left out. None when there are no edges or a coordinate is not finite.
  NearestOnRing nearest(omReal64 x, omReal64 y) const;

 private:
  struct Tree;
  using Edge = std::array<omReal64, 4>;

  bool addEdge(const PlanarPoint& start, const PlanarPoint& end);
  void addPoint(const PlanarPoint& point);

  std::vector<Edge> _edges;
  std::unique_ptr<Tree> _tree;  // null where squares of coordinates may overflow or vanish
};

}  // namespace ormix
