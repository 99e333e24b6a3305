#include <ORMIXMath/Transform/3d/Similarity3d.h>
#include <ORMIXMath/Transform/3d/SimilarityCoefficients3d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

namespace ormix {

template class ParametricTransform<Similarity3d, BaseGeometricTransform3d, 7>;

AffineCoefficients3d Similarity3d::coefficients(const Params& params) {
  return similarityCoefficients(params[0], {params[1], params[2], params[3]}, {params[4], params[5], params[6]});
}

}  // namespace ormix
