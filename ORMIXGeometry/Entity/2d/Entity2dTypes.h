#pragma once

#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <string_view>

namespace ormix::geom {

/// Family of a planar entity. Ellipses answer `eE2DT_BoundingBox` and squares `eE2DT_Circle`: intended, callers that
/// switch on the type rely on it; no class answers `eE2DT_Ellipse` or `eE2DT_Square`.
enum eEntity2dType {
  eE2DT_Point,
  eE2DT_Vector,
  eE2DT_BoundingBox,
  eE2DT_PointCloud,
  eE2DT_Polygon,
  eE2DT_PolygonWithHoles,
  eE2DT_Shape,
  eE2DT_Circle,
  eE2DT_Ellipse,
  eE2DT_Square,
  eE2DT_Rectangle,
  eE2DT_Line,
  eE2DT_Parabola,
  eE2DT_Skeleton,
  eE2DT_Segment
};

/// What the numbers of a planar entity are: coordinates, or a distance and an angle.
enum eCoordinateSystem2dType { eCS2DT_Cartesian, eCS2DT_Polar };

}  // namespace ormix::geom

namespace ormix {

template <>
struct EnumerationNames<geom::eEntity2dType> {
  static constexpr std::string_view typeName = "eEntity2dType";
  static constexpr std::array<std::string_view, 15> names{
      "eE2DT_Point",    "eE2DT_Vector",           "eE2DT_BoundingBox", "eE2DT_PointCloud",
      "eE2DT_Polygon",  "eE2DT_PolygonWithHoles", "eE2DT_Shape",       "eE2DT_Circle",
      "eE2DT_Ellipse",  "eE2DT_Square",           "eE2DT_Rectangle",   "eE2DT_Line",
      "eE2DT_Parabola", "eE2DT_Skeleton",         "eE2DT_Segment"};
};

template <>
struct EnumerationNames<geom::eCoordinateSystem2dType> {
  static constexpr std::string_view typeName = "eCoordinateSystem2dType";
  static constexpr std::array<std::string_view, 2> names{"eCS2DT_Cartesian", "eCS2DT_Polar"};
};

}  // namespace ormix
