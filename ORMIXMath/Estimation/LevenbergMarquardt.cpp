#include <ORMIXMath/Estimation/LevenbergMarquardt.h>

#include <string>

namespace ormix::detail {

EstimationStatus failedDescent(const DescentCourse& course, std::size_t nbMostSteps) {
  switch (course.end) {
    case eDE_TooManySteps:
      return failedStatus(eEC_NoConvergence, "number of iterations", static_cast<omReal64>(course.nbSteps),
                          static_cast<omReal64>(nbMostSteps),
                          "The refinement did not settle within " + std::to_string(nbMostSteps) + " steps");
    case eDE_Stopped:
      return failedStatus(eEC_Stopped, {}, 0, 0, "Stopped");
    case eDE_NotFinite:
      return failedStatus(eEC_NotFinite, {}, 0, 0, "The distances from the model are NaN or infinite");
    default:
      return {};
  }
}

}  // namespace ormix::detail
