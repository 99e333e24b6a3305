#include <ORMIXGeometry/Entity/ReserveMore.h>
#include <ORMIXGeometry/Message/ToolsMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/RTree/ChangingIndex.h>
#include <ORMIXGeometry/Tools/RTree/ItemGeometry.h>
#include <ORMIXGeometry/Tools/RTree/RTree.h>
#include <ORMIXGeometry/Tools/RTree/RTreeAccess.h>
#include <ORMIXGeometry/Tools/RTree/RTreeSearch.h>
#include <ORMIXMath/Index/BoxTree.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>

namespace ormix::geom {

namespace {

using namespace detail;

template <class... Argument>
[[noreturn]] void fail(eToolsMessage::eId id, const char* function, const Argument&... argument) {
  logAndThrow(formatMessage<eToolsMessage>(id, argument...), function, __FILE__, __LINE__);
}

/// The largest size of a coordinate, NaN where one is.
template <class Points>
omReal64 largestOf(const Points& points) {
  omReal64 largest = 0;
  for (const auto& point : points)
    for (const omReal64 coordinate : coordinatesOf(point)) {
      const omReal64 size = std::abs(coordinate);
      if (!(size <= largest) && !std::isnan(largest)) largest = size;
    }
  return largest;
}

/// The largest size of a coordinate of the items; refuses items that are not finite.
template <class Points>
omReal64 magnitudeOfFinite(const std::vector<Points>& items, std::size_t first, const char* function) {
  omReal64 magnitude = 0;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const omReal64 largest = largestOf(items[i]);
    if (!std::isfinite(largest)) fail(eToolsMessage::eTM_ItemNotFinite, function, first + i);
    magnitude = std::max(magnitude, largest);
  }
  return magnitude;
}

template <std::size_t D>
void checkFinite(const SearchPoint<D>& point, const char* what, const char* function) {
  for (const omReal64 coordinate : point.coords)
    if (!std::isfinite(coordinate)) fail(eToolsMessage::eTM_SearchNotFinite, function, what);
}
template <std::size_t D>
IndexBox<D> checkedBox(const SearchBox<D>& box, const char* function) {
  for (const SearchPoint<D>& corner : box.corners)
    for (const omReal64 coordinate : corner.coords)
      if (std::isnan(coordinate)) fail(eToolsMessage::eTM_SearchNotFinite, function, "box");
  return {box.corners[0].coords, box.corners[1].coords};
}
void checkDistance(omReal64 distance, const char* function) {
  if (!(distance >= 0)) fail(eToolsMessage::eTM_NegativeDistance, function, distance);
}

/// What a query finds.
template <class Query>
std::vector<std::size_t> sorted(Query query) {
  constexpr std::size_t s_usual = 16;  // to begin with: to grow from one on costs more than most queries
  std::vector<std::size_t> indices;
  indices.reserve(s_usual);
  query([&indices](std::size_t index) {
    indices.push_back(index);
    return true;
  });
  std::sort(indices.begin(), indices.end());
  return indices;
}

}  // namespace

template <class Item>
RTree<Item>::RTree() = default;
template <class Item>
RTree<Item>::RTree(const RTree& other)
    : RegisteredObject<RTree<Item>, BaseSerializationObject>(other),
      _itemColl(other._itemColl),
      _removedColl(other._removedColl),
      _isRemoved(other._isRemoved),
      _magnitude(other._magnitude),
      _packed(other._packed),
      _changing(other._changing ? std::make_shared<detail::ChangingIndex<s_dimension>>(*other._changing) : nullptr) {}
template <class Item>
RTree<Item>::RTree(RTree&& other) noexcept = default;
template <class Item>
RTree<Item>& RTree<Item>::operator=(const RTree& other) {
  RTree copied(other);
  return *this = std::move(copied);
}
template <class Item>
RTree<Item>& RTree<Item>::operator=(RTree&& other) noexcept = default;
template <class Item>
RTree<Item>::~RTree() = default;

template <class Item>
void RTree<Item>::pack() {
  _magnitude = magnitudeOfFinite(_itemColl, 0, __PRETTY_FUNCTION__);
  _changing.reset();
  _packed = std::make_shared<BoxTree<s_dimension>>(boxesOf<Item>(_itemColl, _isRemoved), orderOf<Item>(_itemColl));
}

template <class Item>
void RTree<Item>::beginChanges() {
  if (_changing) return;
  _changing = std::make_shared<detail::ChangingIndex<s_dimension>>(boxesOf<Item>(_itemColl, _isRemoved));
  _packed.reset();
}

template <class Item>
BoolResult RTree<Item>::validate(const RTree& tree) {
  for (std::size_t i = 0; i < tree._itemColl.size(); ++i)
    if (!std::isfinite(largestOf(tree._itemColl[i])))
      return failure("Key \"_itemColl\": " + formatMessage<eToolsMessage>(eToolsMessage::eTM_ItemNotFinite, i));
  std::vector<bool> isRemoved(tree._itemColl.size());
  for (const omUInt64 index : tree._removedColl) {
    if (index >= tree._itemColl.size())
      return failure("Key \"_removedColl\": " +
                     formatMessage<eToolsMessage>(eToolsMessage::eTM_NoSuchItem, index, tree._itemColl.size()));
    if (isRemoved[index]) return failure("Key \"_removedColl\": item " + std::to_string(index) + " is there twice");
    isRemoved[index] = true;
  }
  return {};
}

template <class Item>
void RTree<Item>::complete(RTree& read) {
  if (!read._removedColl.empty()) read._isRemoved.resize(read._itemColl.size());
  for (const omUInt64 index : read._removedColl) read._isRemoved[index] = true;
  read.pack();
}

template <class Item>
Item RTree<Item>::getItem(std::size_t index) const {
  if (index >= _itemColl.size()) fail(eToolsMessage::eTM_NoSuchItem, __PRETTY_FUNCTION__, index, _itemColl.size());
  if (!contains(index)) fail(eToolsMessage::eTM_ItemRemoved, __PRETTY_FUNCTION__, index);
  return RTreeItem<Item>::fromPoints(_itemColl[index]);
}

template <class Item>
typename RTree<Item>::Envelope RTree<Item>::envelope() const {
  IndexBox<s_dimension> box;
  if (_packed)
    box = _packed->envelope();
  else if (_changing)
    box = _changing->envelope();
  else
    RTreeAccess::search(*this).visitAll(
        [&](std::size_t i) { return box.add(geometryOf<Item>(_itemColl[i]).box()), true; });
  if (box.empty()) fail(eToolsMessage::eTM_EmptyIndex, __PRETTY_FUNCTION__, "envelope");
  using T = typename RTreeItem<Item>::Coordinate;
  Envelope envelope;
  const auto point = [](const IndexPoint<s_dimension>& p) {
    if constexpr (s_dimension == 2)
      return Point2dData<T>(static_cast<T>(p[0]), static_cast<T>(p[1]));
    else
      return Point3dData<T>(static_cast<T>(p[0]), static_cast<T>(p[1]), static_cast<T>(p[2]));
  };
  envelope.setCoords(point(box.low), point(box.high));
  return envelope;
}

// What an R*-tree is after memory has run out in it is not defined: it is dropped then, and made anew at the next
// change.
template <class Item>
std::size_t RTree<Item>::insert(const Item& item) {
  const std::size_t index = _itemColl.size();
  const std::vector<Points> added{RTreeItem<Item>::toPoints(item)};
  const omReal64 magnitude = magnitudeOfFinite(added, index, __PRETTY_FUNCTION__);
  beginChanges();
  reserveMore(_itemColl, 1);
  if (!_isRemoved.empty()) _isRemoved.push_back(false);
  try {
    _changing->insert(geometryOf<Item>(added[0]).box(), index);
  } catch (...) {
    _isRemoved.resize(std::min(_isRemoved.size(), index));
    _changing.reset();
    throw;
  }
  _itemColl.push_back(added[0]);
  _magnitude = std::max(_magnitude, magnitude);
  return index;
}

template <class Item>
bool RTree<Item>::remove(std::size_t index) {
  if (index >= _itemColl.size()) fail(eToolsMessage::eTM_NoSuchItem, __PRETTY_FUNCTION__, index, _itemColl.size());
  if (!contains(index)) return false;
  beginChanges();
  reserveMore(_removedColl, 1);
  _isRemoved.resize(_itemColl.size());
  try {
    _changing->remove(geometryOf<Item>(_itemColl[index]).box(), index);
  } catch (...) {
    _changing.reset();
    throw;
  }
  _isRemoved[index] = true;
  _removedColl.push_back(index);
  return true;
}

template <class Item>
bool RTree<Item>::remove(const Item& item) {
  const Points points = RTreeItem<Item>::toPoints(item);
  const IndexBox<s_dimension> box = geometryOf<Item>(points).box();
  std::size_t lowest = s_noItem;
  const auto compare = [&](std::size_t i) {
    if (_itemColl[i] == points) lowest = std::min(lowest, i);
    return true;
  };
  if (!box.empty())
    RTreeAccess::search(*this).visitBoxes(box, compare);
  else  // not in the tree
    for (std::size_t i = 0; i < _itemColl.size(); ++i)
      if (contains(i)) compare(i);
  return lowest != s_noItem && remove(lowest);
}

template <class Item>
typename RTree<Item>::IndexColl RTree<Item>::query(const Box& box) const {
  const IndexBox<s_dimension> checked = checkedBox(box, __PRETTY_FUNCTION__);
  return sorted([&](auto add) { RTreeAccess::search(*this).visitMeeting(checked, add); });
}

template <class Item>
std::size_t RTree<Item>::count(const Box& box) const {
  std::size_t nb = 0;
  RTreeAccess::search(*this).visitMeeting(checkedBox(box, __PRETTY_FUNCTION__),
                                          [&nb](std::size_t) { return ++nb, true; });
  return nb;
}

template <class Item>
bool RTree<Item>::visitBox(const Box& box, const Visitor& visitor) const {
  return RTreeAccess::search(*this).visitMeeting(checkedBox(box, __PRETTY_FUNCTION__), visitor);
}

template <class Item>
typename RTree<Item>::IndexColl RTree<Item>::queryWithin(const Point& point, omReal64 distance) const {
  return sorted([&](const Visitor& add) { visitWithin(point, distance, add); });
}

template <class Item>
std::size_t RTree<Item>::countWithin(const Point& point, omReal64 distance) const {
  std::size_t nb = 0;
  visitWithin(point, distance, [&nb](std::size_t) { return ++nb, true; });
  return nb;
}

template <class Item>
bool RTree<Item>::visitWithin(const Point& point, omReal64 distance, const Visitor& visitor) const {
  checkFinite(point, "point", __PRETTY_FUNCTION__);
  checkDistance(distance, __PRETTY_FUNCTION__);
  return RTreeAccess::search(*this).visitWithin(point.coords, distance, visitor);
}

template <class Item>
typename RTree<Item>::IndexColl RTree<Item>::queryAlong(const Segment& segment, omReal64 distance) const {
  return sorted([&](const Visitor& add) { visitAlong(segment, distance, add); });
}

template <class Item>
bool RTree<Item>::visitAlong(const Segment& segment, omReal64 distance, const Visitor& visitor) const {
  for (const Point& end : segment.ends) checkFinite(end, "segment", __PRETTY_FUNCTION__);
  checkDistance(distance, __PRETTY_FUNCTION__);
  return RTreeAccess::search(*this).visitAlong(segment.ends[0].coords, segment.ends[1].coords, distance, visitor);
}

template <class Item>
typename RTree<Item>::IndexColl RTree<Item>::queryAlongRay(const Point& origin, const Point& direction,
                                                           omReal64 distance) const {
  checkFinite(origin, "ray", __PRETTY_FUNCTION__);
  checkFinite(direction, "ray", __PRETTY_FUNCTION__);
  checkDistance(distance, __PRETTY_FUNCTION__);
  if (magnitudeOf(direction.coords) == 0) fail(eToolsMessage::eTM_NoDirection, __PRETTY_FUNCTION__);
  if (isEmpty()) return {};
  // The ray ends where it leaves the box of the items for good, seen along one axis after the other.
  omReal64 part = std::numeric_limits<omReal64>::infinity();
  for (std::size_t d = 0; d < s_dimension; ++d) {
    const omReal64 side = std::copysign(_magnitude + distance, direction.coords[d]);
    if (direction.coords[d] != 0) part = std::min(part, (side - origin.coords[d]) / direction.coords[d]);
  }
  if (!(part >= 0)) return {};
  Point end = origin;
  constexpr omReal64 s_largest = std::numeric_limits<omReal64>::max();
  for (std::size_t d = 0; d < s_dimension; ++d)
    if (direction.coords[d] != 0)
      end.coords[d] = std::clamp(origin.coords[d] + part * direction.coords[d], -s_largest, s_largest);
  return queryAlong({origin, end}, distance);
}

template <class Item>
std::vector<typename RTree<Item>::Neighbour> RTree<Item>::neighbours(const Point& point, std::size_t k,
                                                                     omReal64 bound) const {
  checkFinite(point, "point", __PRETTY_FUNCTION__);
  checkDistance(bound, __PRETTY_FUNCTION__);
  if (k == 0) fail(eToolsMessage::eTM_NoNeighbours, __PRETTY_FUNCTION__, k);
  const NearestHeap heap = RTreeAccess::search(*this).nearest(point.coords, k, bound);
  std::vector<Neighbour> found;
  found.reserve(heap.entries().size());
  for (const auto& entry : heap.entries()) {
    const omReal64 distance = geometryOf<Item>(_itemColl[entry.index]).distanceTo(point.coords);
    if (distance <= bound) found.push_back({entry.index, distance});
  }
  std::sort(found.begin(), found.end(), [](const Neighbour& a, const Neighbour& b) {
    return a.distance < b.distance || (a.distance == b.distance && a.index < b.index);
  });
  return found;
}

template <class Item>
typename RTree<Item>::IndexColl RTree<Item>::nearest(const Point& point, std::size_t k, omReal64 bound) const {
  IndexColl indices;
  for (const Neighbour& neighbour : neighbours(point, k, bound)) indices.push_back(neighbour.index);
  return indices;
}

template <class Item>
std::ostream& operator<<(std::ostream& stream, const RTree<Item>& tree) {
  stream << '[';
  const char* separator = "";
  for (std::size_t i = 0; i < tree.getNbIndices(); ++i) {
    if (!tree.contains(i)) continue;
    stream << separator << i << ": " << tree.getItem(i);
    separator = ", ";
  }
  return stream << ']';
}

#define ORMIX_GEOMETRY_INSTANTIATE_PRINT_RTREE(Item) \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const RTree<Item>&);
ORMIX_GEOMETRY_RTREE_ITEMS(ORMIX_GEOMETRY_INSTANTIATE_PRINT_RTREE)

}  // namespace ormix::geom

namespace ormix {
#define ORMIX_GEOMETRY_INSTANTIATE_RTREE(Item)                                       \
  template class VersionedLevel<geom::RTree<geom::Item>, BaseSerializationObject>;   \
  template class RegisteredObject<geom::RTree<geom::Item>, BaseSerializationObject>; \
  template class geom::RTree<geom::Item>;
ORMIX_GEOMETRY_RTREE_ITEMS(ORMIX_GEOMETRY_INSTANTIATE_RTREE)
}  // namespace ormix
