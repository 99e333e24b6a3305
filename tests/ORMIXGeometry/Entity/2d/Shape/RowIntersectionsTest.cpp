#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <map>
#include <set>

#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

std::vector<PixelRun> runsOf(const RowIntersections& rows, omUInt64 row) {
  const RowIntersections::Row runs = rows.getRow(row);
  return {runs.begin(), runs.end()};
}

TEST(RowIntersections, SortTheRunsOfARow) {
  RowIntersections rows;
  EXPECT_EQ(rows.getNbRows() + rows.getNbPixels() + rows.getEndRow() - rows.getStartRow(), 0u);
  EXPECT_THROW(rows.getRow(0), ORMIXGeometryException);
  EXPECT_TRUE(rows.addRun(5, 10, 12));
  EXPECT_TRUE(rows.addRun(5, 2, 4));
  EXPECT_TRUE(rows.addRun(5, 4, 10));
  EXPECT_TRUE(rows.addRun(7, 0, 0xFFFFFFFFu));
  EXPECT_TRUE(rows.addRun(3, 1, 2));
  EXPECT_EQ(rows.getStartRow(), 3u);
  EXPECT_EQ(rows.getEndRow(), 8u);
  EXPECT_EQ(runsOf(rows, 5), (std::vector<PixelRun>{{2, 4}, {4, 10}, {10, 12}}));
  EXPECT_TRUE(rows.getRow(4).empty());
  EXPECT_EQ(rows.getRow(7)[0], (PixelRun{0, 0xFFFFFFFFu}));
  EXPECT_EQ(rows.getNbPixels(), omUInt64{0xFFFFFFFFu} + 10 + 1);
  for (const omUInt64 row : {2, 8})
    EXPECT_EQ(
        support::thrownBy<ORMIXGeometryException>([&] { rows.getRow(row); }),
        "Invalid row index " + std::to_string(row) + " for shape with starting row index 3 and ending row index 8");
}

TEST(RowIntersections, RefuseIntersectingAndEmptyRuns) {
  RowIntersections rows;
  ASSERT_TRUE(rows.addRun(1, 10, 20));
  const RowIntersections before = rows;
  const std::string prefix = "Can't add row intersection with row range [";
  const std::string suffix = "[ to existing row range [10, 20[, ranges should not intersect";
  EXPECT_EQ(rows.addRun(1, 5, 11).getMessage(), prefix + "5, 11" + suffix);
  EXPECT_EQ(rows.addRun(1, 19, 30).getMessage(), prefix + "19, 30" + suffix);
  EXPECT_EQ(rows.addRun(1, 12, 13).getMessage(), prefix + "12, 13" + suffix);
  EXPECT_EQ(rows.addRun(1, 0, 50).getMessage(), prefix + "0, 50" + suffix);
  EXPECT_EQ(rows.addRun(9, 4, 4).getMessage(), "Run [4, 4[ has no pixels");
  EXPECT_FALSE(rows.addRun(9, 4, 3));
  EXPECT_FALSE(rows.addRun(std::numeric_limits<omUInt64>::max(), 0, 1));
  EXPECT_FALSE(rows.addRun(1 + omUInt64{RowIntersections::s_maxNbRows}, 0, 1));
  EXPECT_EQ(rows, before);
}

TEST(RowIntersections, AreReplacedAsAWhole) {
  RowIntersections rows;
  ASSERT_TRUE(rows.setRows(2, {1, 0, 2}, {{3, 4}, {0, 1}, {1, 2}}));
  EXPECT_EQ(rows.getNbRows(), 3u);
  EXPECT_EQ(runsOf(rows, 4), (std::vector<PixelRun>{{0, 1}, {1, 2}}));
  const RowIntersections before = rows;
  EXPECT_FALSE(rows.setRows(0, {2}, {{3, 4}}));
  EXPECT_FALSE(rows.setRows(0, {1}, {{3, 4}, {5, 6}}));
  EXPECT_FALSE(rows.setRows(0, {0xFFFFFFFFu, 3}, {{3, 4}, {5, 6}}));
  EXPECT_FALSE(rows.setRows(0, {2}, {{3, 5}, {4, 6}}));
  EXPECT_FALSE(rows.setRows(0, {2}, {{3, 5}, {1, 2}}));
  EXPECT_FALSE(rows.setRows(std::numeric_limits<omUInt64>::max(), {1}, {{3, 5}}));
  EXPECT_EQ(rows, before);
  rows.clear();
  EXPECT_EQ(rows, RowIntersections());
}

// Against a set of pixels.
TEST(RowIntersections, HoldWhatWasAdded) {
  support::Random random(4);
  for (int round = 0; round < 50; ++round) {
    RowIntersections rows;
    std::map<omUInt64, std::set<omUInt32>> expected;
    omUInt64 nbPixels = 0;
    for (int run = 0; run < 60; ++run) {
      const omUInt64 row = 100 + random.below(9);
      const auto begin = random.below(40);
      const auto end = begin + 1 + random.below(6);
      auto& pixels = expected[row];
      const bool isFree = pixels.lower_bound(begin) == pixels.lower_bound(end);
      ASSERT_EQ(rows.addRun(row, begin, end).getResult(), isFree);
      for (omUInt32 x = begin; isFree && x < end; ++x) pixels.insert(x);
      nbPixels += isFree ? end - begin : 0;
    }
    EXPECT_EQ(rows.getNbPixels(), nbPixels);
    for (const auto& [row, pixels] : expected) {
      std::vector<omUInt32> held;
      for (const PixelRun& run : rows.getRow(row))
        for (omUInt32 x = run.begin; x < run.end; ++x) held.push_back(x);
      EXPECT_EQ(held, std::vector<omUInt32>(pixels.begin(), pixels.end()));
    }
  }
}

}  // namespace
