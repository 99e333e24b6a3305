#pragma once

#include <ORMIXMath/Algebra/VectorArithmetic.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "FormModels.h"

/// \file
/// Least ranges, least maxima and greatest minima of distances; not installed.

namespace ormix::detail {

/// What is minimised: `outer` times the greatest distance less `inner` times the smallest, each 0 or 1, not both 0.
struct MinimaxGoal {
  omReal64 outer;
  omReal64 inner;
};

/// A point on the outer (side 1) or inner (side -1) limit, with its multiplier.
struct MinimaxContact {
  std::size_t point;
  int side;
  omReal64 multiplier;
};

/// The end of a descent.
struct MinimaxEnd {
  omReal64 value = std::numeric_limits<omReal64>::infinity();  ///< of the goal
  std::vector<MinimaxContact> contacts;                        ///< multipliers of each side sum to 1
  /// Length of the sum of the contacts' gradients by their multipliers: 0 where no small step can gain.
  omReal64 imbalance = 0;
};

/// What rounding may change in distances up to a magnitude, of points about 1 in size.
inline omReal64 roundingOf(omReal64 distance) {
  return 8 * std::numeric_limits<omReal64>::epsilon() * std::max(1.0, distance);
}

/// Solves a system of `size` equations in place by elimination with row pivots.
/// \return false where it is singular to rounding
template <std::size_t Most>
bool solveSmall(std::array<std::array<omReal64, Most>, Most>& a, std::array<omReal64, Most>& b, std::size_t size) {
  for (std::size_t k = 0; k < size; ++k) {
    std::size_t pivot = k;
    for (std::size_t i = k + 1; i < size; ++i)
      if (std::abs(a[i][k]) > std::abs(a[pivot][k])) pivot = i;
    if (!(std::abs(a[pivot][k]) > 1e-14)) return false;
    std::swap(a[k], a[pivot]);
    std::swap(b[k], b[pivot]);
    for (std::size_t i = k + 1; i < size; ++i) {
      const omReal64 factor = a[i][k] / a[k][k];
      for (std::size_t j = k; j < size; ++j) a[i][j] -= factor * a[k][j];
      b[i] -= factor * b[k];
    }
  }
  for (std::size_t k = size; k-- > 0;) {
    for (std::size_t j = k + 1; j < size; ++j) b[k] -= a[k][j] * b[j];
    b[k] /= a[k][k];
  }
  return true;
}

/// Linearised distances d[i] + g[i]·step.
template <std::size_t N>
struct LinearDistances {
  std::vector<omReal64> distances;
  std::vector<std::array<omReal64, N>> gradients;

  void clear() {
    distances.clear();
    gradients.clear();
  }
  void add(omReal64 distance, const std::array<omReal64, N>& gradient) {
    distances.push_back(distance);
    gradients.push_back(gradient);
  }
};

/// The step within a box that minimises the goal of linearised distances, of which the greatest is sought among the
/// outer and the smallest among the inner ones, by the dual simplex method: of all constraints, as many are tight as
/// there are unknowns, and the one that is violated most replaces the one whose multiplier runs out first. Each
/// exchange is a pass over the points and a small system.
template <std::size_t N>
class LinearMinimax {
 public:
  LinearMinimax(const MinimaxGoal& goal, const LinearDistances<N>& outer, const LinearDistances<N>& inner)
      : _goal(goal), _outer(outer), _inner(inner) {}

  /// \return false where rounding or too many exchanges ended the search
  bool solve(omReal64 halfBox) {
    // Each exchange makes the value larger, but for ties.
    constexpr std::size_t nbMostExchanges = 400;
    _halfBox = halfBox;
    start();
    for (std::size_t k = 0; k < nbMostExchanges; ++k) {
      if (!solvePrimal() || !solveDual()) return false;
      Row worst{};
      // A tight row is violated by rounding only.
      if (!findViolated(worst) || isTight(worst)) return true;
      if (!exchange(worst)) return false;
    }
    return false;
  }

  const std::array<omReal64, N>& step() const { return _step; }
  /// The goal of the linearised distances after the step.
  omReal64 value() const { return _goal.outer * _highest - _goal.inner * _lowest; }

  /// The tight constraints of points, by their number in the vectors given.
  std::vector<MinimaxContact> contacts() const {
    std::vector<MinimaxContact> result;
    for (std::size_t r = 0; r < size(); ++r)
      if (_basis[r].side != 0 && _multipliers[r] > 0)
        result.push_back({_basis[r].index, _basis[r].side, _multipliers[r]});
    return result;
  }
  omReal64 imbalance() const {
    omReal64 sum = 0;
    for (std::size_t r = 0; r < size(); ++r)
      if (_basis[r].side == 0) sum += _multipliers[r] * _multipliers[r];
    return std::sqrt(sum);
  }

 private:
  static constexpr std::size_t s_most = N + 2;
  using Vector = std::array<omReal64, s_most>;
  using Matrix = std::array<Vector, s_most>;

  /// A constraint: of a point (side 1 or -1), or of the box (side 0: parameter `index`, step >= -halfBox for sign 1).
  struct Row {
    std::size_t index;
    int side;
    omReal64 sign;
  };

  std::size_t size() const { return N + (_goal.outer != 0) + (_goal.inner != 0); }
  std::size_t lowestAt() const { return N + (_goal.outer != 0); }

  /// Coefficients of row · unknowns >= bound, of the unknowns step, highest, lowest.
  omReal64 coefficients(const Row& row, Vector& a) const {
    a.fill(0);
    if (row.side == 0) {
      a[row.index] = row.sign;
      return -_halfBox;
    }
    const LinearDistances<N>& limits = row.side > 0 ? _outer : _inner;
    for (std::size_t k = 0; k < N; ++k) a[k] = -row.side * limits.gradients[row.index][k];
    a[row.side > 0 ? N : lowestAt()] = row.side;
    return row.side * limits.distances[row.index];
  }

  void start() {
    std::array<omReal64, N> slope{};
    std::size_t r = 0;
    const auto addFirst = [&](const LinearDistances<N>& limits, std::ptrdiff_t index, int side) {
      _basis[r++] = {static_cast<std::size_t>(index), side, 0};
      for (std::size_t k = 0; k < N; ++k) slope[k] += side * limits.gradients[static_cast<std::size_t>(index)][k];
    };
    const std::vector<omReal64>& above = _outer.distances;
    const std::vector<omReal64>& below = _inner.distances;
    if (_goal.outer != 0) addFirst(_outer, std::max_element(above.begin(), above.end()) - above.begin(), 1);
    if (_goal.inner != 0) addFirst(_inner, std::min_element(below.begin(), below.end()) - below.begin(), -1);
    for (std::size_t k = 0; k < N; ++k) _basis[r++] = {k, 0, slope[k] >= 0 ? 1.0 : -1.0};
  }

  bool solvePrimal() {
    Matrix a;
    Vector b{};
    for (std::size_t r = 0; r < size(); ++r) b[r] = coefficients(_basis[r], a[r]);
    if (!solveSmall<s_most>(a, b, size())) return false;
    std::copy_n(b.begin(), N, _step.begin());
    _highest = _goal.outer != 0 ? b[N] : 0;
    _lowest = _goal.inner != 0 ? b[lowestAt()] : 0;
    return true;
  }

  /// The weights of the tight rows that sum to `right`.
  bool combine(const Vector& right, Vector& weights) const {
    Matrix transposed;
    Vector a;
    for (std::size_t r = 0; r < size(); ++r) {
      coefficients(_basis[r], a);
      for (std::size_t k = 0; k < size(); ++k) transposed[k][r] = a[k];
    }
    weights = right;
    return solveSmall<s_most>(transposed, weights, size());
  }

  bool solveDual() {
    Vector cost{};
    if (_goal.outer != 0) cost[N] = _goal.outer;
    if (_goal.inner != 0) cost[lowestAt()] = -_goal.inner;
    return combine(cost, _multipliers);
  }

  /// A distance after the step.
  omReal64 stepped(const LinearDistances<N>& limits, std::size_t i) const {
    omReal64 value = limits.distances[i];
    for (std::size_t k = 0; k < N; ++k) value += limits.gradients[i][k] * _step[k];
    return value;
  }

  bool findViolated(Row& worst) const {
    omReal64 largest = _highest;
    omReal64 smallest = _lowest;
    std::size_t largestAt = 0;
    std::size_t smallestAt = 0;
    for (std::size_t i = 0; _goal.outer != 0 && i < _outer.distances.size(); ++i)
      if (const omReal64 value = stepped(_outer, i); value > largest) {
        largest = value;
        largestAt = i;
      }
    for (std::size_t i = 0; _goal.inner != 0 && i < _inner.distances.size(); ++i)
      if (const omReal64 value = stepped(_inner, i); value < smallest) {
        smallest = value;
        smallestAt = i;
      }
    omReal64 violation = roundingOf(std::max(std::abs(largest), std::abs(smallest)));
    const omReal64 least = violation;
    if (_goal.outer != 0 && largest - _highest > violation) {
      violation = largest - _highest;
      worst = {largestAt, 1, 0};
    }
    if (_goal.inner != 0 && _lowest - smallest > violation) {
      violation = _lowest - smallest;
      worst = {smallestAt, -1, 0};
    }
    for (std::size_t k = 0; k < N; ++k)
      if (const omReal64 beyond = std::abs(_step[k]) - _halfBox; beyond > violation && beyond > 1e-12 * _halfBox) {
        violation = beyond;
        worst = {k, 0, _step[k] < 0 ? 1.0 : -1.0};
      }
    return violation > least;
  }

  bool isTight(const Row& row) const {
    return std::any_of(_basis.begin(), _basis.begin() + static_cast<std::ptrdiff_t>(size()), [&](const Row& tight) {
      return tight.index == row.index && tight.side == row.side && tight.sign == row.sign;
    });
  }

  bool exchange(const Row& entering) {
    Vector a;
    Vector weights;
    coefficients(entering, a);
    if (!combine(a, weights)) return false;
    std::size_t leaving = s_most;
    omReal64 ratio = std::numeric_limits<omReal64>::infinity();
    for (std::size_t r = 0; r < size(); ++r)
      if (weights[r] > 1e-11 && std::max(_multipliers[r], 0.0) / weights[r] < ratio) {
        ratio = std::max(_multipliers[r], 0.0) / weights[r];
        leaving = r;
      }
    if (leaving == s_most) return false;
    _basis[leaving] = entering;
    return true;
  }

  MinimaxGoal _goal;
  const LinearDistances<N>& _outer;
  const LinearDistances<N>& _inner;
  omReal64 _halfBox = 0;
  std::array<Row, s_most> _basis{};
  Vector _multipliers{};
  std::array<omReal64, N> _step{};
  omReal64 _highest = 0;
  omReal64 _lowest = 0;
};

/// The least and the greatest distance of points from a model.
struct DistanceRange {
  omReal64 lowest = std::numeric_limits<omReal64>::infinity();
  omReal64 highest = -std::numeric_limits<omReal64>::infinity();
};

template <class Model>
DistanceRange rangeOf(const Model& model, const std::vector<SpatialPoint>& points) {
  DistanceRange range;
  for (const SpatialPoint& point : points) {
    const omReal64 distance = model.distance(point);
    range.lowest = std::min(range.lowest, distance);
    range.highest = std::max(range.highest, distance);
  }
  return range;
}

/// The linearised problem of the points that can become contacts within a box, as distances change by at most the
/// reach of the box.
template <class Model>
class LinearStep {
 public:
  static constexpr std::size_t s_nbParameters = Model::s_nbParameters;

  /// \return false where the linear problem was not solved
  bool solve(const std::vector<SpatialPoint>& points, const MinimaxGoal& goal, const Model& model,
             const DistanceRange& range, omReal64 halfBox) {
    _distances.clear();
    _indices.clear();
    // Gradients are at most about 2 by any parameter.
    const omReal64 reach = 4 * static_cast<omReal64>(s_nbParameters) * halfBox;
    for (std::size_t i = 0; i < points.size(); ++i) {
      const omReal64 distance = model.distance(points[i]);
      const bool mayTouch = (goal.outer != 0 && distance >= range.highest - reach) ||
                            (goal.inner != 0 && distance <= range.lowest + reach);
      if (!mayTouch) continue;
      _distances.add(distance, model.gradient(points[i]));
      _indices.push_back(i);
    }
    LinearMinimax<s_nbParameters> linear(goal, _distances, _distances);
    if (!linear.solve(halfBox)) return false;
    step = linear.step();
    value = linear.value();
    imbalance = linear.imbalance();
    contacts = linear.contacts();
    for (MinimaxContact& contact : contacts) contact.point = _indices[contact.point];
    return true;
  }

  std::array<omReal64, s_nbParameters> step{};
  omReal64 value = 0;
  omReal64 imbalance = 0;
  std::vector<MinimaxContact> contacts;

 private:
  LinearDistances<s_nbParameters> _distances;
  std::vector<std::size_t> _indices;
};

/// Descends from a model to a local minimum of the goal by steps of the linearised problem within a box (a trust
/// region, Madsen1975): quadratically where contacts determine the model, as for all ranges and greatest minima.
/// Points are about 1 in size. A model has s_nbParameters, distance(point), gradient(point) and moved(step). O(points)
/// a step, of which there are few. An inscribed element whose centre has left the points, so that they do not surround
/// it, grows without end: the descent stops.
template <class Model>
MinimaxEnd descendMinimax(const std::vector<SpatialPoint>& points, const MinimaxGoal& goal, Model& model) {
  constexpr std::size_t nbMostSteps = 200;
  constexpr omReal64 smallestBox = 1e-15;
  constexpr omReal64 farthestInside = 2;
  const auto valueOf = [&](const DistanceRange& range) {
    return goal.outer * range.highest - goal.inner * range.lowest;
  };
  const auto negligible = [](const DistanceRange& range) {
    return 4 * roundingOf(std::max(std::abs(range.highest), std::abs(range.lowest)));
  };
  MinimaxEnd end;
  DistanceRange range = rangeOf(model, points);
  end.value = valueOf(range);
  omReal64 halfBox = std::clamp(2 * (range.highest - range.lowest), 1e-9, 0.25);
  LinearStep<Model> linear;
  for (std::size_t k = 0; k < nbMostSteps && halfBox > smallestBox; ++k) {
    if (goal.outer == 0 && centerAway(model) > farthestInside) break;
    if (!linear.solve(points, goal, model, range, halfBox)) {
      halfBox /= 4;
      continue;
    }
    const omReal64 promised = end.value - linear.value;
    if (!(promised > negligible(range))) break;
    const Model next = model.moved(linear.step.data());
    const DistanceRange nextRange = rangeOf(next, points);
    const omReal64 gained = end.value - valueOf(nextRange);
    if (gained > 0) {
      model = next;
      range = nextRange;
      end.value = valueOf(range);
    }
    if (gained > 0.75 * promised)
      halfBox = std::min(3 * halfBox, 1.0);
    else if (!(gained > 0.25 * promised))
      halfBox /= 4;
  }
  // The contacts that hold the model: where the box holds it instead of a contact, another box may tell. In large ones
  // some may be contacts after the step only.
  constexpr omReal64 contactTolerance = 1e-9;
  const auto isAtLimit = [&](const MinimaxContact& contact) {
    const omReal64 limit = contact.side > 0 ? range.highest : range.lowest;
    return std::abs(model.distance(points[contact.point]) - limit) <= contactTolerance;
  };
  end.imbalance = std::numeric_limits<omReal64>::infinity();
  for (halfBox = 1e-3; halfBox > smallestBox && end.imbalance > smallestBox; halfBox /= 10) {
    if (!linear.solve(points, goal, model, range, halfBox) || !(linear.imbalance < end.imbalance)) continue;
    if (!std::all_of(linear.contacts.begin(), linear.contacts.end(), isAtLimit)) continue;
    end.contacts = linear.contacts;
    end.imbalance = linear.imbalance;
  }
  return end;
}

}  // namespace ormix::detail
