#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/BaseEstimator.h>
#include <ORMIXMath/Estimation/ProgressCallback.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/Enumeration.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <boost/numeric/ublas/vector.hpp>
#include <cstddef>
#include <vector>

/// \file
/// Estimation from data of which many do not belong to the model: minimal samples are drawn, the models through them
/// are scored on all data, and the best one is improved on the data that agree with it.

namespace ormix {

/// What makes one model better than another. All distances are residuals divided by the estimator's getResidualScale().
enum eRobustMethod {
  eRM_Ransac,  ///< More samples within the threshold (Fischler and Bolles 1981).
  eRM_Msac,    ///< A smaller sum of squared distances, each cut off at the threshold (Torr and Zisserman 2000).
  eRM_LMedS    ///< A smaller median of squared distances (Rousseeuw 1984); bears just under half of outliers.
};

/// Why a robust loop ended.
enum eRobustEnd {
  eRO_Confident,       ///< The confidence asked for was reached.
  eRO_IterationLimit,  ///< The allowed number of iterations was used up.
  eRO_Stopped          ///< The progress callback asked to stop.
};

template <>
struct EnumerationNames<eRobustMethod> {
  static constexpr std::string_view typeName = "eRobustMethod";
  static constexpr std::array<std::string_view, 3> names{"eRM_Ransac", "eRM_Msac", "eRM_LMedS"};
};

template <>
struct EnumerationNames<eRobustEnd> {
  static constexpr std::string_view typeName = "eRobustEnd";
  static constexpr std::array<std::string_view, 3> names{"eRO_Confident", "eRO_IterationLimit", "eRO_Stopped"};
};

/// What a robust estimation is asked for.
struct RobustOptions {
  eRobustMethod method = eRM_Msac;
  omUInt32 seed = 0;  ///< The same seed gives the same bits on every compiler.
  /// Largest distance of an inlier, in the unit of the data. 0: estimated from the model of least median, as 2.5 robust
  /// standard deviations 1.4826 (1 + 5 / (n - m)) times the median distance, then as 2.5 standard deviations of the
  /// samples within it until that no longer shrinks (Rousseeuw and Leroy 1987); fit for up to about half of outliers.
  /// Not used by eRM_LMedS except, when given, for the mask.
  omReal64 threshold = 0;
  omReal64 confidence = 0.99;  ///< Probability that a sample without outliers was drawn, in (0, 1): ends the loop.
  std::size_t nbMaxIterations = 10000;  ///< Samples drawn, degenerate ones included.
  bool localOptimisation = true;        ///< Refit each new best model on its consensus (Chum, Matas and Kittler 2003).
  ProgressCallback progress;
};

/// What a robust estimation gives.
struct RobustResult {
  RealVector params;          ///< Fitted to the inliers by the estimator, where that does not worsen the model.
  std::vector<bool> inliers;  ///< One a sample: within the threshold of `params`.
  std::size_t nbInliers = 0;
  /// Of `params`: the number of inliers (eRM_Ransac, larger is better), the mean squared distance cut off at the
  /// threshold (eRM_Msac), the median squared distance (eRM_LMedS).
  omReal64 score = 0;
  omReal64 threshold = 0;        ///< As given or as estimated.
  std::size_t nbIterations = 0;  ///< Samples drawn.
  std::size_t nbDegenerate = 0;  ///< Those of them that gave no model.
  eRobustEnd end = eRO_IterationLimit;
};

/// The model most samples agree on, in the sense of `options.method`, by the given estimator.
///
/// Samples that are NaN or infinite are never inliers. Fails with a message, `result` untouched: too few samples,
/// samples of another dimension, options out of range, no drawn sample that gave a model, or a best model on which
/// fewer samples agree than determine it. O(samples) an iteration; nothing is allocated inside the loop but by the
/// estimator.
/// @{
ORMIX_MATH_API BoolResult robustEstimation(BaseEstimator& estimator, const SampleView& samples,
                                           const RobustOptions& options, RobustResult& result);
ORMIX_MATH_API BoolResult robustEstimation(BaseEstimator& estimator, const DataSet& dataSet,
                                           const RobustOptions& options, RobustResult& result);
/// @}

}  // namespace ormix
