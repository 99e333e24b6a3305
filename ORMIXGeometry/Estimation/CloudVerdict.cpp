#include <ORMIXGeometry/Estimation/CloudVerdict.h>
#include <ORMIXMath/Fitting/CloudAxes.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ormix::geom::detail {

PairVerdict cloudVerdict(const SampleView& points, eEstimationCode otherwise) {
  constexpr omReal64 eps = NumericLimits<omReal64>::s_eps;
  omReal64 largest = 0;
  const std::array<omReal64, 3> axes = ormix::detail::cloudExtents(points, largest);
  const omReal64 rounding = 4 * eps * largest * std::sqrt(static_cast<omReal64>(points.nbSamples));
  if (!(axes[0] > rounding))
    return {eEC_Coincident, "extent of the points over their largest coordinate", largest > 0 ? axes[0] / largest : 0,
            4 * eps};
  // What the reduction rounds beside the coordinates.
  const omReal64 flat = std::max(rounding, 64 * eps * axes[0]);
  if (!(axes[1] > flat))
    return {eEC_Collinear, "width of the points over their length", axes[1] / axes[0], flat / axes[0]};
  if (points.dimension == 3 && !(axes[2] > flat))
    return {eEC_Coplanar, "height of the points over their length", axes[2] / axes[0], flat / axes[0]};
  return {otherwise, {}, 0, 0};
}

}  // namespace ormix::geom::detail
