#include <ORMIXMath/Transform/3d/Scale3d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

namespace ormix {

template class ParametricTransform<Scale3d, BaseGeometricTransform3d, 1>;

AffineCoefficients3d Scale3d::coefficients(const Params& params) {
  return {params[0], 0, 0, 0, 0, params[0], 0, 0, 0, 0, params[0], 0};
}

}  // namespace ormix
