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

constexpr std::array<omUInt64, s_nbSectors> opposingTable() {
  std::array<omUInt64, s_nbSectors> table{};
  for (int sector = 0; sector < s_nbSectors; ++sector)
    for (int other = 0; other < s_nbSectors; ++other)
      if (canOppose(sector, other)) table[static_cast<std::size_t>(sector)] |= omUInt64{1} << other;
  return table;
}

constexpr std::array<omUInt64, s_nbSectors> s_opposing = opposingTable();

unsigned sectorOf(const PlanarPoint& direction) {
  const omReal64 part = direction.y / (std::abs(direction.x) + std::abs(direction.y));
  const omReal64 turn = direction.x < 0 ? 2 - part : direction.y < 0 ? 4 + part : part;
  return static_cast<unsigned>(8 * turn) % s_nbSectors;
}

std::vector<IndexBox<2>> boxesOf(const std::vector<BoundaryEdge>& edges) {
  std::vector<IndexBox<2>> boxes;
  boxes.reserve(edges.size());
  for (const BoundaryEdge& edge : edges) boxes.push_back(boxOf(edge));
  return boxes;
}

std::vector<omUInt64> sectorsOf(const std::vector<BoundaryEdge>& edges) {
  std::vector<omUInt64> sectors;
  sectors.reserve(edges.size());
  for (const BoundaryEdge& edge : edges) sectors.push_back(omUInt64{1} << sectorOf(edge.direction));
  return sectors;
}

}  // namespace

omUInt64 FacingIndex::opposingSectors(const PlanarPoint& direction) { return s_opposing[sectorOf(direction)]; }

FacingIndex::FacingIndex(std::vector<BoundaryEdge> edges, eBoxOrder order)
    : _edges(std::move(edges)), _tree(boxesOf(_edges), sectorsOf(_edges), order) {}

}  // namespace ormix::detail
