#include <ORMIXMath/Transform/2d/Homography2d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

#include <boost/numeric/ublas/matrix.hpp>

namespace ormix {

template class ParametricTransform<Homography2d, BaseGeometricTransform2d, 9>;

Homography2d::Homography2d() : ParametricTransform({1, 0, 0, 0, 1, 0, 0, 0, 1}) {}

Homography2d::Homography2d(const Matrix3x3& matrix) : ParametricTransform(Params{}) {
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t column = 0; column < 3; ++column) _params[3 * row + column] = matrix(row, column);
}

Matrix3x3 Homography2d::getMatrix() const {
  Matrix3x3 matrix(3, 3);
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t column = 0; column < 3; ++column) matrix(row, column) = _params[3 * row + column];
  return matrix;
}

}  // namespace ormix
