#pragma once

#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <string_view>

namespace ormix::geom {

/// Family of a planar entity. Ellipse2d returns `eE2DT_BoundingBox` and Square2d `eE2DT_Circle`: intended, callers that
/// switch on the type rely on it.
enum eEntity2dType {
  eE2DT_Point,             ///< Point2d
  eE2DT_Vector,            ///< Vector2d
  eE2DT_BoundingBox,       ///< BoundingBox2d and Ellipse2d
  eE2DT_PointCloud,        ///< PointCloud2d
  eE2DT_Polygon,           ///< Polygon2d
  eE2DT_PolygonWithHoles,  ///< PolygonWithHoles2d
  eE2DT_Shape,             ///< Shape2d
  eE2DT_Circle,            ///< Circle2d and Square2d
  eE2DT_Ellipse,           ///< returned by no class
  eE2DT_Square,            ///< returned by no class
  eE2DT_Rectangle,         ///< Rectangle2d
  eE2DT_Line,              ///< Line2d
  eE2DT_Parabola,          ///< Parabola2d
  eE2DT_Skeleton,          ///< Skeleton2d, and also SkeletonVertex2d
  eE2DT_Segment,           ///< Segment2d
  eE2DT_Arc                ///< Arc2d
};

/// What the numbers of a planar entity are.
enum eCoordinateSystem2dType {
  eCS2DT_Cartesian,  ///< coordinates x and y
  eCS2DT_Polar       ///< a signed distance rho and an angle theta, in radians
};

}  // namespace ormix::geom

namespace ormix {

/// Texts of eEntity2dType.
template <>
struct EnumerationNames<geom::eEntity2dType> {
  static constexpr std::string_view typeName = "eEntity2dType";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 16> names{
      "eE2DT_Point",    "eE2DT_Vector",           "eE2DT_BoundingBox", "eE2DT_PointCloud",
      "eE2DT_Polygon",  "eE2DT_PolygonWithHoles", "eE2DT_Shape",       "eE2DT_Circle",
      "eE2DT_Ellipse",  "eE2DT_Square",           "eE2DT_Rectangle",   "eE2DT_Line",
      "eE2DT_Parabola", "eE2DT_Skeleton",         "eE2DT_Segment",     "eE2DT_Arc"};
};

/// Texts of eCoordinateSystem2dType.
template <>
struct EnumerationNames<geom::eCoordinateSystem2dType> {
  static constexpr std::string_view typeName = "eCoordinateSystem2dType";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 2> names{"eCS2DT_Cartesian", "eCS2DT_Polar"};
};

}  // namespace ormix
