#include <ORMIXGeometry/Message/ToolsMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/RTree/RTreeAccess.h>
#include <ORMIXGeometry/Tools/RTree/RTreeSearch.h>
#include <ORMIXGeometry/Tools/RTree/TreeDistance.h>
#include <ORMIXMath/Index/BoxPairs.h>

#include <cmath>

namespace ormix::geom {

namespace {

using namespace detail;

Point2dData<omReal64> fromIndexPoint(const IndexPoint<2>& p) { return {p[0], p[1]}; }
Point3dData<omReal64> fromIndexPoint(const IndexPoint<3>& p) { return {p[0], p[1], p[2]}; }

/// The items of an index and their packed tree, all of it multiplied by a power of two.
template <class Item>
class ScaledTree {
 public:
  using Tree = BoxTree<RTreeItem<Item>::s_dimension>;

  ScaledTree(const RTree<Item>& index, omReal64 scale) : _items(RTreeAccess::items(index)), _scale(scale) {
    if (scale == 1) {
      _tree = RTreeAccess::packed(index);
      return;
    }
    auto boxes = boxesOf<Item>(_items, {});
    for (std::size_t i = 0; i < boxes.size(); ++i)
      boxes[i] = index.contains(i) ? at(i).box() : IndexBox<RTreeItem<Item>::s_dimension>();
    _tree = std::make_shared<Tree>(boxes, orderOf<Item>(_items));
  }

  const Tree& tree() const { return *_tree; }
  GeometryOf<Item> at(std::size_t index) const { return geometryOf<Item>(_items[index], _scale); }

 private:
  const std::vector<typename RTreeItem<Item>::Points>& _items;
  omReal64 _scale;
  std::shared_ptr<const Tree> _tree;
};

/// A power of two by which coordinates up to this size are multiplied, so that squares of their differences neither
/// overflow nor vanish: 1 but for extreme ones.
omReal64 scaleFor(omReal64 magnitude) {
  constexpr omReal64 s_smallestMagnitude = 0x1p-400;
  if (magnitude == 0 || (magnitude >= s_smallestMagnitude && magnitude <= s_largestMagnitude)) return 1;
  int exponent = 0;
  std::frexp(magnitude, &exponent);
  return std::ldexp(1.0, -std::clamp(exponent, -1000, 1000));
}

template <class Item>
NearestItemsOf<Item> nearestOf(const RTree<Item>& treeA, const RTree<Item>& treeB, bool isSelf, omReal64 bound,
                               const char* function) {
  if (!(bound >= 0))
    logAndThrow(formatMessage<eToolsMessage>(eToolsMessage::eTM_NegativeDistance, bound), function, __FILE__, __LINE__);
  if (treeA.isEmpty() || treeB.isEmpty())
    logAndThrow(formatMessage<eToolsMessage>(eToolsMessage::eTM_EmptyIndex, "distance"), function, __FILE__, __LINE__);
  const omReal64 scale = scaleFor(std::max(RTreeAccess::magnitude(treeA), RTreeAccess::magnitude(treeB)));
  const ScaledTree<Item> a(treeA, scale);
  const ScaledTree<Item> b = isSelf ? a : ScaledTree<Item>(treeB, scale);
  const auto squareOf = [&](std::size_t indexA, std::size_t indexB, omReal64 squareBound) {
    const GeometryOf<Item> itemA = a.at(indexA);
    const GeometryOf<Item> itemB = b.at(indexB);
    if (isSelf && itemA.isAdjacent(itemB)) return std::numeric_limits<omReal64>::infinity();
    return itemA.squareTo(itemB, squareBound);
  };
  const omReal64 scaledBound = BoxTree<RTreeItem<Item>::s_dimension>::widened(bound * scale);
  const ormix::detail::BoxPairs<RTreeItem<Item>::s_dimension> pairs(a.tree(), b.tree(), isSelf);
  const auto found = ormix::detail::nearestPair(pairs, scaledBound * scaledBound, squareOf);
  NearestItemsOf<Item> nearest{
      std::numeric_limits<omReal64>::infinity(), RTree<Item>::s_noItem, RTree<Item>::s_noItem, {}, {}};
  if (found.itemA == BoxTree<RTreeItem<Item>::s_dimension>::s_none) return nearest;
  const auto pair = geometryOf<Item>(RTreeAccess::items(treeA)[found.itemA])
                        .nearest(geometryOf<Item>(RTreeAccess::items(treeB)[found.itemB]));
  if (!(pair.distance < bound)) return nearest;
  return {pair.distance, found.itemA, found.itemB, fromIndexPoint(pair.onA), fromIndexPoint(pair.onB)};
}

}  // namespace

template <class Item>
NearestItemsOf<Item> nearestPair(const RTree<Item>& treeA, const RTree<Item>& treeB, omReal64 bound) {
  return nearestOf(treeA, treeB, false, bound, __PRETTY_FUNCTION__);
}

template <class Item>
omReal64 distance(const RTree<Item>& treeA, const RTree<Item>& treeB, omReal64 bound) {
  return nearestPair(treeA, treeB, bound).distance;
}

template <class Item>
NearestItemsOf<Item> nearestPair(const RTree<Item>& tree, omReal64 bound) {
  return nearestOf(tree, tree, true, bound, __PRETTY_FUNCTION__);
}

template <class Item>
omReal64 selfDistance(const RTree<Item>& tree, omReal64 bound) {
  return nearestPair(tree, bound).distance;
}

#define ORMIX_GEOMETRY_INSTANTIATE_TREE_DISTANCE(Item)                                                            \
  template ORMIX_GEOMETRY_API NearestItemsOf<Item> nearestPair(const RTree<Item>&, const RTree<Item>&, omReal64); \
  template ORMIX_GEOMETRY_API omReal64 distance(const RTree<Item>&, const RTree<Item>&, omReal64);                \
  template ORMIX_GEOMETRY_API NearestItemsOf<Item> nearestPair(const RTree<Item>&, omReal64);                     \
  template ORMIX_GEOMETRY_API omReal64 selfDistance(const RTree<Item>&, omReal64);
ORMIX_GEOMETRY_RTREE_ITEMS(ORMIX_GEOMETRY_INSTANTIATE_TREE_DISTANCE)

}  // namespace ormix::geom
