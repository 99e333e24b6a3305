#pragma once

#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>
#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Entity/3d/Segment/Segment3d.h>
#include <ORMIXGeometry/Entity/3d/Triangle/LightTriangle3d.h>
#include <ORMIXSerialization/Archive/PackedCoordinates.h>

#include <array>
#include <cstddef>

namespace ormix::geom {

/// What an item of an index is, as a set of points.
enum eRTreeItem { eRTI_Point, eRTI_Segment, eRTI_Box, eRTI_Triangle };

/// How the items of a class are kept in an index: as the points that make them.
/// \tparam Item a class of RTreeList's items
template <class Item>
struct RTreeItem;

namespace detail {

template <eRTreeItem Kind, class PointData, std::size_t nb>
struct RTreeItemOf {
  using Coordinate = typename PointData::CoordinateType;                              ///< omReal32 or omReal64
  using Point = PointData;                                                            ///< a point of an item
  using Points = std::array<PointData, nb>;                                           ///< an item
  static constexpr eRTreeItem s_kind = Kind;                                          ///< its kind
  static constexpr std::size_t s_dimension = sizeof(PointData) / sizeof(Coordinate);  ///< 2 or 3
};

}  // namespace detail

template <class T>
struct RTreeItem<Point2d<T>> : detail::RTreeItemOf<eRTI_Point, Point2dData<T>, 1> {
  static std::array<Point2dData<T>, 1> toPoints(const Point2d<T>& item) { return {item.getCoords()}; }
  static Point2d<T> fromPoints(const std::array<Point2dData<T>, 1>& points) { return points[0]; }
};
template <class T>
struct RTreeItem<Point3d<T>> : detail::RTreeItemOf<eRTI_Point, Point3dData<T>, 1> {
  static std::array<Point3dData<T>, 1> toPoints(const Point3d<T>& item) { return {item.getCoords()}; }
  static Point3d<T> fromPoints(const std::array<Point3dData<T>, 1>& points) { return points[0]; }
};
template <class T>
struct RTreeItem<Segment2d<T>> : detail::RTreeItemOf<eRTI_Segment, Point2dData<T>, 2> {
  static std::array<Point2dData<T>, 2> toPoints(const Segment2d<T>& item) {
    return {item.getPoint0(), item.getPoint1()};
  }
  static Segment2d<T> fromPoints(const std::array<Point2dData<T>, 2>& points) { return {points[0], points[1]}; }
};
template <class T>
struct RTreeItem<Segment3d<T>> : detail::RTreeItemOf<eRTI_Segment, Point3dData<T>, 2> {
  static std::array<Point3dData<T>, 2> toPoints(const Segment3d<T>& item) {
    return {item.getPoint0(), item.getPoint1()};
  }
  static Segment3d<T> fromPoints(const std::array<Point3dData<T>, 2>& points) { return {points[0], points[1]}; }
};
template <class T>
struct RTreeItem<BoundingBox2d<T>> : detail::RTreeItemOf<eRTI_Box, Point2dData<T>, 2> {
  static std::array<Point2dData<T>, 2> toPoints(const BoundingBox2d<T>& item) {
    return {item.getMinCornerPt(), item.getMaxCornerPt()};
  }
  static BoundingBox2d<T> fromPoints(const std::array<Point2dData<T>, 2>& points) { return {points[0], points[1]}; }
};
template <class T>
struct RTreeItem<BoundingBox3d<T>> : detail::RTreeItemOf<eRTI_Box, Point3dData<T>, 2> {
  static std::array<Point3dData<T>, 2> toPoints(const BoundingBox3d<T>& item) {
    return {item.getMinCornerPt(), item.getMaxCornerPt()};
  }
  static BoundingBox3d<T> fromPoints(const std::array<Point3dData<T>, 2>& points) { return {points[0], points[1]}; }
};
template <class T>
struct RTreeItem<LightTriangle3d<T>> : detail::RTreeItemOf<eRTI_Triangle, Point3dData<T>, 3> {
  static std::array<Point3dData<T>, 3> toPoints(const LightTriangle3d<T>& item) {
    return {item.getPoint0(), item.getPoint1(), item.getPoint2()};
  }
  static LightTriangle3d<T> fromPoints(const std::array<Point3dData<T>, 3>& points) {
    return {points[0], points[1], points[2]};
  }
};

}  // namespace ormix::geom

namespace ormix {

/// Items of an index are archived as one numeric array, one row an item.
/// @{
template <class T, std::size_t nb>
struct PackedCoordinates<std::array<geom::Point2dData<T>, nb>> {
  using Scalar = T;                                 ///< type of the numbers
  static constexpr std::size_t nbColumns = 2 * nb;  ///< x0, y0, x1, …
};
template <class T, std::size_t nb>
struct PackedCoordinates<std::array<geom::Point3dData<T>, nb>> {
  using Scalar = T;                                 ///< type of the numbers
  static constexpr std::size_t nbColumns = 3 * nb;  ///< x0, y0, z0, x1, …
};
/// @}

}  // namespace ormix
