#include <ORMIXMath/Transform/2d/Scale2d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

namespace ormix {

template class ParametricTransform<Scale2d, BaseGeometricTransform2d, 1>;

AffineCoefficients2d Scale2d::coefficients(const Params& params) { return {params[0], 0, 0, 0, params[0], 0}; }

}  // namespace ormix
