#pragma once

#include <ORMIXMath/Estimation/FitResult.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>
#include <vector>

/// \file
/// Fits that minimise distances of samples from a model, by Levenberg's and Marquardt's steps, with weights, losses and
/// the covariance of what is found. A model gives distances and their derivatives; everything else is here.

namespace ormix {

/// Where a model writes what it computes of a block of samples: equation k of sample i of the block in row k · nb + i,
/// where nb is the number of samples of the block. Null is what is not asked for.
struct DistanceBlock {
  static constexpr std::size_t s_nbRows = 128;  ///< Rows of a column, the most of a block.

  omReal64* distances;    ///< Distances.
  omReal64* derivatives;  ///< By unknown j, from derivatives + j · s_nbRows on.
  omReal64* normals;      ///< The derivatives by the coordinates of the sample, from normals + d · s_nbRows on.
  omReal64* gains;        ///< What an algebraic fit multiplies distances by, to first order and up to a common factor.
};

/// A model that can be fitted by fitDistances(): the distances of its samples, and their derivatives.
///
/// The loop holds the model as a state of a few numbers, and moves it by steps of the unknowns, as many as the model
/// has degrees of freedom. A direction, say, is a state of three numbers that moves by two unknowns and keeps its
/// length. States and distances are relative to a frame, an origin and a unit within the cloud of samples, so that
/// places and sizes of the samples do not matter.
class ORMIX_MATH_API DistanceModel {
 public:
  static constexpr std::size_t s_nbMostUnknowns = 9;    ///< Most unknowns.
  using State = std::array<omReal64, 16>;               ///< What determines the model; the model defines the numbers.
  using Step = std::array<omReal64, s_nbMostUnknowns>;  ///< A change of the unknowns.

  virtual ~DistanceModel();

  std::size_t nbSamples = 0;    ///< Samples that evaluate() knows.
  std::size_t nbUnknowns = 0;   ///< Degrees of freedom, 2 to s_nbMostUnknowns.
  std::size_t nbReported = 0;   ///< Parameters that report() answers.
  std::size_t nbEquations = 1;  ///< Equations of a sample, whose root of squares is its distance; 1, 2 or 3.
  omReal64 unit = 1;            ///< A distance of 1 in the frame is this long.
  bool isGainConstant = true;   ///< Whether algebraic fits weight all distances alike; gains are not asked for then.
  omReal64 coarseness = 0;      ///< Rounding error of a coordinate, in the frame.

  /// Writes the equations of `nb` samples from `first` on. Called with at most s_nbRows / nbEquations samples.
  virtual void evaluate(const State& state, std::size_t first, std::size_t nb, const DistanceBlock& block) const = 0;
  /// Sets `moved` to the state after a step; false when there is no such model, as with a negative radius.
  virtual bool move(const State& state, const Step& step, State& moved) const = 0;
  /// Writes the parameters as they are reported, and their derivatives by the unknowns: nbReported rows of nbUnknowns.
  /// \return 1, or -1 when the reported model has its normal on the other side: distances then change their signs
  virtual omReal64 report(const State& state, omReal64* params, omReal64* jacobian) const = 0;

 protected:
  DistanceModel() = default;
  DistanceModel(const DistanceModel&) = default;
  DistanceModel& operator=(const DistanceModel&) = default;
};

/// Fits the model to its samples, from the state of an algebraic fit on: with eFM_Orthogonal the weighted sum of the
/// losses of distances is made least, with eFM_Algebraic the state stays. `options` must be valid, see
/// checkFitOptions(); options.robust is not looked at, and with eFM_Algebraic neither are weights and losses.
///
/// `result` gets everything but residuals and inliers. The covariance is, to first order in the errors of the samples:
/// - of an orthogonal fit, sigma0² (JᵀWJ)⁻¹ from the triangle of the weighted Jacobian J of the distances;
/// - with a loss, that of the M-estimator, with Huber's correction for few samples (Huber1981, chapter 7);
/// - of an algebraic fit, which weights distances by gains G, sigma0² (JᵀG²J)⁻¹ JᵀG⁴J (JᵀG²J)⁻¹ (White1980).
/// What the samples do not determine has an infinite variance.
///
/// Covariances of samples enter by the variance of each sample along the normal, with the normals of the last but one
/// fit. Fails, with the status in `result` and `state` unchanged, when the loop does not settle within
/// options.nbMaxIterations, when it is stopped, and when the distances are not finite. O(samples · unknowns²) a step.
ORMIX_MATH_API BoolResult fitDistances(const DistanceModel& model, const FitOptions& options,
                                       DistanceModel::State& state, FitResult& result);

/// The distances of all samples of a model in the unit of the samples, times `sign`. O(samples).
ORMIX_MATH_API std::vector<omReal64> distancesFrom(const DistanceModel& model, const DistanceModel::State& state,
                                                   omReal64 sign);

}  // namespace ormix
