#include <ORMIXMath/Estimation/RobustStatus.h>

#include <boost/numeric/ublas/vector.hpp>

namespace ormix {

EstimationStatus robustStatus(const BoolResult& outcome, const RobustResult& result, const RobustOptions& options,
                              std::size_t minimalDataSize) {
  if (!outcome) return failedStatus(eEC_NoConsensus, {}, 0, 0, outcome.getMessage());
  if (result.end == eRO_Stopped) return failedStatus(eEC_Stopped, {}, 0, 0, "The robust estimation was stopped");
  if (result.nbInliers <= minimalDataSize)
    return failedStatus(eEC_NotConfident, "number of inliers", static_cast<omReal64>(result.nbInliers),
                        static_cast<omReal64>(minimalDataSize + 1),
                        "No more samples agree with the model than determine it");
  if (!(result.nbFalseAlarms <= options.maxFalseAlarms))
    return failedStatus(eEC_NotConfident, "number of false alarms", result.nbFalseAlarms, options.maxFalseAlarms,
                        "As many samples may agree with a model by accident");
  if (result.end == eRO_IterationLimit)
    return failedStatus(eEC_NotConfident, "number of draws", static_cast<omReal64>(result.nbIterations),
                        static_cast<omReal64>(options.nbMaxIterations),
                        "More draws are needed for the confidence that was asked for");
  return {};
}

}  // namespace ormix
