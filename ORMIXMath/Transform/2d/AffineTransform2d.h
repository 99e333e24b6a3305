#pragma once

#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXMath/Transform/2d/ParametricTransform2d.h>

#include <cmath>

namespace ormix {

/// x' = xx·x + xy·y + tx, y' = yx·x + yy·y + ty.
struct AffineCoefficients2d {
  omReal64 xx = 1;
  omReal64 xy = 0;
  omReal64 tx = 0;
  omReal64 yx = 0;
  omReal64 yy = 1;
  omReal64 ty = 0;
};

/// Brings an image in omReal64 to the coordinate type. False, the outputs untouched, when it is not finite there.
template <class T>
inline bool storeImage(omReal64 x, omReal64 y, T& xOut, T& yOut) {
  if constexpr (std::is_integral_v<T>) {
    if (!std::isfinite(x) || !std::isfinite(y)) return false;
    xOut = round<T, omReal64>(x);
    yOut = round<T, omReal64>(y);
  } else {
    const T xRounded = round<T, omReal64>(x);
    const T yRounded = round<T, omReal64>(y);
    if (!std::isfinite(xRounded) || !std::isfinite(yRounded)) return false;
    xOut = xRounded;
    yOut = yRounded;
  }
  return true;
}

/// A planar transform that is affine: `Self::coefficients(params)` gives its matrix, computed once when the parameters
/// change.
template <class Self, std::size_t NbParams>
class __attribute__((visibility("default"))) AffineTransform2d : public ParametricTransform2d<Self, NbParams> {
 public:
  template <class T>
  bool apply(T x, T y, T& xOut, T& yOut) const {
    const auto realX = static_cast<omReal64>(x);
    const auto realY = static_cast<omReal64>(y);
    return storeImage(_coefficients.xx * realX + _coefficients.xy * realY + _coefficients.tx,
                      _coefficients.yx * realX + _coefficients.yy * realY + _coefficients.ty, xOut, yOut);
  }

  const AffineCoefficients2d& getCoefficients() const { return _coefficients; }

 protected:
  using typename ParametricTransform2d<Self, NbParams>::Params;

  explicit AffineTransform2d(const Params& params)
      : ParametricTransform2d<Self, NbParams>(params), _coefficients(Self::coefficients(params)) {}

 private:
  friend class ParametricTransform2d<Self, NbParams>;
  void refresh() { _coefficients = Self::coefficients(this->_params); }

  AffineCoefficients2d _coefficients;
};

}  // namespace ormix
