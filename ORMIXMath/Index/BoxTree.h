#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXMath/Index/IndexBox.h>
#include <ORMIXMath/Transform/CoordinateVectors.h>

#include <algorithm>
#include <vector>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// \file
/// A packed tree of boxes, built once; not installed.

namespace ormix::detail {

/// The order in which a tree takes its items.
enum eBoxOrder {
  eBO_Given,  ///< As they are given, for items of which neighbours lie close together, as edges along a ring.
  eBO_Curve   ///< Along a curve through the cells of a grid: Hilbert's in the plane (KamelFaloutsos1993), Morton's in
              ///< space.
};

/// The boxes of the eight children of a node, coordinate by coordinate. Those that are missing are empty.
template <std::size_t D>
struct alignas(64) BoxNode {
  static constexpr std::size_t s_width = 8;
  omReal64 low[D][s_width];
  omReal64 high[D][s_width];

  IndexBox<D> child(std::size_t k) const {
    IndexBox<D> box;
    for (std::size_t d = 0; d < D; ++d) {
      box.low[d] = low[d][k];
      box.high[d] = high[d][k];
    }
    return box;
  }

  /// IndexBox::squareTo() of each child; of those that are missing infinite.
  void squaresTo(const IndexBox<D>& box, omReal64 (&squares)[s_width]) const {
    for (std::size_t k = 0; k < s_width; k += 2) {
      Reals<2> sum{};
      for (std::size_t d = 0; d < D; ++d) {
        const Reals<2> below = pairAt(low[d] + k) - box.high[d];
        const Reals<2> above = box.low[d] - pairAt(high[d] + k);
        const Reals<2> outside = below > above ? below : above;
        const Reals<2> gap = outside > Reals<2>{} ? outside : Reals<2>{};
        sum += gap * gap;
      }
      *reinterpret_cast<StoredVector<omReal64, 2>*>(squares + k) = sum;
    }
  }

  /// Bit k is set where child k meets the box; those of missing children may be.
  unsigned meeting(const IndexBox<D>& box) const {
    unsigned mask = 0;
    for (std::size_t k = 0; k < s_width; k += 2) {
      auto meets = pairAt(low[0] + k) <= box.high[0] && box.low[0] <= pairAt(high[0] + k);
      for (std::size_t d = 1; d < D; ++d)
        meets = meets && pairAt(low[d] + k) <= box.high[d] && box.low[d] <= pairAt(high[d] + k);
      mask |= bitsOf(meets) << k;
    }
    return mask;
  }

  /// Bit k is set where `a[k] <= b[k]`, or `a[k] <= b`.
  /// @{
  static unsigned notGreater(const omReal64 (&a)[s_width], const omReal64 (&b)[s_width]) {
    unsigned mask = 0;
    for (std::size_t k = 0; k < s_width; k += 2) mask |= bitsOf(pairAt(a + k) <= pairAt(b + k)) << k;
    return mask;
  }
  static unsigned notGreater(const omReal64 (&a)[s_width], omReal64 b) {
    unsigned mask = 0;
    for (std::size_t k = 0; k < s_width; k += 2) mask |= bitsOf(pairAt(a + k) <= b) << k;
    return mask;
  }
  /// @}

  // Two lanes are what every processor has; compilers make branches of the plain loops, which are two to three times
  // slower.
  static Reals<2> pairAt(const omReal64* numbers) {
    return *reinterpret_cast<const StoredVector<omReal64, 2>*>(numbers);
  }
  template <class Lanes>
  static unsigned bitsOf(const Lanes& lanes) {
#if defined(__SSE2__)
    return static_cast<unsigned>(_mm_movemask_pd(reinterpret_cast<const __m128d&>(lanes)));
#else
    return static_cast<unsigned>(lanes[0] & 1) | static_cast<unsigned>(lanes[1] & 2);
#endif
  }
};

/// Each node is the box of eight nodes that follow each other, the lowest ones of eight items. Built once, in
/// O(n log n) along the curve and O(n) in the order given, and then constant: queries may run in several threads.
///
/// Items are known by their place in the vector that the tree was built from. Their boxes may be empty: such are never
/// found. NaN is refused by callers. Squares of distances should not overflow: coordinates up to 2^500 in size are
/// fine, for larger ones queries stay right, but nearest() and pairs find nothing farther apart than 2^511. No query
/// allocates memory, nor is one recursive.
template <std::size_t D>
class BoxTree {
 public:
  static constexpr std::size_t s_width = BoxNode<D>::s_width;
  /// Levels of a tree of the most items, 2^32 − 1.
  static constexpr std::size_t s_maxNbLevels = 11;
  /// In place of an item where there is none.
  static constexpr std::size_t s_none = static_cast<std::size_t>(-1);

  /// An item and the square of its distance.
  struct Nearest {
    std::size_t item;  ///< or s_none
    omReal64 square;
  };

  BoxTree() = default;
  /// \throw std::length_error there are 2^32 boxes or more
  ORMIX_MATH_API explicit BoxTree(const std::vector<IndexBox<D>>& boxes, eBoxOrder order = eBO_Curve);

  std::size_t size() const { return _size; }
  /// Of all items; empty where there are none.
  const IndexBox<D>& envelope() const { return _envelope; }

  /// Calls `visit(item)` for each item whose box meets this one, until it answers false.
  /// \return false if a visit did
  template <class Visit>
  bool visitIntersecting(const IndexBox<D>& box, Visit&& visit) const {
    return visitChildren([&box](const BoxNode<D>& node) { return node.meeting(box); }, visit);
  }

  /// The same for each item whose box is at most this far from a point or a box, and perhaps for some that are farther
  /// by a few units in the last place. A negative distance finds nothing.
  template <class Place, class Visit>
  bool visitWithin(const Place& place, omReal64 distance, Visit&& visit) const {
    if (!(distance >= 0)) return true;
    const IndexBox<D> box = toIndexBox(place);
    const omReal64 square = widened(distance * distance);
    return visitChildren(
        [&](const BoxNode<D>& node) {
          omReal64 squares[s_width];
          node.squaresTo(box, squares);
          return BoxNode<D>::notGreater(squares, square);
        },
        visit);
  }

  /// The same for each item whose box, widened by a margin on each side, has a point origin + t direction,
  /// 0 <= t <= maxParam, and perhaps for some that are missed by a few units in the last place. maxParam may be
  /// infinite. In no order.
  template <class Visit>
  bool visitAlong(const IndexPoint<D>& origin, const IndexPoint<D>& direction, omReal64 maxParam, Visit&& visit,
                  omReal64 margin = 0) const {
    IndexPoint<D> inverse;
    for (std::size_t d = 0; d < D; ++d) inverse[d] = 1 / direction[d];
    return visitChildren(
        [&](const BoxNode<D>& node) {
          omReal64 enter[s_width];
          omReal64 leave[s_width];
          for (std::size_t k = 0; k < s_width; ++k) {
            enter[k] = 0;
            leave[k] = maxParam;
          }
          for (std::size_t d = 0; d < D; ++d) clipAlong(node, d, origin[d], inverse[d], margin, enter, leave);
          return BoxNode<D>::notGreater(enter, leave);
        },
        visit);
  }

  /// Calls `bound = visit(item, square)` for items whose boxes are strictly nearer to a point or a box than the bound,
  /// a square of a distance, in an order that lowers it soon: of the children of a node the nearest comes first. It
  /// begins as `squareBound`, which may be infinite, and ends the search at 0; `square` is that of the box.
  template <class Place, class Visit>
  void visitNearest(const Place& place, omReal64 squareBound, Visit&& visit) const;

  /// An item with the least `squareOfItem(item)` below `squareBound`. The function answers the square of an item's
  /// distance to the point or box, at least that of its box, or infinity if the item does not count.
  template <class Place, class Square>
  Nearest nearest(const Place& place, omReal64 squareBound, Square&& squareOfItem) const {
    Nearest found{s_none, squareBound};
    visitNearest(place, squareBound, [&](std::size_t item, omReal64) {
      const omReal64 square = squareOfItem(item);
      if (square < found.square) found = {item, square};
      return found.square;
    });
    return found;
  }

  /// \name For walks over the nodes
  /// Level 0 has the nodes of eight items each, the last level one node. Node i has the children 8 i to 8 i + 7 below
  /// it.
  /// @{
  std::size_t nbLevels() const { return _levelStarts.size(); }
  const BoxNode<D>& node(std::size_t level, std::size_t index) const { return _nodes[_levelStarts[level] + index]; }
  /// The number of children of a node.
  std::size_t nbChildren(std::size_t level, std::size_t index) const {
    return std::min(s_width, nbBelow(level) - s_width * index);
  }
  /// The item at a place in the order of the tree.
  std::size_t itemAt(std::size_t place) const { return _items.empty() ? place : _items[place]; }
  /// @}

  /// A square of a distance, rounded up by more than the error of IndexBox::squareTo().
  static omReal64 widened(omReal64 square) { return square * (1 + 8 * std::numeric_limits<omReal64>::epsilon()); }

 private:
  struct Waiting {
    omUInt32 level;
    omUInt32 index;
  };

  std::size_t nbBelow(std::size_t level) const {
    return level == 0 ? _size : _levelStarts[level] - _levelStarts[level - 1];
  }

  /// Clips the part of a line inside each child by the sides across one axis. Rounding outward by Ize2013.
  static void clipAlong(const BoxNode<D>& node, std::size_t d, omReal64 origin, omReal64 inverse, omReal64 margin,
                        omReal64 (&enter)[s_width], omReal64 (&leave)[s_width]) {
    const bool isUpward = inverse > 0;
    const auto& nearSides = isUpward ? node.low[d] : node.high[d];
    const auto& farSides = isUpward ? node.high[d] : node.low[d];
    constexpr omReal64 s_outward = 1 + 4 * std::numeric_limits<omReal64>::epsilon();
    if (!(inverse - inverse == 0)) {  // along the sides
      for (std::size_t k = 0; k < s_width; ++k)
        if (!(node.low[d][k] - margin <= origin && origin <= node.high[d][k] + margin)) leave[k] = -1;
      return;
    }
    const omReal64 outward = isUpward ? margin : -margin;
    for (std::size_t k = 0; k < s_width; ++k) {
      const omReal64 in = (nearSides[k] - outward - origin) * inverse;
      const omReal64 out = (farSides[k] + outward - origin) * inverse * s_outward;
      enter[k] = in > enter[k] ? in : enter[k];
      leave[k] = out < leave[k] ? out : leave[k];
    }
  }

  static std::size_t lowestBit(unsigned mask) { return static_cast<std::size_t>(__builtin_ctz(mask)); }
  /// The child of the least square; compared pair by pair, as there is nothing to guess then.
  static std::size_t leastOf(const omReal64 (&squares)[s_width]) {
    std::size_t least[s_width / 2];
    for (std::size_t k = 0; k < s_width / 2; ++k) least[k] = 2 * k + (squares[2 * k + 1] < squares[2 * k] ? 1 : 0);
    for (std::size_t nb = s_width / 4; nb > 0; nb /= 2)
      for (std::size_t k = 0; k < nb; ++k)
        least[k] = squares[least[2 * k + 1]] < squares[least[2 * k]] ? least[2 * k + 1] : least[2 * k];
    return least[0];
  }
  /// The bits of the children that are not missing.
  unsigned present(std::size_t level, std::size_t index) const { return (1u << nbChildren(level, index)) - 1; }
  static void prefetch(const BoxNode<D>& node) {
    constexpr std::size_t s_line = 64;
    for (std::size_t at = 0; at < sizeof node; at += s_line)
      __builtin_prefetch(reinterpret_cast<const char*>(&node) + at);
  }

  template <class Choose, class Visit>
  bool visitChildren(Choose choose, Visit& visit) const {
    if (_size == 0) return true;
    Waiting waiting[s_maxNbLevels * s_width];
    std::size_t nbWaiting = 0;
    waiting[nbWaiting++] = {static_cast<omUInt32>(nbLevels() - 1), 0};
    while (nbWaiting > 0) {
      const Waiting at = waiting[--nbWaiting];
      const std::size_t first = s_width * at.index;
      unsigned mask = choose(node(at.level, at.index)) & present(at.level, at.index);
      if (at.level == 0) {
        for (; mask != 0; mask &= mask - 1)
          if (!visit(itemAt(first + lowestBit(mask)))) return false;
        continue;
      }
      for (; mask != 0; mask &= mask - 1) {
        const std::size_t child = first + lowestBit(mask);
        prefetch(node(at.level - 1, child));
        waiting[nbWaiting++] = {at.level - 1, static_cast<omUInt32>(child)};
      }
    }
    return true;
  }

  std::size_t _size = 0;
  IndexBox<D> _envelope;
  std::vector<BoxNode<D>> _nodes;         // level by level, from the lowest
  std::vector<std::size_t> _levelStarts;  // of each level in _nodes
  std::vector<omUInt32> _items;           // in the order of the tree; empty in the order given
};

template <std::size_t D>
template <class Place, class Visit>
void BoxTree<D>::visitNearest(const Place& place, omReal64 squareBound, Visit&& visit) const {
  if (_size == 0 || !(squareBound > 0)) return;
  const IndexBox<D> box = toIndexBox(place);
  // One open node a level; the squares of its children, infinite of those that have been looked at.
  struct OpenNode {
    omReal64 squares[s_width];
    std::size_t firstChild;
  };
  OpenNode open[s_maxNbLevels];
  const auto enter = [&](std::size_t level, std::size_t index) {
    node(level, index).squaresTo(box, open[level].squares);
    open[level].firstChild = s_width * index;
    if (level == 0) return;
    for (unsigned mask = BoxNode<D>::notGreater(open[level].squares, squareBound) & present(level, index); mask != 0;
         mask &= mask - 1)
      prefetch(node(level - 1, s_width * index + lowestBit(mask)));
  };
  std::size_t level = nbLevels() - 1;
  enter(level, 0);
  while (level < nbLevels()) {
    OpenNode& at = open[level];
    const std::size_t k = leastOf(at.squares);
    const omReal64 square = at.squares[k];
    if (!(square < squareBound)) {
      ++level;
      continue;
    }
    at.squares[k] = std::numeric_limits<omReal64>::infinity();
    if (level == 0)
      squareBound = visit(itemAt(at.firstChild + k), square);
    else
      enter(--level, at.firstChild + k);
  }
}

}  // namespace ormix::detail
