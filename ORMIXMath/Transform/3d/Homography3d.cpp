#include <ORMIXMath/Transform/3d/Homography3d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

#include <boost/numeric/ublas/matrix.hpp>

namespace ormix {

template class ParametricTransform<Homography3d, BaseGeometricTransform3d, 16>;

Homography3d::Homography3d() : ParametricTransform({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}) {}

Homography3d::Homography3d(const Matrix4x4& matrix) : ParametricTransform(Params{}) {
  for (std::size_t row = 0; row < 4; ++row)
    for (std::size_t column = 0; column < 4; ++column) _params[4 * row + column] = matrix(row, column);
}

Matrix4x4 Homography3d::getMatrix() const {
  Matrix4x4 matrix(4, 4);
  for (std::size_t row = 0; row < 4; ++row)
    for (std::size_t column = 0; column < 4; ++column) matrix(row, column) = _params[4 * row + column];
  return matrix;
}

}  // namespace ormix
