#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>

#include <cstddef>
#include <vector>

/// \file
/// A packed tree of boxes over the edges of rings, for nearest edges and for points inside; not installed.

namespace ormix::detail {

/// A directed edge of a ring; of length 0 only where addPoint() made it.
struct RingEdge {
  PlanarPoint start;
  PlanarPoint along;       ///< to its end
  omReal64 inverseSquare;  ///< of its length; 0 of length 0

  /// The point of the edge that is nearest to p, as a part of it in [0, 1].
  omReal64 nearestPart(const PlanarPoint& p) const {
    const omReal64 part = ((p.x - start.x) * along.x + (p.y - start.y) * along.y) * inverseSquare;
    return part < 0 ? 0 : part > 1 ? 1 : part;
  }
  PlanarPoint at(omReal64 part) const { return {start.x + part * along.x, start.y + part * along.y}; }
};

/// The edges of closed rings in their order, of which neighbours lie close together: so each eight after each other get
/// a box, each eight of these boxes one, and so on, without sorting.
class RingEdgeTree {
 public:
  /// The number of boxes and edges that searches have looked at, so that a caller can stop in time.
  using Effort = omUInt64;

  /// An edge and the square of its distance.
  struct Nearest {
    std::size_t edge;
    omReal64 square;
  };

  /// Adds the edge; those of a ring one after the other, before build().
  void add(const PlanarPoint& start, const PlanarPoint& end);
  /// Adds an edge of length 0, for nearest edges only.
  void addPoint(const PlanarPoint& point) { _edges.push_back({point, {0, 0}, 0}); }
  /// Makes the boxes. Linear.
  void build();

  std::size_t size() const { return _edges.size(); }
  const RingEdge& operator[](std::size_t edge) const { return _edges[edge]; }

  /// An edge nearest to the point; there must be one.
  /// \param guess any edge: a near one saves time
  Nearest nearest(const PlanarPoint& p, std::size_t guess, Effort& effort) const;

  /// Whether the point is inside the rings by the even-odd rule. Next to an edge the answer may be either.
  bool isInside(const PlanarPoint& p, Effort& effort) const;

  /// Places x where the edges cross the line at this y, in no order; an even number of them but for rounding.
  void crossings(omReal64 y, std::vector<omReal64>& xColl, Effort& effort) const;

 private:
  struct Box {
    PlanarPoint low;
    PlanarPoint high;
    omReal64 squareTo(const PlanarPoint& p) const;
  };
  struct Node {
    std::size_t level;
    std::size_t index;
    omReal64 square;
  };
  static constexpr std::size_t s_fanOut = 8;

  /// Calls visit(edge) with the edges that pass the height of a point, of those whose boxes are not to its right.
  template <class Visit>
  void visitStraddling(const PlanarPoint& p, Effort& effort, Visit visit) const;
  /// Calls visit(first, last) with the indices of the nodes, or edges, below a node.
  template <class Visit>
  void visitChildren(std::size_t level, std::size_t index, Visit visit) const;

  std::vector<RingEdge> _edges;
  std::vector<std::vector<Box>> _levels;  // of eight edges each, of eight of these each, …; the last has one
};

}  // namespace ormix::detail
