#pragma once

#include <ORMIXGeometry/Entity/2d/PointCloud/PointCloud2d.h>
#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Transform/2d/Affine2d.h>
#include <ORMIXMath/Transform/3d/Affine3d.h>

#include <vector>

/// \file
/// Points under any affine map, given by its matrix. Entities have no such transform, as most classes do not hold their
/// image, so that convert() refuses an affine map; points always have one. Affine2d and the coefficients of Affine3d
/// are the elements of a 2 × 3 or 3 × 4 matrix, row by row.

namespace ormix::geom {

/// The affine map of a 3 × 3 or 4 × 4 matrix.
/// \throw ORMIXGeometryException, logged first, where the last row is not 0, …, 0, 1
/// @{
ORMIX_GEOMETRY_API Affine2d toAffine(const Matrix3x3& matrix);
ORMIX_GEOMETRY_API Affine3d toAffine(const Matrix4x4& matrix);
/// @}

/// Maps points in place, rounded to their coordinate type as every transform does it. Linear, without an allocation;
/// the bits of a cloud under a transform with the same coefficients.
/// \return a failure that names the first point whose image is not finite; no point is then changed
/// @{
template <class T>
ORMIX_GEOMETRY_API BoolResult applyInSitu(const Affine2d& map, std::vector<Point2dData<T>>& points);
template <class T>
ORMIX_GEOMETRY_API BoolResult applyInSitu(const Affine3d& map, std::vector<Point3dData<T>>& points);
template <class T>
BoolResult applyInSitu(const Affine2d& map, PointCloud2d<T>& cloud) {
  return applyInSitu(map, cloud.getCollection());
}
template <class T>
BoolResult applyInSitu(const Affine3d& map, PointCloud3d<T>& cloud) {
  return applyInSitu(map, cloud.getCollection());
}
/// @}

}  // namespace ormix::geom
