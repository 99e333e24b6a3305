#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Estimation/DistanceFit.h>
#include <ORMIXMath/Estimation/Loss.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace ormix {

DistanceModel::~DistanceModel() = default;

namespace {

using State = DistanceModel::State;
constexpr std::size_t s_nbRows = DistanceBlock::s_nbRows;
constexpr omReal64 s_unknown = std::numeric_limits<omReal64>::quiet_NaN();

// What is left after the last step changes the residuals by less than this part of their standard deviation. Steps
// become shorter by about the same rate, the ratio of distances to radii.
constexpr omReal64 s_leftOver = 1e-6;
constexpr omReal64 s_surelyConverging = 0.1;
// Rounding errors of a sum of squares, relative.
constexpr omReal64 s_roundingOfCost = 1e-12;
// The scale of a loss is settled when it changes by less than this, and changes at most so often.
constexpr omReal64 s_settledScale = 1e-4;
constexpr std::size_t s_nbMostScales = 30;
// Variances of samples along the normals are settled when the fit moves by less than this part of its uncertainty.
constexpr omReal64 s_settledNormals = 1e-4;

/// What the rows of a triangle are multiplied by.
enum eRowWeights {
  eRW_All,    ///< the roots of all weights, those of the loss too
  eRW_Given,  ///< the roots of the weights that were given
};

// Matrices and vectors of up to the most unknowns; matrices row by row, each of s_nbMost.
constexpr std::size_t s_nbMost = DistanceModel::s_nbMostUnknowns;
using Square = std::array<omReal64, s_nbMost * s_nbMost>;
using Column = DistanceModel::Step;

/// The triangle of the weighted Jacobian and the right side beside it, the weighted distances, and their cost.
struct Pass {
  Square r{};
  Column q{};
  omReal64 cost = 0;    ///< sum of the losses, or of squares
  omReal64 psi2 = 0;    ///< sums over the samples for the variance of an M-estimator
  omReal64 slope = 0;   ///< of ψ
  omReal64 slope2 = 0;  ///< of its square
};

/// Lengths of the first n columns of a triangle.
Column columnLengths(const Square& r, std::size_t n) {
  Column lengths{};
  for (std::size_t c = 0; c < n; ++c) {
    omReal64 square = 0;
    for (std::size_t k = 0; k <= c; ++k) square += r[k * s_nbMost + c] * r[k * s_nbMost + c];
    lengths[c] = std::sqrt(square);
  }
  return lengths;
}

/// The solution of r x = -q for a triangle.
Column backSubstituted(const Square& r, const Column& q, std::size_t n) {
  Column x{};
  for (std::size_t k = n; k-- > 0;) {
    omReal64 rest = -q[k];
    for (std::size_t c = k + 1; c < n; ++c) rest -= r[k * s_nbMost + c] * x[c];
    x[k] = rest / r[k * s_nbMost + k];
  }
  return x;
}

/// The squared length of r x.
omReal64 squaredImage(const Square& r, const Column& x, std::size_t n) {
  omReal64 square = 0;
  for (std::size_t k = 0; k < n; ++k) {
    omReal64 sum = 0;
    for (std::size_t c = k; c < n; ++c) sum += r[k * s_nbMost + c] * x[c];
    square += sum * sum;
  }
  return square;
}

/// Singular values, descending, and right singular vectors, as the columns of `v`, of the first n rows and columns, by
/// one-sided rotations (Hestenes1958): small ones are right to their own size.
void decompose(Square a, std::size_t n, Column& values, Square& v) {
  constexpr int nbMostSweeps = 40;
  // Columns that are so nearly perpendicular are: the error of a value is about the square of this.
  constexpr omReal64 skew = 1e-10;
  const auto rotate = [n](Square& m, std::size_t p, std::size_t q, omReal64 co, omReal64 si) {
    for (std::size_t k = 0; k < n; ++k) {
      const omReal64 x = m[k * s_nbMost + p];
      const omReal64 y = m[k * s_nbMost + q];
      m[k * s_nbMost + p] = co * x - si * y;
      m[k * s_nbMost + q] = si * x + co * y;
    }
  };
  const auto product = [n, &a](std::size_t p, std::size_t q) {
    omReal64 sum = 0;
    for (std::size_t k = 0; k < n; ++k) sum += a[k * s_nbMost + p] * a[k * s_nbMost + q];
    return sum;
  };
  v = {};
  for (std::size_t k = 0; k < n; ++k) v[k * s_nbMost + k] = 1;
  bool isRotated = true;
  for (int sweep = 0; sweep < nbMostSweeps && isRotated; ++sweep) {
    isRotated = false;
    for (std::size_t p = 0; p < n; ++p)
      for (std::size_t q = p + 1; q < n; ++q) {
        const omReal64 pp = product(p, p);
        const omReal64 qq = product(q, q);
        const omReal64 pq = product(p, q);
        // The longer column comes first.
        if (pp < qq) {
          rotate(a, p, q, 0, -1);
          rotate(v, p, q, 0, -1);
          isRotated = true;
        }
        if (!(std::abs(pq) > skew * std::sqrt(pp * qq))) continue;
        const omReal64 zeta = (std::min(pp, qq) - std::max(pp, qq)) / (2 * (pp < qq ? -pq : pq));
        const omReal64 tangent = (zeta >= 0 ? 1 : -1) / (std::abs(zeta) + std::sqrt(1 + zeta * zeta));
        const omReal64 co = 1 / std::sqrt(1 + tangent * tangent);
        rotate(a, p, q, co, co * tangent);
        rotate(v, p, q, co, co * tangent);
        isRotated = true;
      }
  }
  for (std::size_t k = 0; k < n; ++k) values[k] = std::sqrt(product(k, k));
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
    if (!weigh(state) || !pass(state, eRW_All, _last)) return notFinite();
    if (_isAlgebraic) {
      finishAlgebraic(state);
    } else {
      const EstimationStatus status = descend(state);
      if (!status) return failed(status);
      if (!finishOrthogonal(state)) return notFinite();
    }
    reportCovariance(state);
    start = state;
    return {};
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
    found = {};
    foldFor<s_nbMost>(state, weights, found);
    const auto isFinite = [](omReal64 value) { return std::isfinite(value); };
    return std::isfinite(found.cost) && std::all_of(found.q.begin(), found.q.end(), isFinite) &&
           std::all_of(found.r.begin(), found.r.end(), isFinite);
  }

  /// Calls fold() with the number of unknowns as a constant.
  template <std::size_t N>
  void foldFor(const State& state, eRowWeights weights, Pass& found) const {
    if (_model.nbUnknowns == N) return fold<N>(state, weights, found);
    if constexpr (N > 2) foldFor<N - 1>(state, weights, found);
  }

  template <std::size_t N>
  void fold(const State& state, eRowWeights weights, Pass& found) const {
    TallQr<N + 1> qr;
    const bool isWeighted = _weights || _scale > 0;
    std::array<omReal64, s_nbRows> factors;
    forEachBlock([&](std::size_t first, std::size_t nb) {
      _model.evaluate(state, first, nb, {qr.block(N), qr.block(0), nullptr, nullptr});
      if (isWeighted) {
        fillFactors(weights, first, nb, qr.block(N), factors.data(), found);
        for (std::size_t c = 0; c <= N; ++c)
          for (std::size_t k = 0; k < _model.nbEquations; ++k)
            for (std::size_t i = 0; i < nb; ++i) qr.block(c)[k * nb + i] *= factors[i];
      }
      qr.fold(nb * _model.nbEquations);
    });
    take<N>(qr, found);
    if (_scale > 0) return;
    for (std::size_t k = 0; k <= N; ++k) found.cost += qr(k, N) * qr(k, N);
  }

  template <std::size_t N>
  static void take(const TallQr<N + 1>& qr, Pass& found) {
    for (std::size_t k = 0; k < N; ++k) {
      std::copy_n(&qr.triangle()[k * (N + 1)], N, &found.r[k * s_nbMost]);
      found.q[k] = qr(k, N);
    }
  }

  /// The length of the equations of a sample of a block.
  omReal64 lengthOf(const omReal64* equations, std::size_t nb, std::size_t i) const {
    if (_model.nbEquations == 1) return std::abs(equations[i]);
    omReal64 square = 0;
    for (std::size_t k = 0; k < _model.nbEquations; ++k) square += equations[k * nb + i] * equations[k * nb + i];
    return std::sqrt(square);
  }

  /// The factors of the rows; adds up the cost where there is a loss.
  void fillFactors(eRowWeights weights, std::size_t first, std::size_t nb, const omReal64* distances, omReal64* factors,
                   Pass& found) const {
    for (std::size_t i = 0; i < nb; ++i) factors[i] = _weights ? std::sqrt(_weights[first + i]) : 1;
    if (!(_scale > 0)) return;
    for (std::size_t i = 0; i < nb; ++i) {
      if (factors[i] == 0) continue;
      const omReal64 u = factors[i] * lengthOf(distances, nb, i) / _scale;
      const omReal64 weight = lossWeight(_loss, u);
      const omReal64 slope = weight + lossWeightSlope(_loss, u);
      found.cost += lossValue(_loss, u) * _scale * _scale;
      found.psi2 += (u * weight) * (u * weight) * _scale * _scale;
      found.slope += slope;
      found.slope2 += slope * slope;
      if (weights == eRW_All) factors[i] *= std::sqrt(weight);
    }
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
      const bool isFirstAsGiven = turn == 0 && _loss == eLS_Squares;
      if (!isFirstAsGiven && !pass(state, eRW_All, _last)) return statusNotFinite();
      const EstimationStatus status = minimise(state);
      if (!status || (!isAutoScaled && !_hasCovariances)) return status;
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

  /// Levenberg's and Marquardt's steps with the present weights, from the state of the last pass on.
  EstimationStatus minimise(State& state) {
    constexpr omReal64 firstDamping = 1e-4;
    constexpr omReal64 mostDamping = 1e12;
    omReal64 damping = 0;
    omReal64 growth = 4;
    omReal64 previous = 0;
    const std::size_t nbMostIterations = _result.nbIterations + _options.nbMaxIterations;
    _movedBy = 0;
    for (bool isLast = false; !isLast;) {
      if (_result.nbIterations >= nbMostIterations) return notSettled();
      ++_result.nbIterations;
      Column step;
      omReal64 change = 0;
      if (!solve(damping, step, change)) {
        damping = std::max(damping, firstDamping);
        if (!solve(damping, step, change)) return statusNotFinite();
      }
      const omReal64 variance =
          _last.cost / static_cast<omReal64>(std::max<std::size_t>(degreesOfFreedom(_model.nbUnknowns), 1));
      const omReal64 floor = 4 * _model.coarseness;
      // The square of the rate; unknown at first.
      const omReal64 rate = change < s_surelyConverging * s_surelyConverging * previous ? change / previous : 1;
      isLast = damping <= firstDamping &&
               change * rate <= std::max(s_leftOver * s_leftOver * variance, _sumOfWeights * floor * floor);
      State moved = state;
      const bool isMoved = _model.move(state, step, moved);
      // The last step is too small for another triangle, and for the cost to tell whether it is better.
      if (isLast) {
        if (isMoved) state = moved;
      } else if (isMoved && pass(moved, eRW_All, _trial) && _trial.cost <= _last.cost * (1 + s_roundingOfCost)) {
        const omReal64 gain = (_last.cost - _trial.cost) / change;
        std::swap(_last, _trial);
        state = moved;
        _movedBy = std::max(_movedBy, std::sqrt(change / variance));
        previous = change;
        damping = gain > 0.75 && damping <= firstDamping ? 0 : damping / 3;
        growth = 4;
      } else {
        damping = std::max(damping * growth, firstDamping);
        growth *= 2;
        // No step however short makes it less: this is the least, to rounding.
        isLast = damping > mostDamping;
      }
      if (_options.progress && !_options.progress(progress())) return failedStatus(eEC_Stopped, {}, 0, 0, "Stopped");
    }
    return {};
  }

  omReal64 progress() const {
    return std::min(1.0, static_cast<omReal64>(_result.nbIterations) / static_cast<omReal64>(_options.nbMaxIterations));
  }

  /// The step that makes the linearised cost least, with each unknown damped by the length of its column; `change` is
  /// the squared change of the residuals by it. False without damping when the triangle is nearly singular.
  bool solve(omReal64 damping, Column& step, omReal64& change) const {
    const Column lengths = columnLengths(_last.r, _nb);
    if (damping == 0) {
      constexpr omReal64 leastPivot = 1e-12;
      for (std::size_t k = 0; k < _nb; ++k)
        if (!(std::abs(_last.r[k * s_nbMost + k]) > leastPivot * lengths[k])) return false;
      step = backSubstituted(_last.r, _last.q, _nb);
    } else {
      Pass damped;
      foldDamped<s_nbMost>(damping, lengths, damped);
      step = backSubstituted(damped.r, damped.q, _nb);
    }
    change = squaredImage(_last.r, step, _nb);
    return std::all_of(step.begin(), step.end(), [](omReal64 value) { return std::isfinite(value); });
  }

  /// The triangle of the last pass with a row for each unknown, which holds it back.
  template <std::size_t N>
  void foldDamped(omReal64 damping, const Column& lengths, Pass& damped) const {
    if constexpr (N > 2)
      if (_nb < N) return foldDamped<N - 1>(damping, lengths, damped);
    constexpr omReal64 leastLength = 1e-8;
    const omReal64 longest = *std::max_element(lengths.begin(), lengths.end());
    TallQr<N + 1> qr;
    for (std::size_t k = 0; k < 2 * N; ++k) {
      for (std::size_t c = 0; c < N; ++c) qr.block(c)[k] = k < N ? _last.r[k * s_nbMost + c] : 0;
      qr.block(N)[k] = k < N ? _last.q[k] : 0;
      if (k >= N) qr.block(k - N)[k] = std::sqrt(damping) * std::max(lengths[k - N], leastLength * longest);
    }
    qr.fold(2 * N);
    take<N>(qr, damped);
  }

  // -- the end

  std::size_t degreesOfFreedom(std::size_t nbDetermined) const {
    const std::size_t nbRows = _nbUsed * _model.nbEquations;
    return nbRows > nbDetermined ? nbRows - nbDetermined : 0;
  }

  bool finishOrthogonal(const State& state) {
    if (_scale > 0 && !pass(state, eRW_Given, _trial)) return false;
    const Pass& given = _scale > 0 ? _trial : _last;
    invert(given.r);
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

  /// The triangles of GJ and of G²J, with the gains G of an algebraic fit.
  template <std::size_t N>
  void foldGains(const State& state, Pass& once, Pass& twice) const {
    if constexpr (N > 2)
      if (_nb < N) return foldGains<N - 1>(state, once, twice);
    TallQr<N + 1> qr;
    TallQr<N + 1> squared;
    std::array<omReal64, s_nbRows> gains;
    forEachBlock([&](std::size_t first, std::size_t nb) {
      _model.evaluate(state, first, nb, {qr.block(N), qr.block(0), nullptr, gains.data()});
      const std::size_t nbRows = nb * _model.nbEquations;
      for (std::size_t c = 0; c <= N; ++c)
        for (std::size_t k = 0; k < nbRows; k += nb)
          for (std::size_t i = 0; i < nb; ++i) {
            const omReal64 value = qr.block(c)[k + i] * gains[i];
            qr.block(c)[k + i] = value;
            squared.block(c)[k + i] = value * gains[i];
          }
      qr.fold(nbRows);
      squared.fold(nbRows);
    });
    take<N>(qr, once);
    take<N>(squared, twice);
  }

  /// The sandwich of an algebraic fit; where all gains are equal, it is the covariance of an orthogonal one.
  void finishAlgebraic(const State& state) {
    const omReal64 cost = _last.cost;
    if (_model.isGainConstant) {
      invert(_last.r);
    } else {
      foldGains<s_nbMost>(state, _last, _trial);
      invert(_last.r);
      spreadBy(_trial.r);
    }
    const auto dof = static_cast<omReal64>(_result.degreesOfFreedom);
    _result.sigma0 = _options.sigma > 0 ? _options.sigma : std::sqrt(dof > 0 ? cost / dof : s_unknown) * _sampleUnit;
    _variance = (_result.sigma0 / _sampleUnit) * (_result.sigma0 / _sampleUnit);
  }

  /// From L with L Lᵀ = (JᵀG²J)⁻¹ the one whose square is the sandwich with JᵀG⁴J = RᵀR in it: L Lᵀ Rᵀ.
  void spreadBy(const Square& r) {
    const Square left = _left;
    Square image{};
    for (std::size_t i = 0; i < _nb; ++i)
      for (std::size_t j = 0; j < _nb; ++j)
        for (std::size_t c = 0; c < _nb; ++c) image[i * s_nbMost + j] += left[c * s_nbMost + i] * r[j * s_nbMost + c];
    _left = {};
    for (std::size_t i = 0; i < _nb; ++i)
      for (std::size_t j = 0; j < _nb; ++j)
        for (std::size_t c = 0; c < _nb; ++c)
          _left[i * s_nbMost + j] += left[i * s_nbMost + c] * image[c * s_nbMost + j];
  }

  /// Rank and condition of a triangle, and a matrix L with L Lᵀ = (RᵀR)⁻¹ over what is determined.
  void invert(const Square& r) {
    _lengths = columnLengths(r, _nb);
    for (omReal64& length : _lengths)
      if (!(length > 0)) length = 1;
    Square scaled = r;
    for (std::size_t k = 0; k < _nb; ++k)
      for (std::size_t c = 0; c < _nb; ++c) scaled[k * s_nbMost + c] /= _lengths[c];
    Column values{};
    Square vectors;
    decompose(scaled, _nb, values, vectors);
    const auto rows = static_cast<omReal64>(std::max(_nbUsed * _model.nbEquations, _nb));
    _result.rankThreshold = std::max(rows * NumericLimits<omReal64>::s_eps, 4 * _model.coarseness);
    _result.rank = 0;
    while (_result.rank < _nb && values[_result.rank] > _result.rankThreshold * values[0]) ++_result.rank;
    _result.conditionNumber = values[0] / values[_nb - 1];
    _result.degreesOfFreedom = degreesOfFreedom(_result.rank);
    for (std::size_t i = 0; i < _nb; ++i)
      for (std::size_t k = 0; k < _nb; ++k) {
        const omReal64 direction = vectors[i * s_nbMost + k] / _lengths[i];
        const bool isDetermined = k < _result.rank;
        _left[i * s_nbMost + k] = isDetermined ? direction / values[k] : 0;
        _undetermined[i * s_nbMost + k] = isDetermined ? 0 : direction;
      }
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
    std::array<omReal64, 16 * s_nbMost> jacobian{};
    _result.params.assign(nb, 0);
    _result.covariance.assign(nb * nb, 0);
    _result.method = _options.method;
    _result.status = {};
    _model.report(state, _result.params.data(), jacobian.data());
    // A parameter is not determined when a change of it leaves the distances as they are.
    constexpr omReal64 share = 1e-8;
    std::vector<Column> halves(nb);
    std::vector<bool> isUndetermined(nb, false);
    for (std::size_t i = 0; i < nb; ++i) {
      const omReal64* row = &jacobian[i * _nb];
      for (std::size_t k = 0; k < _nb; ++k) {
        omReal64 along = 0;
        omReal64 most = 0;
        halves[i][k] = 0;
        for (std::size_t c = 0; c < _nb; ++c) {
          halves[i][k] += row[c] * _left[c * s_nbMost + k];
          along += row[c] * _undetermined[c * s_nbMost + k];
          most += std::abs(row[c]) / _lengths[c];
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
  static EstimationStatus statusNotFinite() {
    return failedStatus(eEC_NotFinite, {}, 0, 0, "The distances from the model are NaN or infinite");
  }
  BoolResult notFinite() { return failed(statusNotFinite()); }
  EstimationStatus notSettled() const {
    return failedStatus(eEC_NoConvergence, "number of iterations", static_cast<omReal64>(_result.nbIterations),
                        static_cast<omReal64>(_options.nbMaxIterations),
                        "The refinement did not settle within " + std::to_string(_options.nbMaxIterations) + " steps");
  }

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
  Column _lengths{};  ///< of the columns of the triangle
  Square _left{};
  Square _undetermined{};
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
    model.evaluate(state, first, nb, {rows.data(), nullptr, nullptr, nullptr});
    for (std::size_t i = 0; i < nb; ++i) {
      omReal64 distance = rows[i];
      for (std::size_t k = 1; k < model.nbEquations; ++k) distance = std::hypot(distance, rows[k * nb + i]);
      distances[first + i] = sign * model.unit * distance;
    }
  }
  return distances;
}

}  // namespace ormix
