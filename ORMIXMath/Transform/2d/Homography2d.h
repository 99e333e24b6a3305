#pragma once

#include <ORMIXMath/Transform/2d/AffineTransform2d.h>

#include <array>

namespace ormix {

/// The matrix of a projective map, row by row.
using HomographyCoefficients2d = std::array<omReal64, 9>;

/// The projective map of the row-major matrix H: (x', y') = (u/w, v/w) with (u, v, w) = H·(x, y, 1).
class ORMIX_MATH_API Homography2d : public ParametricTransform2d<Homography2d, 9> {
 public:
  static constexpr eGeometricTransform2dType s_type = eGT2DT_Homography;

  /// The identity.
  Homography2d();
  explicit Homography2d(const Matrix3x3& matrix);
  Matrix3x3 getMatrix() const;
  const HomographyCoefficients2d& getCoefficients() const { return _params; }

  template <class T>
  bool apply(T x, T y, T& xOut, T& yOut) const {
    const auto realX = static_cast<omReal64>(x);
    const auto realY = static_cast<omReal64>(y);
    const omReal64 u = _params[0] * realX + _params[1] * realY + _params[2];
    const omReal64 v = _params[3] * realX + _params[4] * realY + _params[5];
    const omReal64 w = _params[6] * realX + _params[7] * realY + _params[8];
    if (w == 0) return false;
    return storeImage(u / w, v / w, xOut, yOut);
  }

 private:
  friend class ParametricTransform<Homography2d, BaseGeometricTransform2d, 9>;
  void refresh() {}
};

extern template class ParametricTransform<Homography2d, BaseGeometricTransform2d, 9>;

}  // namespace ormix
