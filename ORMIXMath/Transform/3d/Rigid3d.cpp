#include <ORMIXMath/Transform/3d/Rigid3d.h>
#include <ORMIXMath/Transform/3d/SimilarityCoefficients3d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

namespace ormix {

template class ParametricTransform<Rigid3d, BaseGeometricTransform3d, 6>;

AffineCoefficients3d Rigid3d::coefficients(const Params& params) {
  return similarityCoefficients(1, {params[0], params[1], params[2]}, {params[3], params[4], params[5]});
}

}  // namespace ormix
