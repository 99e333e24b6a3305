#pragma once

#include <ORMIXMath/Index/BoxTree.h>

#include <array>
#include <utility>
#include <vector>

/// \file
/// A tree of boxes that knows where what is in them faces; not installed.

namespace ormix::detail {

/// For each of some sectors those with a direction that opposes one of it, a bit each.
template <std::size_t nbSectors, class CanOppose>
constexpr std::array<omUInt64, nbSectors> opposingTable(CanOppose canOppose) {
  std::array<omUInt64, nbSectors> table{};
  for (std::size_t sector = 0; sector < nbSectors; ++sector)
    for (std::size_t other = 0; other < nbSectors; ++other)
      if (canOppose(static_cast<int>(sector), static_cast<int>(other))) table[sector] |= omUInt64{1} << other;
  return table;
}

/// A tree of boxes in which each node also knows into which of up to 64 sectors the directions of its items fall. So
/// the back of a region, which is near but faces elsewhere, is passed over as a whole.
template <std::size_t D>
class FacingTree {
 public:
  /// \param sectorOf of an item, the number of the sector of its direction; its box is `boxOf(item)`
  template <class Item, class SectorOf>
  FacingTree(const std::vector<Item>& items, SectorOf sectorOf, eBoxOrder order) : _tree(boxesOf(items), order) {
    std::vector<omUInt64> level;
    level.reserve(items.size());
    for (std::size_t place = 0; place < items.size(); ++place)
      level.push_back(omUInt64{1} << sectorOf(items[_tree.itemAt(place)]));
    while (_sectors.size() < _tree.nbLevels()) {
      std::vector<omUInt64> above((level.size() + s_width - 1) / s_width, 0);
      for (std::size_t i = 0; i < level.size(); ++i) above[i / s_width] |= level[i];
      _sectors.push_back(std::exchange(level, std::move(above)));
    }
  }

  /// Calls `bound = visit(item, bound)` for the items in some sectors whose boxes are at most as far from a box as the
  /// bound, a square of a distance, and perhaps for some that are farther by a few units in the last place; nearer ones
  /// mostly first. Ends when the bound is negative.
  /// \param sectors one bit each
  template <class Visit>
  void visit(const IndexBox<D>& box, omUInt64 sectors, omReal64 squareBound, Visit&& visit) const {
    if (_tree.size() == 0) return;
    Waiting waiting[BoxTree<D>::s_maxNbLevels * s_width];
    std::size_t nbWaiting = 0;
    waiting[nbWaiting++] = {static_cast<omUInt32>(_tree.nbLevels() - 1), 0, 0};
    while (nbWaiting > 0) {
      const Waiting at = waiting[--nbWaiting];
      if (!(at.square <= BoxTree<D>::widened(squareBound))) continue;
      const std::size_t first = s_width * at.index;
      const std::size_t nb = _tree.nbChildren(at.level, at.index);
      const omUInt64* const sectorsOf = _sectors[at.level].data() + first;
      omReal64 squares[s_width];
      _tree.node(at.level, at.index).squaresTo(box, squares);
      const std::size_t start = nbWaiting;
      for (std::size_t k = 0; k < nb; ++k) {
        if (!(squares[k] <= BoxTree<D>::widened(squareBound)) || (sectorsOf[k] & sectors) == 0) continue;
        if (at.level == 0) {
          squareBound = visit(_tree.itemAt(first + k), squareBound);
          if (squareBound < 0) return;
          continue;
        }
        // Nearest last, as it is taken first.
        std::size_t to = nbWaiting++;
        for (; to > start && waiting[to - 1].square < squares[k]; --to) waiting[to] = waiting[to - 1];
        waiting[to] = {at.level - 1, static_cast<omUInt32>(first + k), squares[k]};
      }
    }
  }

 private:
  static constexpr std::size_t s_width = BoxTree<D>::s_width;

  template <class Item>
  static std::vector<IndexBox<D>> boxesOf(const std::vector<Item>& items) {
    std::vector<IndexBox<D>> boxes;
    boxes.reserve(items.size());
    for (const Item& item : items) boxes.push_back(boxOf(item));
    return boxes;
  }

  struct Waiting {
    omUInt32 level;
    omUInt32 index;
    omReal64 square;
  };

  BoxTree<D> _tree;
  std::vector<std::vector<omUInt64>> _sectors;  // of the items in the order of the tree, and of the nodes of each level
};

}  // namespace ormix::detail
