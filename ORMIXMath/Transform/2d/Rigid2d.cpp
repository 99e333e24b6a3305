#include <ORMIXMath/Transform/2d/Rigid2d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

#include <cmath>

namespace ormix {

template class ParametricTransform<Rigid2d, BaseGeometricTransform2d, 3>;

AffineCoefficients2d Rigid2d::coefficients(const Params& params) {
  const omReal64 cosTheta = std::cos(params[0]);
  const omReal64 sinTheta = std::sin(params[0]);
  return {cosTheta, -sinTheta, params[1], sinTheta, cosTheta, params[2]};
}

}  // namespace ormix
