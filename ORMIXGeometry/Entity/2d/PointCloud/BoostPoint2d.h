#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>

#include <boost/geometry/core/access.hpp>
#include <boost/geometry/core/coordinate_dimension.hpp>
#include <boost/geometry/core/coordinate_system.hpp>
#include <boost/geometry/core/coordinate_type.hpp>
#include <boost/geometry/core/cs.hpp>
#include <boost/geometry/core/tag.hpp>
#include <boost/geometry/core/tags.hpp>
#include <boost/mpl/int.hpp>

/// \file
/// Traits that make Point2dData a two-dimensional Cartesian point of Boost.Geometry.

namespace boost::geometry::traits {

/// Kind of geometry.
template <class T>
struct tag<ormix::geom::Point2dData<T>> {
  using type = point_tag;  ///< a point
};
/// Type of the coordinates.
template <class T>
struct coordinate_type<ormix::geom::Point2dData<T>> {
  using type = T;  ///< any coordinate type
};
/// Coordinate system.
template <class T>
struct coordinate_system<ormix::geom::Point2dData<T>> {
  using type = cs::cartesian;  ///< Cartesian
};
/// Number of coordinates.
template <class T>
struct dimension<ormix::geom::Point2dData<T>> : boost::mpl::int_<2> {};

/// Access to x.
template <class T>
struct access<ormix::geom::Point2dData<T>, 0> {
  /// Reads or sets x.
  /// @{
  static T get(const ormix::geom::Point2dData<T>& point) { return point.getX(); }
  static void set(ormix::geom::Point2dData<T>& point, const T& x) { point.setX(x); }
  /// @}
};
/// Access to y.
template <class T>
struct access<ormix::geom::Point2dData<T>, 1> {
  /// Reads or sets y.
  /// @{
  static T get(const ormix::geom::Point2dData<T>& point) { return point.getY(); }
  static void set(ormix::geom::Point2dData<T>& point, const T& y) { point.setY(y); }
  /// @}
};

}  // namespace boost::geometry::traits
