#include <ORMIXMath/Estimation/NeighbourDraw.h>

#include <algorithm>
#include <numeric>

namespace ormix::detail {

void NeighbourDraw::assign(const SampleView& samples, std::size_t minimalDataSize) {
  _samples = samples;
  _nearest.clear();
  // Shares of the samples, at least twice as many as are drawn.
  constexpr std::array<std::size_t, s_nbSizes> shares{12, 8, 5};
  for (std::size_t k = 0; k < s_nbSizes; ++k) _sizes[k] = std::max(samples.nbSamples / shares[k], 2 * minimalDataSize);
  if (_sizes.back() < samples.nbSamples) _nearest.resize(samples.nbSamples);
  _squares.resize(samples.nbSamples);
}

const std::vector<std::size_t>& NeighbourDraw::nearestTo(std::size_t sample) {
  std::vector<std::size_t>& nearest = _nearest[sample];
  if (!nearest.empty()) return nearest;
  nearest.resize(_samples.nbSamples);
  std::iota(nearest.begin(), nearest.end(), std::size_t{0});
  for (std::size_t i = 0; i < _samples.nbSamples; ++i) {
    _squares[i] = 0;
    for (std::size_t c = 0; c < _samples.dimension; ++c) {
      const omReal64 difference = _samples[i][c] - _samples[sample][c];
      _squares[i] += difference * difference;
    }
  }
  // The sample itself before its copies; of equal distances the first, for the same draws everywhere.
  _squares[sample] = -1;
  const auto end = nearest.begin() + static_cast<std::ptrdiff_t>(_sizes.back()) + 1;
  std::partial_sort(nearest.begin(), end, nearest.end(), [this](std::size_t i, std::size_t k) {
    return _squares[i] != _squares[k] ? _squares[i] < _squares[k] : i < k;
  });
  nearest.erase(end, nearest.end());
  nearest.erase(nearest.begin());
  return nearest;
}

void NeighbourDraw::draw(SampleDraw& draw, std::vector<std::size_t>& drawn) {
  const std::size_t first = draw.below(static_cast<omUInt32>(_samples.nbSamples));
  const std::vector<std::size_t>& nearest = nearestTo(first);
  drawn.pop_back();
  draw.draw(_sizes[_turn++ % s_nbSizes], drawn);
  for (std::size_t& index : drawn) index = nearest[index];
  drawn.push_back(first);
}

}  // namespace ormix::detail
