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
/// Estimation from samples of which many are outliers: minimal sets of samples are drawn at random, the models they
/// determine are scored on all samples, and the best model is refitted to the samples near it (its inliers).

namespace ormix {

/// The criterion by which the best model is chosen. Distances are residuals divided by the estimator's
/// getResidualScale().
enum eRobustMethod {
  eRM_Ransac,  ///< Largest number of samples within the threshold (Fischler1981).
  eRM_Msac,    ///< Smallest sum of squared distances, each cut off at the squared threshold (Torr2000).
  eRM_LMedS,   ///< Smallest median of squared distances (Rousseeuw1984); tolerates just under one half of outliers.
  /// Fewest models expected by accident with as many samples as near (MoisanStival2004, AC-RANSAC); without a threshold
  /// the scale of the inliers is found with the model, at any share of outliers. The fastest from about a thousand
  /// samples on, or with many outliers.
  eRM_Acontrario
};

/// Why a robust loop ended.
enum eRobustEnd {
  eRO_Confident,       ///< RobustOptions::confidence was reached.
  eRO_IterationLimit,  ///< RobustOptions::nbMaxIterations was reached.
  eRO_Stopped,         ///< The progress callback returned false.
  /// RobustOptions::confidence was reached, but as many samples may agree with a model by accident: there are no more
  /// of them than determine it, or RobustResult::nbFalseAlarms is above RobustOptions::maxFalseAlarms.
  eRO_NotConfident
};

/// Texts of eRobustMethod, for printing and archives.
template <>
struct EnumerationNames<eRobustMethod> {
  static constexpr std::string_view typeName = "eRobustMethod";  ///< Name of the type.
  /// Names of the enumerators, in the order of their values.
  static constexpr std::array<std::string_view, 4> names{"eRM_Ransac", "eRM_Msac", "eRM_LMedS", "eRM_Acontrario"};
};

/// Texts of eRobustEnd, for printing and archives.
template <>
struct EnumerationNames<eRobustEnd> {
  static constexpr std::string_view typeName = "eRobustEnd";  ///< Name of the type.
  /// Names of the enumerators, in the order of their values.
  static constexpr std::array<std::string_view, 4> names{"eRO_Confident", "eRO_IterationLimit", "eRO_Stopped",
                                                         "eRO_NotConfident"};
};

/// Options of robustEstimation().
struct RobustOptions {
  eRobustMethod method = eRM_Msac;  ///< Criterion for the best model.
  omUInt32 seed = 0;                ///< Seed of the draws; the same seed gives the same bits with every compiler.
  /// Largest distance of an inlier, in the unit of the samples; finite, not negative.
  ///
  /// 0: estimated, but for eRM_Acontrario, from the model of least median, which is valid for up to about one half of
  /// outliers. With n samples of which m determine a model, it starts as 2.5 times the robust standard deviation 1.4826
  /// (1 + 5 / (n - m)) · median distance and is then repeatedly replaced by 2.5 standard deviations of the samples
  /// within it until it no longer shrinks (RousseeuwLeroy1987).
  ///
  /// eRM_Acontrario finds it with the model, at any share of outliers: all but 0.27 % of the inliers are within it, and
  /// it is at least half the step of coordinates that were rounded, as those of pixels.
  ///
  /// For eRM_LMedS a given threshold selects the inliers but does not enter the score.
  omReal64 threshold = 0;
  /// Probability, in (0, 1), that at least one set without outliers was drawn, given the inliers of the best model so
  /// far. The loop ends when it is reached.
  omReal64 confidence = 0.99;
  std::size_t nbMaxIterations = 10000;  ///< Most sets to draw in each search, degenerate ones included; at least 1.
  bool localOptimisation = true;        ///< Whether to refit each new best model to its inliers (Chum2003).
  ProgressCallback progress;            ///< Called before each draw.
  /// The most models with as many inliers within the threshold that may be expected by accident, above 0, for the
  /// result to count as confident.
  omReal64 maxFalseAlarms = 0.01;
  /// Whether the samples come in order of their quality, the best first: draws begin among the first ones and extend to
  /// all in the course of nbMaxIterations (ChumMatas2005), which finds a model sooner where the order is right.
  bool isRanked = false;
};

/// Result of robustEstimation().
struct RobustResult {
  RealVector params;          ///< The best model, refitted to its inliers unless that makes it worse.
  std::vector<bool> inliers;  ///< For each sample, whether its distance from `params` is at most the threshold.
  std::size_t nbInliers = 0;  ///< Number of inliers.
  /// Score of `params`: the number of inliers (eRM_Ransac, larger is better), the mean of the squared distances, each
  /// cut off at the squared threshold (eRM_Msac), the median of the squared distances (eRM_LMedS), or the decimal
  /// logarithm of nbFalseAlarms (eRM_Acontrario).
  omReal64 score = 0;
  omReal64 threshold = 0;               ///< Largest distance of an inlier, as given or as estimated.
  std::size_t nbIterations = 0;         ///< Sets drawn, over all searches.
  std::size_t nbDegenerate = 0;         ///< Those of them that determined no model.
  eRobustEnd end = eRO_IterationLimit;  ///< Why the last search ended.
  /// Standard deviation of one coordinate of the inliers' errors, from the distances within the threshold, corrected
  /// for those beyond it and for outliers within it.
  omReal64 sigma = 0;
  /// The number of models with as many inliers within the threshold that are expected by accident, a bound of the
  /// probability that there is one: for samples that are as dense and as many, but have nothing in common.
  omReal64 nbFalseAlarms = 0;
};

/// \name Robust estimation
/// Find the best model by `options.method` with the given estimator, whose own state may change.
///
/// The number of false alarms is a bound for samples that are as dense as the given ones; samples in several dense
/// clusters have more in common than that. Samples that are NaN or infinite are never inliers. Fail with a message,
/// `result` untouched, when there are too few samples or more than 2^32 - 1, when samples have another dimension than
/// the estimator's, when an option is out of range, when no drawn set determines a model, and when the best model has
/// fewer inliers than samples that determine it. Stopping is no failure once a model was found. O(samples) for each
/// iteration; only the estimator may allocate inside the loop.
/// @{

/// From contiguous samples.
ORMIX_MATH_API BoolResult robustEstimation(BaseEstimator& estimator, const SampleView& samples,
                                           const RobustOptions& options, RobustResult& result);
/// From one vector for each sample; fails also when their lengths differ.
ORMIX_MATH_API BoolResult robustEstimation(BaseEstimator& estimator, const DataSet& dataSet,
                                           const RobustOptions& options, RobustResult& result);
/// @}

}  // namespace ormix
