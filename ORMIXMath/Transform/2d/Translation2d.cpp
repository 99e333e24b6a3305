#include <ORMIXMath/Transform/2d/Translation2d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

namespace ormix {

template class ParametricTransform<Translation2d, BaseGeometricTransform2d, 2>;

AffineCoefficients2d Translation2d::coefficients(const Params& params) { return {1, 0, params[0], 0, 1, params[1]}; }

}  // namespace ormix
