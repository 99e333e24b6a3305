#include <ORMIXMath/Transform/3d/Rotation3d.h>
#include <ORMIXMath/Transform/3d/SimilarityCoefficients3d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

namespace ormix {

template class ParametricTransform<Rotation3d, BaseGeometricTransform3d, 3>;

AffineCoefficients3d Rotation3d::coefficients(const Params& params) {
  return similarityCoefficients(1, {params[0], params[1], params[2]}, {0, 0, 0});
}

}  // namespace ormix
