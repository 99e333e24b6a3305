#include <ORMIXMath/Transform/2d/AnisotropicScale2d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

namespace ormix {

template class ParametricTransform<AnisotropicScale2d, BaseGeometricTransform2d, 2>;

AffineCoefficients2d AnisotropicScale2d::coefficients(const Params& params) {
  return {params[0], 0, 0, 0, params[1], 0};
}

}  // namespace ormix
