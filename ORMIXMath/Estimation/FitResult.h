#pragma once

#include <ORMIXMath/Estimation/EstimationStatus.h>
#include <ORMIXMath/Estimation/FitOptions.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <vector>

namespace ormix {

/// The parameters of a fitted model, and how sure they are.
///
/// n is the number of parameters. Samples that are left out (weight 0, outliers) have residuals, too.
struct FitResult {
  eFitMethod method = eFM_Orthogonal;  ///< What was minimised.
  std::vector<omReal64> params;        ///< The n parameters as they are reported.
  /// Their covariance, row-major, n × n. NaN where it is unknown: without degrees of freedom and without a given sigma.
  std::vector<omReal64> covariance;
  /// Standard deviation of one sample of weight 1, in the unit of the samples: as given, or from the residuals (NaN
  /// without degrees of freedom). With covariances of the samples it is their common factor.
  omReal64 sigma0 = 0;
  std::size_t degreesOfFreedom = 0;  ///< Equations with a weight less parameters that were determined.
  std::vector<omReal64> residuals;   ///< One distance from the model for each sample; signed where there is a side.
  std::vector<omReal64> weights;     ///< The weight of each sample in the last step; empty when all are 1.
  /// Ratio of the largest to the smallest singular value of the weighted Jacobian, its columns scaled to length 1.
  omReal64 conditionNumber = 0;
  std::size_t rank = 0;          ///< Singular values above the threshold: parameters that the samples determine.
  omReal64 rankThreshold = 0;    ///< A singular value counts as zero up to this part of the largest one.
  std::size_t nbIterations = 0;  ///< Steps of the refinement.
  std::vector<bool> inliers;     ///< For each sample, whether it was used; empty without a robust loop.
  EstimationStatus status;       ///< How the fit ended.
};

}  // namespace ormix
