#pragma once

#include <ORMIXMath/Transform/3d/ParametricTransform3d.h>
#include <ORMIXMath/Transform/StoreImage.h>

#include <array>

namespace ormix {

/// The matrix of a projective map of space, row by row.
using HomographyCoefficients3d = std::array<omReal64, 16>;

/// The projective map of the row-major matrix H: (x', y', z') = (u/w, v/w, t/w) with (u, v, t, w) = H·(x, y, z, 1).
class ORMIX_MATH_API Homography3d : public ParametricTransform3d<Homography3d, 16> {
 public:
  static constexpr eGeometricTransform3dType s_type = eGT3DT_Homography;

  /// The identity.
  Homography3d();
  explicit Homography3d(const Matrix4x4& matrix);
  Matrix4x4 getMatrix() const;
  const HomographyCoefficients3d& getCoefficients() const { return _params; }

  template <class T>
  bool apply(T x, T y, T z, T& xOut, T& yOut, T& zOut) const {
    const auto realX = static_cast<omReal64>(x);
    const auto realY = static_cast<omReal64>(y);
    const auto realZ = static_cast<omReal64>(z);
    const auto row = [&](std::size_t first) {
      return _params[first] * realX + _params[first + 1] * realY + _params[first + 2] * realZ + _params[first + 3];
    };
    const omReal64 w = row(12);
    if (w == 0) return false;
    return storeImage(row(0) / w, row(4) / w, row(8) / w, xOut, yOut, zOut);
  }

 private:
  friend class ParametricTransform<Homography3d, BaseGeometricTransform3d, 16>;
  void refresh() {}
};

extern template class ParametricTransform<Homography3d, BaseGeometricTransform3d, 16>;

}  // namespace ormix
