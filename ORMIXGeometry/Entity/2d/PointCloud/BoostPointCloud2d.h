#pragma once

#include <ORMIXGeometry/Entity/2d/PointCloud/BoostPoint2d.h>

#include <vector>

namespace ormix::geom {

/// A collection of points as a Boost.Geometry multi-point. It is a vector of points and nothing else, so that the
/// collection of an entity can be used in place: see `asPointCloud`.
///
/// Boost.Geometry gives wrong hulls on unsigned coordinates and on large integers: copy those to omReal64 first.
template <class T>
class BoostPointCloud2d : public std::vector<Point2dData<T>> {
 public:
  using std::vector<Point2dData<T>>::vector;
};

/// The collection itself, seen as the adapter; nothing is copied.
template <class T>
BoostPointCloud2d<T>& asPointCloud(std::vector<Point2dData<T>>& points) {
  static_assert(sizeof(BoostPointCloud2d<T>) == sizeof(std::vector<Point2dData<T>>));
  return static_cast<BoostPointCloud2d<T>&>(points);
}
template <class T>
const BoostPointCloud2d<T>& asPointCloud(const std::vector<Point2dData<T>>& points) {
  return static_cast<const BoostPointCloud2d<T>&>(points);
}

}  // namespace ormix::geom

namespace boost::geometry::traits {
template <class T>
struct tag<ormix::geom::BoostPointCloud2d<T>> {
  using type = multi_point_tag;
};
}  // namespace boost::geometry::traits
