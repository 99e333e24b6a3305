#include <ORMIXGeometry/Estimation/2d/PairSums2d.h>
#include <ORMIXUtil/NumericLimits.h>

#include <cmath>

namespace ormix::geom::detail {

bool PairSums2d::determineRotation() const {
  constexpr omReal64 threshold = NumericLimits<omReal64>::s_sqrt_eps;
  return std::isfinite(s) && std::isfinite(c) && std::isfinite(spread1) &&
         (std::abs(s) >= threshold || std::abs(c) >= threshold);
}

omReal64 PairSums2d::rotationAngle() const {
  // A difference from 0 is never -0, so that a half turn is always pi.
  return std::atan2(0.0 - s, c);
}

PairSums2d pairSums(const SampleView& samples) {
  const auto all = CentredSummation<PairProducts2d>::of(samples.data, samples.nbSamples);
  return {all.nbRows,  all.mean[0], all.mean[1], all.mean[2], all.mean[3],
          all.sums[0], all.sums[1], all.sums[2], all.sums[3]};
}

}  // namespace ormix::geom::detail
