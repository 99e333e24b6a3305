#pragma once

#include <ORMIXMath/Estimation/EstimationStatus.h>
#include <ORMIXMath/Estimation/RobustEstimation.h>

namespace ormix {

/// How a robust estimation ended, as data: eEC_Success only for eRO_Confident.
///
/// - eEC_NoConsensus where it failed, with its message; `result` does not matter then.
/// - eEC_NotConfident with the "number of false alarms" and `options.maxFalseAlarms`, where a consensus does not beat
///   chance, with the "number of inliers" where these are no more than determine a model (`minimalDataSize`), and with
///   the "number of draws" where the limit ended the search.
/// - eEC_Stopped where the callback did.
ORMIX_MATH_API EstimationStatus robustStatus(const BoolResult& outcome, const RobustResult& result,
                                             const RobustOptions& options, std::size_t minimalDataSize);

}  // namespace ormix
