#pragma once

#include <ORMIXMath/Transform/ParametricTransform.h>

namespace ormix {

/// A transform that is affine: `Self::coefficients(params)` gives its matrix, computed once when the parameters change.
template <class Self, class Base, class Coefficients, std::size_t NbParams>
class __attribute__((visibility("default"))) AffineTransform : public ParametricTransform<Self, Base, NbParams> {
 public:
  const Coefficients& getCoefficients() const { return _coefficients; }

 protected:
  using typename ParametricTransform<Self, Base, NbParams>::Params;

  explicit AffineTransform(const Params& params)
      : ParametricTransform<Self, Base, NbParams>(params), _coefficients(Self::coefficients(params)) {}

  Coefficients _coefficients;

 private:
  friend class ParametricTransform<Self, Base, NbParams>;
  void refresh() { _coefficients = Self::coefficients(this->_params); }
};

}  // namespace ormix
