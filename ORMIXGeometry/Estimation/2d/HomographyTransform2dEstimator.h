#pragma once

#include <ORMIXGeometry/Estimation/HomographyEstimator.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>

namespace ormix::geom {
class ORMIX_GEOMETRY_API HomographyTransform2dEstimator;
}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::HomographyTransform2dEstimator, BaseEstimator>;
extern template class RegisteredObject<geom::HomographyTransform2dEstimator, BaseEstimator>;
}  // namespace ormix

namespace ormix::geom {

extern template class GeometryEstimator<HomographyTransform2dEstimator>;
extern template class HomographyEstimator<HomographyTransform2dEstimator, 2>;

/// Projective map of pairs (x1, y1, x2, y2): the 3 x 3 matrix row by row, its last element 1, or of length 1
/// where that is 0 (the origin goes to infinity). Fails with message 8 when the rank of its system is not greater than
/// 6. How it is found, and the matrix in place of the parameters: see HomographyEstimator.
class ORMIX_GEOMETRY_API HomographyTransform2dEstimator
    : public HomographyEstimator<HomographyTransform2dEstimator, 2> {
 public:
  static constexpr const char* s_className = "ormix::geom::HomographyTransform2dEstimator";
  static constexpr std::size_t s_minimalDataSize = 4;
  static constexpr std::size_t s_nbParams = 9;
  static constexpr std::size_t s_sampleDimension = 4;
  static constexpr eEstimationMessage::eId s_rankMessage = eEstimationMessage::eEsM_Homography2dRank;
};

}  // namespace ormix::geom
