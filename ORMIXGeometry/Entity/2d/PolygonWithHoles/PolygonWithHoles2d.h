#pragma once

#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>

#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <boost/smart_ptr/weak_ptr.hpp>
#include <vector>

namespace ormix::geom {

/// A planar region: the inside of an exterior ring less its holes, each of which is a polygon with holes itself, so
/// that a hole may contain islands, and these holes again. A node owns its holes; each knows its parent by a weak link.
/// The role of a node is that of its exterior ring. Nothing checks the tree's geometry, and a hole may be null: it
/// counts as none, but an archive refuses it.
///
/// Copies are deep: the holes are copied too and have the copied nodes as parents. Moves take the holes along, which
/// have the new place as their parent from then on. A new copy itself has no parent; a node that is assigned, copied or
/// read into stays where it is in its tree, that is, keeps its own parent. A parent that no shared pointer owns (one on
/// the stack, say) is not seen by its holes as long as that is so.
///
/// All operations but archives, which bound the nesting themselves, work at every depth. A node that is made its own
/// hole, directly or not, is not a tree: it is never released, and whatever walks it does not end.
template <class T>
class ORMIX_GEOMETRY_API PolygonWithHoles2d : public Entity2d<PolygonWithHoles2d<T>, BaseTypedGeometryEntity2d<T>>,
                                              public boost::enable_shared_from_this<PolygonWithHoles2d<T>> {
  using Base = Entity2d<PolygonWithHoles2d<T>, BaseTypedGeometryEntity2d<T>>;
  using SharedFromThis = boost::enable_shared_from_this<PolygonWithHoles2d<T>>;

 public:
  static constexpr const char* s_className = "ormix::geom::PolygonWithHoles2d";
  static constexpr eEntity2dType s_entity2dType = eE2DT_PolygonWithHoles;

  using PolygonHoleColl = std::vector<boost::shared_ptr<PolygonWithHoles2d>>;

  /// An empty exterior ring, no holes, no parent.
  PolygonWithHoles2d() = default;
  PolygonWithHoles2d(const PolygonWithHoles2d& other);
  PolygonWithHoles2d(PolygonWithHoles2d&& other) noexcept;
  /// \param other may be one of the holes below
  PolygonWithHoles2d& operator=(const PolygonWithHoles2d& other);
  PolygonWithHoles2d& operator=(PolygonWithHoles2d&& other) noexcept;
  ~PolygonWithHoles2d() override;

  /// As for every entity; the holes read have this node as their parent.
  BoolResult read(BaseIArchive& archive) override;

  /// The role of this node: a region, or a hole.
  ePolygon2dType getPolygon2dType() const { return _exteriorPolygon.getPolygon2dType(); }

  /// The node that encloses this one; empty for a root, and when the parent is gone or no shared pointer owns it.
  boost::shared_ptr<const PolygonWithHoles2d> getParent() const;
  /// Stores a weak link to `parent`, none when it is null. Adding this node to its holes is left to the caller. Counts
  /// as a use of both nodes: not to be called from two threads for holes of one parent.
  void setParent(const boost::shared_ptr<const PolygonWithHoles2d>& parent);

  const Polygon2d<T>& getExteriorPolygon() const { return _exteriorPolygon; }
  Polygon2d<T>& getExteriorPolygon() { return _exteriorPolygon; }
  std::size_t getNbExteriorPoints() const { return _exteriorPolygon.getNbPoints(); }

  bool hasHoles() const { return !_polygonHoles.empty(); }
  std::size_t getNbHoles() const { return _polygonHoles.size(); }
  /// The holes themselves, in order of insertion. A hole is added by appending it and setting its parent.
  const PolygonHoleColl& getPolygonHoles() const { return _polygonHoles; }
  PolygonHoleColl& getPolygonHoles() { return _polygonHoles; }
  typename PolygonHoleColl::const_iterator beginHole() const { return _polygonHoles.begin(); }
  typename PolygonHoleColl::iterator beginHole() { return _polygonHoles.begin(); }
  typename PolygonHoleColl::const_iterator endHole() const { return _polygonHoles.end(); }
  typename PolygonHoleColl::iterator endHole() { return _polygonHoles.end(); }

  /// Whether the exterior ring has no vertices, whatever the holes.
  bool isEmpty() const { return _exteriorPolygon.isEmpty(); }
  /// The number of nodes of the tree below and including this one, modulo 2^32.
  omUInt32 getNbTotPolygons() const;
  /// The number of vertices stored in all of them, modulo 2^32.
  omUInt32 getNbTotPoints() const;

  /// Releases every hole; one that others own too lives on, with its own holes.
  void clearPolygonHoles() noexcept;
  /// Forgets the parent, the vertices and the holes; the role stays.
  void clear() noexcept;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_exteriorPolygon", self._exteriorPolygon) && item("_polygonHoles", self._polygonHoles);
  }
  template <class TOut, class TIn>
  friend PolygonWithHoles2d<TOut> cast(const PolygonWithHoles2d<TIn>& polygon);

  /// Where a node's holes find it: follows the node when it moves and ends with it, shared or not.
  using Anchor = const PolygonWithHoles2d*;

  const boost::shared_ptr<Anchor>& anchor() const;
  void linkHoles();
  template <class TIn>
  void copyTree(const PolygonWithHoles2d<TIn>& source);
  void moveTree(PolygonWithHoles2d& source) noexcept;
  static void release(boost::shared_ptr<PolygonWithHoles2d> tree) noexcept;

  boost::weak_ptr<Anchor> _parent;
  Polygon2d<T> _exteriorPolygon;
  PolygonHoleColl _polygonHoles;
  mutable boost::shared_ptr<Anchor> _anchor;  // made when the first hole is linked
};

/// "[exterior=[[0, 0], [4, 0], [4, 3]], holes=[]]", each hole in the same form, or "null".
template <class T>
std::ostream& operator<<(std::ostream& stream, const PolygonWithHoles2d<T>& polygon);

/// Converts each ring of the tree as polygons are cast, with parents linked as in a copy.
template <class TOut, class TIn>
PolygonWithHoles2d<TOut> cast(const PolygonWithHoles2d<TIn>& polygon);
/// The same into an existing node, which keeps its own parent. \param result may be `polygon` itself
template <class TOut, class TIn>
void cast(const PolygonWithHoles2d<TIn>& polygon, PolygonWithHoles2d<TOut>& result);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, PolygonWithHoles2d)
