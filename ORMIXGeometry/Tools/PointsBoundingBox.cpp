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

template ORMIX_GEOMETRY_API BoundingBox2d<omInt32> pointsBoundingBox(const std::vector<Point2dData<omInt32>>&);
template ORMIX_GEOMETRY_API BoundingBox2d<omUInt32> pointsBoundingBox(const std::vector<Point2dData<omUInt32>>&);
template ORMIX_GEOMETRY_API BoundingBox2d<omReal32> pointsBoundingBox(const std::vector<Point2dData<omReal32>>&);
template ORMIX_GEOMETRY_API BoundingBox2d<omReal64> pointsBoundingBox(const std::vector<Point2dData<omReal64>>&);

}  // namespace ormix::geom
