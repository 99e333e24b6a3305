#pragma once

#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>
#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Entity/3d/Segment/Segment3d.h>

#include <array>
#include <cstddef>
#include <type_traits>

/// \file
/// Where an index is searched. Points, boxes and segments of every type of coordinates, and their numbers in braces,
/// convert implicitly, so that an index of omReal32 can be searched at a place of omReal64.

namespace ormix::geom {

namespace detail {

/// The coordinates of a point.
/// @{
template <class T>
std::array<omReal64, 2> coordinatesOf(const Point2dData<T>& p) {
  return {static_cast<omReal64>(p.getX()), static_cast<omReal64>(p.getY())};
}
template <class T>
std::array<omReal64, 3> coordinatesOf(const Point3dData<T>& p) {
  return {static_cast<omReal64>(p.getX()), static_cast<omReal64>(p.getY()), static_cast<omReal64>(p.getZ())};
}
template <class T>
std::array<omReal64, 2> coordinatesOf(const Point2d<T>& p) {
  return coordinatesOf(p.getCoords());
}
template <class T>
std::array<omReal64, 3> coordinatesOf(const Point3d<T>& p) {
  return coordinatesOf(p.getCoords());
}
/// @}

}  // namespace detail

/// A point of the plane or of space.
template <std::size_t D>
struct SearchPoint {
  std::array<omReal64, D> coords;  ///< its coordinates

  /// The coordinates, x first.
  template <class... Number, class = std::enable_if_t<sizeof...(Number) == D && (... && std::is_arithmetic_v<Number>)>>
  SearchPoint(Number... numbers)  // NOLINT(google-explicit-constructor): same value
      : coords{static_cast<omReal64>(numbers)...} {}
  /// A point as an entity or as its data.
  template <class Point, class = std::enable_if_t<std::is_same_v<
                             decltype(detail::coordinatesOf(std::declval<const Point&>())), std::array<omReal64, D>>>>
  SearchPoint(const Point& point)  // NOLINT(google-explicit-constructor): same value
      : coords(detail::coordinatesOf(point)) {}
};

namespace detail {

/// The first and the second point of a box or a segment.
/// @{
template <class T>
std::array<SearchPoint<2>, 2> cornersOf(const BoundingBox2d<T>& box) {
  return {SearchPoint<2>(box.getMinCornerPt()), SearchPoint<2>(box.getMaxCornerPt())};
}
template <class T>
std::array<SearchPoint<3>, 2> cornersOf(const BoundingBox3d<T>& box) {
  return {SearchPoint<3>(box.getMinCornerPt()), SearchPoint<3>(box.getMaxCornerPt())};
}
template <class T>
std::array<SearchPoint<2>, 2> endsOf(const Segment2d<T>& segment) {
  return {SearchPoint<2>(segment.getPoint0()), SearchPoint<2>(segment.getPoint1())};
}
template <class T>
std::array<SearchPoint<3>, 2> endsOf(const Segment3d<T>& segment) {
  return {SearchPoint<3>(segment.getPoint0()), SearchPoint<3>(segment.getPoint1())};
}
/// @}

}  // namespace detail

/// An upright box of the plane or of space, sides included. An inverted one holds nothing; bounds may be infinite.
template <std::size_t D>
struct SearchBox {
  std::array<SearchPoint<D>, 2> corners;  ///< the least and the greatest coordinates

  /// The corner of the least and that of the greatest coordinates.
  SearchBox(const SearchPoint<D>& low, const SearchPoint<D>& high) : corners{low, high} {}
  /// A box as an entity.
  template <class Box, class = std::enable_if_t<std::is_same_v<decltype(detail::cornersOf(std::declval<const Box&>())),
                                                               std::array<SearchPoint<D>, 2>>>>
  SearchBox(const Box& box)  // NOLINT(google-explicit-constructor): same value
      : corners(detail::cornersOf(box)) {}
};

/// A segment of the plane or of space.
template <std::size_t D>
struct SearchSegment {
  std::array<SearchPoint<D>, 2> ends;  ///< its ends

  /// The ends.
  SearchSegment(const SearchPoint<D>& pt0, const SearchPoint<D>& pt1) : ends{pt0, pt1} {}
  /// A segment as an entity.
  template <class Segment,
            class = std::enable_if_t<std::is_same_v<decltype(detail::endsOf(std::declval<const Segment&>())),
                                                    std::array<SearchPoint<D>, 2>>>>
  SearchSegment(const Segment& segment)  // NOLINT(google-explicit-constructor): same value
      : ends(detail::endsOf(segment)) {}
};

}  // namespace ormix::geom
