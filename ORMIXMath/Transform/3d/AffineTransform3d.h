#pragma once

#include <ORMIXMath/Transform/3d/ParametricTransform3d.h>
#include <ORMIXMath/Transform/AffineTransform.h>
#include <ORMIXMath/Transform/StoreImage.h>

namespace ormix {

/// x' = xx·x + xy·y + xz·z + tx, likewise y' and z'.
struct ORMIX_MATH_API AffineCoefficients3d {
  omReal64 xx = 1;
  omReal64 xy = 0;
  omReal64 xz = 0;
  omReal64 tx = 0;
  omReal64 yx = 0;
  omReal64 yy = 1;
  omReal64 yz = 0;
  omReal64 ty = 0;
  omReal64 zx = 0;
  omReal64 zy = 0;
  omReal64 zz = 1;
  omReal64 tz = 0;
};

/// A spatial transform that is affine.
template <class Self, std::size_t NbParams>
class __attribute__((visibility("default"))) AffineTransform3d
    : public AffineTransform<Self, BaseGeometricTransform3d, AffineCoefficients3d, NbParams> {
 public:
  template <class T>
  bool apply(T x, T y, T z, T& xOut, T& yOut, T& zOut) const {
    const AffineCoefficients3d& c = this->_coefficients;
    const auto realX = static_cast<omReal64>(x);
    const auto realY = static_cast<omReal64>(y);
    const auto realZ = static_cast<omReal64>(z);
    return storeImage(c.xx * realX + c.xy * realY + c.xz * realZ + c.tx,
                      c.yx * realX + c.yy * realY + c.yz * realZ + c.ty,
                      c.zx * realX + c.zy * realY + c.zz * realZ + c.tz, xOut, yOut, zOut);
  }

 protected:
  using AffineTransform<Self, BaseGeometricTransform3d, AffineCoefficients3d, NbParams>::AffineTransform;
};

}  // namespace ormix
