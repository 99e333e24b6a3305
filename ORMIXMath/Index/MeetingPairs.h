#pragma once

#include <ORMIXMath/Index/BoxTree.h>

/// \file
/// Pairs of items of one tree of boxes whose boxes meet; not installed.

namespace ormix::detail {

/// Calls `visit(itemA, itemB)` for all pairs of items of a tree whose boxes meet, each once, either item first, until
/// it answers false. In no order; without allocation. The same as visitPairs() at the distance 0, but decided by
/// comparisons only, eight at once, which is twice as fast.
/// \return false if a visit did
template <std::size_t D, class Visit>
bool visitMeetingPairs(const BoxTree<D>& tree, Visit&& visit) {
  constexpr std::size_t s_width = BoxTree<D>::s_width;
  struct Waiting {
    omUInt32 level, indexA, indexB;
  };
  if (tree.size() == 0) return true;
  Waiting waiting[BoxTree<D>::s_maxNbLevels * s_width * s_width];
  std::size_t nbWaiting = 0;
  waiting[nbWaiting++] = {static_cast<omUInt32>(tree.nbLevels() - 1), 0, 0};
  while (nbWaiting > 0) {
    const Waiting at = waiting[--nbWaiting];
    const BoxNode<D>& nodeA = tree.node(at.level, at.indexA);
    const BoxNode<D>& nodeB = tree.node(at.level, at.indexB);
    const std::size_t nbA = tree.nbChildren(at.level, at.indexA);
    const unsigned present = (1u << tree.nbChildren(at.level, at.indexB)) - 1;
    const bool isOneNode = at.indexA == at.indexB;
    for (std::size_t k = 0; k < nbA; ++k) {
      unsigned mask = nodeB.meeting(nodeA.child(k)) & present;
      // Of the pairs within a node each once, and an item not with itself.
      if (isOneNode) mask &= ~0u << (at.level == 0 ? k + 1 : k);
      for (; mask != 0; mask &= mask - 1) {
        const std::size_t a = s_width * at.indexA + k;
        const std::size_t b = s_width * at.indexB + static_cast<std::size_t>(__builtin_ctz(mask));
        if (at.level > 0)
          waiting[nbWaiting++] = {at.level - 1, static_cast<omUInt32>(a), static_cast<omUInt32>(b)};
        else if (!visit(tree.itemAt(a), tree.itemAt(b)))
          return false;
      }
    }
  }
  return true;
}

}  // namespace ormix::detail
