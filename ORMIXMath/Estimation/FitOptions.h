#pragma once

#include <ORMIXMath/Estimation/EstimationStatus.h>
#include <ORMIXMath/Estimation/ProgressCallback.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/Enumeration.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

namespace ormix {

struct RobustOptions;

/// What a fit minimises.
enum eFitMethod {
  eFM_Algebraic,  ///< What the estimator of the model minimises; cheap, and biased where it is no distance.
  eFM_Orthogonal  ///< The sum of squared distances, from the algebraic fit on.
};

/// How much a residual costs: its square near 0, and less than that far away (M-estimators, Huber1981).
enum eLoss {
  eLS_Squares,  ///< The square: least squares.
  eLS_Huber,    ///< Linear beyond the scale; convex, and does not reject.
  eLS_Tukey,    ///< Constant beyond the scale: samples there have no weight (biweight).
  eLS_Welsch,   ///< The weight falls as exp(-r²).
  eLS_Cauchy    ///< The weight falls as 1 / (1 + r²).
};

/// Texts of eFitMethod, for printing and archives.
template <>
struct EnumerationNames<eFitMethod> {
  static constexpr std::string_view typeName = "eFitMethod";  ///< Name of the type.
  /// Names of the enumerators, in the order of their values.
  static constexpr std::array<std::string_view, 2> names{"eFM_Algebraic", "eFM_Orthogonal"};
};

/// Texts of eLoss, for printing and archives.
template <>
struct EnumerationNames<eLoss> {
  static constexpr std::string_view typeName = "eLoss";  ///< Name of the type.
  /// Names of the enumerators, in the order of their values.
  static constexpr std::array<std::string_view, 5> names{"eLS_Squares", "eLS_Huber", "eLS_Tukey", "eLS_Welsch",
                                                         "eLS_Cauchy"};
};

/// Options of the fits that answer a report. What is pointed to must live as long as the call.
struct FitOptions {
  eFitMethod method = eFM_Orthogonal;  ///< What is minimised.
  /// Weights of the samples; empty for equal ones. Of dimension 1: one a sample, finite and not negative, its inverse
  /// variance up to a factor common to all; a weight of 0 leaves the sample out. Of dimension d², where d is that of
  /// the samples: the covariance of each sample, row-major, symmetric and positive definite.
  SampleView weights{};
  /// Standard deviation of a sample of weight 1, in the unit of the samples, where it is known (with covariances: their
  /// common factor, 1 where they are in that unit); 0 to take it from the residuals.
  omReal64 sigma = 0;
  eLoss loss = eLS_Squares;  ///< The cost of a residual.
  /// Scale of the loss, in the unit of the samples; 0 for 95 % of the efficiency of least squares at the normal
  /// distribution, with the standard deviation from the median of absolute residuals. Not used by eLS_Squares.
  omReal64 lossScale = 0;
  /// Not null: outliers are found first by robustEstimation() and left out. Where that is not confident the fit goes
  /// on, and the status of the result says so.
  const RobustOptions* robust = nullptr;
  std::size_t nbMaxIterations = 100;  ///< Most steps of a refinement with the same weights; at least 1.
  ProgressCallback progress;          ///< Called after each step; empty for none.
};

/// Whether options suit samples of points: as many weights as samples, finite and not negative, covariances symmetric
/// and positive definite, scales finite and not negative, no weights and losses with eFM_Algebraic. The status of a
/// failure has the first weights that are to blame. O(weights).
ORMIX_MATH_API EstimationStatus checkFitOptions(const FitOptions& options, const SampleView& samples);

}  // namespace ormix
