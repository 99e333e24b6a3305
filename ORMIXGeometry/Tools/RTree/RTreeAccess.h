#pragma once

#include <ORMIXGeometry/Tools/RTree/ItemGeometry.h>
#include <ORMIXGeometry/Tools/RTree/RTree.h>
#include <ORMIXMath/Index/BoxTree.h>

#include <memory>
#include <utility>
#include <vector>

/// \file
/// What functions on indexes see of them; not installed.

namespace ormix::geom::detail {

using ormix::detail::BoxTree;

/// The boxes of items, with empty ones in place of those that were removed; those of a part of the coordinates.
template <class Item>
std::vector<IndexBox<RTreeItem<Item>::s_dimension>> boxesOf(const std::vector<typename RTreeItem<Item>::Points>& items,
                                                            const std::vector<bool>& isRemoved) {
  std::vector<IndexBox<RTreeItem<Item>::s_dimension>> boxes(items.size());
  for (std::size_t i = 0; i < items.size(); ++i)
    if (isRemoved.empty() || !isRemoved[i]) boxes[i] = geometryOf<Item>(items[i]).box();
  return boxes;
}

/// Whether most items begin where the one before ends, as the segments of a ring do.
template <class Item>
ormix::detail::eBoxOrder orderOf(const std::vector<typename RTreeItem<Item>::Points>& items) {
  if (RTreeItem<Item>::s_kind != eRTI_Segment) return ormix::detail::eBO_Curve;
  std::size_t nbContinued = 0;
  for (std::size_t i = 1; i < items.size(); ++i)
    if (items[i - 1].back() == items[i].front()) ++nbContinued;
  return 2 * nbContinued > items.size() ? ormix::detail::eBO_Given : ormix::detail::eBO_Curve;
}

template <class Item>
class RTreeSearch;

struct RTreeAccess {
  template <class Item>
  using Tree = BoxTree<RTreeItem<Item>::s_dimension>;

  /// An index of items that are kept already as an index keeps them.
  template <class Item>
  static RTree<Item> fromPoints(std::vector<typename RTreeItem<Item>::Points> items) {
    RTree<Item> tree;
    tree._itemColl = std::move(items);
    tree.pack();
    return tree;
  }

  template <class Item>
  static const std::vector<typename RTreeItem<Item>::Points>& items(const RTree<Item>& tree) {
    return tree._itemColl;
  }
  /// Its queries.
  template <class Item>
  static RTreeSearch<Item> search(const RTree<Item>& tree) {
    return {tree._itemColl, tree._isRemoved, tree._magnitude, tree._packed.get(), tree._changing.get()};
  }
  template <class Item>
  static omReal64 magnitude(const RTree<Item>& tree) {
    return tree._magnitude;
  }
  /// The packed tree, made anew where the index has changed.
  template <class Item>
  static std::shared_ptr<const Tree<Item>> packed(const RTree<Item>& tree) {
    if (tree._packed) return tree._packed;
    return std::make_shared<Tree<Item>>(boxesOf<Item>(tree._itemColl, tree._isRemoved), orderOf<Item>(tree._itemColl));
  }
};

}  // namespace ormix::geom::detail
