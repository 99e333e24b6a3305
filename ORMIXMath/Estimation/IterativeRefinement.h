#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/BaseCostFunction.h>
#include <ORMIXMath/Estimation/ProgressCallback.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/Enumeration.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <boost/numeric/ublas/vector.hpp>
#include <cstddef>

namespace ormix {

/// Why a refinement ended.
enum eRefinementEnd {
  eRE_Converged,       ///< The cost is zero, or its gradient or the steps are too small to matter.
  eRE_NoDecrease,      ///< No step, however short, made the cost smaller as promised.
  eRE_IterationLimit,  ///< The allowed number of iterations was used up.
  eRE_Stopped          ///< The progress callback asked to stop.
};

template <>
struct EnumerationNames<eRefinementEnd> {
  static constexpr std::string_view typeName = "eRefinementEnd";
  static constexpr std::array<std::string_view, 4> names{"eRE_Converged", "eRE_NoDecrease", "eRE_IterationLimit",
                                                         "eRE_Stopped"};
};

/// The limits of a refinement.
struct RefinementOptions {
  std::size_t nbMaxIterations = 100;  ///< Steps tried, accepted or not.
  omReal64 tolerance = 1e-15;         ///< Length of a step against the parameters', by their derivatives, that ends.
  ProgressCallback progress;          ///< Called after each iteration; empty for none.
};

/// The result of a refinement.
struct RefinementResult {
  RealVector params;                    ///< The best parameters found; the start where no step decreased the cost.
  omReal64 initialCost = 0;             ///< Half the sum of squared equations at the start.
  omReal64 cost = 0;                    ///< The same at `params`; never more than at the start.
  std::size_t nbIterations = 0;         ///< Steps tried.
  eRefinementEnd end = eRE_NoDecrease;  ///< Why it ended.
};

/// Makes the sum of squared equations smaller from `start` on, by Levenberg's and Marquardt's damped steps (Marquardt
/// 1963, with the gain-controlled damping of Nielsen 1999, each parameter scaled by its derivatives).
///
/// Only steps that decrease the cost are taken, so a Jacobian that is not the derivative can slow the descent or end it
/// early but never worsens the parameters. Between 1 and 9 parameters. The cost function must have been initialised.
/// Fails with a message, `result` untouched, when sizes do not fit, the start is not finite, or the equations cannot be
/// evaluated there. O(equations · params²) an iteration, nothing allocated inside the loop.
ORMIX_MATH_API BoolResult refineIteratively(const BaseCostFunction& function, const RealVector& start,
                                            const RefinementOptions& options, RefinementResult& result);

}  // namespace ormix
