#include <ORMIXMath/Estimation/CoordinateStep.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace ormix::detail {

omReal64 halfStepOf(const SampleView& samples) {
  constexpr std::size_t nbLooks = 256;
  const std::size_t stride = samples.nbSamples / nbLooks + 1;
  std::vector<omReal64> values;
  omReal64 largest = 0;
  for (std::size_t c = 0; c < samples.dimension; ++c) {
    values.clear();
    for (std::size_t i = 0; i < samples.nbSamples; i += stride) values.push_back(samples[i][c]);
    std::sort(values.begin(), values.end());
    std::size_t nbEqual = 0;
    omReal64 step = std::numeric_limits<omReal64>::infinity();
    for (std::size_t i = 1; i < values.size(); ++i) {
      const omReal64 gap = values[i] - values[i - 1];
      nbEqual += gap == 0 ? 1 : 0;
      if (gap > 0) step = std::min(step, gap);
    }
    // Values that are not rounded repeat where samples do, but not between others.
    const std::size_t nbDifferent = values.size() - nbEqual;
    if (nbDifferent > 2 && step < std::numeric_limits<omReal64>::infinity() && nbEqual > 0 &&
        std::all_of(values.begin(), values.end(), [&](omReal64 value) {
          const omReal64 count = (value - values.front()) / step;
          return std::abs(count - std::round(count)) < 1e-6;
        }))
      largest = std::max(largest, step / 2);
  }
  return largest;
}

}  // namespace ormix::detail
