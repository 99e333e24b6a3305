#pragma once

#include <ORMIXGeometry/Estimation/HomographyEstimator.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(extern, HomographyEstimator, HomographyTransform3dEstimator, 3)

namespace ormix::geom {

/// Projective map of pairs (x1, y1, z1, x2, y2, z2): the 4 x 4 matrix row by row, scaled so that its last element is 1;
/// where that element would be 0 (the origin is mapped to infinity), so that its length is 1. Fails with message 9 when
/// the rank of its system is not greater than 13. The method and the overloads with a matrix: see HomographyEstimator.
class ORMIX_GEOMETRY_API HomographyTransform3dEstimator
    : public HomographyEstimator<HomographyTransform3dEstimator, 3> {
 public:
  static constexpr const char* s_className = "ormix::geom::HomographyTransform3dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 5;                                        ///< pairs
  static constexpr std::size_t s_nbParams = 16;                                              ///< the matrix, row by row
  static constexpr std::size_t s_sampleDimension = 6;                                        ///< x1, y1, z1, x2, y2, z2
  /// The message when the rank of the system is too low.
  static constexpr eEstimationMessage::eId s_rankMessage = eEstimationMessage::eEsM_Homography3dRank;
};

}  // namespace ormix::geom
