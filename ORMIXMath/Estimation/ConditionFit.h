#pragma once

#include <ORMIXMath/Estimation/ConditionModels.h>
#include <ORMIXMath/Estimation/FitResult.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>

namespace ormix {

/// Where conditions are evaluated: value m of a sample less shift[m], times scale[m], a power of two.
template <std::size_t M>
struct SampleFrame {
  std::array<omReal64, M> shift{};  ///< about the mean
  std::array<omReal64, M> scale{};  ///< about one over the spread

  /// Samples as they are.
  SampleFrame() { scale.fill(1); }
};

/// Moves a model to the least sum of squares of its conditions, from a start that is near it, and says how sure it is.
///
/// With weights w the sum is that of w |f|². With covariances C of the samples it is that of the squared Mahalanobis
/// distances e' C⁻¹ e of the samples from the nearest ones that satisfy their conditions (the Gauss-Helmert model, with
/// the adjusted samples as places of the derivatives, Lenzmann2004): errors in both images of a pair. A loss weighs the
/// samples by their lengths, anew in each step. Steps are those of Levenberg and Marquardt, by orthogonal reflections.
///
/// With `options.method` eFM_Algebraic the model is not moved, and the covariance is that of the minimum of the linear
/// equations (HomographyConditions::algebraicWeight()); weights, losses and covariances are refused then.
///
/// In the frame, samples should have their mean near 0 and a spread near 1; covariances are those of the samples as
/// they are, and sigma and the scale of the loss are in the unit of f. `options` must be valid, see checkFitOptions(),
/// samples finite, also those of weight 0, and of the model's dimension (asserted). `robust` of the options is not
/// used.
///
/// `result` receives everything but parameters, status of a success and names: the covariance is that of the tangents
/// at the final model, residuals are the lengths of f (with its sign where it is one number).
///
/// \return failure, with the reason in the status of `result` and the model unchanged, where the conditions are not
/// finite, where the tangents are not determined, where the refinement does not settle within its iterations, and where
/// the callback stopped it.
/// O(samples · tangents²) a step; allocates for the residuals and weights only.
template <class Model>
ORMIX_MATH_API BoolResult fitConditions(const SampleView& samples, const SampleFrame<Model::s_sampleDimension>& frame,
                                        const FitOptions& options, Model& model, FitResult& result);

}  // namespace ormix
