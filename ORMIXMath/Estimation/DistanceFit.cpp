#include <ORMIXMath/Estimation/DistanceFit.h>
#include <ORMIXMath/Estimation/LevenbergMarquardt.h>
#include <ORMIXMath/Estimation/Loss.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

namespace ormix {

DistanceModel::~DistanceModel() = default;

namespace {

using State = DistanceModel::State;
constexpr std::size_t s_nbRows = DistanceBlock::s_nbRows;
constexpr omReal64 s_unknown = std::numeric_limits<omReal64>::quiet_NaN();

// What is left after the last step changes the residuals by less than this part of their standard deviation.
constexpr omReal64 s_leftOver = 1e-6;
// The scale of a loss is settled when it changes by less than this, and changes at most so often.
constexpr omReal64 s_settledScale = 1e-4;
constexpr std::size_t s_nbMostScales = 30;
// Variances of samples along the normals are settled when the fit moves by less than this part of its uncertainty.
constexpr omReal64 s_settledNormals = 1e-4;

/// What the rows of a triangle are multiplied by.
enum eRowWeights {
  eRW_All,          ///< the roots of all weights, those of the loss too
  eRW_Given,        ///< the roots of the weights that were given
  eRW_Gains,        ///< the gains of an algebraic fit
  eRW_SquaredGains  ///< their squares
};

/// The weighted distances and their derivatives as a triangle, and their cost: the sum of the losses, or of squares.
struct Pass : detail::LinearSquares {
  omReal64 psi2 = 0;    ///< sums over the samples for the variance of an M-estimator
  omReal64 slope = 0;   ///< of ψ
  omReal64 slope2 = 0;  ///< of its square
};

/// Calls `use` with the number of unknowns as a constant.
template <std::size_t N = DistanceModel::s_nbMostUnknowns, class Use>
void callForNumber(std::size_t nb, const Use& use) {
  if (nb == N) return use(std::integral_constant<std::size_t, N>());
  if constexpr (N > 2) callForNumber<N - 1>(nb, use);
}

/// One fit.
class DistanceFit {
 public:
  DistanceFit(const DistanceModel& model, const FitOptions& options, FitResult& result)
      : _model(model),
        _options(options),
        _result(result),
        _nb(model.nbUnknowns),
        _hasCovariances(options.weights.dimension > 1),
        _isAlgebraic(options.method == eFM_Algebraic),
        _loss(_isAlgebraic ? eLS_Squares : options.loss),
        _sampleUnit(_hasCovariances ? 1 : model.unit) {}

  BoolResult fit(State& start) {
    State state = start;
    if (!weigh(state)) return notFinite();
    if (_isAlgebraic) {
      if (!finishAlgebraic(state)) return notFinite();
    } else {
      const EstimationStatus status = descend(state);
      if (!status) return failed(status);
      if (!finishOrthogonal(state)) return notFinite();
    }
    reportCovariance(state);
    start = state;
    return {};
  }

  // -- what detail::minimise() asks

  bool move(const State& state, const detail::UnknownValues& step, State& moved) const {
    DistanceModel::Step unknowns;
    std::copy_n(step.begin(), unknowns.size(), unknowns.begin());
    return _model.move(state, unknowns, moved);
  }
  bool linearise(const State& state, Pass& found) const { return pass(state, eRW_All, found); }
  detail::NegligibleChanges negligible(const Pass& at) const {
    const omReal64 floor = 4 * _model.coarseness;
    return {std::max(s_leftOver * s_leftOver * varianceOf(at), _sumOfWeights * floor * floor), 0};
  }
  bool goesOn(std::size_t nbSteps) const {
    const auto nb = static_cast<omReal64>(_result.nbIterations + nbSteps);
    return !_options.progress || _options.progress(std::min(nb / static_cast<omReal64>(_options.nbMaxIterations), 1.0));
  }

 private:
  // -- weights

  /// The weights that were given, those by covariances from the normals at a state. Adds them up.
  bool weigh(const State& state) {
    const SampleView& given = _options.weights;
    _nbUsed = _model.nbSamples;
    _sumOfWeights = static_cast<omReal64>(_model.nbSamples);
    if (_isAlgebraic || given.empty()) return true;
    if (_hasCovariances) {
      _ownWeights.resize(_model.nbSamples);
      weighByNormals(state);
      _weights = _ownWeights.data();
    } else {
      _weights = given.data;
    }
    _nbUsed = 0;
    _sumOfWeights = 0;
    for (std::size_t i = 0; i < _model.nbSamples; ++i) {
      _nbUsed += _weights[i] > 0;
      _sumOfWeights += _weights[i];
    }
    return std::isfinite(_sumOfWeights);
  }

  void weighByNormals(const State& state) {
    const auto dimension = static_cast<std::size_t>(std::lround(std::sqrt(_options.weights.dimension)));
    std::array<omReal64, s_nbRows> distances;
    std::array<omReal64, 3 * s_nbRows> normals;
    forEachBlock([&](std::size_t first, std::size_t nb) {
      _model.evaluate(state, first, nb, {distances.data(), nullptr, normals.data(), nullptr});
      for (std::size_t i = 0; i < nb; ++i) {
        const omReal64* covariance = _options.weights[first + i];
        omReal64 variance = 0;
        for (std::size_t d = 0; d < dimension; ++d)
          for (std::size_t e = 0; e < dimension; ++e)
            variance += covariance[d * dimension + e] * normals[d * s_nbRows + i] * normals[e * s_nbRows + i];
        _ownWeights[first + i] = _model.unit * (_model.unit / variance);
      }
    });
  }

  template <class Function>
  void forEachBlock(const Function& function) const {
    const std::size_t nbMost = s_nbRows / _model.nbEquations;
    for (std::size_t first = 0; first < _model.nbSamples; first += nbMost)
      function(first, std::min(nbMost, _model.nbSamples - first));
  }

  // -- triangles

  /// The triangle and the cost at a state; false when they are not finite.
  bool pass(const State& state, eRowWeights weights, Pass& found) const {
    callForNumber(_nb, [&](auto number) { fold<number()>(state, weights, found); });
    return detail::isFinite(found);
  }

  /// The triangles with the gains and with their squares, by one evaluation where sums of products do.
  bool passOfGains(const State& state, Pass& once, Pass& twice) const {
    bool isDone = false;
    callForNumber(_nb, [&](auto number) {
      detail::ColumnProducts<number() + 1> squared;
      fold<number()>(state, eRW_Gains, once, &squared);
      twice.n = number();
      isDone = squared.toSquares(twice);
    });
    return detail::isFinite(once) && (isDone || pass(state, eRW_SquaredGains, twice));
  }

  template <std::size_t N>
  void fold(const State& state, eRowWeights weights, Pass& found,
            detail::ColumnProducts<N + 1>* again = nullptr) const {
    const bool hasGains = weights == eRW_Gains || weights == eRW_SquaredGains;
    omReal64 cost = 0;
    std::array<omReal64, s_nbRows> factors;
    const auto forEach = [&](TallQr<N + 1>& qr, const auto& foldRows) {
      cost = found.psi2 = found.slope = found.slope2 = 0;
      forEachBlock([&](std::size_t first, std::size_t nb) {
        _model.evaluate(state, first, nb, {qr.block(N), qr.block(0), nullptr, hasGains ? factors.data() : nullptr});
        if (hasGains || _weights || _scale > 0) {
          cost += hasGains ? fillGains(weights, nb, qr.block(N), factors.data())
                           : fillFactors(weights, first, nb, qr.block(N), factors.data(), found);
          scale<N>(qr, nb, factors.data());
        }
        foldRows(nb * _model.nbEquations);
        if (!again) return;
        scale<N>(qr, nb, factors.data());
        again->add(qr.block(0), nb * _model.nbEquations);
      });
      again = nullptr;
    };
    detail::reduceRows<N>(forEach, found);
    if (_scale > 0 || hasGains) found.cost = cost;
  }

  template <std::size_t N>
  void scale(TallQr<N + 1>& qr, std::size_t nb, const omReal64* factors) const {
    for (std::size_t c = 0; c <= N; ++c)
      for (std::size_t k = 0; k < _model.nbEquations; ++k)
        for (std::size_t i = 0; i < nb; ++i) qr.block(c)[k * nb + i] *= factors[i];
  }

  /// The length of the equations of a sample of a block.
  omReal64 lengthOf(const omReal64* equations, std::size_t nb, std::size_t i) const {
    if (_model.nbEquations == 1) return std::abs(equations[i]);
    omReal64 square = 0;
    for (std::size_t k = 0; k < _model.nbEquations; ++k) square += equations[k * nb + i] * equations[k * nb + i];
    return std::sqrt(square);
  }

  /// The factors of the rows; returns the cost where there is a loss.
  omReal64 fillFactors(eRowWeights weights, std::size_t first, std::size_t nb, const omReal64* distances,
                       omReal64* factors, Pass& found) const {
    omReal64 cost = 0;
    for (std::size_t i = 0; i < nb; ++i) factors[i] = _weights ? std::sqrt(_weights[first + i]) : 1;
    if (!(_scale > 0)) return cost;
    for (std::size_t i = 0; i < nb; ++i) {
      if (factors[i] == 0) continue;
      const omReal64 u = factors[i] * lengthOf(distances, nb, i) / _scale;
      const omReal64 weight = lossWeight(_loss, u);
      const omReal64 slope = weight + lossWeightSlope(_loss, u);
      cost += lossValue(_loss, u) * _scale * _scale;
      found.psi2 += (u * weight) * (u * weight) * _scale * _scale;
      found.slope += slope;
      found.slope2 += slope * slope;
      if (weights == eRW_All) factors[i] *= std::sqrt(weight);
    }
    return cost;
  }

  /// Makes the factors of the rows from the gains; returns the sum of the squared distances.
  omReal64 fillGains(eRowWeights weights, std::size_t nb, const omReal64* distances, omReal64* factors) const {
    omReal64 cost = 0;
    for (std::size_t i = 0; i < nb * _model.nbEquations; ++i) cost += distances[i] * distances[i];
    if (weights == eRW_SquaredGains)
      for (std::size_t i = 0; i < nb; ++i) factors[i] *= factors[i];
    return cost;
  }

  // -- the loop

  /// Weights by normals and the scale of the loss depend on the fit, and the fit on them: both in turns.
  EstimationStatus descend(State& state) {
    const bool isAutoScaled = _loss != eLS_Squares && !(_options.lossScale > 0) && !(_options.sigma > 0);
    if (_loss != eLS_Squares && !isAutoScaled) {
      const omReal64 efficient = efficientLossScale(_loss, _model.nbEquations);
      _scale = _options.lossScale > 0 ? _options.lossScale / _sampleUnit : efficient * _options.sigma / _sampleUnit;
      _sigmaOfLoss = _options.sigma > 0 ? _options.sigma / _sampleUnit : _scale / efficient;
    }
    for (std::size_t turn = 0;; ++turn) {
      bool isSettled = true;
      if (isAutoScaled && turn < s_nbMostScales) isSettled = rescale(state);
      if (_hasCovariances && turn > 0 && turn < s_nbMostScales) {
        weigh(state);
        isSettled = isSettled && _movedBy < s_settledNormals;
      }
      if (turn > 0 && isSettled) return {};
      if (!pass(state, eRW_All, _last)) return statusNotFinite();
      const detail::DescentCourse course = detail::minimise(*this, state, _last, _options.nbMaxIterations);
      _result.nbIterations += course.nbSteps;
      _movedBy = std::sqrt(course.largestChange / varianceOf(_last));
      if (course.end != detail::eDE_Settled || (!isAutoScaled && !_hasCovariances))
        return detail::failedDescent(course, _options.nbMaxIterations);
    }
  }

  /// Sets the scale of the loss by the median of the residuals at a state, without those that the parameters can make
  /// 0; whether it has settled.
  bool rescale(const State& state) {
    std::vector<omReal64> lengths = distancesFrom(_model, state, 1);
    std::size_t nb = 0;
    for (std::size_t i = 0; i < lengths.size(); ++i)
      if (!_weights || _weights[i] > 0)
        lengths[nb++] = std::abs(lengths[i]) / _model.unit * (_weights ? std::sqrt(_weights[i]) : 1);
    const std::size_t nbExact = std::min(_model.nbUnknowns / _model.nbEquations, nb - 1);
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(nbExact + (nb - nbExact) / 2);
    std::nth_element(lengths.begin(), middle, lengths.begin() + static_cast<std::ptrdiff_t>(nb));
    // Samples without noise: what rounding leaves.
    const omReal64 least = 4 * _model.coarseness * std::sqrt(_sumOfWeights / static_cast<omReal64>(_nbUsed));
    const omReal64 before = _scale;
    _sigmaOfLoss = std::max(*middle / medianLength(_model.nbEquations), least);
    _scale = _sigmaOfLoss * efficientLossScale(_loss, _model.nbEquations);
    return std::abs(_scale - before) <= s_settledScale * _scale;
  }

  /// The variance of weight 1 at a pass.
  omReal64 varianceOf(const Pass& at) const {
    return at.cost / static_cast<omReal64>(std::max<std::size_t>(degreesOfFreedom(_nb), 1));
  }

  // -- the end

  std::size_t degreesOfFreedom(std::size_t nbDetermined) const {
    const std::size_t nbRows = _nbUsed * _model.nbEquations;
    return nbRows > nbDetermined ? nbRows - nbDetermined : 0;
  }

  bool finishOrthogonal(const State& state) {
    if (_scale > 0 && !pass(state, eRW_Given, _trial)) return false;
    const Pass& given = _scale > 0 ? _trial : _last;
    invert(given);
    const auto dof = static_cast<omReal64>(_result.degreesOfFreedom);
    omReal64 variance = dof > 0 ? given.cost / dof : s_unknown;
    _result.sigma0 = std::sqrt(variance) * _sampleUnit;
    if (_scale > 0) {
      const auto nb = static_cast<omReal64>(_nbUsed);
      const omReal64 slope = given.slope / nb;
      const omReal64 spread = given.slope2 / nb - slope * slope;
      const omReal64 correction = 1 + static_cast<omReal64>(_nb) / nb * spread / (slope * slope);
      variance = dof > 0 ? correction * correction * given.psi2 / dof / (slope * slope) : s_unknown;
      _result.sigma0 = _sigmaOfLoss * _sampleUnit;
    }
    if (_options.sigma > 0) {
      const omReal64 sigma = _options.sigma / _sampleUnit;
      // The loss costs what it costs; the noise is known.
      variance = _scale > 0 && dof > 0 ? variance : sigma * sigma;
      _result.sigma0 = _options.sigma;
    }
    _variance = variance;
    keepWeights(state);
    return true;
  }

  /// The sandwich of an algebraic fit; where all gains are equal, it is the covariance of an orthogonal one.
  bool finishAlgebraic(const State& state) {
    if (!(_model.isGainConstant ? pass(state, eRW_All, _last) : passOfGains(state, _last, _trial))) return false;
    invert(_last);
    if (!_model.isGainConstant) detail::spreadBy(_trial, _inverse.left);
    const auto dof = static_cast<omReal64>(_result.degreesOfFreedom);
    _result.sigma0 =
        _options.sigma > 0 ? _options.sigma : std::sqrt(dof > 0 ? _last.cost / dof : s_unknown) * _sampleUnit;
    _variance = (_result.sigma0 / _sampleUnit) * (_result.sigma0 / _sampleUnit);
    return true;
  }

  /// Rank and condition of a triangle, and its inverse over what is determined.
  void invert(const Pass& at) {
    const auto rows = static_cast<omReal64>(std::max(_nbUsed * _model.nbEquations, _nb));
    _result.rankThreshold = std::max(rows * NumericLimits<omReal64>::s_eps, 4 * _model.coarseness);
    _inverse = detail::inverseOf(at, _result.rankThreshold);
    _result.rank = _inverse.rank;
    _result.conditionNumber = 1 / _inverse.ratio;
    _result.degreesOfFreedom = degreesOfFreedom(_result.rank);
  }

  void keepWeights(const State& state) {
    _result.weights.clear();
    if (!_weights && !(_scale > 0)) return;
    _result.weights.assign(_model.nbSamples, 1);
    std::vector<omReal64> distances;
    if (_scale > 0) distances = distancesFrom(_model, state, 1);
    for (std::size_t i = 0; i < _model.nbSamples; ++i) {
      const omReal64 given = _weights ? _weights[i] : 1;
      omReal64& weight = _result.weights[i];
      weight = _hasCovariances ? given / (_model.unit * _model.unit) : given;
      if (_scale > 0) weight *= lossWeight(_loss, std::sqrt(given) * std::abs(distances[i]) / _model.unit / _scale);
    }
  }

  /// The parameters, and their covariance by the derivatives of what is reported.
  void reportCovariance(const State& state) {
    const std::size_t nb = _model.nbReported;
    std::array<omReal64, 16 * DistanceModel::s_nbMostUnknowns> jacobian{};
    _result.params.assign(nb, 0);
    _result.covariance.assign(nb * nb, 0);
    _result.method = _options.method;
    _result.status = {};
    _model.report(state, _result.params.data(), jacobian.data());
    // A parameter is not determined when a change of it leaves the distances as they are.
    constexpr omReal64 share = 1e-8;
    std::vector<DistanceModel::Step> halves(nb);
    std::vector<bool> isUndetermined(nb, false);
    for (std::size_t i = 0; i < nb; ++i) {
      const omReal64* row = &jacobian[i * _nb];
      for (std::size_t k = 0; k < _nb; ++k) {
        omReal64 along = 0;
        omReal64 most = 0;
        halves[i][k] = 0;
        for (std::size_t c = 0; c < _nb; ++c) {
          halves[i][k] += row[c] * _inverse.left(c, k);
          along += row[c] * _inverse.undetermined(c, k);
          most += std::abs(row[c]) / _inverse.lengths[c];
        }
        if (std::abs(along) > share * most) isUndetermined[i] = true;
      }
    }
    for (std::size_t i = 0; i < nb; ++i)
      for (std::size_t j = 0; j < nb; ++j) {
        omReal64 sum = 0;
        for (std::size_t k = 0; k < _nb; ++k) sum += halves[i][k] * halves[j][k];
        const bool isInfinite = i == j && isUndetermined[i];
        _result.covariance[i * nb + j] = isInfinite ? std::numeric_limits<omReal64>::infinity() : _variance * sum;
      }
  }

  // -- failures

  BoolResult failed(const EstimationStatus& status) {
    _result.status = status;
    return failure(status.message);
  }
  static EstimationStatus statusNotFinite() { return detail::failedDescent({detail::eDE_NotFinite}, 0); }
  BoolResult notFinite() { return failed(statusNotFinite()); }

  const DistanceModel& _model;
  const FitOptions& _options;
  FitResult& _result;
  std::size_t _nb;  ///< of the unknowns
  bool _hasCovariances;
  bool _isAlgebraic;
  eLoss _loss;
  omReal64 _sampleUnit;  ///< what a standardised residual of 1 is in the unit of sigma0
  const omReal64* _weights = nullptr;
  std::vector<omReal64> _ownWeights;
  std::size_t _nbUsed = 0;
  omReal64 _sumOfWeights = 0;
  omReal64 _scale = 0;  ///< of the loss, in standardised residuals; 0 for squares
  omReal64 _sigmaOfLoss = 0;
  omReal64 _movedBy = 0;  ///< how far a descent went, in standard deviations of a residual
  Pass _last;
  Pass _trial;
  detail::TriangleInverse _inverse;
  omReal64 _variance = 0;
};

}  // namespace

BoolResult fitDistances(const DistanceModel& model, const FitOptions& options, State& state, FitResult& result) {
  result.nbIterations = 0;
  return DistanceFit(model, options, result).fit(state);
}

std::vector<omReal64> distancesFrom(const DistanceModel& model, const State& state, omReal64 sign) {
  std::vector<omReal64> distances(model.nbSamples);
  const std::size_t nbMost = s_nbRows / model.nbEquations;
  std::array<omReal64, s_nbRows> rows;
  for (std::size_t first = 0; first < model.nbSamples; first += nbMost) {
    const std::size_t nb = std::min(nbMost, model.nbSamples - first);
    omReal64* found = distances.data() + first;
    model.evaluate(state, first, nb, {model.nbEquations == 1 ? found : rows.data(), nullptr, nullptr, nullptr});
    for (std::size_t i = 0; model.nbEquations > 1 && i < nb; ++i) {
      found[i] = rows[i];
      for (std::size_t k = 1; k < model.nbEquations; ++k) found[i] = std::hypot(found[i], rows[k * nb + i]);
    }
  }
  const omReal64 factor = sign * model.unit;
  for (omReal64& distance : distances) distance *= factor;
  return distances;
}

}  // namespace ormix
