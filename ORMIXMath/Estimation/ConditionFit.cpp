#include <ORMIXMath/Estimation/ConditionFit.h>
#include <ORMIXMath/Estimation/ConditionRows.h>
#include <ORMIXMath/Estimation/LevenbergMarquardt.h>
#include <ORMIXMath/Estimation/Loss.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace ormix {
namespace {

using detail::ConditionRows;
using detail::LinearSquares;
using detail::s_isLinear;
using detail::UnknownValues;

// What is left after the last step changes no parameter by this part of its standard deviation; steps that promise a
// smaller part of the sum of squares than the second number are not made.
constexpr omReal64 s_leftOver = 1e-10;
constexpr omReal64 s_settled = 1e-22;
// The same where weights follow the residuals and steps shrink by a factor only, and while their scale is not settled.
constexpr omReal64 s_leftOverOfWeights = 1e-8;
constexpr omReal64 s_leftOverOfScales = 1e-4;
constexpr omReal64 s_nan = std::numeric_limits<omReal64>::quiet_NaN();

template <class Model, class = void>
constexpr bool s_hasAlgebraicWeight = false;
template <class Model>
constexpr bool s_hasAlgebraicWeight<
    Model, std::void_t<decltype(std::declval<Model>().algebraicWeight(std::declval<const omReal64*>()))>> = true;

/// What the rows of a sample are multiplied by, besides the root of its weight.
enum eRowFactor {
  eRF_Loss,             ///< the root of the weight by the loss
  eRF_Algebraic,        ///< what the linear equations of a homography weigh
  eRF_SquaredAlgebraic  ///< its square
};

/// One fit.
template <class Model>
class ConditionFit {
 public:
  static constexpr std::size_t K = Model::s_nbConditions;
  static constexpr std::size_t N = Model::s_nbTangents;
  static constexpr std::size_t M = Model::s_sampleDimension;
  using Sample = Conditions<K, N, M>;
  using Squares = LinearSquares;

  ConditionFit(const SampleView& samples, const SampleFrame<M>& frame, const FitOptions& options, FitResult& result)
      : _samples(samples),
        _rows(samples, frame, options.weights.dimension > 1 ? options.weights : SampleView()),
        _options(options),
        _result(result),
        _lengths(samples.nbSamples) {
    for (std::size_t i = 0; i < _samples.nbSamples; ++i) _nbUsed += weightOf(i) > 0;
  }

  BoolResult run(Model& model) {
    Model best = model;
    LinearSquares squares;
    _result.nbIterations = 0;
    if (!linearise(best, squares)) return notPositive(best);
    if (_options.method == eFM_Orthogonal) {
      EstimationStatus refined = refine(best, squares);
      if (!refined) return failed(std::move(refined));
    }
    EstimationStatus described = describe(best, squares);
    if (!described) return failed(std::move(described));
    model = best;
    return {};
  }

  // -- what detail::minimise() asks

  static bool move(const Model& model, const UnknownValues& step, Model& moved) {
    std::array<omReal64, N> tangents;
    std::copy_n(step.begin(), N, tangents.begin());
    moved = model.moved(tangents);
    return true;
  }
  bool linearise(const Model& model, LinearSquares& squares) { return reduce(model, eRF_Loss, squares); }
  detail::NegligibleChanges negligible(const LinearSquares& squares) const {
    constexpr omReal64 fewRoundings = 16 * NumericLimits<omReal64>::s_eps;
    const UnknownValues lengths = detail::columnLengths(squares);
    omReal64 all = 0;
    for (std::size_t k = 0; k < N; ++k) all += lengths[k] * lengths[k];
    const omReal64 rounding = std::max(fewRoundings * fewRoundings * all, s_settled * squares.cost);
    const auto freedom = static_cast<omReal64>(std::max<std::size_t>(degreesOfFreedom(), 1));
    return {std::max(_leftOver * _leftOver * squares.cost / freedom, rounding), rounding};
  }
  bool goesOn(std::size_t nbSteps) const {
    const omReal64 nb = static_cast<omReal64>(_result.nbIterations + nbSteps);
    return !_options.progress || _options.progress(std::min(nb / static_cast<omReal64>(_options.nbMaxIterations), 1.0));
  }

 private:
  bool hasWeights() const { return _options.weights.dimension == 1; }
  omReal64 weightOf(std::size_t i) const { return hasWeights() ? *_options.weights[i] : 1; }
  std::size_t degreesOfFreedom() const { return std::max(_nbUsed * K, N) - N; }

  BoolResult failed(EstimationStatus status) {
    _result.status = std::move(status);
    return failure(_result.status.message);
  }

  BoolResult notPositive(const Model& model) {
    EstimationStatus status =
        failedStatus(eEC_InvalidInput, {}, 0, 0,
                     "The start of the fit has no distance from a sample, or a covariance is not positive definite");
    Sample sample;
    for (std::size_t i = 0; i < _samples.nbSamples && status.indices.size() < EstimationStatus::s_nbMaxIndices; ++i)
      if (!(_rows.whiten(model, i, sample) && std::isfinite(_rows.lengthOf(sample)))) status.indices.push_back(i);
    return failed(std::move(status));
  }

  // -- rows

  /// The length of what is left of a sample, in standard deviations of weight 1.
  omReal64 residualOf(std::size_t i) const { return std::abs(_lengths[i]) * std::sqrt(weightOf(i)); }

  omReal64 factorOf(const Model& model, eRowFactor kind, std::size_t i, omReal64& cost) const {
    if constexpr (s_hasAlgebraicWeight<Model>)
      if (kind != eRF_Loss) {
        const omReal64 weight = model.algebraicWeight(_rows.framed(i).data());
        return kind == eRF_Algebraic ? std::sqrt(weight) : weight;
      }
    const omReal64 root = std::sqrt(weightOf(i));
    if (!(_lossScale > 0) || root == 0) return root;
    const omReal64 u = residualOf(i) / _lossScale;
    cost += lossValue(_options.loss, u) * _lossScale * _lossScale;
    return root * std::sqrt(lossWeight(_options.loss, u));
  }

  /// Reduces the conditions at a model, and keeps their lengths. False where something is not finite.
  bool reduce(const Model& model, eRowFactor kind, LinearSquares& squares) {
    constexpr std::size_t nbMost = ConditionRows<Model>::s_nbMost;
    const bool hasFactors = hasWeights() || _lossScale > 0 || kind != eRF_Loss;
    if constexpr (s_isLinear<Model>)
      if (!hasFactors && !_rows.hasCovariances() && _rows.reduceBySums(model, squares, _lengths)) return true;
    bool isPositive = true;
    omReal64 cost = 0;
    const auto forEachBlock = [&](TallQr<N + 1>& qr, const auto& fold) {
      cost = 0;
      for (std::size_t first = 0; isPositive && first < _samples.nbSamples; first += nbMost) {
        const std::size_t nb = std::min(nbMost, _samples.nbSamples - first);
        const std::size_t stride = ConditionRows<Model>::strideOf(nb);
        isPositive = _rows.fill(model, first, nb, qr.block(0), stride);
        _rows.fillLengths(qr.block(N), nb, stride, &_lengths[first]);
        std::array<omReal64, nbMost> factors;
        if (hasFactors)
          for (std::size_t i = 0; i < nb; ++i) factors[i] = factorOf(model, kind, first + i, cost);
        for (std::size_t row = 0; row < (N + 1) * K; ++row) {
          omReal64* values = qr.block(row / K) + row % K * stride;
          for (std::size_t i = 0; hasFactors && i < nb; ++i) values[i] *= factors[i];
          std::fill(values + nb, values + stride, 0.0);
        }
        fold(K * stride);
      }
    };
    detail::reduceRows<N>(forEachBlock, squares);
    if (_lossScale > 0) squares.cost = cost;
    return isPositive && detail::isFinite(squares);
  }

  // -- the loop

  EstimationStatus refine(Model& model, LinearSquares& squares) {
    if (_options.loss == eLS_Squares) return descend(model, squares, s_leftOver);
    // The scale follows the residuals for some rounds, each of few steps, and is kept then.
    constexpr std::size_t nbMostScales = 6;
    constexpr omReal64 steady = 1e-4;
    for (std::size_t round = 0; round < nbMostScales; ++round) {
      const omReal64 before = _lossScale;
      updateScale(model);
      if (!linearise(model, squares)) return detail::failedDescent({detail::eDE_NotFinite}, 0);
      // Exact samples have no scale.
      if (!(_lossScale > 0) || std::abs(_lossScale - before) <= steady * _lossScale) break;
      EstimationStatus done = descend(model, squares, s_leftOverOfScales);
      if (!done) return done;
    }
    return descend(model, squares, s_leftOverOfWeights);
  }

  /// The standard deviation of weight 1 by the median length, and from it the scale of the loss.
  void updateScale(const Model& model) {
    _rows.measure(model, true, _lengths);
    std::vector<omReal64> lengths;
    lengths.reserve(_nbUsed);
    for (std::size_t i = 0; i < _samples.nbSamples; ++i)
      if (weightOf(i) > 0) lengths.push_back(residualOf(i));
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
    std::nth_element(lengths.begin(), middle, lengths.end());
    const auto nbEquations = static_cast<omReal64>(_nbUsed * K);
    // The fit takes N of the deviations away.
    const omReal64 loss = nbEquations > N ? std::sqrt(nbEquations / (nbEquations - N)) : 1;
    _sigma = _options.sigma > 0 ? _options.sigma : *middle / medianLength(K) * loss;
    _lossScale = _options.lossScale > 0 ? _options.lossScale : _sigma * efficientLossScale(_options.loss, K);
  }

  EstimationStatus descend(Model& model, LinearSquares& squares, omReal64 leftOver) {
    _leftOver = leftOver;
    const detail::DescentCourse course = detail::minimise(*this, model, squares, _options.nbMaxIterations);
    _result.nbIterations += course.nbSteps;
    return detail::failedDescent(course, _options.nbMaxIterations);
  }

  // -- the end

  /// What the result says of the model.
  EstimationStatus describe(const Model& model, const LinearSquares& squares) {
    const omReal64 threshold = static_cast<omReal64>(std::max(_nbUsed * K, N)) * NumericLimits<omReal64>::s_eps;
    detail::TriangleInverse inverse = detail::inverseOf(squares, threshold);
    _result.rankThreshold = threshold;
    _result.conditionNumber = 1 / inverse.ratio;
    _result.rank = inverse.rank;
    if (_result.rank < N)
      return failedStatus(eEC_RankDeficient, "ratio of the smallest to the largest singular value", inverse.ratio,
                          threshold, "The samples do not determine the parameters");
    _result.degreesOfFreedom = degreesOfFreedom();
    _result.method = _options.method;
    // Without a step the lengths are those of the last pass.
    bool isMeasured = _result.nbIterations == 0 && !_rows.hasCovariances();
    if (_lossScale > 0) {
      _rows.measure(model, true, _lengths);
      isMeasured = !_rows.hasCovariances();
    }
    keepWeights();
    omReal64 factor = varianceFactor(squares.cost);
    if constexpr (s_hasAlgebraicWeight<Model>)
      if (_options.method == eFM_Algebraic) factor = describeAlgebraic(model, inverse.left);
    if (!isMeasured) _rows.measure(model, false, _lengths);
    _result.residuals = std::move(_lengths);
    _result.covariance.resize(N * N);
    for (std::size_t r = 0; r < N; ++r)
      for (std::size_t c = 0; c < N; ++c) {
        omReal64 sum = 0;
        for (std::size_t k = 0; k < N; ++k) sum += inverse.left(r, k) * inverse.left(c, k);
        _result.covariance[r * N + c] = factor * sum;
      }
    return {};
  }

  /// The weights of the last step.
  void keepWeights() {
    _result.weights.clear();
    if (_options.weights.empty() && !(_lossScale > 0)) return;
    _result.weights.resize(_samples.nbSamples);
    for (std::size_t i = 0; i < _samples.nbSamples; ++i) {
      const omReal64 byLoss = _lossScale > 0 ? lossWeight(_options.loss, residualOf(i) / _lossScale) : 1;
      _result.weights[i] = weightOf(i) * byLoss;
    }
  }

  /// The covariance of the minimum of the linear equations, in which each sample has its own weight.
  omReal64 describeAlgebraic(const Model& model, detail::UnknownMatrix& left) {
    LinearSquares bread, meat;
    if (!reduce(model, eRF_Algebraic, bread) || !reduce(model, eRF_SquaredAlgebraic, meat)) return s_nan;
    left = detail::inverseOf(bread, _result.rankThreshold).left;
    detail::spreadBy(meat, left);
    return _result.sigma0 * _result.sigma0;
  }

  /// By what the inverse of the squared triangle is multiplied, and sigma0.
  omReal64 varianceFactor(omReal64 cost) {
    const auto freedom = static_cast<omReal64>(_result.degreesOfFreedom);
    if (!(_lossScale > 0)) {
      _result.sigma0 = _options.sigma > 0 ? _options.sigma : freedom > 0 ? std::sqrt(cost / freedom) : s_nan;
      return _result.sigma0 * _result.sigma0;
    }
    _result.sigma0 = freedom > 0 || _options.sigma > 0 ? _sigma : s_nan;
    return freedom > 0 ? lossFactor() : s_nan;
  }

  /// Of M-estimators: E[psi²] / E[psi']² (Huber1981), with the expected derivative of one coordinate of psi = w f.
  omReal64 lossFactor() const {
    omReal64 squares = 0, slopes = 0, weights = 0, nbWithWeight = 0;
    for (std::size_t i = 0; i < _samples.nbSamples; ++i) {
      const omReal64 base = weightOf(i);
      if (!(base > 0)) continue;
      const omReal64 u = residualOf(i) / _lossScale;
      const omReal64 weight = lossWeight(_options.loss, u);
      squares += weight * weight * u * u * _lossScale * _lossScale / static_cast<omReal64>(K);
      slopes += weight + lossWeightSlope(_options.loss, u) / static_cast<omReal64>(K);
      weights += weight;
      nbWithWeight += weight > 0;
    }
    const omReal64 nbEquations = nbWithWeight * static_cast<omReal64>(K);
    const omReal64 meat = squares / weights * nbEquations / (nbEquations - static_cast<omReal64>(N));
    const omReal64 bread = slopes / weights;
    return nbEquations > N && bread > 0 ? meat / (bread * bread) : s_nan;
  }

  const SampleView _samples;
  const ConditionRows<Model> _rows;
  const FitOptions& _options;
  FitResult& _result;
  std::size_t _nbUsed = 0;
  omReal64 _leftOver = s_leftOver;
  omReal64 _lossScale = 0;         ///< 0 before it is known, and for squares
  omReal64 _sigma = 0;             ///< from the median
  std::vector<omReal64> _lengths;  ///< of the conditions without their weights; values where each is one number
};

}  // namespace

template <class Model>
BoolResult fitConditions(const SampleView& samples, const SampleFrame<Model::s_sampleDimension>& frame,
                         const FitOptions& options, Model& model, FitResult& result) {
  assert(samples.dimension == Model::s_sampleDimension);
  return ConditionFit<Model>(samples, frame, options, result).run(model);
}

#define ORMIX_MATH_FIT_CONDITIONS(...)                                                                 \
  template ORMIX_MATH_API BoolResult fitConditions(const SampleView&,                                  \
                                                   const SampleFrame<__VA_ARGS__::s_sampleDimension>&, \
                                                   const FitOptions&, __VA_ARGS__&, FitResult&);
ORMIX_MATH_FIT_CONDITIONS(LinearConditions<2, eLF_Translation>)
ORMIX_MATH_FIT_CONDITIONS(LinearConditions<2, eLF_Rigid>)
ORMIX_MATH_FIT_CONDITIONS(LinearConditions<2, eLF_Similarity>)
ORMIX_MATH_FIT_CONDITIONS(LinearConditions<3, eLF_Translation>)
ORMIX_MATH_FIT_CONDITIONS(LinearConditions<3, eLF_Rigid>)
ORMIX_MATH_FIT_CONDITIONS(LinearConditions<3, eLF_Similarity>)
ORMIX_MATH_FIT_CONDITIONS(HomographyConditions<2>)
ORMIX_MATH_FIT_CONDITIONS(HomographyConditions<3>)
ORMIX_MATH_FIT_CONDITIONS(IntersectionConditions)
#undef ORMIX_MATH_FIT_CONDITIONS

}  // namespace ormix
