#include <ORMIXMath/Transform/3d/AnisotropicScale3d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

namespace ormix {

template class ParametricTransform<AnisotropicScale3d, BaseGeometricTransform3d, 3>;

AffineCoefficients3d AnisotropicScale3d::coefficients(const Params& params) {
  return {params[0], 0, 0, 0, 0, params[1], 0, 0, 0, 0, params[2], 0};
}

}  // namespace ormix
