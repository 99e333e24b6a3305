#pragma once

#include <ORMIXGeometry/Transform/2d/GeometryTransform2d.h>
#include <ORMIXGeometry/Transform/2d/PlanarDerivationTable.h>
#include <ORMIXGeometry/Transform/DerivedTransform.h>

ORMIX_GEOMETRY_DERIVED_TRANSFORM2D_LEVELS(extern, ConvexHullTransform2d)

namespace ormix::geom {

namespace detail {
template <class Entity>
struct PlanarHullOf {
  using Type = Polygon2d<CoordinateOf<Entity>>;
};
template <class T>
struct PlanarHullOf<Circle2d<T>> {
  using Type = Circle2d<T>;
};
template <class T>
struct PlanarHullOf<Ellipse2d<T>> {
  using Type = Ellipse2d<T>;
};
}  // namespace detail

/// The convex hull of a planar entity: a closed exterior `Polygon2d` of its coordinate type, of a shape that of its
/// boundaries, counter-clockwise (x to the right, y up) from the vertex with the smallest x, of several the one with
/// the smallest y. No vertex occurs twice, but for the first, which is repeated at the end, and no three are on a line.
/// Circles and ellipses are convex, and answer themselves.
///
/// It is that of the stored numbers, exactly, see convexHull2d(); of squares and rectangles that of their corners,
/// rounded to the coordinate type. What has one point has this one vertex, and what lies on a line has the two
/// outermost points: three vertices are stored, the third equal to the first. A shape without boundaries has the hull
/// of its pixels.
///
/// Vectors, lines, parabolas and arcs have none, nor has what has no points, a null hole, a number that is not finite,
/// or pixels whose corners are no numbers of omReal32 (beyond 2^24). In place for polygons, circles and ellipses. O(n
/// log n).
class ORMIX_GEOMETRY_API ConvexHullTransform2d : public DerivedTransform<ConvexHullTransform2d, PlanarTransforms> {
 public:
  static constexpr const char* s_className = "ormix::geom::ConvexHullTransform2d";  ///< registered name
  static constexpr eTransform2dType s_transform2dType = eT2DT_ConvexHull;

  template <class Entity>
  struct Supports : std::bool_constant<s_planarDerivationsOf<Entity>.convexHull> {};
  template <class Entity>
  using Result = typename detail::PlanarHullOf<Entity>::Type;

  ConvexHullTransform2d() = default;

  /// The convex hull of an entity.
  /// \throw ORMIXGeometryException, logged first, where there is none
  /// @{
  template <class Entity, std::enable_if_t<Supports<Entity>::value, int> = 0>
  static Result<Entity> convexHull(const Entity& entity) {
    return derivedOf(entity);
  }
  static GeometryEntity2dPtr convexHull(const BaseGeometryEntity2d& entity) { return derivedOfAny(entity); }
  /// @}

  /// The same without an exception.
  /// \return false, `result` unspecified, where there is none
  template <class Entity>
  bool derive(const Entity& entity, Result<Entity>& result) const;
};

}  // namespace ormix::geom
