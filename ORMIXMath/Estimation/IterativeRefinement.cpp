#include <ORMIXMath/Algebra/EigenBridge.h>
#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Estimation/IterativeRefinement.h>
#include <ORMIXUtil/NumericLimits.h>

#include <Eigen/QR>
#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace ormix {
namespace {

using Eigen::Index;

constexpr std::size_t s_maxParams = 9;
// Everything of the size of the parameters stays on the stack.
using Vector = Eigen::Matrix<omReal64, Eigen::Dynamic, 1, 0, s_maxParams, 1>;
using Matrix = Eigen::Matrix<omReal64, Eigen::Dynamic, Eigen::Dynamic, 0, 2 * s_maxParams, s_maxParams>;

// Damping at the start, in parts of the squared lengths of the Jacobian's columns (Nielsen 1999).
constexpr omReal64 s_initialDamping = 1e-3;
// Sine of the angle between the equations and the tangent space below which there is nothing to descend.
constexpr omReal64 s_flatAngle = 4 * NumericLimits<omReal64>::s_eps;

/// The Jacobian and the equations reduced to a triangle: |J p + f|² = |triangle p + right|² + constant. Reflections
/// instead of normal equations, which would lose twice the digits.
struct LinearModel {
  Matrix triangle;
  Vector right;
};

template <std::size_t C>
LinearModel reduceBy(const RealMatrix& jacobian, const RealVector& values) {
  const std::size_t nbParams = jacobian.size2();
  using Qr = TallQr<C, 1>;
  Qr qr;
  // Columns that are left over stay zero; the equations are the last one.
  for (std::size_t start = 0; start < values.size(); start += Qr::s_blockRows) {
    const std::size_t nbRows = std::min(Qr::s_blockRows, values.size() - start);
    for (std::size_t c = 0; c + 1 < C; ++c)
      for (std::size_t i = 0; i < nbRows; ++i) qr.block(c)[i] = c < nbParams ? jacobian(start + i, c) : 0.0;
    for (std::size_t i = 0; i < nbRows; ++i) qr.block(C - 1)[i] = values(start + i);
    qr.fold(nbRows);
  }
  const auto size = static_cast<Index>(nbParams);
  LinearModel model{Matrix(size, size), Vector(size)};
  for (Index r = 0; r < size; ++r) {
    for (Index c = 0; c < size; ++c)
      model.triangle(r, c) = qr(static_cast<std::size_t>(r), static_cast<std::size_t>(c));
    model.right(r) = qr(static_cast<std::size_t>(r), C - 1);
  }
  return model;
}

LinearModel reduce(const RealMatrix& jacobian, const RealVector& values) {
  switch (jacobian.size2()) {
    case 1:
    case 2:
      return reduceBy<3>(jacobian, values);
    case 3:
      return reduceBy<4>(jacobian, values);
    case 4:
      return reduceBy<5>(jacobian, values);
    case 5:
      return reduceBy<6>(jacobian, values);
    case 6:
      return reduceBy<7>(jacobian, values);
    case 7:
      return reduceBy<8>(jacobian, values);
    case 8:
      return reduceBy<9>(jacobian, values);
    default:
      return reduceBy<10>(jacobian, values);
  }
}

/// Half the sum of squares; NaN or infinite when it is no number.
omReal64 costOf(const RealVector& values) { return 0.5 * detail::mapOf(values).squaredNorm(); }

/// The damped least-squares step: minimises |triangle s + right|² + damping |diag(lengths) s|².
Vector dampedStep(const LinearModel& model, const Vector& lengths, omReal64 damping) {
  const Index n = model.right.size();
  Matrix stacked(2 * n, n);
  stacked << model.triangle, Matrix((std::sqrt(damping) * lengths).asDiagonal());
  Eigen::Matrix<omReal64, Eigen::Dynamic, 1, 0, 2 * s_maxParams, 1> right(2 * n);
  right << -model.right, Vector::Zero(n);
  return Eigen::ColPivHouseholderQR<Matrix>(stacked).solve(right);
}

/// Whether no column of the Jacobian has a component along the equations worth following.
bool isFlat(const LinearModel& model, omReal64 cost) {
  const omReal64 length = std::sqrt(2 * cost);
  const Vector gradient = model.triangle.transpose() * model.right;
  for (Index c = 0; c < gradient.size(); ++c)
    if (std::abs(gradient(c)) > s_flatAngle * model.triangle.col(c).norm() * length) return false;
  return true;
}

/// The descent's state, whose vectors are allocated once.
class Descent {
 public:
  Descent(const BaseCostFunction& function, const RefinementOptions& options, RealVector start)
      : _function(function), _options(options), _params(std::move(start)), _trial(_params) {}

  BoolResult start();
  eRefinementEnd run();
  void moveTo(RefinementResult& result);

 private:
  bool evaluate(const RealVector& params, RealVector& values, omReal64& cost) const;
  BoolResult linearise();
  bool isTiny(const Vector& step, omReal64 tolerance) const;
  bool tryStep(const Vector& step, omReal64& decrease);
  bool isStopped() const;
  omReal64 predictedDecrease(const Vector& step, omReal64 damping) const;
  eRefinementEnd endWithoutDecrease() const;
  void adaptDamping(omReal64 decrease, omReal64 predicted);

  const BaseCostFunction& _function;
  const RefinementOptions& _options;
  RealVector _params;
  RealVector _trial;
  RealVector _values;
  RealVector _trialValues;
  RealMatrix _jacobian;
  LinearModel _model;
  Vector _lengths;
  omReal64 _initialCost = 0;
  omReal64 _cost = 0;
  omReal64 _damping = s_initialDamping;
  omReal64 _growth = 2;
  std::size_t _nbIterations = 0;
};

bool Descent::evaluate(const RealVector& params, RealVector& values, omReal64& cost) const {
  if (!_function.processEquations(params, values) || values.size() != _function.getNbEquations()) return false;
  cost = costOf(values);
  return std::isfinite(cost);
}

BoolResult Descent::linearise() {
  const BoolResult result = _function.processJacobian(_params, _jacobian);
  if (!result) return result;
  if (_jacobian.size1() != _values.size() || _jacobian.size2() != _params.size())
    return failure("The Jacobian is " + std::to_string(_jacobian.size1()) + " x " + std::to_string(_jacobian.size2()) +
                   " for " + std::to_string(_values.size()) + " equations and " + std::to_string(_params.size()) +
                   " parameters");
  _model = reduce(_jacobian, _values);
  if (!_model.triangle.allFinite() || !_model.right.allFinite())
    return failure("The Jacobian has entries that are NaN, infinite or too large");
  // Never shorter than before (Moré 1978), so that a column that vanishes for a while does not free its parameter.
  const Vector lengths = _model.triangle.colwise().norm().transpose();
  _lengths = _lengths.size() == 0 ? lengths : Vector(_lengths.cwiseMax(lengths));
  return {};
}

BoolResult Descent::start() {
  if (!evaluate(_params, _values, _cost)) return failure("The equations cannot be evaluated at the start");
  _initialCost = _cost;
  return linearise();
}

bool Descent::isTiny(const Vector& step, omReal64 tolerance) const {
  const auto params = detail::mapOf(_params);
  return step.cwiseProduct(_lengths).norm() <= tolerance * params.cwiseProduct(_lengths).norm();
}

/// Goes there when the cost decreases. The decrease is summed from differences of the equations: near the end it is far
/// below the rounding of the cost itself, which must not increase either.
bool Descent::tryStep(const Vector& step, omReal64& decrease) {
  for (std::size_t c = 0; c < _params.size(); ++c) _trial(c) = _params(c) + step(static_cast<Index>(c));
  omReal64 cost = 0;
  if (!evaluate(_trial, _trialValues, cost) || !(cost <= _cost)) return false;
  const auto before = detail::mapOf(_values);
  const auto after = detail::mapOf(_trialValues);
  decrease = 0.5 * (before - after).dot(before + after);
  if (!(decrease > 0)) return false;
  _cost = cost;
  _params.swap(_trial);
  _values.swap(_trialValues);
  return true;
}

/// The decrease that the model promises of the damped step.
omReal64 Descent::predictedDecrease(const Vector& step, omReal64 damping) const {
  const omReal64 along = -(_model.triangle.transpose() * _model.right).dot(step);
  return 0.5 * (damping * step.cwiseProduct(_lengths).squaredNorm() + along);
}

/// The better the model predicted the decrease, the less damping (Nielsen 1999).
void Descent::adaptDamping(omReal64 decrease, omReal64 predicted) {
  const omReal64 gain = predicted > 0 ? std::min(decrease / predicted, 2.0) : 0;
  const omReal64 miss = 2 * gain - 1;
  _damping *= std::max(1.0 / 3, 1 - miss * miss * miss);
  _growth = 2;
}

/// Enough damping makes any step tiny and lets it promise nothing: a minimum is where the step of little damping does.
eRefinementEnd Descent::endWithoutDecrease() const {
  // A few roundings of the parameters, which is where steps end that descend to a cost of rounding alone.
  constexpr omReal64 fewRoundings = 64 * NumericLimits<omReal64>::s_eps;
  const omReal64 damping = std::min(_damping, s_initialDamping);
  const Vector step = dampedStep(_model, _lengths, damping);
  if (!step.allFinite()) return eRE_NoDecrease;
  const bool isMinimum = isTiny(step, std::max(_options.tolerance, fewRoundings)) ||
                         predictedDecrease(step, damping) <= NumericLimits<omReal64>::s_sqrt_eps * _cost;
  return isMinimum ? eRE_Converged : eRE_NoDecrease;
}

bool Descent::isStopped() const {
  const auto fraction = static_cast<omReal64>(_nbIterations) / static_cast<omReal64>(_options.nbMaxIterations);
  return _options.progress && !_options.progress(fraction);
}

eRefinementEnd Descent::run() {
  // Damping beyond this makes steps that change no digit.
  constexpr omReal64 largestDamping = 1e40;
  while (_nbIterations < _options.nbMaxIterations) {
    if (_cost == 0 || isFlat(_model, _cost)) return eRE_Converged;
    if (isStopped()) return eRE_Stopped;
    const Vector step = dampedStep(_model, _lengths, _damping);
    if (step.allFinite() && isTiny(step, _options.tolerance)) return endWithoutDecrease();
    ++_nbIterations;
    omReal64 decrease = 0;
    const omReal64 predicted = predictedDecrease(step, _damping);
    if (step.allFinite() && tryStep(step, decrease)) {
      adaptDamping(decrease, predicted);
      if (!linearise()) return eRE_NoDecrease;
      continue;
    }
    // What was promised is below the rounding of the cost: the best that can be told from the rest.
    if (predicted <= NumericLimits<omReal64>::s_eps * _cost) return endWithoutDecrease();
    _damping *= _growth;
    _growth *= 2;
    if (!(_damping < largestDamping)) return endWithoutDecrease();
  }
  return eRE_IterationLimit;
}

void Descent::moveTo(RefinementResult& result) {
  result.params.swap(_params);
  result.initialCost = _initialCost;
  result.cost = _cost;
  result.nbIterations = _nbIterations;
}

BoolResult checkArguments(const BaseCostFunction& function, const RealVector& start, const RefinementOptions& options) {
  if (function.getNbEquations() == 0) return failure("The cost function has no equations: it was not initialised");
  if (start.size() == 0 || start.size() > s_maxParams)
    return failure("Refinement takes 1 to " + std::to_string(s_maxParams) + " parameters, " +
                   std::to_string(start.size()) + " were given");
  if (!detail::mapOf(start).allFinite()) return failure("The start of the refinement has a NaN or infinite parameter");
  if (!(options.tolerance >= 0)) return failure("The tolerance of the refinement is negative or NaN");
  return {};
}

}  // namespace

BoolResult refineIteratively(const BaseCostFunction& function, const RealVector& start,
                             const RefinementOptions& options, RefinementResult& result) {
  BoolResult checked = checkArguments(function, start, options);
  if (!checked) return checked;
  Descent descent(function, options, start);
  checked = descent.start();
  if (!checked) return checked;
  const eRefinementEnd end = descent.run();
  descent.moveTo(result);
  result.end = end;
  return {};
}

}  // namespace ormix
