#include <ORMIXGeometry/Tools/Stl/StlMerge.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <random>
#include <tuple>

using namespace ormix;
using namespace ormix::geom;

namespace {

constexpr omReal32 s_inf = std::numeric_limits<omReal32>::infinity();

omReal32 fromBits(omUInt32 bits) {
  omReal32 value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}
omUInt32 bitsOf(omReal32 value) {
  omUInt32 bits;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

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
  std::map<decltype(key(0)), omUInt32> ranks;
  std::map<decltype(key(0)), std::size_t> firsts;
  for (std::size_t at = 0; at < coords.size(); at += 3) {
    ranks[key(at)] = 0;
    firsts.emplace(key(at), at);
  }
  MergedCoords merged;
  for (auto& [vertex, rank] : ranks) {
    rank = static_cast<omUInt32>(merged.coordColl.size() / 3);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const omReal32 coord = coords[firsts[vertex] + axis];
      merged.coordColl.push_back(coord == 0 ? 0 : coord);
    }
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

TEST(StlMerge, zerosAreEqualAndComeOutPositive) {
  const MergedCoords merged = removeDoubles({-0.0f, 0, 0, 0, -0.0f, -0.0f, 0, 0, 0});
  ASSERT_EQ(merged.getNbVertices(), 1u);
  for (const omReal32 coord : merged.coordColl) EXPECT_EQ(bitsOf(coord), 0u);
}

TEST(StlMerge, notANumberStandsLastAndEqualsItsBits) {
  const omReal32 first = fromBits(0x7F800001u), nan = fromBits(0x7FC00000u), negative = fromBits(0xFF800001u),
                 last = fromBits(0xFFFFFFFFu);
  const MergedCoords merged =
      removeDoubles({last, 0, 0, negative, 0, 0, nan, 0, 0, s_inf, 0, 0, first, 0, 0, -s_inf, 0, 0, nan, 0, 0});
  EXPECT_EQ(merged.indexColl, (std::vector<omUInt32>{5, 4, 3, 1, 2, 0, 3}));
}

TEST(StlMerge, agreesWithAMap) {
  const auto seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const std::vector<omReal32> special{
      0, -0.0f, 1, -1, s_inf, -s_inf, 1e-45f, -1e-45f, 3e38f, fromBits(0x7FC00000u), fromBits(0xFFC00001u)};
  // Few different values give long runs of equal coordinates, sorted on the next axis; many give large runs.
  for (const std::size_t nbVertices : {10u, 5000u, 200000u})
    for (const unsigned nbValues : {2u, 11u, 60u, 100000u}) {
      std::vector<omReal32> coords(3 * nbVertices);
      for (omReal32& coord : coords) {
        const auto value = static_cast<unsigned>(random() % nbValues);
        coord = value < special.size() ? special[value] : static_cast<omReal32>(value) / 7 - 5;
      }
      expectAsMap(coords);
    }
  std::vector<omReal32> anyBits(30000);
  for (omReal32& coord : anyBits) coord = fromBits(static_cast<omUInt32>(random()));
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
      coords.push_back(fromBits(bits));
  }
  EXPECT_EQ(removeDoubles(coords).getNbVertices(), 600000u);
}

TEST(StlMerge, manyEqualVerticesAreOne) {
  const MergedCoords merged = removeDoubles(std::vector<omReal32>(9000000, 1.5f));
  EXPECT_EQ(merged.coordColl, (std::vector<omReal32>{1.5f, 1.5f, 1.5f}));
  EXPECT_EQ(merged.indexColl, std::vector<omUInt32>(3000000, 0));
}
