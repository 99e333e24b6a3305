#pragma once

#include <ORMIXGeometry/Entity/2d/PointCloud/BoostPoint2d.h>

#include <vector>

namespace ormix::geom {

/// A vector of points that is a multi-point of Boost.Geometry. It adds no data, so that the points of an entity can be
/// used without a copy: see asPointCloud().
///
/// Boost.Geometry computes wrong hulls of unsigned and of large integer coordinates: cast them to omReal64 first.
template <class T>
class BoostPointCloud2d : public std::vector<Point2dData<T>> {
 public:
  using std::vector<Point2dData<T>>::vector;
};

/// The same vector as a multi-point, valid as long as the vector; nothing is copied.
/// @{
template <class T>
BoostPointCloud2d<T>& asPointCloud(std::vector<Point2dData<T>>& points) {
  static_assert(sizeof(BoostPointCloud2d<T>) == sizeof(std::vector<Point2dData<T>>));
  return static_cast<BoostPointCloud2d<T>&>(points);
}
template <class T>
const BoostPointCloud2d<T>& asPointCloud(const std::vector<Point2dData<T>>& points) {
  return static_cast<const BoostPointCloud2d<T>&>(points);
}
/// @}

}  // namespace ormix::geom

namespace boost::geometry::traits {
/// Kind of geometry.
template <class T>
struct tag<ormix::geom::BoostPointCloud2d<T>> {
  using type = multi_point_tag;  ///< a multi-point
};
}  // namespace boost::geometry::traits
