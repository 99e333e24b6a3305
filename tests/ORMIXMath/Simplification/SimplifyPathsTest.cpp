#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/PointSegmentDistance.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Simplification/SimplifyPaths.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "support/Random.h"

namespace ormix {
namespace {

using Ring = std::vector<PlanarPoint>;
using Rings = std::vector<Ring>;

bool isSame(const PlanarPoint& a, const PlanarPoint& b) { return a.x == b.x && a.y == b.y; }
bool isOn(const PlanarPoint& p, const PlanarPoint& a, const PlanarPoint& b) {
  return pointSegmentDistance(p.x, p.y, a.x, a.y, b.x, b.y) == 0;
}
const PlanarPoint& after(const Ring& ring, std::size_t i) { return ring[(i + 1) % ring.size()]; }

SimplifiedPaths simplified(const Rings& rings, omReal64 tolerance, ePathSimplification method, bool areRings = true) {
  std::vector<PathView> paths;
  for (const Ring& ring : rings) paths.push_back({&ring[0].x, ring.size(), areRings});
  return simplifyPaths(paths, tolerance, method);
}
Rings keptOf(const Rings& rings, const SimplifiedPaths& result) {
  EXPECT_EQ(result.outcome, ePO_Simplified);
  Rings kept(rings.size());
  for (std::size_t i = 0, k = 0; i < result.ends.size(); ++i)
    for (; k < result.ends[i]; ++k) kept[i].push_back(rings[i][result.kept[k]]);
  return kept;
}
Rings simplifiedRings(const Rings& rings, omReal64 tolerance, ePathSimplification method = ePS_KeepTopology) {
  return keptOf(rings, simplified(rings, tolerance, method));
}
std::vector<std::pair<omReal64, omReal64>> vertexSet(const Rings& rings) {
  std::vector<std::pair<omReal64, omReal64>> set;
  for (const Ring& ring : rings)
    for (const PlanarPoint& p : ring) set.emplace_back(p.x, p.y);
  std::sort(set.begin(), set.end());
  return set;
}

/// Whether two edges have a point in common that is not an end of both, by every pair.
bool hasContact(const Rings& rings) {
  std::vector<PlanarSegment> edges;
  for (const Ring& ring : rings)
    for (std::size_t i = 0; i < ring.size(); ++i) edges.push_back({ring[i], after(ring, i)});
  for (std::size_t i = 0; i < edges.size(); ++i)
    for (std::size_t j = i + 1; j < edges.size(); ++j) {
      const auto& [a, b] = edges[i];
      const auto& [c, d] = edges[j];
      if (std::max(a.x, b.x) < std::min(c.x, d.x) || std::max(c.x, d.x) < std::min(a.x, b.x)) continue;
      if (orientation(a, b, c) * orientation(a, b, d) < 0 && orientation(c, d, a) * orientation(c, d, b) < 0)
        return true;
      for (const PlanarPoint& p : {c, d})
        if (isOn(p, a, b) && !isSame(p, a) && !isSame(p, b)) return true;
      for (const PlanarPoint& p : {a, b})
        if (isOn(p, c, d) && !isSame(p, c) && !isSame(p, d)) return true;
      if ((isSame(a, c) && isSame(b, d)) || (isSame(a, d) && isSame(b, c))) return true;
    }
  return false;
}
omReal64 areaOf(const Ring& ring) {
  omReal64 area = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) area += ring[i].x * after(ring, i).y - after(ring, i).x * ring[i].y;
  return area / 2;
}
bool isInside(const PlanarPoint& p, const Ring& ring) {
  bool isIn = false;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const PlanarPoint& b = after(ring, i);
    if ((ring[i].y <= p.y) != (b.y <= p.y) && (orientation(ring[i], b, p) > 0) == (b.y > p.y)) isIn = !isIn;
  }
  return isIn;
}

/// Rings that do not touch: stars with stars as holes, combs in any direction, and double spirals; either way round.
class RandomRings {
 public:
  explicit RandomRings(unsigned seed) : _random(seed) {}

  Rings next() {
    Rings rings;
    const auto kind = _random.below(3);
    if (kind == 0) {
      rings.push_back(star({0, 0}, 100, _random.uniform(0, 0.3)));
      for (omUInt32 hole = _random.below(5); hole-- > 0;)
        rings.push_back(star({42 * std::cos(1.2 * hole), 42 * std::sin(1.2 * hole)}, 22, _random.uniform(0, 0.9)));
    } else {
      rings.push_back(kind == 1 ? comb() : spiral());
    }
    for (Ring& ring : rings)
      if (_random.below(2) == 0) std::reverse(ring.begin(), ring.end());
    return rings;
  }
  Rings turned(Rings rings) {
    for (Ring& ring : rings) std::rotate(ring.begin(), ring.begin() + _random.below(5), ring.end());
    std::reverse(rings.begin(), rings.end());
    return rings;
  }
  omReal64 tolerance() { return std::pow(10.0, _random.uniform(-1, 2.2)); }

 private:
  Ring star(const PlanarPoint& center, omReal64 size, omReal64 noise) {
    Ring ring(5 + _random.below(25));
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const omReal64 angle = 2 * s_pi * omReal64(i) / omReal64(ring.size());
      const omReal64 radius = size * (1 - noise * _random.uniform(0, 1));
      ring[i] = {center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)};
    }
    return ring;
  }
  Ring comb() {
    const int nbTeeth = 2 + int(_random.below(6));
    const omReal64 angle = _random.uniform(0, 7);
    Ring ring{{0, 0}, {4.0 * nbTeeth, 0}};
    for (int i = nbTeeth; i-- > 0;) {
      const omReal64 height = _random.uniform(20, 60);
      for (const auto& [x, y] :
           {std::pair(3.6, height), {2.4, height * _random.uniform(0.9, 1.1)}, {2.0, 3.0}, {0.4, 5.0}})
        ring.push_back({4.0 * i + x, y});
    }
    for (PlanarPoint& p : ring)
      p = {p.x * std::cos(angle) - p.y * std::sin(angle), p.x * std::sin(angle) + p.y * std::cos(angle)};
    return ring;
  }
  Ring spiral() {
    Ring ring;
    const int nbSteps = 10 + int(_random.below(20));
    for (const bool isBack : {false, true})
      for (int i = 0; i <= nbSteps; ++i) {
        const omReal64 turn = omReal64(isBack ? nbSteps - i : i) / 10;
        const omReal64 radius = 6 * ((isBack ? 1.5 : 1) + turn + _random.uniform(-0.1, 0.1));
        ring.push_back({radius * std::cos(2 * s_pi * turn), radius * std::sin(2 * s_pi * turn)});
      }
    return ring;
  }

  support::Random _random;
};

void expectWithinTolerance(const Ring& ring, const std::vector<omUInt32>& kept, omReal64 tolerance) {
  for (std::size_t k = 0; k < kept.size(); ++k) {
    const PlanarPoint& a = ring[kept[k]];
    const std::size_t last = kept[(k + 1) % kept.size()];
    for (std::size_t i = (kept[k] + 1) % ring.size(); i != last; i = (i + 1) % ring.size())
      ASSERT_LE(pointSegmentDistance(ring[i].x, ring[i].y, a.x, a.y, ring[last].x, ring[last].y),
                tolerance * 1.0000001);
  }
}

TEST(SimplifyPaths, KeepsRingsApartAndNearWhereverTheyBegin) {
  RandomRings random(1301);
  for (int count = 0; count < 4000; ++count) {
    const Rings rings = random.next();
    const omReal64 tolerance = random.tolerance();
    SCOPED_TRACE(::testing::Message() << "rings " << count << ", tolerance " << tolerance);
    for (const ePathSimplification method : {ePS_KeepTopology, ePS_ByArea}) {
      const SimplifiedPaths result = simplified(rings, tolerance, method);
      const Rings kept = keptOf(rings, result);
      ASSERT_FALSE(hasContact(kept));
      for (std::size_t i = 0; i < rings.size(); ++i) {
        ASSERT_GT(areaOf(rings[i]) * areaOf(kept[i]), 0);
        for (const PlanarPoint& p : kept[i]) ASSERT_TRUE(i == 0 || isInside(p, kept[0]));
        if (method == ePS_ByArea) continue;
        const std::size_t begin = i == 0 ? 0 : result.ends[i - 1];
        const auto first = result.kept.begin() + std::ptrdiff_t(begin);
        expectWithinTolerance(rings[i], {first, result.kept.begin() + std::ptrdiff_t(result.ends[i])}, tolerance);
      }
      ASSERT_EQ(vertexSet(simplifiedRings(random.turned(rings), tolerance, method)), vertexSet(kept));
      if (method != ePS_KeepTopology) continue;
      ASSERT_EQ(vertexSet(simplifiedRings(kept, tolerance)), vertexSet(kept));
    }
  }
}

// Cells of a noisy lattice, whose borders are runs of vertices that two cells have in opposite directions.
TEST(SimplifyPaths, KeepsSharedBordersShared) {
  support::Random random(1302);
  constexpr int nbCells = 5;
  constexpr int nbSteps = 8;
  constexpr int size = nbCells * nbSteps + 1;
  Ring lattice(size * size);
  for (int y = 0; y < size; ++y)
    for (int x = 0; x < size; ++x)
      lattice[std::size_t(y * size + x)] = {x + random.uniform() / 4, y + random.uniform() / 4};
  Rings cells;
  for (int cy = 0; cy < size - 1; cy += nbSteps)
    for (int cx = 0; cx < size - 1; cx += nbSteps) {
      Ring cell;
      const auto add = [&](int x, int y) { cell.push_back(lattice[std::size_t((cy + y) * size + cx + x)]); };
      for (int i = 0; i < nbSteps; ++i) add(i, 0);
      for (int i = 0; i < nbSteps; ++i) add(nbSteps, i);
      for (int i = nbSteps; i > 0; --i) add(i, nbSteps);
      for (int i = nbSteps; i > 0; --i) add(0, i);
      if (random.below(2) == 0) std::reverse(cell.begin(), cell.end());
      std::rotate(cell.begin(), cell.begin() + random.below(20), cell.end());
      cells.push_back(cell);
    }
  for (const omReal64 tolerance : {0.1, 0.3, 1.0, 100.0}) {
    const Rings kept = simplifiedRings(cells, tolerance);
    ASSERT_EQ(kept.size(), cells.size());
    using Place = std::pair<omReal64, omReal64>;
    std::map<std::pair<Place, Place>, int> nbCellsOfEdge;
    for (const Ring& cell : kept)
      for (std::size_t i = 0; i < cell.size(); ++i)
        ++nbCellsOfEdge[std::minmax(Place(cell[i].x, cell[i].y), Place(after(cell, i).x, after(cell, i).y))];
    // Edges of one cell only are on the outline. Coarse borders are single edges, as are the outline's from border to
    // border, round its corners.
    omReal64 length = 0;
    int nbOfOne = 0;
    for (const auto& [edge, nbCellsBeside] : nbCellsOfEdge) {
      if (nbCellsBeside > 1) continue;
      ++nbOfOne;
      length += std::hypot(edge.first.first - edge.second.first, edge.first.second - edge.second.second);
    }
    EXPECT_LT(length, 4.3 * size) << tolerance;
    EXPECT_GT(length, 3.4 * size) << tolerance;
    if (tolerance < 100) continue;
    EXPECT_EQ(nbOfOne, 4 * nbCells - 4);
    EXPECT_EQ(nbCellsOfEdge.size(), std::size_t(2 * nbCells * (nbCells - 1) + nbOfOne));
  }
}

TEST(SimplifyPaths, LeavesOutOnlyWhatLiesOnALine) {
  const omReal64 above = std::nextafter(0.3, 1);
  const Ring ring{{0, 0}, {0.1, 0.1}, {0.1, 0.1}, {0.25, 0.25}, {0.3, above}, {1, 1}, {2, 0}, {3, 0}, {2, 0}, {1, 0}};
  const Ring expected{{0, 0}, {0.25, 0.25}, {0.3, above}, {1, 1}, {2, 0}, {3, 0}, {2, 0}};
  for (const ePathSimplification method : {ePS_KeepTopology, ePS_EachAlone, ePS_ByArea})
    EXPECT_EQ(vertexSet(simplifiedRings({ring}, 0, method)), vertexSet({expected}));
}

TEST(SimplifyPaths, KeepsATriangleOfEachRingAndTheEndsOfPaths) {
  const Ring ring{{0, 0}, {1, 0}, {2, 0.1}, {2, 2}, {1, 2.1}, {0, 2}};
  for (const ePathSimplification method : {ePS_KeepTopology, ePS_EachAlone, ePS_ByArea})
    EXPECT_EQ(simplified({ring}, 1e9, method).kept.size(), method == ePS_EachAlone ? 3u : 4u);  // two chords are split
  for (const ePathSimplification method : {ePS_KeepTopology, ePS_EachAlone, ePS_ByArea})
    EXPECT_EQ(simplified({ring}, 1e9, method, false).kept, (std::vector<omUInt32>{0, 5}));
  EXPECT_EQ(simplified({Ring(9, {3, 4})}, 1, ePS_KeepTopology).kept.size(), 1u);
  EXPECT_TRUE(simplifyPaths({{nullptr, 0, true}}, 1).kept.empty());
}

TEST(SimplifyPaths, RefusesWhatItCannotKeepApart) {
  const SimplifiedPaths crossing = simplified({{{0, 0}, {4, 4}, {4, 0}, {0, 4}}}, 0.1, ePS_KeepTopology);
  EXPECT_EQ(crossing.outcome, ePO_Crossing);
  EXPECT_TRUE(isSame(crossing.crossing, {2, 2}));
  EXPECT_EQ(simplified({{{0, 0}, {4, 4}, {4, 0}, {0, 4}}}, 0.1, ePS_EachAlone).kept.size(), 4u);
  for (const omReal64 value : {std::numeric_limits<omReal64>::quiet_NaN(), std::numeric_limits<omReal64>::infinity()})
    EXPECT_EQ(simplified({{{0, 0}, {1, value}, {4, 0}}}, 0.1, ePS_KeepTopology).outcome, ePO_NotNumbered);
}

// Squares of these overflow or vanish.
TEST(SimplifyPaths, IsTheSameAtEverySize) {
  RandomRings random(1303);
  for (const omReal64 scale : {0x1p+1000, 0x1p-1000, 0x1p-500}) {
    const Rings rings = random.next();
    Rings scaled = rings;
    for (Ring& ring : scaled)
      for (PlanarPoint& p : ring) p = {p.x * scale, p.y * scale};
    EXPECT_EQ(simplified(scaled, 3 * scale, ePS_KeepTopology).kept, simplified(rings, 3, ePS_KeepTopology).kept);
  }
}

}  // namespace
}  // namespace ormix
