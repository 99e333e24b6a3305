#include <ORMIXMath/Transform/2d/Rotation2d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

#include <cmath>

namespace ormix {

template class ParametricTransform<Rotation2d, BaseGeometricTransform2d, 1>;

AffineCoefficients2d Rotation2d::coefficients(const Params& params) {
  const omReal64 cosTheta = std::cos(params[0]);
  const omReal64 sinTheta = std::sin(params[0]);
  return {cosTheta, -sinTheta, 0, sinTheta, cosTheta, 0};
}

}  // namespace ormix
