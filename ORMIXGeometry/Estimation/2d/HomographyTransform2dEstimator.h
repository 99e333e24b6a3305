#pragma once

#include <ORMIXGeometry/Estimation/HomographyEstimator.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(extern, HomographyEstimator, HomographyTransform2dEstimator, 2)

namespace ormix::geom {

/// Projective map of pairs (x1, y1, x2, y2): the 3 x 3 matrix row by row, scaled so that its last element is 1; where
/// that element would be 0 (the origin is mapped to infinity), so that its length is 1. Fails with message 8 when the
/// rank of its system is not greater than 6. The method and the overloads with a matrix: see HomographyEstimator.
class ORMIX_GEOMETRY_API HomographyTransform2dEstimator
    : public HomographyEstimator<HomographyTransform2dEstimator, 2> {
 public:
  static constexpr const char* s_className = "ormix::geom::HomographyTransform2dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 4;                                        ///< pairs
  static constexpr std::size_t s_nbParams = 9;                                               ///< the matrix, row by row
  static constexpr std::size_t s_sampleDimension = 4;                                        ///< x1, y1, x2, y2
  /// The message when the rank of the system is too low.
  static constexpr eEstimationMessage::eId s_rankMessage = eEstimationMessage::eEsM_Homography2dRank;
};

}  // namespace ormix::geom
