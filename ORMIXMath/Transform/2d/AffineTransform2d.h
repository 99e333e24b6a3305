#pragma once

#include <ORMIXMath/Transform/2d/ParametricTransform2d.h>
#include <ORMIXMath/Transform/AffineTransform.h>
#include <ORMIXMath/Transform/StoreImage.h>

namespace ormix {

/// x' = xx·x + xy·y + tx, y' = yx·x + yy·y + ty.
struct ORMIX_MATH_API AffineCoefficients2d {
  omReal64 xx = 1;
  omReal64 xy = 0;
  omReal64 tx = 0;
  omReal64 yx = 0;
  omReal64 yy = 1;
  omReal64 ty = 0;
};

/// A planar transform that is affine.
template <class Self, std::size_t NbParams>
class __attribute__((visibility("default"))) AffineTransform2d
    : public AffineTransform<Self, BaseGeometricTransform2d, AffineCoefficients2d, NbParams> {
 public:
  template <class T>
  bool apply(T x, T y, T& xOut, T& yOut) const {
    const AffineCoefficients2d& c = this->_coefficients;
    const auto realX = static_cast<omReal64>(x);
    const auto realY = static_cast<omReal64>(y);
    return storeImage(c.xx * realX + c.xy * realY + c.tx, c.yx * realX + c.yy * realY + c.ty, xOut, yOut);
  }

 protected:
  using AffineTransform<Self, BaseGeometricTransform2d, AffineCoefficients2d, NbParams>::AffineTransform;
};

}  // namespace ormix
