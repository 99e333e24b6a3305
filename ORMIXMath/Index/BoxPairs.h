#pragma once

#include <ORMIXMath/Index/BoxTree.h>

#include <algorithm>
#include <type_traits>
#include <vector>

/// \file
/// Pairs of items of two trees of boxes, or of one, that are near each other; not installed.

namespace ormix::detail {

/// The items of a pair and the square of their distance.
struct NearestItems {
  std::size_t itemA;  ///< or BoxTree::s_none
  std::size_t itemB;  ///< or BoxTree::s_none
  omReal64 square;
};

/// A node of each of two trees and the square of the distance of their boxes.
struct NodePair {
  omReal64 square;
  omUInt32 levelA;
  omUInt32 levelB;
  omUInt32 indexA;
  omUInt32 indexB;

  /// Farther, or as far and higher up: so that of boxes that meet the lowest come first.
  friend bool operator<(const NodePair& a, const NodePair& b) {
    return a.square != b.square ? a.square > b.square : a.levelA + a.levelB > b.levelA + b.levelB;
  }
};

/// The two trees, or twice the same, of a walk over pairs of nodes.
template <std::size_t D>
class BoxPairs {
 public:
  static constexpr std::size_t s_width = BoxTree<D>::s_width;
  /// Pairs that wait in a walk that goes down first: a level in each step, and all pairs of children.
  static constexpr std::size_t s_mostWaiting = BoxTree<D>::s_maxNbLevels * s_width * s_width;

  /// One tree stands for the pairs of its own items, each once.
  BoxPairs(const BoxTree<D>& treeA, const BoxTree<D>& treeB) : BoxPairs(treeA, treeB, &treeA == &treeB) {}
  /// The same, where it is said whether the items of both are the same: two indexes may share a tree.
  BoxPairs(const BoxTree<D>& treeA, const BoxTree<D>& treeB, bool isSelf) : _a(treeA), _b(treeB), _isSelf(isSelf) {}

  bool isEmpty() const { return _a.size() == 0 || _b.size() == 0; }
  /// The roots; there must be some.
  NodePair roots() const {
    return {_a.envelope().squareTo(_b.envelope()), static_cast<omUInt32>(_a.nbLevels() - 1),
            static_cast<omUInt32>(_b.nbLevels() - 1), 0, 0};
  }
  /// Calls `onItems(itemA, itemB, square)` or `onNodes(pair)` with the pairs below one; a false of onItems ends it.
  template <class OnItems, class OnNodes>
  bool expand(const NodePair& at, OnItems&& onItems, OnNodes&& onNodes) const {
    omReal64 squares[s_width];
    if (at.levelA != at.levelB) {
      const bool isAHigher = at.levelA > at.levelB;
      const BoxTree<D>& tree = isAHigher ? _a : _b;
      const omUInt32 level = isAHigher ? at.levelA : at.levelB;
      const omUInt32 index = isAHigher ? at.indexA : at.indexB;
      tree.node(level, index)
          .squaresTo(isAHigher ? boxOf(_b, at.levelB, at.indexB) : boxOf(_a, at.levelA, at.indexA), squares);
      for (std::size_t k = 0; k < tree.nbChildren(level, index); ++k) {
        const auto child = static_cast<omUInt32>(s_width * index + k);
        onNodes(isAHigher ? NodePair{squares[k], level - 1, at.levelB, child, at.indexB}
                          : NodePair{squares[k], at.levelA, level - 1, at.indexA, child});
      }
      return true;
    }
    const BoxNode<D>& nodeA = _a.node(at.levelA, at.indexA);
    const BoxNode<D>& nodeB = _b.node(at.levelB, at.indexB);
    const std::size_t nbA = _a.nbChildren(at.levelA, at.indexA);
    const std::size_t nbB = _b.nbChildren(at.levelB, at.indexB);
    const bool isOneNode = _isSelf && at.indexA == at.indexB;
    for (std::size_t i = 0; i < nbA; ++i) {
      nodeB.squaresTo(nodeA.child(i), squares);
      const std::size_t a = s_width * at.indexA + i;
      for (std::size_t k = isOneNode ? i + (at.levelA == 0 ? 1 : 0) : 0; k < nbB; ++k) {
        const std::size_t b = s_width * at.indexB + k;
        if (at.levelA > 0)
          onNodes(
              NodePair{squares[k], at.levelA - 1, at.levelB - 1, static_cast<omUInt32>(a), static_cast<omUInt32>(b)});
        else if (!onItems(_a.itemAt(a), _b.itemAt(b), squares[k]))
          return false;
      }
    }
    return true;
  }

 private:
  static IndexBox<D> boxOf(const BoxTree<D>& tree, std::size_t level, std::size_t index) {
    IndexBox<D> box;
    for (std::size_t k = 0; k < tree.nbChildren(level, index); ++k) box.add(tree.node(level, index).child(k));
    return box;
  }

  const BoxTree<D>& _a;
  const BoxTree<D>& _b;
  bool _isSelf;
};

/// A pair of items, one of each tree, with the least `squareOfPair(itemA, itemB)` below `squareBound`, which may be
/// infinite. The function answers the square of the distance of the items, at least that of their boxes, or infinity
/// for items that do not count; 0 ends the search. It may take a third argument, the least square until now, and answer
/// anything larger for what is not below it. Nearest nodes first, both trees at once: the time is that of the pairs of
/// boxes which are nearer to each other than the answer, and the memory that of the pairs of nodes that wait.
template <std::size_t D, class Square>
NearestItems nearestPair(const BoxPairs<D>& pairs, omReal64 squareBound, Square&& squareOfPair) {
  NearestItems found{BoxTree<D>::s_none, BoxTree<D>::s_none, squareBound};
  if (pairs.isEmpty()) return found;
  const auto onItems = [&](std::size_t itemA, std::size_t itemB, omReal64 boxSquare) {
    if (!(boxSquare < found.square)) return true;
    omReal64 square = 0;
    if constexpr (std::is_invocable_v<Square&, std::size_t, std::size_t, omReal64>)
      square = squareOfPair(itemA, itemB, found.square);
    else
      square = squareOfPair(itemA, itemB);
    if (square < found.square) found = {itemA, itemB, square};
    return found.square > 0;
  };
  std::vector<NodePair> waiting{pairs.roots()};
  const auto onNodes = [&](const NodePair& below) {
    if (!(below.square < found.square)) return;
    waiting.push_back(below);
    std::push_heap(waiting.begin(), waiting.end());
  };
  while (!waiting.empty() && waiting.front().square < found.square) {
    const NodePair at = waiting.front();
    std::pop_heap(waiting.begin(), waiting.end());
    waiting.pop_back();
    pairs.expand(at, onItems, onNodes);
  }
  return found;
}

/// Of two trees. The same tree twice stands for the pairs of different items of this tree, each once.
template <std::size_t D, class Square>
NearestItems nearestPair(const BoxTree<D>& treeA, const BoxTree<D>& treeB, omReal64 squareBound,
                         Square&& squareOfPair) {
  return nearestPair(BoxPairs<D>(treeA, treeB), squareBound, squareOfPair);
}

/// Of one tree: the nearest pair of two of its items.
template <std::size_t D, class Square>
NearestItems nearestPair(const BoxTree<D>& tree, omReal64 squareBound, Square&& squareOfPair) {
  return nearestPair(tree, tree, squareBound, squareOfPair);
}

/// Calls `visit(itemA, itemB)` for all pairs of items whose boxes are at most this far apart, and perhaps for some that
/// are farther by a few units in the last place, until it answers false. In no order; without allocation. The same tree
/// twice stands for the pairs of different items of this tree, each once, either item first.
/// \return false if a visit did
template <std::size_t D, class Visit>
bool visitPairs(const BoxTree<D>& treeA, const BoxTree<D>& treeB, omReal64 distance, Visit&& visit) {
  const BoxPairs<D> pairs(treeA, treeB);
  if (pairs.isEmpty() || !(distance >= 0)) return true;
  const omReal64 bound = BoxTree<D>::widened(distance * distance);
  NodePair waiting[BoxPairs<D>::s_mostWaiting];
  std::size_t nbWaiting = 0;
  waiting[nbWaiting++] = pairs.roots();
  while (nbWaiting > 0) {
    const NodePair at = waiting[--nbWaiting];
    const bool goesOn = pairs.expand(
        at,
        [&](std::size_t itemA, std::size_t itemB, omReal64 square) {
          return !(square <= bound) || visit(itemA, itemB);
        },
        [&](const NodePair& below) {
          if (below.square <= bound) waiting[nbWaiting++] = below;
        });
    if (!goesOn) return false;
  }
  return true;
}

/// Of one tree: all pairs of two of its items.
template <std::size_t D, class Visit>
bool visitPairs(const BoxTree<D>& tree, omReal64 distance, Visit&& visit) {
  return visitPairs(tree, tree, distance, visit);
}

}  // namespace ormix::detail
