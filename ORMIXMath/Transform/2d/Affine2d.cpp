#include <ORMIXMath/Transform/2d/Affine2d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

namespace ormix {

template class ParametricTransform<Affine2d, BaseGeometricTransform2d, 6>;

AffineCoefficients2d Affine2d::coefficients(const Params& params) {
  return {params[0], params[1], params[2], params[3], params[4], params[5]};
}

}  // namespace ormix
