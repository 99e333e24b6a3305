#include "HullSlices.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormix::detail {

namespace {

// Polygons whose sizes can be divided by and multiplied without overflow and underflow.
constexpr omReal64 s_smallestSize = 0x1p-500;
constexpr omReal64 s_largestSize = 0x1p500;

// Bound of the error of an interpolated height, relative to the largest magnitude of a height: the differences, the
// ratio, the product and the sum have fewer than ten roundings of terms of at most twice that size.
constexpr omReal64 s_heightBound = 0x1p-48;

}  // namespace

/// The heights of a chain of the polygon at the borders of the slices.
/// \param vertex gives the vertices of the chain by index, in ascending order of x
template <class Vertex>
void HullSlices::interpolate(std::size_t nbVertices, Vertex vertex, omReal64 left, omReal64 width, Heights& heights) {
  std::size_t k = 0;
  for (std::size_t i = 0; i <= s_nbSlices; ++i) {
    const omReal64 x = left + width * (static_cast<omReal64>(i) / static_cast<omReal64>(s_nbSlices));
    while (k + 2 < nbVertices && vertex(k + 1)[0] < x) ++k;
    const omReal64* a = vertex(k);
    const omReal64* b = vertex(k + 1);
    const omReal64 part = std::clamp((x - a[0]) / (b[0] - a[0]), 0.0, 1.0);
    heights[i] = a[1] + part * (b[1] - a[1]);
  }
}

HullSlices::HullSlices(const std::vector<omReal64>& hullXy) {
  const omReal64* xy = hullXy.data();
  const std::size_t nb = hullXy.size() / 2;
  std::size_t right = 0;
  omReal64 largest = 0;
  for (std::size_t i = 0; i < nb; ++i) {
    // Of several of the largest x, the last is the end of the upper chain.
    if (xy[2 * i] >= xy[2 * right]) right = i;
    largest = std::max({largest, std::abs(xy[2 * i]), std::abs(xy[2 * i + 1])});
  }
  // A chain may begin or end with an upright side.
  std::size_t lowerEnd = right;
  if (lowerEnd > 0 && xy[2 * (lowerEnd - 1)] == xy[2 * right]) --lowerEnd;
  const std::size_t upperEnd = xy[2 * (nb - 1)] == xy[0] ? nb - 1 : nb;
  const omReal64 width = xy[2 * right] - xy[0];
  // Slices much wider than the distance of neighbouring numbers, so that a rounded place is off by less than one.
  if (!(width > s_smallestSize && largest < s_largestSize && width > largest * 0x1p-30)) return;
  Heights low, high;
  interpolate(
      lowerEnd + 1, [&](std::size_t i) { return xy + 2 * i; }, xy[0], width, low);
  interpolate(
      upperEnd - right + 1, [&](std::size_t i) { return xy + 2 * ((upperEnd - i) % nb); }, xy[0], width, high);
  const omReal64 margin = s_heightBound * largest;
  const std::size_t last = s_nbSlices;
  for (std::size_t i = 0; i < s_nbSlices; ++i) {
    // From one border before to one after the slice, as the place of a point is rounded. A chain has its extreme value
    // over an interval at an end of it: the lower one is convex, the upper one concave.
    const std::size_t from = i == 0 ? 0 : i - 1, to = std::min(i + 2, last);
    _slices[i] = {std::max(low[from], low[to]) + margin, std::min(high[from], high[to]) - margin};
  }
  // Points beside the polygon that are rounded into the first or last slice.
  _slices.front() = _slices.back() = {std::numeric_limits<omReal64>::infinity(), 0};
  _left = xy[0];
  _slicesPerUnit = static_cast<omReal64>(s_nbSlices) / width;
}

}  // namespace ormix::detail
