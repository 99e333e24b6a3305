#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>

namespace ormix::geom {

/// Which derived geometries a planar entity has.
struct PlanarDerivations {
  bool centroid;            ///< CentroidTransform2d
  bool convexHull;          ///< ConvexHullTransform2d
  bool envelope;            ///< EnvelopeTransform2d
  bool minEnclosingCircle;  ///< MinEnclosingCircleTransform2d
};

namespace detail {
template <class Entity>
constexpr PlanarDerivations noPlanarDerivations() {
  static_assert(!isListed<Entity>(PlanarEntityList()),
                "an entity of the plane has no row in Transform/2d/PlanarDerivationTable.h: say there what can be "
                "derived from it");
  return {};
}
}  // namespace detail

/// What can be derived from an entity: a table with a row for each entity of the plane. A missing row does not compile;
/// what is no entity of the library has nothing. Everything that is bounded and has a place has everything, except that
/// no class holds the convex hull of an arc; a vector has no place.
template <class Entity>
inline constexpr PlanarDerivations s_planarDerivationsOf = detail::noPlanarDerivations<Entity>();
// clang-format off
/// The row of this entity.
/// @{
//                                                                                       centroid  convexHull  envelope  minEnclosingCircle
template <class T> inline constexpr PlanarDerivations s_planarDerivationsOf<Point2d<T>>            {true,     true,       true,     true};
template <>        inline constexpr PlanarDerivations s_planarDerivationsOf<Vector2d>              {false,    false,      false,    false};
template <class T> inline constexpr PlanarDerivations s_planarDerivationsOf<BoundingBox2d<T>>      {true,     true,       true,     true};
template <class T> inline constexpr PlanarDerivations s_planarDerivationsOf<Segment2d<T>>          {true,     true,       true,     true};
template <>        inline constexpr PlanarDerivations s_planarDerivationsOf<Line2d>                {false,    false,      false,    false};
template <class T> inline constexpr PlanarDerivations s_planarDerivationsOf<Circle2d<T>>           {true,     true,       true,     true};
template <class T> inline constexpr PlanarDerivations s_planarDerivationsOf<Ellipse2d<T>>          {true,     true,       true,     true};
template <class T> inline constexpr PlanarDerivations s_planarDerivationsOf<Square2d<T>>           {true,     true,       true,     true};
template <class T> inline constexpr PlanarDerivations s_planarDerivationsOf<Rectangle2d<T>>        {true,     true,       true,     true};
template <>        inline constexpr PlanarDerivations s_planarDerivationsOf<Parabola2d>            {false,    false,      false,    false};
template <class T> inline constexpr PlanarDerivations s_planarDerivationsOf<Polygon2d<T>>          {true,     true,       true,     true};
template <class T> inline constexpr PlanarDerivations s_planarDerivationsOf<PolygonWithHoles2d<T>> {true,     true,       true,     true};
template <class T> inline constexpr PlanarDerivations s_planarDerivationsOf<PointCloud2d<T>>       {true,     true,       true,     true};
template <>        inline constexpr PlanarDerivations s_planarDerivationsOf<Shape2d>               {true,     true,       true,     true};
template <>        inline constexpr PlanarDerivations s_planarDerivationsOf<Skeleton2d>            {false,    false,      false,    false};
template <>        inline constexpr PlanarDerivations s_planarDerivationsOf<SkeletonVertex2d>      {false,    false,      false,    false};
template <class T> inline constexpr PlanarDerivations s_planarDerivationsOf<Arc2d<T>>              {true,     false,      true,     true};
/// @}
// clang-format on

}  // namespace ormix::geom
