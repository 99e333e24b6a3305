#pragma once

#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/HoleTree.h>

#include <iosfwd>

namespace ormix::geom {

/// A planar region: the inside of an exterior ring less its holes, each of which is a polygon with holes itself, so
/// that a hole may contain islands, and these holes again. The role of a node is that of its exterior ring. Nothing
/// checks the tree's geometry. How nodes own each other, are copied and nested: see `HoleTree`.
template <class T>
class ORMIX_GEOMETRY_API PolygonWithHoles2d : public Entity2d<PolygonWithHoles2d<T>, BaseTypedGeometryEntity2d<T>>,
                                              public HoleTree<PolygonWithHoles2d<T>, Polygon2d<T>> {
  using Base = Entity2d<PolygonWithHoles2d<T>, BaseTypedGeometryEntity2d<T>>;

 public:
  static constexpr const char* s_className = "ormix::geom::PolygonWithHoles2d";
  static constexpr eEntity2dType s_entity2dType = eE2DT_PolygonWithHoles;

  using PolygonHoleColl = typename HoleTree<PolygonWithHoles2d<T>, Polygon2d<T>>::HoleColl;

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
  ePolygon2dType getPolygon2dType() const { return this->exterior().getPolygon2dType(); }

  const Polygon2d<T>& getExteriorPolygon() const { return this->exterior(); }
  Polygon2d<T>& getExteriorPolygon() { return this->exterior(); }
  std::size_t getNbExteriorPoints() const { return this->exterior().getNbPoints(); }

  /// The holes themselves, in order of insertion. A hole is added by appending it and setting its parent.
  const PolygonHoleColl& getPolygonHoles() const { return this->holes(); }
  PolygonHoleColl& getPolygonHoles() { return this->holes(); }

  /// Whether the exterior ring has no vertices, whatever the holes.
  bool isEmpty() const { return this->exterior().isEmpty(); }
  /// The number of nodes of the tree below and including this one, modulo 2^32.
  omUInt32 getNbTotPolygons() const;
  /// The number of vertices stored in all of them, modulo 2^32.
  omUInt32 getNbTotPoints() const;

  /// Releases every hole; one that others own too lives on, with its own holes.
  void clearPolygonHoles() noexcept { this->clearHoles(); }
  /// Forgets the parent, the vertices and the holes; the role stays.
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
