#include <ORMIXMath/Transform/2d/Similarity2d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

#include <cmath>

namespace ormix {

template class ParametricTransform<Similarity2d, BaseGeometricTransform2d, 4>;

AffineCoefficients2d Similarity2d::coefficients(const Params& params) {
  const omReal64 scaledCos = params[0] * std::cos(params[1]);
  const omReal64 scaledSin = params[0] * std::sin(params[1]);
  return {scaledCos, -scaledSin, params[2], scaledSin, scaledCos, params[3]};
}

}  // namespace ormix
