#pragma once

#include <ORMIXGeometry/Transform/2d/GeometryTransform2d.h>
#include <ORMIXGeometry/Transform/LinearTransform.h>
#include <ORMIXMath/Transform/2d/BaseGeometricTransform2d.h>

namespace ormix::geom {

// clang-format off
template <class T> inline constexpr eMapRequirement s_mapRequirement<Point2d<T>>            = eMR_StraightLines;
template <>        inline constexpr eMapRequirement s_mapRequirement<Vector2d>              = eMR_StraightLines;
template <class T> inline constexpr eMapRequirement s_mapRequirement<BoundingBox2d<T>>      = eMR_Axes;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Segment2d<T>>          = eMR_StraightLines;
template <>        inline constexpr eMapRequirement s_mapRequirement<Line2d>                = eMR_Lengths;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Circle2d<T>>           = eMR_Angles;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Ellipse2d<T>>          = eMR_Angles;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Square2d<T>>           = eMR_Angles;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Rectangle2d<T>>        = eMR_Angles;
template <>        inline constexpr eMapRequirement s_mapRequirement<Parabola2d>            = eMR_Lengths;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Polygon2d<T>>          = eMR_StraightLines;
template <class T> inline constexpr eMapRequirement s_mapRequirement<PolygonWithHoles2d<T>> = eMR_StraightLines;
template <class T> inline constexpr eMapRequirement s_mapRequirement<PointCloud2d<T>>       = eMR_StraightLines;
template <>        inline constexpr eMapRequirement s_mapRequirement<Shape2d>               = eMR_StraightLines;
template <>        inline constexpr eMapRequirement s_mapRequirement<Skeleton2d>            = eMR_Angles;
template <>        inline constexpr eMapRequirement s_mapRequirement<SkeletonVertex2d>      = eMR_Angles;
template <class T> inline constexpr eMapRequirement s_mapRequirement<Arc2d<T>>              = eMR_Angles;

template <class T> inline constexpr bool s_isRunOfPoints<PointCloud2d<T>> = true;
template <class T> inline constexpr bool s_isRunOfPoints<Polygon2d<T>> = true;
// clang-format on

/// A linear transform of planar entities; `Self` states `s_transform2dType`. Which entities it takes follows from the
/// table above and from what its map preserves; the others answer failure.
///
/// Points, ends, corners and vertices are mapped one by one; a vector as the position it leads to from the origin, so
/// that offsets shift it and the directions of lines (intended). Where an entity has a centre it is mapped, lengths are
/// multiplied by the scale with its sign and the orientation is turned; where the map keeps directions angles stay to
/// the bit.
template <class Self, class Math>
using LinearTransform2d = LinearTransform<Self, Math, PlanarTransforms>;

}  // namespace ormix::geom

#define ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(keyword, Class, Math) \
  ORMIX_GEOMETRY_LINEAR_TRANSFORM_LEVELS(keyword, GeometryTransform2d, PlanarTransforms, Class, Math)
