#include <ORMIXGeometry/Tools/PointsBoundingBox.h>

#include <algorithm>

namespace ormix::geom {

template <class T>
BoundingBox2d<T> pointsBoundingBox(const std::vector<Point2dData<T>>& points) {
  if (points.empty()) return {T(0), T(0), T(0), T(0)};
  BoundingBox2d<T> box(points.front(), points.front());
  for (const Point2dData<T>& point : points) {
    box.setXMin(std::min(box.getXMin(), point.getX()));
    box.setYMin(std::min(box.getYMin(), point.getY()));
    box.setXMax(std::max(box.getXMax(), point.getX()));
    box.setYMax(std::max(box.getYMax(), point.getY()));
  }
  return box;
}

template <class T>
BoundingBox3d<T> pointsBoundingBox(const std::vector<Point3dData<T>>& points) {
  if (points.empty()) return {};
  BoundingBox3d<T> box(points.front(), points.front());
  for (const Point3dData<T>& point : points) {
    box.setXMin(std::min(box.getXMin(), point.getX()));
    box.setYMin(std::min(box.getYMin(), point.getY()));
    box.setZMin(std::min(box.getZMin(), point.getZ()));
    box.setXMax(std::max(box.getXMax(), point.getX()));
    box.setYMax(std::max(box.getYMax(), point.getY()));
    box.setZMax(std::max(box.getZMax(), point.getZ()));
  }
  return box;
}

#define ORMIX_GEOMETRY_INSTANTIATE_BOX(T)                                                             \
  template ORMIX_GEOMETRY_API BoundingBox2d<T> pointsBoundingBox(const std::vector<Point2dData<T>>&); \
  template ORMIX_GEOMETRY_API BoundingBox3d<T> pointsBoundingBox(const std::vector<Point3dData<T>>&);
ORMIX_GEOMETRY_INSTANTIATE_BOX(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_BOX(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_BOX(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_BOX(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_BOX

}  // namespace ormix::geom
