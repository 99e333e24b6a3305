#pragma once

#include <ORMIXMath/Estimation/EstimationStatus.h>
#include <ORMIXMath/Estimation/LinearSquares.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

/// \file
/// The steps by which fits are refined; not installed.

namespace ormix::detail {

/// Squared changes of the residuals that are too small to matter.
struct NegligibleChanges {
  omReal64 settled = 0;   ///< After such a step the next ones are left out.
  omReal64 rounding = 0;  ///< Such a step is not made.
};

/// How a descent ended.
enum eDescentEnd {
  eDE_Settled,       ///< Further steps would change nothing of note.
  eDE_TooManySteps,  ///< Not within the number of steps.
  eDE_Stopped,       ///< By `goesOn`.
  eDE_NotFinite      ///< No step is finite.
};

/// The end, and what led to it.
struct DescentCourse {
  eDescentEnd end = eDE_Settled;
  std::size_t nbSteps = 0;     ///< Steps that were tried.
  omReal64 largestChange = 0;  ///< The largest squared change of the residuals by one of them.
};

/// Why a descent failed; success where it settled.
EstimationStatus failedDescent(const DescentCourse& course, std::size_t nbMostSteps);

/// Levenberg's and Marquardt's steps (Marquardt1963, More1978), each on a triangle of the Jacobian, whose condition is
/// not squared, from the squares at a state on. They begin undamped where `damping` is 0.
///
/// The last step is made without computing what it leads to, once what it leaves surely is negligible: the rate at
/// which steps shrink tells.
///
/// A problem has a type `Squares` (LinearSquares, or one derived from it), and
/// - `bool move(state, step, moved)`: the state after a step; false where there is none;
/// - `bool linearise(state, squares)`: the squares at a state; false where they are not finite;
/// - `NegligibleChanges negligible(squares)`;
/// - `bool goesOn(nbSteps)`: asked after each step.
template <class Problem, class State, class Squares>
DescentCourse minimise(Problem& problem, State& state, Squares& squares, std::size_t nbMostSteps,
                       omReal64 damping = 0) {
  constexpr omReal64 firstDamping = 1e-4;
  constexpr omReal64 mostDamping = 1e12;
  constexpr omReal64 roundingOfCost = 1e-12;
  constexpr omReal64 surelyConverging = 0.1;
  DescentCourse course;
  omReal64 growth = 4;
  omReal64 previous = 0;
  Squares trial;
  for (bool isLast = false; !isLast;) {
    const UnknownValues lengths = columnLengths(squares);
    UnknownValues step;
    omReal64 change = 0;
    const auto solve = [&] {
      step = dampedStep(squares, lengths, damping);
      change = squaredChange(squares, step);
      return std::isfinite(change) &&
             std::all_of(step.begin(), step.end(), [](omReal64 value) { return std::isfinite(value); });
    };
    if (damping == 0 && !hasPivots(squares, lengths)) damping = firstDamping;
    if (!solve()) {
      course.end = eDE_NotFinite;
      return course;
    }
    const NegligibleChanges negligible = problem.negligible(squares);
    if (change <= negligible.rounding && damping <= firstDamping) break;
    if (course.nbSteps >= nbMostSteps) {
      course.end = eDE_TooManySteps;
      return course;
    }
    ++course.nbSteps;
    // The square of the rate; unknown at first.
    const omReal64 rate = change < surelyConverging * surelyConverging * previous ? change / previous : 1;
    isLast = damping <= firstDamping && change * rate <= negligible.settled;
    State moved = state;
    const bool isMoved = problem.move(state, step, moved);
    if (isLast) {
      if (isMoved) state = moved;
    } else if (isMoved && problem.linearise(moved, trial) && trial.cost <= squares.cost * (1 + roundingOfCost)) {
      const omReal64 gain = (squares.cost - trial.cost) / change;
      std::swap(squares, trial);
      state = moved;
      course.largestChange = std::max(course.largestChange, change);
      previous = change;
      damping = gain > 0.75 && damping <= firstDamping ? 0 : damping / 3;
      growth = 4;
    } else {
      damping = std::max(damping * growth, firstDamping);
      growth *= 2;
      // No step however short makes it less, or what it promises is rounding: this is the least.
      isLast = damping > mostDamping || change <= roundingOfCost * squares.cost;
    }
    if (!problem.goesOn(course.nbSteps)) {
      course.end = eDE_Stopped;
      return course;
    }
  }
  return course;
}

}  // namespace ormix::detail
