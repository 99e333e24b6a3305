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

// `Point2dData` is a two-dimensional Cartesian point of Boost.Geometry.
namespace boost::geometry::traits {

template <class T>
struct tag<ormix::geom::Point2dData<T>> {
  using type = point_tag;
};
template <class T>
struct coordinate_type<ormix::geom::Point2dData<T>> {
  using type = T;
};
template <class T>
struct coordinate_system<ormix::geom::Point2dData<T>> {
  using type = cs::cartesian;
};
template <class T>
struct dimension<ormix::geom::Point2dData<T>> : boost::mpl::int_<2> {};

template <class T>
struct access<ormix::geom::Point2dData<T>, 0> {
  static T get(const ormix::geom::Point2dData<T>& point) { return point.getX(); }
  static void set(ormix::geom::Point2dData<T>& point, const T& x) { point.setX(x); }
};
template <class T>
struct access<ormix::geom::Point2dData<T>, 1> {
  static T get(const ormix::geom::Point2dData<T>& point) { return point.getY(); }
  static void set(ormix::geom::Point2dData<T>& point, const T& y) { point.setY(y); }
};

}  // namespace boost::geometry::traits
