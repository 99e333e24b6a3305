#pragma once

#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>

#include <vector>

namespace ormix::geom {

/// The smallest box that contains all points; both corners at the origin when there are none. A NaN coordinate is
/// ignored unless it is one of the first point. Linear; nothing is allocated.
/// @{
template <class T>
BoundingBox2d<T> pointsBoundingBox(const std::vector<Point2dData<T>>& points);
template <class T>
BoundingBox3d<T> pointsBoundingBox(const std::vector<Point3dData<T>>& points);
/// @}

}  // namespace ormix::geom
