#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>

namespace ormix::geom {

/// Which measures support a planar entity.
struct PlanarMeasures {
  bool area;       ///< AreaMsr2d
  bool perimeter;  ///< PerimeterMsr2d
  bool moments;    ///< MomentsMsr2d and HuMomentsMsr2d
};

namespace detail {
template <class Entity>
constexpr PlanarMeasures noPlanarMeasures() {
  static_assert(
      sizeof(Entity*) == 0,
      "an entity of the plane has no row in Measure/2d/PlanarMeasureTable.h: say there which measures it has");
  return {};
}
}  // namespace detail

/// Which measures support an entity: a table with a row for each entity of the plane. A missing row does not compile.
template <class Entity>
inline constexpr PlanarMeasures s_planarMeasuresOf = detail::noPlanarMeasures<Entity>();
// clang-format off
/// The row of this entity.
/// @{
//                                                                                    area   perimeter moments
template <class T> inline constexpr PlanarMeasures s_planarMeasuresOf<Point2d<T>>            {true,  true,     true};
template <>        inline constexpr PlanarMeasures s_planarMeasuresOf<Vector2d>              {true,  true,     true};
template <class T> inline constexpr PlanarMeasures s_planarMeasuresOf<BoundingBox2d<T>>      {true,  true,     true};
template <class T> inline constexpr PlanarMeasures s_planarMeasuresOf<Segment2d<T>>          {false, false,    false};
template <>        inline constexpr PlanarMeasures s_planarMeasuresOf<Line2d>                {false, false,    false};
template <class T> inline constexpr PlanarMeasures s_planarMeasuresOf<Circle2d<T>>           {true,  true,     true};
template <class T> inline constexpr PlanarMeasures s_planarMeasuresOf<Ellipse2d<T>>          {true,  true,     true};
template <class T> inline constexpr PlanarMeasures s_planarMeasuresOf<Square2d<T>>           {true,  true,     true};
template <class T> inline constexpr PlanarMeasures s_planarMeasuresOf<Rectangle2d<T>>        {true,  true,     true};
template <>        inline constexpr PlanarMeasures s_planarMeasuresOf<Parabola2d>            {false, false,    false};
template <class T> inline constexpr PlanarMeasures s_planarMeasuresOf<Polygon2d<T>>          {true,  true,     true};
template <class T> inline constexpr PlanarMeasures s_planarMeasuresOf<PolygonWithHoles2d<T>> {true,  true,     true};
template <class T> inline constexpr PlanarMeasures s_planarMeasuresOf<PointCloud2d<T>>       {false, false,    true};
template <>        inline constexpr PlanarMeasures s_planarMeasuresOf<Shape2d>               {true,  true,     true};
template <>        inline constexpr PlanarMeasures s_planarMeasuresOf<Skeleton2d>            {false, false,    false};
template <>        inline constexpr PlanarMeasures s_planarMeasuresOf<SkeletonVertex2d>      {false, false,    false};
template <class T> inline constexpr PlanarMeasures s_planarMeasuresOf<Arc2d<T>>              {false, true,     false};
/// @}
// clang-format on

}  // namespace ormix::geom
