#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Transform/AffinePoints.h>
#include <ORMIXGeometry/Transform/LinearMapRules.ipp>

#include <boost/numeric/ublas/matrix.hpp>

namespace ormix::geom {

namespace {

/// Whether the last row says that the matrix is an affine map.
template <class Matrix>
void requireAffine(const Matrix& matrix, const char* function) {
  const std::size_t last = matrix.size1() - 1;
  for (std::size_t column = 0; column <= last; ++column)
    if (matrix(last, column) != (column == last ? 1 : 0))
      logAndThrow("The last row of the matrix of an affine map must be 0, ..., 0, 1", function, __FILE__, __LINE__);
}

template <class Map, class Point>
BoolResult applyToAll(const Map& map, std::vector<Point>& points) {
  const std::size_t undefined = firstUndefinedImage(map, coordinates(points), points.size());
  if (undefined != points.size()) return failure(detail::undefinedImageText(toString(Map::s_type), points[undefined]));
  applyToRun(map, coordinates(points), points.size());
  return true;
}

}  // namespace

Affine2d toAffine(const Matrix3x3& m) {
  requireAffine(m, __PRETTY_FUNCTION__);
  return {m(0, 0), m(0, 1), m(0, 2), m(1, 0), m(1, 1), m(1, 2)};
}

Affine3d toAffine(const Matrix4x4& m) {
  requireAffine(m, __PRETTY_FUNCTION__);
  return Affine3d(
      {m(0, 0), m(0, 1), m(0, 2), m(0, 3), m(1, 0), m(1, 1), m(1, 2), m(1, 3), m(2, 0), m(2, 1), m(2, 2), m(2, 3)});
}

template <class T>
BoolResult applyInSitu(const Affine2d& map, std::vector<Point2dData<T>>& points) {
  return applyToAll(map, points);
}
template <class T>
BoolResult applyInSitu(const Affine3d& map, std::vector<Point3dData<T>>& points) {
  return applyToAll(map, points);
}

#define ORMIX_GEOMETRY_INSTANTIATE_AFFINE(T)                                                         \
  template ORMIX_GEOMETRY_API BoolResult applyInSitu(const Affine2d&, std::vector<Point2dData<T>>&); \
  template ORMIX_GEOMETRY_API BoolResult applyInSitu(const Affine3d&, std::vector<Point3dData<T>>&);
ORMIX_GEOMETRY_INSTANTIATE_AFFINE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_AFFINE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_AFFINE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_AFFINE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_AFFINE

}  // namespace ormix::geom
