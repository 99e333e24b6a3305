#include <ORMIXMath/Algebra/EigenBridge.h>
#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Estimation/ConditionFit.h>
#include <ORMIXMath/Estimation/Loss.h>
#include <ORMIXUtil/NumericLimits.h>

#include <Eigen/SVD>
#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace ormix {
namespace {

// Steps that promise less of the sum of squares than this change no parameter by 1e-10 of its standard deviation.
constexpr omReal64 s_settled = 1e-22;
// The same by 1e-8, where weights follow the residuals and steps shrink by a factor only.
constexpr omReal64 s_settledWeights = 1e-17;
constexpr omReal64 s_nan = std::numeric_limits<omReal64>::quiet_NaN();

template <class Model, class = void>
constexpr bool s_hasAlgebraicWeight = false;
template <class Model>
constexpr bool s_hasAlgebraicWeight<
    Model, std::void_t<decltype(std::declval<Model>().algebraicWeight(std::declval<const omReal64*>()))>> = true;

using RealTriangle = Eigen::MatrixXd;

BoolResult failed(FitResult& result, EstimationStatus status) {
  result.status = std::move(status);
  return failure(result.status.message);
}

BoolResult invalid(FitResult& result, std::string_view quantity, omReal64 value, omReal64 threshold,
                   std::vector<std::size_t> indices, std::string message) {
  EstimationStatus status = failedStatus(eEC_InvalidInput, quantity, value, threshold, std::move(message));
  status.indices = std::move(indices);
  return failed(result, std::move(status));
}

/// Replaces the lower triangle of s by L with L L' = s; false where s is not positive definite.
template <std::size_t K>
bool choleskyFactor(std::array<std::array<omReal64, K>, K>& s) {
  for (std::size_t c = 0; c < K; ++c)
    for (std::size_t r = c; r < K; ++r) {
      omReal64 value = s[r][c];
      for (std::size_t k = 0; k < c; ++k) value -= s[r][k] * s[c][k];
      if (r == c && !(value > 0)) return false;
      s[r][c] = r == c ? std::sqrt(value) : value / s[c][c];
    }
  return true;
}

/// The triangle of n columns, which a right-hand side follows.
RealTriangle triangleOf(const omReal64* rows, std::size_t n) {
  const Eigen::Map<const detail::RowMajorMatrix> all(rows, static_cast<Eigen::Index>(n),
                                                     static_cast<Eigen::Index>(n + 1));
  return all.leftCols(static_cast<Eigen::Index>(n));
}

std::vector<omReal64> valuesOf(const RealTriangle& matrix) { return {matrix.data(), matrix.data() + matrix.size()}; }

/// Fills the condition number, the rank and its threshold; fails where a tangent is not determined.
BoolResult checkRank(const omReal64* rows, std::size_t n, std::size_t nbEquations, FitResult& result) {
  const RealTriangle triangle = triangleOf(rows, n);
  const RealTriangle scaled = triangle * triangle.colwise().norm().cwiseInverse().asDiagonal();
  const bool isFinite = scaled.allFinite();
  Eigen::VectorXd values = Eigen::VectorXd::Zero(triangle.cols());
  if (isFinite) values = Eigen::JacobiSVD<RealTriangle>(scaled).singularValues();
  const omReal64 smallest = values(values.size() - 1) / values(0);
  result.rankThreshold = static_cast<omReal64>(std::max(nbEquations, n)) * NumericLimits<omReal64>::s_eps;
  result.conditionNumber = 1 / smallest;
  result.rank = 0;
  for (const omReal64 value : values) result.rank += value > result.rankThreshold * values(0);
  if (result.rank == n) return {};
  return failed(result, failedStatus(eEC_RankDeficient, "ratio of the smallest to the largest singular value",
                                     isFinite ? smallest : 0, result.rankThreshold,
                                     "The samples do not determine the parameters"));
}

/// (R' R)⁻¹ times the factor.
std::vector<omReal64> covarianceOf(const omReal64* rows, std::size_t n, omReal64 factor) {
  const auto size = static_cast<Eigen::Index>(n);
  const RealTriangle inverse =
      triangleOf(rows, n).triangularView<Eigen::Upper>().solve(RealTriangle::Identity(size, size));
  return valuesOf(inverse * inverse.transpose() * factor);
}

/// (B' B)⁻¹ (M' M) (B' B)⁻¹ times the factor.
std::vector<omReal64> sandwich(const omReal64* bread, const omReal64* meat, std::size_t n, omReal64 factor) {
  const RealTriangle b = triangleOf(bread, n);
  const RealTriangle transposed = b.transpose();
  RealTriangle root = triangleOf(meat, n).transpose();
  transposed.triangularView<Eigen::Lower>().solveInPlace(root);
  b.triangularView<Eigen::Upper>().solveInPlace(root);
  return valuesOf(root * root.transpose() * factor);
}

template <class Model>
class ConditionFit {
 public:
  static constexpr std::size_t K = Model::s_nbConditions;
  static constexpr std::size_t N = Model::s_nbTangents;
  static constexpr std::size_t M = Model::s_sampleDimension;
  using Qr = TallQr<N + 1>;
  using Step = std::array<omReal64, N>;
  using Sample = Conditions<K, N, M>;

  ConditionFit(const SampleView& samples, const FitOptions& options, FitResult& result)
      : _samples(samples), _options(options), _result(result) {}

  BoolResult run(Model& model) {
    BoolResult checked = check();
    if (!checked) return checked;
    Model best = model;
    Linear linear;
    if (!linearise(best, linear)) return notPositive(best);
    if (_options.method == eFM_Orthogonal) {
      checked = refine(best, linear);
      if (!checked) return checked;
    }
    checked = describe(best, linear);
    if (checked) model = best;
    return checked;
  }

 private:
  /// The conditions at a model, reduced to a triangle and a right-hand side.
  struct Linear {
    std::array<omReal64, N*(N + 1)> rows;  ///< row-major; the last column is the right-hand side
    omReal64 cost = 0;                     ///< sum of the losses
    omReal64 operator()(std::size_t r, std::size_t c) const { return rows[r * (N + 1) + c]; }
  };

  bool hasCovariances() const { return !_options.weights.empty() && _options.weights.dimension != 1; }
  omReal64 weightOf(std::size_t i) const {
    return _options.weights.empty() || hasCovariances() ? 1 : _options.weights[i][0];
  }

  BoolResult check() {
    const SampleView& weights = _options.weights;
    if (_samples.dimension != M)
      return invalid(_result, "dimension of a sample", static_cast<omReal64>(_samples.dimension), M, {},
                     "A fit to conditions takes samples of " + std::to_string(M) + " values, not " +
                         std::to_string(_samples.dimension));
    if (!weights.empty() && weights.nbSamples != _samples.nbSamples)
      return invalid(_result, "number of weights", static_cast<omReal64>(weights.nbSamples),
                     static_cast<omReal64>(_samples.nbSamples), {},
                     std::to_string(weights.nbSamples) + " weights were given for " +
                         std::to_string(_samples.nbSamples) + " samples");
    if (!weights.empty() && weights.dimension != 1 && weights.dimension != M * M)
      return invalid(_result, "values of a weight", static_cast<omReal64>(weights.dimension), M * M, {},
                     "A weight has 1 value or, as a covariance, " + std::to_string(M * M) + ", not " +
                         std::to_string(weights.dimension));
    if (!(_options.sigma >= 0) || !std::isfinite(_options.sigma))
      return invalid(_result, "sigma", _options.sigma, 0, {}, "The standard deviation is negative, NaN or infinite");
    if (!(_options.lossScale >= 0) || !std::isfinite(_options.lossScale))
      return invalid(_result, "scale of the loss", _options.lossScale, 0, {},
                     "The scale of the loss is negative, NaN or infinite");
    if (_options.method == eFM_Algebraic && (!weights.empty() || _options.loss != eLS_Squares))
      return invalid(_result, "method", 0, 0, {}, "The algebraic fit takes neither weights nor losses");
    return checkWeights();
  }

  BoolResult checkWeights() {
    std::vector<std::size_t> wrong;
    for (std::size_t i = 0; i < _samples.nbSamples && wrong.size() < EstimationStatus::s_nbMaxIndices; ++i) {
      const omReal64* values = _options.weights.empty() ? nullptr : _options.weights[i];
      bool isGood = std::all_of(_samples[i], _samples[i] + M, [](omReal64 value) { return std::isfinite(value); });
      for (std::size_t r = 0; values && r < _options.weights.dimension; ++r) isGood &= std::isfinite(values[r]);
      if (values && !hasCovariances()) isGood &= values[0] >= 0;
      // Of rounding alone, covariances of two sides differ; of what is no covariance by more.
      if (values && hasCovariances())
        for (std::size_t r = 0; r < M; ++r)
          for (std::size_t c = 0; c <= r; ++c)
            isGood &= std::abs(values[r * M + c] - values[c * M + r]) <=
                          1e-9 * std::sqrt(std::abs(values[r * (M + 1)]) * std::abs(values[c * (M + 1)])) &&
                      values[r * (M + 1)] >= 0;
      if (!isGood) wrong.push_back(i);
    }
    if (wrong.empty()) {
      _nbUsed = 0;
      for (std::size_t i = 0; i < _samples.nbSamples; ++i) _nbUsed += weightOf(i) > 0;
      if (_nbUsed * K >= N) return {};
      return failed(_result, failedStatus(eEC_TooFewSamples, "number of samples with a weight",
                                          static_cast<omReal64>(_nbUsed), static_cast<omReal64>((N + K - 1) / K),
                                          std::to_string(_nbUsed) + " samples have a weight, at least " +
                                              std::to_string((N + K - 1) / K) + " are needed"));
    }
    std::string message = "Sample " + std::to_string(wrong.front()) +
                          (_options.weights.empty() ? " is" : ", its weight or its covariance is") +
                          " NaN or infinite, or the weight is negative or the covariance not symmetric";
    return invalid(_result, {}, 0, 0, std::move(wrong), std::move(message));
  }

  BoolResult notPositive(const Model& model) {
    std::vector<std::size_t> wrong;
    Sample sample;
    omReal64 length = 0;
    for (std::size_t i = 0; i < _samples.nbSamples && wrong.size() < EstimationStatus::s_nbMaxIndices; ++i)
      if (!whiten(model, i, sample, length)) wrong.push_back(i);
    return invalid(_result, {}, 0, 0, std::move(wrong),
                   "The start of the fit has no distance from a sample, or a covariance is not positive definite");
  }

  /// The conditions of a sample, divided by their standard deviations, and the length of their values. False where
  /// these are no numbers.
  bool whiten(const Model& model, std::size_t i, Sample& sample, omReal64& length) const {
    const omReal64* x = _samples[i];
    model.evaluate(x, sample);
    if (hasCovariances()) {
      if (!adjust(model, x, _options.weights[i], sample)) return false;
    } else if (!_options.weights.empty()) {
      const omReal64 root = std::sqrt(weightOf(i));
      for (std::size_t r = 0; r < K; ++r) {
        sample.values[r] *= root;
        for (omReal64& value : sample.byTangent[r]) value *= root;
      }
    }
    length = lengthOf(sample.values);
    return std::isfinite(length);
  }

  static omReal64 lengthOf(const std::array<omReal64, K>& values) {
    omReal64 square = 0;
    for (const omReal64 value : values) square += value * value;
    return std::sqrt(square);
  }

  /// Moves the place of the derivatives to the nearest sample that satisfies the conditions, by the covariance, and
  /// whitens the conditions as they are from there on.
  static bool adjust(const Model& model, const omReal64* x, const omReal64* covariance, Sample& sample) {
    // Affine conditions are exact after one step; others gain digits with each, as their errors are small.
    constexpr std::size_t nbSteps = Model::s_isAffine ? 1 : 8;
    constexpr omReal64 tolerance = 1e-12;
    std::array<omReal64, M> adjusted;
    std::copy(x, x + M, adjusted.begin());
    std::array<std::array<omReal64, K>, K> factor;
    for (std::size_t step = 0;; ++step) {
      // C E', then E C E'.
      std::array<std::array<omReal64, K>, M> spread{};
      for (std::size_t m = 0; m < M; ++m)
        for (std::size_t r = 0; r < K; ++r)
          for (std::size_t c = 0; c < M; ++c) spread[m][r] += covariance[m * M + c] * sample.bySample[r][c];
      for (std::size_t r = 0; r < K; ++r) {
        for (std::size_t m = 0; m < M; ++m) sample.values[r] += sample.bySample[r][m] * (x[m] - adjusted[m]);
        for (std::size_t c = 0; c < K; ++c) {
          factor[r][c] = 0;
          for (std::size_t m = 0; m < M; ++m) factor[r][c] += sample.bySample[r][m] * spread[m][c];
        }
      }
      if (!choleskyFactor(factor)) return false;
      if (step == nbSteps) break;
      std::array<omReal64, K> y = sample.values;
      forward(factor, y);
      for (std::size_t r = K; r-- > 0;) {
        for (std::size_t k = r + 1; k < K; ++k) y[r] -= factor[k][r] * y[k];
        y[r] /= factor[r][r];
      }
      omReal64 change = 0;
      for (std::size_t m = 0; m < M; ++m) {
        omReal64 moved = x[m];
        for (std::size_t r = 0; r < K; ++r) moved -= spread[m][r] * y[r];
        change = std::max(change, std::abs(moved - adjusted[m]) / (1 + std::abs(moved)));
        adjusted[m] = moved;
      }
      if (change <= tolerance) break;
      model.evaluate(adjusted.data(), sample);
    }
    forward(factor, sample.values);
    for (std::size_t k = 0; k < N; ++k) {
      std::array<omReal64, K> column;
      for (std::size_t r = 0; r < K; ++r) column[r] = sample.byTangent[r][k];
      forward(factor, column);
      for (std::size_t r = 0; r < K; ++r) sample.byTangent[r][k] = column[r];
    }
    return true;
  }

  static void forward(const std::array<std::array<omReal64, K>, K>& factor, std::array<omReal64, K>& b) {
    for (std::size_t r = 0; r < K; ++r) {
      for (std::size_t k = 0; k < r; ++k) b[r] -= factor[r][k] * b[k];
      b[r] /= factor[r][r];
    }
  }

  /// Calls `use(i, sample, length)` for each sample with a weight, which returns the factor of its rows, and reduces
  /// these. False where something is not finite.
  template <class Use>
  bool reduce(const Model& model, Linear& linear, const Use& use) const {
    Qr qr;
    std::size_t nbRows = 0;
    Sample sample;
    omReal64 length = 0;
    for (std::size_t i = 0; i < _samples.nbSamples; ++i) {
      if (!(weightOf(i) > 0)) continue;
      if (!whiten(model, i, sample, length)) return false;
      const omReal64 factor = use(i, length);
      for (std::size_t r = 0; r < K; ++r, ++nbRows) {
        for (std::size_t k = 0; k < N; ++k) qr.block(k)[nbRows] = factor * sample.byTangent[r][k];
        qr.block(N)[nbRows] = -factor * sample.values[r];
      }
      if (nbRows + K > Qr::s_blockRows) {
        qr.fold(nbRows);
        nbRows = 0;
      }
    }
    qr.fold(nbRows);
    for (std::size_t r = 0; r < N; ++r)
      for (std::size_t c = 0; c <= N; ++c) linear.rows[r * (N + 1) + c] = qr(r, c);
    return std::all_of(linear.rows.begin(), linear.rows.end(), [](omReal64 value) { return std::isfinite(value); });
  }

  bool linearise(const Model& model, Linear& linear) const {
    omReal64 cost = 0;
    const eLoss loss = _lossScale > 0 ? _options.loss : eLS_Squares;
    const bool isReduced = reduce(model, linear, [&](std::size_t, omReal64 length) {
      if (loss == eLS_Squares) {
        cost += length * length;
        return omReal64{1};
      }
      cost += lossValue(loss, length / _lossScale) * _lossScale * _lossScale;
      return std::sqrt(lossWeight(loss, length / _lossScale));
    });
    linear.cost = cost;
    return isReduced && std::isfinite(cost);
  }

  /// The step that minimises |triangle step - right|² + damping |lengths step|².
  static Step dampedStep(const Linear& linear, const Step& lengths, omReal64 damping) {
    Qr qr;
    for (std::size_t r = 0; r < N; ++r)
      for (std::size_t c = 0; c <= N; ++c) {
        qr.block(c)[r] = linear(r, c);
        qr.block(c)[N + r] = r == c ? std::sqrt(damping) * lengths[r] : 0;
      }
    qr.fold(2 * N);
    Step step;
    for (std::size_t r = N; r-- > 0;) {
      step[r] = qr(r, N);
      for (std::size_t c = r + 1; c < N; ++c) step[r] -= qr(r, c) * step[c];
      step[r] /= qr(r, r);
    }
    return step;
  }

  static Step lengthsOf(const Linear& linear) {
    Step lengths{};
    for (std::size_t c = 0; c < N; ++c) {
      for (std::size_t r = 0; r <= c; ++r) lengths[c] += linear(r, c) * linear(r, c);
      lengths[c] = std::sqrt(lengths[c]);
    }
    return lengths;
  }

  /// The decrease of the squares that the linear conditions promise, and how long the step is.
  static omReal64 promised(const Linear& linear, const Step& step) {
    omReal64 decrease = 0;
    for (std::size_t r = 0; r < N; ++r) {
      omReal64 changed = -linear(r, N);
      for (std::size_t c = r; c < N; ++c) changed += linear(r, c) * step[c];
      decrease += (linear(r, N) - changed) * (linear(r, N) + changed);
    }
    return decrease;
  }

  static bool isTiny(const Step& step, const Step& lengths) {
    omReal64 square = 0, all = 0;
    for (std::size_t c = 0; c < N; ++c) {
      square += step[c] * step[c] * lengths[c] * lengths[c];
      all += lengths[c] * lengths[c];
    }
    const omReal64 fewRoundings = 16 * NumericLimits<omReal64>::s_eps;
    return square <= fewRoundings * fewRoundings * all;
  }

  BoolResult refine(Model& model, Linear& linear) {
    if (_options.loss == eLS_Squares) return descend(model, linear, s_settled);
    // The scale follows the residuals for some rounds, each of few steps, and is kept then.
    constexpr std::size_t nbMostScales = 6;
    constexpr omReal64 nearlySettled = 1e-8, steady = 1e-4;
    for (std::size_t round = 0; round < nbMostScales; ++round) {
      const omReal64 before = _lossScale;
      updateScale(model);
      if (!linearise(model, linear)) return notPositive(model);
      // Exact samples have no scale.
      if (!(_lossScale > 0) || std::abs(_lossScale - before) <= steady * _lossScale) break;
      BoolResult done = descend(model, linear, nearlySettled);
      if (!done) return done;
    }
    return descend(model, linear, s_settledWeights);
  }

  /// The standard deviation of weight 1 by the median length, and from it the scale of the loss.
  void updateScale(const Model& model) {
    std::vector<omReal64> lengths;
    lengths.reserve(_nbUsed);
    Sample sample;
    omReal64 length = 0;
    for (std::size_t i = 0; i < _samples.nbSamples; ++i)
      if (weightOf(i) > 0 && whiten(model, i, sample, length)) lengths.push_back(length);
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
    std::nth_element(lengths.begin(), middle, lengths.end());
    const auto nbEquations = static_cast<omReal64>(_nbUsed * K);
    // The fit takes N of the deviations away.
    const omReal64 loss = nbEquations > N ? std::sqrt(nbEquations / (nbEquations - N)) : 1;
    _sigma = _options.sigma > 0 ? _options.sigma : *middle / medianLength(K) * loss;
    _lossScale = _options.lossScale > 0 ? _options.lossScale : _sigma * efficientLossScale(_options.loss, K);
  }

  /// \param settled the part of the sum of squares that a last step may promise
  BoolResult descend(Model& model, Linear& linear, omReal64 settled) {
    // Damping beyond this makes steps that change no digit.
    constexpr omReal64 largestDamping = 1e20;
    omReal64 damping = 0, growth = 2;
    Linear trialLinear;
    while (_result.nbIterations < std::max<std::size_t>(_options.nbMaxIterations, 1)) {
      if (isStopped())
        return failed(_result, failedStatus(eEC_Stopped, {}, 0, 0, "The fit was stopped by its callback"));
      const Step lengths = lengthsOf(linear);
      const Step step = dampedStep(linear, lengths, damping);
      const bool isFinite = std::all_of(step.begin(), step.end(), [](omReal64 value) { return std::isfinite(value); });
      const omReal64 decrease = isFinite ? promised(linear, step) : 0;
      if (isFinite && (isTiny(step, lengths) || decrease <= settled * linear.cost)) return {};
      ++_result.nbIterations;
      const Model trial = isFinite ? model.moved(step) : model;
      if (isFinite && linearise(trial, trialLinear) && trialLinear.cost < linear.cost) {
        const omReal64 gain = (linear.cost - trialLinear.cost) / decrease;
        model = trial;
        linear = trialLinear;
        damping = gain > 0.25 ? damping / 10 : damping;
        if (damping < 1e-8) damping = 0;
        growth = 2;
        continue;
      }
      // What is promised is rounding: this is the minimum.
      if (isFinite && decrease <= NumericLimits<omReal64>::s_sqrt_eps * linear.cost) return {};
      damping = std::max(damping * growth, 1e-4);
      growth *= 2;
      if (!(damping < largestDamping)) break;
    }
    return failed(
        _result,
        failedStatus(eEC_NoConvergence, "number of iterations", static_cast<omReal64>(_result.nbIterations),
                     static_cast<omReal64>(_options.nbMaxIterations), "The fit did not settle within its iterations"));
  }

  bool isStopped() const {
    const auto fraction = static_cast<omReal64>(_result.nbIterations) / static_cast<omReal64>(_options.nbMaxIterations);
    return _options.progress && !_options.progress(std::min(fraction, 1.0));
  }

  /// What the result says of the model.
  BoolResult describe(const Model& model, const Linear& linear) {
    const BoolResult determined = checkRank(linear.rows.data(), N, _nbUsed * K, _result);
    if (!determined) return determined;
    _result.degreesOfFreedom = _nbUsed * K - N;
    _result.method = _options.method;
    fillResiduals(model);
    _result.covariance = covarianceOf(linear.rows.data(), N, varianceFactor(linear));
    if constexpr (s_hasAlgebraicWeight<Model>)
      if (_options.method == eFM_Algebraic) describeAlgebraic(model);
    return {};
  }

  void fillResiduals(const Model& model) {
    const bool isWeighted = !_options.weights.empty() || _lossScale > 0;
    _result.residuals.resize(_samples.nbSamples);
    _result.weights.assign(isWeighted ? _samples.nbSamples : 0, 1);
    _lengths.assign(_lossScale > 0 ? _samples.nbSamples : 0, 0);
    Sample sample;
    omReal64 length = 0;
    for (std::size_t i = 0; i < _samples.nbSamples; ++i) {
      model.evaluate(_samples[i], sample);
      _result.residuals[i] = K == 1 ? sample.values[0] : lengthOf(sample.values);
      if (!isWeighted) continue;
      omReal64& weight = _result.weights[i];
      weight = weightOf(i);
      if (_lossScale > 0 && weight > 0 && whiten(model, i, sample, length)) {
        _lengths[i] = length;
        weight *= lossWeight(_options.loss, length / _lossScale);
      }
    }
  }

  /// The covariance of the minimum of the linear equations, in which each sample has its own weight.
  void describeAlgebraic(const Model& model) {
    Linear bread, meat;
    const auto weighed = [&](std::size_t i) { return model.algebraicWeight(_samples[i]); };
    if (reduce(model, bread, [&](std::size_t i, omReal64) { return std::sqrt(weighed(i)); }) &&
        reduce(model, meat, [&](std::size_t i, omReal64) { return weighed(i); }))
      _result.covariance = sandwich(bread.rows.data(), meat.rows.data(), N, _result.sigma0 * _result.sigma0);
    else
      std::fill(_result.covariance.begin(), _result.covariance.end(), s_nan);
  }

  /// By what the inverse of the squared triangle is multiplied, and sigma0.
  omReal64 varianceFactor(const Linear& linear) {
    const auto freedom = static_cast<omReal64>(_result.degreesOfFreedom);
    if (!(_lossScale > 0) || _options.loss == eLS_Squares) {
      _result.sigma0 = _options.sigma > 0 ? _options.sigma : freedom > 0 ? std::sqrt(linear.cost / freedom) : s_nan;
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
      const omReal64 u = _lengths[i] / _lossScale;
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
  const FitOptions& _options;
  FitResult& _result;
  std::size_t _nbUsed = 0;
  omReal64 _lossScale = 0;         ///< 0 before it is known
  omReal64 _sigma = 0;             ///< from the median
  std::vector<omReal64> _lengths;  ///< of the whitened conditions, where there is a loss
};

}  // namespace

template <class Model>
BoolResult fitConditions(const SampleView& samples, const FitOptions& options, Model& model, FitResult& result) {
  return ConditionFit<Model>(samples, options, result).run(model);
}

#define ORMIX_MATH_FIT_CONDITIONS(...) \
  template ORMIX_MATH_API BoolResult fitConditions(const SampleView&, const FitOptions&, __VA_ARGS__&, FitResult&);
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
