#include <ORMIXMath/Contact/FacingIndex.h>

#include <array>
#include <cmath>
#include <utility>

namespace ormix::detail {

namespace {

constexpr int s_nbSectors = 32;

/// Corner k of the square |x| + |y| = 8, of which each side is the outer edge of eight sectors.
constexpr std::pair<int, int> cornerOf(int k) {
  const int quarter = k / 8 % 4;
  const int part = k % 8;
  const int x = quarter == 0 ? 8 - part : quarter == 1 ? -part : quarter == 2 ? part - 8 : part;
  const int y = quarter == 0 ? part : quarter == 1 ? 8 - part : quarter == 2 ? -part : part - 8;
  return {x, y};
}

/// Whether some directions of two sectors oppose: then those of two of their corners do.
constexpr bool canOppose(int sector, int other) {
  for (int k = sector; k <= sector + 1; ++k)
    for (int l = other; l <= other + 1; ++l)
      if (cornerOf(k).first * cornerOf(l).first + cornerOf(k).second * cornerOf(l).second < 0) return true;
  return false;
}

constexpr std::array<omUInt64, s_nbSectors> s_opposing = opposingTable<s_nbSectors>(canOppose);

unsigned sectorOf(const PlanarPoint& direction) {
  const omReal64 part = direction.y / (std::abs(direction.x) + std::abs(direction.y));
  const omReal64 turn = direction.x < 0 ? 2 - part : direction.y < 0 ? 4 + part : part;
  return static_cast<unsigned>(8 * turn) % s_nbSectors;
}

}  // namespace

omUInt64 FacingIndex::opposingSectors(const PlanarPoint& direction) { return s_opposing[sectorOf(direction)]; }

FacingIndex::FacingIndex(std::vector<BoundaryEdge> edges, eBoxOrder order)
    : _edges(std::move(edges)),
      _tree(
          _edges, [](const BoundaryEdge& item) { return sectorOf(item.direction); }, order) {}

}  // namespace ormix::detail
