#include <ORMIXMath/Transform/3d/Translation3d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

namespace ormix {

template class ParametricTransform<Translation3d, BaseGeometricTransform3d, 3>;

AffineCoefficients3d Translation3d::coefficients(const Params& params) {
  return {1, 0, 0, params[0], 0, 1, 0, params[1], 0, 0, 1, params[2]};
}

}  // namespace ormix
