// Boundaries of pixels, against properties that determine them, on every small mask and on random ones.

#include <ORMIXGeometry/Entity/2d/Shape/Contours.h>
#include <ORMIXGeometry/Entity/2d/Shape/Rasterize.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <set>
#include <vector>

#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

struct Mask {
  int width, height;
  std::vector<char> pixels;
  bool at(int x, int y) const { return x >= 0 && y >= 0 && x < width && y < height && pixels[y * width + x]; }
};

RowIntersections runsOf(const Mask& mask) {
  RowIntersections rows;
  for (int y = 0; y < mask.height; ++y)
    for (int x = 0; x < mask.width; ++x)
      if (mask.at(x, y)) (void)rows.addRun(y, x, x + 1);  // adjacent runs: as good as one
  return rows;
}

// Regions of `value` in the mask with a margin of one pixel, flooded without any runs.
int countRegions(const Mask& mask, bool value, bool is8Connected) {
  int count = 0;
  std::vector<char> isSeen((mask.width + 2) * (mask.height + 2));
  std::vector<std::pair<int, int>> pending;
  const auto visit = [&](int x, int y) {
    if (x < -1 || y < -1 || x > mask.width || y > mask.height || mask.at(x, y) != value) return;
    char& seen = isSeen[(y + 1) * (mask.width + 2) + x + 1];
    if (!seen) pending.emplace_back(x, y);
    seen = 1;
  };
  for (int start = 0; start < static_cast<int>(isSeen.size()); ++start) {
    if (isSeen[start]) continue;
    visit(start % (mask.width + 2) - 1, start / (mask.width + 2) - 1);
    for (count += !pending.empty(); !pending.empty();) {
      const auto [x, y] = pending.back();
      pending.pop_back();
      for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
          if (is8Connected || dx == 0 || dy == 0) visit(x + dx, y + dy);
    }
  }
  return count;
}

template <class T>
using Contours = std::vector<boost::shared_ptr<PolygonWithHoles2d<T>>>;

template <class T>
void visitRings(const Contours<T>& contours,
                const std::function<void(const PolygonWithHoles2d<T>&, ePolygon2dType)>& visit) {
  for (const auto& root : contours)
    visitNodes(*root, [&](const PolygonWithHoles2d<T>& node) {
      const auto parent = node.getParent();
      visit(node, parent && parent->getPolygon2dType() == eP2DT_Exterior ? eP2DT_Interior : eP2DT_Exterior);
      return true;
    });
}

template <class T>
void checkContours(const Mask& mask, ePixelConnectivity connectivity) {
  const RowIntersections rows = runsOf(mask);
  const Contours<T> contours = traceContours<T>(rows, connectivity);
  int nbRegions = 0, nbHoles = 0;
  omReal64 area = 0;
  visitRings<T>(contours, [&](const PolygonWithHoles2d<T>& node, ePolygon2dType role) {
    const auto& points = node.getExteriorPolygon().getPointColl();
    ASSERT_EQ(node.getPolygon2dType(), role);
    ++(role == eP2DT_Exterior ? nbRegions : nbHoles);
    const omReal64 ownArea = AreaMsr2d::measure(node.getExteriorPolygon());
    ASSERT_GT(ownArea, 0);
    area += role == eP2DT_Exterior ? ownArea : -ownArea;
    ASSERT_EQ(points.front(), points.back());
    for (std::size_t i = 1; i < points.size(); ++i) {  // edges turn by a right angle at each vertex
      const auto& next = points[i + 1 < points.size() ? i + 1 : 1];
      ASSERT_NE(points[i - 1].getX() == points[i].getX(), points[i].getX() == next.getX());
      ASSERT_NE(points[i - 1].getY() == points[i].getY(), points[i].getY() == next.getY());
    }
  });
  EXPECT_EQ(area, static_cast<omReal64>(rows.getNbPixels()));
  EXPECT_EQ(nbRegions, countRegions(mask, true, connectivity == ePC_8));
  EXPECT_EQ(nbHoles, countRegions(mask, false, connectivity == ePC_4) - 1);
  RowIntersections joined;
  for (int y = 0; y < mask.height; ++y)
    for (int x = 0, end = 0; x < mask.width; x = end + 1) {
      for (end = x; mask.at(end, y);) ++end;
      if (end > x) (void)joined.addRun(y, x, end);
    }
  EXPECT_EQ(rasterize(contours), joined);
  ASSERT_FALSE(::testing::Test::HasFailure()) << mask.width << " x " << mask.height << ", connectivity " << connectivity
                                              << ": " << std::string(mask.pixels.begin(), mask.pixels.end());
}

Mask randomMask(support::Random& random, int width, int height, omUInt32 density) {
  Mask mask{width, height, std::vector<char>(width * height)};
  for (char& pixel : mask.pixels) pixel = random.below(16) < density;
  return mask;
}

TEST(Contours, EveryMaskOf4x4) {
  for (int bits = 0; bits < 65536; ++bits) {
    Mask mask{4, 4, std::vector<char>(16)};
    for (int i = 0; i < 16; ++i) mask.pixels[i] = bits >> i & 1;
    ASSERT_NO_FATAL_FAILURE(checkContours<omInt32>(mask, ePC_4));
    ASSERT_NO_FATAL_FAILURE(checkContours<omReal32>(mask, ePC_8));
  }
}

TEST(Contours, RandomMasks) {
  support::Random random(12);
  for (int k = 0; k < 60; ++k) {
    const Mask mask = randomMask(random, 1 + random.below(60), 1 + random.below(60), 1 + random.below(15));
    ASSERT_NO_FATAL_FAILURE(checkContours<omUInt32>(mask, ePC_4));
    ASSERT_NO_FATAL_FAILURE(checkContours<omReal64>(mask, ePC_8));
  }
}

// The vertices of each ring, moved by a linear map and by (10, 10).
std::multiset<std::multiset<std::pair<int, int>>> ringsOf(const Mask& mask, ePixelConnectivity connectivity,
                                                          const std::array<int, 4>& map, int offset) {
  std::multiset<std::multiset<std::pair<int, int>>> rings;
  visitRings<omInt32>(traceContours<omInt32>(runsOf(mask), connectivity), [&](const auto& node, ePolygon2dType) {
    std::multiset<std::pair<int, int>> ring;
    const auto& points = node.getExteriorPolygon().getPointColl();
    for (auto p = points.begin() + 1; p != points.end(); ++p)
      ring.emplace(map[0] * p->getX() + map[1] * p->getY() + offset, map[2] * p->getX() + map[3] * p->getY() + offset);
    rings.insert(ring);
  });
  return rings;
}

TEST(Contours, FollowReflectionsRotationsAndTranslations) {
  support::Random random(13);
  for (int k = 0; k < 40; ++k) {
    const Mask mask = randomMask(random, 9, 9, 8);
    for (const auto& map : {std::array{-1, 0, 0, 1}, {1, 0, 0, -1}, {0, 1, 1, 0}, {0, -1, 1, 0}, {1, 0, 0, 1}}) {
      Mask image{20, 20, std::vector<char>(400)};
      for (int y = 1; y < 18; y += 2)  // twice the centres
        for (int x = 1; x < 18; x += 2)
          image.pixels[(map[2] * x + map[3] * y + 19) / 2 * 20 + (map[0] * x + map[1] * y + 19) / 2] =
              mask.at(x / 2, y / 2);
      for (const ePixelConnectivity connectivity : {ePC_4, ePC_8})
        ASSERT_EQ(ringsOf(image, connectivity, {1, 0, 0, 1}, 0), ringsOf(mask, connectivity, map, 10));
    }
  }
}

// Coordinates up to the last column and far down, where the type holds them.
TEST(Contours, RefuseCoordinatesThatTheTypeDoesNotHold) {
  RowIntersections rows;
  ASSERT_TRUE(rows.addRun(16777215, 4294967294u, 4294967295u));
  EXPECT_EQ(rasterize(traceContours<omUInt32>(rows, ePC_8)), rows);
  EXPECT_EQ(rasterize(traceContours<omReal64>(rows, ePC_8)), rows);
  const auto refusal = [&rows](auto trace) {
    return support::thrownBy<ORMIXGeometryException>([&] { trace(rows, ePC_4); });
  };
  EXPECT_NE(refusal(traceContours<omReal32>).find("x = 429496729"), std::string::npos);
  EXPECT_NE(refusal(traceContours<omInt32>).find("x = 429496729"), std::string::npos);
  rows.clear();
  ASSERT_TRUE(rows.addRun(16777216, 0, 1));
  EXPECT_NE(refusal(traceContours<omReal32>).find("y = 16777217"), std::string::npos);
  ASSERT_TRUE(rows.addRun(16777217, 0, 1));  // from 16777216 to 16777218, which are both held
  EXPECT_EQ(rasterize(traceContours<omReal32>(rows, ePC_4)), rows);
}

}  // namespace
