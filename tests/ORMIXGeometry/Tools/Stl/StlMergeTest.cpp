#include <ORMIXGeometry/Tools/Stl/StlMerge.h>

#include <map>

#include "support/Checks.h"
#include "support/Random.h"

using namespace ormix;
using namespace ormix::geom;

namespace {

using support::bitsOf;
using support::fromBits;
constexpr auto s_inf = static_cast<omReal32>(support::s_infinity);

/// Orders coordinates as stated: numbers by value, then NaN by bits.
std::tuple<bool, omReal32, omUInt32> keyOf(omReal32 value) {
  if (std::isnan(value)) return {true, 0, bitsOf(value)};
  return {false, value == 0 ? 0.0f : value, 0};
}

/// The same by a map.
MergedCoords mergedByMap(const std::vector<omReal32>& coords) {
  const auto key = [&](std::size_t at) {
    return std::make_tuple(keyOf(coords[at]), keyOf(coords[at + 1]), keyOf(coords[at + 2]));
  };
  std::map<decltype(key(0)), std::size_t> firsts;
  for (std::size_t at = 0; at < coords.size(); at += 3) firsts.emplace(key(at), at);
  std::map<decltype(key(0)), omUInt32> ranks;
  MergedCoords merged;
  for (const auto& [vertex, first] : firsts) {
    ranks[vertex] = static_cast<omUInt32>(ranks.size());
    for (std::size_t at = first; at < first + 3; ++at) merged.coordColl.push_back(coords[at] == 0 ? 0 : coords[at]);
  }
  for (std::size_t at = 0; at < coords.size(); at += 3) merged.indexColl.push_back(ranks[key(at)]);
  return merged;
}

void expectAsMap(const std::vector<omReal32>& coords) {
  const MergedCoords merged = removeDoubles(coords), expected = mergedByMap(coords);
  EXPECT_EQ(merged.indexColl, expected.indexColl);
  ASSERT_EQ(merged.coordColl.size(), expected.coordColl.size());
  for (std::size_t at = 0; at < merged.coordColl.size(); ++at)
    ASSERT_EQ(bitsOf(merged.coordColl[at]), bitsOf(expected.coordColl[at])) << at;
}

}  // namespace

TEST(StlMerge, ordersByXThenYThenZ) {
  const MergedCoords merged = removeDoubles({2, 0, 0, 1, 5, 9, 1, 5, -9, 1, -5, 0, 2, 0, 0, -3, 0, 0});
  EXPECT_EQ(merged.coordColl, (std::vector<omReal32>{-3, 0, 0, 1, -5, 0, 1, 5, -9, 1, 5, 9, 2, 0, 0}));
  EXPECT_EQ(merged.indexColl, (std::vector<omUInt32>{4, 3, 2, 1, 4, 0}));
  EXPECT_EQ(removeDoubles({}).getNbVertices(), 0u);
}

TEST(StlMerge, agreesWithAMap) {
  support::Random random(19);
  std::vector<omReal32> special{0, -0.0f, 1, -1, s_inf, -s_inf, 1e-45f, -1e-45f, 3e38f};
  for (const omUInt32 nan : {0x7F800001u, 0x7FC00000u, 0xFFC00001u}) special.push_back(fromBits<omReal32>(nan));
  // Few different values give long runs of equal coordinates, sorted on the next axis; many give large runs.
  for (const std::size_t nbVertices : {10u, 5000u, 50000u})
    for (const omUInt32 nbValues : {2u, 12u, 60u, 100000u}) {
      std::vector<omReal32> coords(3 * nbVertices);
      for (omReal32& coord : coords) {
        const auto value = random.below(nbValues);
        coord = value < special.size() ? special[value] : static_cast<omReal32>(value) / 7 - 5;
      }
      expectAsMap(coords);
    }
  std::vector<omReal32> anyBits(30000);
  for (omReal32& coord : anyBits) coord = random.bits<omReal32>();
  expectAsMap(anyBits);
}

// The vertices have one hash, but for what a file cannot know. Were it left out, this would take minutes.
TEST(StlMerge, verticesMadeToCollideTakeNoLonger) {
  constexpr omUInt64 factor = 0x9E3779B97F4A7C15u;
  omUInt64 inverse = factor;
  for (int step = 0; step < 5; ++step) inverse *= 2 - factor * inverse;
  std::vector<omReal32> coords;
  for (omUInt32 z = 0x3F800000u; z < 0x3F800000u + 600000; ++z) {
    omUInt64 mixed = 0x123456789ABCDEFu ^ z * 0xC2B2AE3D27D4EB4Fu;
    mixed = (mixed ^ mixed >> 32) * inverse;
    for (const omUInt32 bits : {static_cast<omUInt32>(mixed), static_cast<omUInt32>(mixed >> 32), z})
      coords.push_back(fromBits<omReal32>(bits));
  }
  EXPECT_EQ(removeDoubles(coords).getNbVertices(), 600000u);
}
