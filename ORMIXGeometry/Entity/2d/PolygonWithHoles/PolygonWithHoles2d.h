#pragma once

#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/HoleTree.h>

#include <iosfwd>

namespace ormix::geom {

/// A planar region: the interior of an exterior ring without its holes. Each hole is a polygon with holes itself, so
/// that it may contain islands, which may have holes again. The role of a node is that of its exterior ring. Whether
/// holes lie inside the exterior ring is not checked. HoleTree describes ownership, copies and moves.
template <class T>
class ORMIX_GEOMETRY_API PolygonWithHoles2d : public Entity2d<PolygonWithHoles2d<T>, BaseTypedGeometryEntity2d<T>>,
                                              public HoleTree<PolygonWithHoles2d<T>, Polygon2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::PolygonWithHoles2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_PolygonWithHoles;        ///< returned by getEntity2dType()

  /// The holes: shared pointers to polygons with holes.
  using PolygonHoleColl = typename HoleTree<PolygonWithHoles2d<T>, Polygon2d<T>>::HoleColl;

  /// An empty exterior ring, no holes, no parent.
  PolygonWithHoles2d() = default;
  /// Copies the node with all its holes, or takes them over; the new node has no parent.
  /// @{
  PolygonWithHoles2d(const PolygonWithHoles2d& other);
  PolygonWithHoles2d(PolygonWithHoles2d&& other) noexcept;
  /// @}
  /// Replaces the ring and the holes and keeps the parent of this node.
  /// \param other may be one of the holes of this node
  /// @{
  PolygonWithHoles2d& operator=(const PolygonWithHoles2d& other);
  PolygonWithHoles2d& operator=(PolygonWithHoles2d&& other) noexcept;
  /// @}
  ~PolygonWithHoles2d() override;

  /// The role of this node: a region or a hole.
  ePolygon2dType getPolygon2dType() const { return this->exterior().getPolygon2dType(); }

  /// The exterior ring; it may be changed in any way through the non-const reference.
  /// @{
  const Polygon2d<T>& getExteriorPolygon() const { return this->exterior(); }
  Polygon2d<T>& getExteriorPolygon() { return this->exterior(); }
  /// @}
  /// The number of vertices stored in the exterior ring.
  std::size_t getNbExteriorPoints() const { return this->exterior().getNbPoints(); }

  /// The holes, in order of insertion. To add one, append it and call its setParent().
  /// @{
  const PolygonHoleColl& getPolygonHoles() const { return this->holes(); }
  PolygonHoleColl& getPolygonHoles() { return this->holes(); }
  /// @}

  /// Whether the exterior ring has no vertices; holes are not considered.
  bool isEmpty() const { return this->exterior().isEmpty(); }
  /// The number of nodes of the tree with this node as its root, modulo 2^32. Linear in their number.
  omUInt32 getNbTotPolygons() const;
  /// The number of vertices stored in all these nodes, modulo 2^32. Linear in the number of nodes.
  omUInt32 getNbTotPoints() const;

  /// Releases every hole; a hole with other owners stays alive, with its own holes.
  void clearPolygonHoles() noexcept { this->clearHoles(); }
  /// Removes the link to the parent, the vertices and the holes; the role is kept.
  void clear() noexcept { this->clearTree(); }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_exteriorPolygon", self.exterior()) && item("_polygonHoles", self.holes());
  }
  template <class TOut, class TIn>
  friend PolygonWithHoles2d<TOut> cast(const PolygonWithHoles2d<TIn>& polygon);
};

/// Prints "[exterior=[[0, 0], [4, 0], [4, 3]], holes=[]]", each hole in the same form, or "null".
template <class T>
std::ostream& operator<<(std::ostream& stream, const PolygonWithHoles2d<T>& polygon);

/// Converts each ring of the tree, see cast() of Polygon2d; parents are linked as in a copy.
template <class TOut, class TIn>
PolygonWithHoles2d<TOut> cast(const PolygonWithHoles2d<TIn>& polygon);
/// The same into an existing node, which keeps its own parent.
/// \param result may be `polygon` itself
template <class TOut, class TIn>
void cast(const PolygonWithHoles2d<TIn>& polygon, PolygonWithHoles2d<TOut>& result);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, PolygonWithHoles2d)
