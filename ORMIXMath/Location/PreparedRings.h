#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Location/RingCrossings.h>

#include <cstddef>
#include <vector>

namespace ormix {

/// The edges of rings in the cells of a grid, for many questions as ringCrossings() answers them, and as exactly. Of
/// each cell it is known whether its centre is inside; a question counts the edges in its cell between the point and
/// that centre. There are about as many cells as edges, six of which or fewer are in a cell on the rings where edges
/// are short; the cells are longer in the direction in which more edges run.
///
/// Made in linear time and memory, 100 to 200 bytes an edge. A question takes constant time on average for points
/// that have nothing to do with the rings, and at worst that of all edges.
class ORMIX_MATH_API PreparedRings {
 public:
  PreparedRings() = default;

  /// Adds the edges of a ring, see ringCrossings(). Questions are for after build(), which must not be called again.
  template <class T>
  void add(const T* xy, std::size_t nbPoints) {
    for (std::size_t i = 0; i < nbPoints; ++i) {
      const std::size_t next = i + 1 < nbPoints ? i + 1 : 0;
      _edges.push_back({toPlanarPoint(xy[2 * i], xy[2 * i + 1]), toPlanarPoint(xy[2 * next], xy[2 * next + 1])});
    }
  }
  /// Puts the edges that were added into cells.
  /// \return false, without edges, when a coordinate is not finite or there are 2^28 edges or more
  bool build();

  /// Where the point is to all rings together.
  RingCrossings crossings(omReal64 x, omReal64 y) const;

 private:
  struct Edge {
    PlanarPoint a;
    PlanarPoint b;
  };
  /// The parallel strips of equal width along one axis that are the rows or columns of cells.
  struct Strips {
    omReal64 low = 0;
    omReal64 high = 0;
    omReal64 number = 1;
    omReal64 width = 0;
    omReal64 nbPerLength = 0;

    void divide(omReal64 nbStrips);
    std::size_t of(omReal64 coordinate) const;
    omReal64 center(std::size_t strip) const;
  };

  std::size_t nbColumns() const { return static_cast<std::size_t>(_columns.number); }
  PlanarPoint center(std::size_t cell) const;
  void scale();
  void chooseCells();
  void sortIntoCells();
  void findCentersInside();

  omReal64 _scale = 1;  ///< power of two by which coordinates are multiplied, so that all take part in products
  std::vector<Edge> _edges;
  std::vector<Edge> _edgesOfCells;  ///< in order of the cells
  /// For each cell where its edges begin, in all bits but the lowest two, and whether its centre is inside, in the
  /// lowest; in the next one whether it is on an edge, so that it is of no use.
  std::vector<omUInt32> _cells;
  Strips _columns;
  Strips _rows;
};

}  // namespace ormix
