#pragma once

#include <ORMIXGeometry/Tools/RTree/RTreeClasses.h>
#include <ORMIXGeometry/Tools/RTree/RTreeItem.h>
#include <ORMIXGeometry/Tools/RTree/SearchPlace.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

#include <functional>
#include <iosfwd>
#include <iterator>
#include <limits>
#include <memory>
#include <type_traits>
#include <vector>

namespace ormix::detail {
template <std::size_t D>
class BoxTree;
}  // namespace ormix::detail

namespace ormix::geom {

namespace detail {
template <std::size_t D>
class ChangingIndex;
struct RTreeAccess;
}  // namespace detail

/// An index of many items: which of them meet a box, lie near a point, along a segment or next to each other.
///
/// An item is its set of points: a segment and a triangle are not their boxes. Each has an index, that of its place in
/// the range from which the tree was made, or the one that insert() answered; it stays the item's own, also when others
/// are removed, and is not given to another. Results are such indices: ascending where nothing else is said.
///
/// Coordinates are finite, NaN and infinities are refused. A box that is inverted on an axis is empty: it keeps an
/// index and is never found. What meets a box, or a segment at the distance 0, is decided exactly but for spatial boxes
/// along a segment; distances are right to a few units in the last place.
///
/// A tree that is made from a range is packed: its nodes lie in the order of a curve through the plane or space, or in
/// that of the items where most of these continue the one before, as the segments of a ring. The first insert() or
/// remove() changes over to a tree that can change (Boost.Geometry's R*-tree), in O(n log n). Copies share what is
/// packed. Queries may run in several threads at once while none changes the tree.
///
/// The coordinates of removed items are kept, 8 to 72 bytes each, so that indices stay; a tree that changes without end
/// is made anew from its items now and then.
///
/// Queries take O(log n) and the time of what they find, as long as boxes overlap little, and O(n) at most; where
/// coordinates exceed 2^500 in size, those that compute distances take O(n).
/// \tparam Item Point2d, Segment2d, BoundingBox2d, Point3d, Segment3d, BoundingBox3d or LightTriangle3d, of omReal32 or
///         omReal64
template <class Item>
class ORMIX_GEOMETRY_API RTree : public RegisteredObject<RTree<Item>, BaseSerializationObject> {
 public:
  static constexpr const char* s_className = "ormix::geom::RTree";                  ///< registered name
  static constexpr std::size_t s_dimension = RTreeItem<Item>::s_dimension;          ///< 2 in the plane, 3 in space
  static constexpr std::size_t s_noItem = std::numeric_limits<std::size_t>::max();  ///< in place of an index: none

  using ItemType = Item;                                   ///< class of the items
  using Point = SearchPoint<s_dimension>;                  ///< a point to search at
  using Box = SearchBox<s_dimension>;                      ///< a box to search in
  using Segment = SearchSegment<s_dimension>;              ///< a segment to search along
  using IndexColl = std::vector<std::size_t>;              ///< indices of items
  using Visitor = std::function<bool(std::size_t index)>;  ///< is told an index; false ends the query
  /// The smallest box around items.
  using Envelope = std::conditional_t<s_dimension == 2, BoundingBox2d<typename RTreeItem<Item>::Coordinate>,
                                      BoundingBox3d<typename RTreeItem<Item>::Coordinate>>;

  /// An item and its distance.
  struct Neighbour {
    std::size_t index;  ///< of the item
    omReal64 distance;  ///< at least 0
  };

  /// No items.
  RTree();
  /// The items of a range, with indices from 0 on. O(n log n), packed.
  /// \throw ORMIXGeometryException, logged first, when a coordinate is not finite
  /// \throw std::length_error when there are 2^32 items or more
  /// @{
  template <class Iterator, class = typename std::iterator_traits<Iterator>::iterator_category>
  RTree(Iterator first, Iterator last) {
    using Category = typename std::iterator_traits<Iterator>::iterator_category;
    if constexpr (std::is_base_of_v<std::forward_iterator_tag, Category>)
      _itemColl.reserve(static_cast<std::size_t>(std::distance(first, last)));
    for (; first != last; ++first) _itemColl.push_back(RTreeItem<Item>::toPoints(*first));
    pack();
  }
  explicit RTree(const std::vector<Item>& items) : RTree(items.begin(), items.end()) {}
  /// @}
  RTree(const RTree& other);
  RTree(RTree&& other) noexcept;
  /// Changes everything or, when memory runs out, nothing.
  RTree& operator=(const RTree& other);
  RTree& operator=(RTree&& other) noexcept;
  ~RTree() override;

  /// The number of items that are there.
  std::size_t size() const { return _itemColl.size() - _removedColl.size(); }
  bool isEmpty() const { return size() == 0; }  ///< whether there are none
  /// The number of indices that were given out: those of all items are below it.
  std::size_t getNbIndices() const { return _itemColl.size(); }
  /// Whether there is an item of this index.
  bool contains(std::size_t index) const {
    return index < _itemColl.size() && (_isRemoved.empty() || !_isRemoved[index]);
  }
  /// The item of an index.
  /// \throw ORMIXGeometryException, logged first, when there is none
  Item getItem(std::size_t index) const;
  /// The smallest box around all items.
  /// \throw ORMIXGeometryException, logged first, when there are none, or empty boxes only
  Envelope envelope() const;

  /// Adds an item. O(log n), but see the class for the first change.
  /// \return its index, getNbIndices() before
  /// \throw ORMIXGeometryException, logged first, when a coordinate is not finite; nothing has changed then
  std::size_t insert(const Item& item);
  /// Removes the item of an index. O(log n), but see the class for the first change.
  /// \return false when it has been removed already
  /// \throw ORMIXGeometryException, logged first, when the index was never given out
  bool remove(std::size_t index);
  /// Removes the item of the lowest index of those that have the same points in the same order.
  /// \return false when there is none
  bool remove(const Item& item);

  /// The items that meet a box, and their number.
  /// \throw ORMIXGeometryException, logged first, when a bound is NaN
  /// @{
  IndexColl query(const Box& box) const;
  std::size_t count(const Box& box) const;
  /// @}
  /// Tells the visitor the same in no order, until it answers false. It may also answer nothing.
  /// \return false if the visitor did
  template <class V>
  bool query(const Box& box, V&& visitor) const {
    return visitBox(box, toVisitor(visitor));
  }

  /// The items that are at most this far from a point, and their number.
  /// \throw ORMIXGeometryException, logged first, when a coordinate is not finite or the distance negative or NaN
  /// @{
  IndexColl queryWithin(const Point& point, omReal64 distance) const;
  std::size_t countWithin(const Point& point, omReal64 distance) const;
  /// @}
  /// Tells the visitor the same in no order, as query() does.
  template <class V>
  bool queryWithin(const Point& point, omReal64 distance, V&& visitor) const {
    return visitWithin(point, distance, toVisitor(visitor));
  }

  /// The items that are at most this far from a segment; at the distance 0 those that it meets.
  /// \throw ORMIXGeometryException as queryWithin()
  IndexColl queryAlong(const Segment& segment, omReal64 distance = 0) const;
  /// Tells the visitor the same in no order, as query() does.
  template <class V>
  bool queryAlong(const Segment& segment, omReal64 distance, V&& visitor) const {
    return visitAlong(segment, distance, toVisitor(visitor));
  }
  /// The same along the ray from a point in a direction, of any length, without end: up to the rounding of the point
  /// where the ray leaves the envelope.
  /// \throw ORMIXGeometryException, logged first, as queryWithin(), and when the direction is the zero vector
  IndexColl queryAlongRay(const Point& origin, const Point& direction, omReal64 distance = 0) const;

  /// The k items that are nearest to a point, those at most `bound` away from it: by distance, and of equal ones those
  /// of lower indices first; where more are equally far than there are places, any of them. Fewer than k where there
  /// are no more. Distances that differ by less than 1e-150 may count as equal.
  /// \throw ORMIXGeometryException, logged first, when k is 0, a coordinate not finite or the bound negative or NaN
  /// @{
  IndexColl nearest(const Point& point, std::size_t k = 1,
                    omReal64 bound = std::numeric_limits<omReal64>::infinity()) const;
  std::vector<Neighbour> neighbours(const Point& point, std::size_t k,
                                    omReal64 bound = std::numeric_limits<omReal64>::infinity()) const;
  /// @}

 private:
  friend FieldAccess;
  friend detail::RTreeAccess;
  using Points = typename RTreeItem<Item>::Points;

  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_itemColl", self._itemColl) && item("_removedColl", self._removedColl);
  }
  static BoolResult validate(const RTree& tree);
  static void complete(RTree& read);

  template <class V>
  static Visitor toVisitor(V& visitor) {
    if constexpr (std::is_void_v<decltype(visitor(std::size_t()))>)
      return [&visitor](std::size_t index) { return visitor(index), true; };
    else
      return std::cref(visitor);
  }
  bool visitBox(const Box& box, const Visitor& visitor) const;
  bool visitWithin(const Point& point, omReal64 distance, const Visitor& visitor) const;
  bool visitAlong(const Segment& segment, omReal64 distance, const Visitor& visitor) const;

  /// Builds the packed tree of the items, all of which must be finite.
  void pack();
  /// Changes over to the tree that can change, if that is not done.
  void beginChanges();

  std::vector<Points> _itemColl;       // by index, also those that were removed
  std::vector<omUInt64> _removedColl;  // their indices
  std::vector<bool> _isRemoved;        // by index; empty where none is
  omReal64 _magnitude = 0;             // no coordinate is larger
  // One of them, or none where there are no items or a change of the tree has failed: queries look at all items then.
  std::shared_ptr<const ormix::detail::BoxTree<s_dimension>> _packed;
  std::shared_ptr<detail::ChangingIndex<s_dimension>> _changing;  // not shared
};

/// Prints the items behind their indices, "[0: [1, 2], 2: [5, 6]]".
template <class Item>
std::ostream& operator<<(std::ostream& stream, const RTree<Item>& tree);

}  // namespace ormix::geom

// Applies a macro to each kind of items: for explicit instantiations, which name every class.
#define ORMIX_GEOMETRY_RTREE_ITEMS(apply)                                                                             \
  apply(Point2d<omReal32>) apply(Point2d<omReal64>) apply(Segment2d<omReal32>) apply(Segment2d<omReal64>)             \
      apply(BoundingBox2d<omReal32>) apply(BoundingBox2d<omReal64>) apply(Point3d<omReal32>) apply(Point3d<omReal64>) \
          apply(Segment3d<omReal32>) apply(Segment3d<omReal64>) apply(BoundingBox3d<omReal32>)                        \
              apply(BoundingBox3d<omReal64>) apply(LightTriangle3d<omReal32>) apply(LightTriangle3d<omReal64>)

namespace ormix {
// The bodies are in RTree.cpp.
#define ORMIX_GEOMETRY_RTREE_EXTERN(Item)                                                   \
  extern template class VersionedLevel<geom::RTree<geom::Item>, BaseSerializationObject>;   \
  extern template class RegisteredObject<geom::RTree<geom::Item>, BaseSerializationObject>; \
  extern template class geom::RTree<geom::Item>;
ORMIX_GEOMETRY_RTREE_ITEMS(ORMIX_GEOMETRY_RTREE_EXTERN)
#undef ORMIX_GEOMETRY_RTREE_EXTERN
}  // namespace ormix
