#include <ORMIXMath/Estimation/ScaleScore.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ormix::detail {
namespace {

/// The exponent of a positive number; 1024 of infinity.
int exponentOf(omReal64 value) {
  omUInt64 bits;
  std::memcpy(&bits, &value, sizeof bits);
  return static_cast<int>(bits >> 52U) - 1023;
}

}  // namespace

omReal64 ScaleScore::edge(std::size_t bin) const { return _lowest * std::sqrt(std::ldexp(1.0, static_cast<int>(bin))); }

void ScaleScore::addChance(const ChanceModel& chance) {
  ++_nbModels;
  omReal64 probability = 0;
  // What half of the background is within is left out below.
  for (std::size_t b = 0; b < s_nbBins && probability < 0.7; ++b) {
    probability = chance.probability(edge(b));
    _logChance[b] += std::log(std::max(probability, 1e-300));
  }
}

void ScaleScore::useChance() {
  for (std::size_t b = 0; b + 1 < s_nbBins; ++b) {
    _logChance[b] = std::min(_logChance[b] / static_cast<omReal64>(_nbModels), -1e-9);
    _logMiss[b] = std::log(-std::expm1(_logChance[b]));
    // A distance that half of the background is within says nothing.
    if (_logChance[b] < -0.7) _nbBinsUsed = b + 1;
  }
}

void ScaleScore::setSizes(std::size_t nbSamples, std::size_t minimalDataSize) {
  _minimalDataSize = minimalDataSize;
  _entropy.resize(nbSamples + 1);
  const auto n = static_cast<omReal64>(nbSamples);
  for (std::size_t k = 0; k <= nbSamples; ++k) {
    const omReal64 p = static_cast<omReal64>(k) / n;
    _entropy[k] = (k > 0 ? n * p * std::log(p) : 0) + (k < nbSamples ? n * (1 - p) * std::log1p(-p) : 0);
  }
}

ScaleScore::Agreement ScaleScore::agreement(const std::vector<omReal64>& squares) const {
  std::array<std::size_t, s_nbBins> counts{};
  const omReal64 unit = 1 / _lowest;
  for (const omReal64 square : squares) {
    const omReal64 relative = square * unit * unit;
    // Bin b holds distances of at most 2^(b / 2) times the lowest.
    const int bin = relative > 1 ? exponentOf(relative) + 1 : 0;
    ++counts[static_cast<std::size_t>(std::min(bin, static_cast<int>(s_nbBins) - 1))];
  }
  const std::size_t n = squares.size();
  const auto nReal = static_cast<omReal64>(n);
  std::size_t within = 0;
  std::size_t best = 0;
  Agreement agreement;
  for (std::size_t b = 0; b < _nbBinsUsed; ++b) {
    if (counts[b] == 0) continue;
    within += counts[b];
    if (within <= _minimalDataSize) continue;
    const std::size_t k = within - _minimalDataSize;
    if (!(static_cast<omReal64>(k) > nReal * std::exp(_logChance[b]))) continue;
    const omReal64 logChance =
        -_entropy[k] + static_cast<omReal64>(k) * _logChance[b] + static_cast<omReal64>(n - k) * _logMiss[b];
    if (!(logChance < agreement.logChance)) continue;
    agreement.logChance = logChance;
    agreement.nbInliers = within;
    best = b;
  }
  agreement.distance = edge(best);
  return agreement;
}

}  // namespace ormix::detail
