#include "ErrorEllipse.h"

#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Estimation/FitReport.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom {

BoolResult errorEllipse(const FitReport& report, std::size_t i, std::size_t j, omReal64 probability,
                        Ellipse2d<omReal64>& ellipse) {
  const std::size_t n = report.params.size();
  if (i >= n || j >= n || i == j)
    return failure("An error ellipse needs two parameters of the report's " + std::to_string(n) + ", not " +
                   std::to_string(i) + " and " + std::to_string(j));
  if (!(probability > 0 && probability < 1))
    return failure("The probability of an error ellipse must be between 0 and 1, not " + std::to_string(probability));
  const omReal64 xx = report.covariance[i * n + i], yy = report.covariance[j * n + j];
  const omReal64 xy = report.covariance[i * n + j];
  // Eigenvalues are mean ± radius of Mohr's circle; the smaller one is not taken as a difference of nearly equal
  // numbers.
  const omReal64 mean = (xx + yy) / 2, radius = std::hypot((xx - yy) / 2, xy), larger = mean + radius;
  if (!std::isfinite(larger)) return failure("The covariance of the parameters is not known");
  const omReal64 smaller = larger > 0 ? std::max(0.0, xx * (yy / larger) - xy * (xy / larger)) : 0;
  const omReal64 factor = -2 * std::log1p(-probability);
  ellipse.setCoords({report.params[i], report.params[j]}, std::sqrt(factor * larger), std::sqrt(factor * smaller),
                    std::atan2(2 * xy, xx - yy) / 2);
  return {};
}

}  // namespace ormix::geom
