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
  const auto isNearer = [this](std::size_t i, std::size_t k) {
    return _squares[i] != _squares[k] ? _squares[i] < _squares[k] : i < k;
  };
  // Of every size the same ones in the same order everywhere, but not by distance.
  auto from = nearest.begin();
  for (const std::size_t size : _sizes) {
    const auto end = nearest.begin() + static_cast<std::ptrdiff_t>(size) + 1;
    if (end == from) continue;
    std::nth_element(from, end - 1, nearest.end(), isNearer);
    std::sort(from, end);
    from = end;
  }
  nearest.erase(from, nearest.end());
  nearest.erase(std::find(nearest.begin(), nearest.end(), sample));
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
