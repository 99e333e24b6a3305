// Pixels of polygons, against decisions for single pixels in whole numbers.

#include <ORMIXGeometry/Entity/2d/Shape/Rasterize.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <tuple>
#include <vector>

#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

using Pixels = std::set<std::pair<omInt64, omInt64>>;
using Ring = Polygon2d<omReal64>;
constexpr omReal64 s_nan = std::numeric_limits<omReal64>::quiet_NaN();

Pixels pixelsOf(const RowIntersections& rows) {
  Pixels pixels;
  for (omUInt64 row = rows.getStartRow(); row != rows.getEndRow(); ++row)
    for (const PixelRun& run : rows.getRow(row))
      for (omUInt32 x = run.begin; x != run.end; ++x) pixels.emplace(x, row);
  return pixels;
}

template <class T = omReal64>
Polygon2d<T> ringOf(const std::vector<std::pair<T, T>>& points) {
  Polygon2d<T> ring;
  for (const auto& [x, y] : points) ring.getPointColl().emplace_back(x, y);
  return ring;
}

// In units of 1/8 pixel, in which all vertices of these tests are whole numbers; even numbers of them are centres.
constexpr omInt64 s_unit = 8;
struct Vertex {
  omInt64 x, y;
};
using Vertices = std::vector<Vertex>;

// Fractions of the way along an edge that satisfy all of `factor` t < limit (or <=): whether there are any in [0, 1].
class Part {
 public:
  void bound(omInt64 factor, omInt64 limit, bool isStrict) {
    if (factor == 0) {
      _isEmpty |= isStrict ? 0 >= limit : 0 > limit;
      return;
    }
    Bound& end = factor > 0 ? _last : _first;
    const omInt64 sign = factor > 0 ? 1 : -1;
    // Compared with limit / factor, as numerators of fractions with positive denominators.
    const omInt64 difference = sign * limit * end.denominator - end.numerator * sign * factor;
    if (sign * difference < 0 || (difference == 0 && isStrict)) end = {sign * limit, sign * factor, isStrict};
  }
  bool empty() const {
    const omInt64 length = _last.numerator * _first.denominator - _first.numerator * _last.denominator;
    return _isEmpty || length < 0 || (length == 0 && (_first.isStrict || _last.isStrict));
  }

 private:
  struct Bound {
    omInt64 numerator, denominator;
    bool isStrict;
  };
  Bound _first{0, 1, false}, _last{1, 1, false};
  bool _isEmpty = false;
};

bool meets(const Vertex& a, const Vertex& b, omInt64 x, omInt64 y, bool isInterior) {
  Part part;
  part.bound(a.x - b.x, a.x - x * s_unit, isInterior);
  part.bound(b.x - a.x, (x + 1) * s_unit - a.x, true);
  part.bound(a.y - b.y, a.y - y * s_unit, isInterior);
  part.bound(b.y - a.y, (y + 1) * s_unit - a.y, true);
  return !part.empty();
}

bool isInPixels(const std::vector<Vertices>& rings, omInt64 x, omInt64 y, eRasterRule rule) {
  const omInt64 cx = x * s_unit + s_unit / 2, cy = y * s_unit + s_unit / 2;
  bool isInside = false, isMet = false;
  for (const Vertices& ring : rings)
    for (std::size_t i = 0; i < ring.size(); ++i) {
      Vertex a = ring[i], b = ring[(i + 1) % ring.size()];
      isMet |= rule != eRR_Center && meets(a, b, x, y, rule == eRR_Covered);
      if (a.y > b.y) std::swap(a, b);
      if (a.y <= cy && cy < b.y && (b.x - a.x) * (cy - a.y) <= (cx - a.x) * (b.y - a.y)) isInside = !isInside;
    }
  return rule == eRR_Touched ? isInside || isMet : isInside && !isMet;
}

template <class T>
void checkRings(const std::vector<Vertices>& rings, T scale) {
  std::vector<boost::shared_ptr<PolygonWithHoles2d<T>>> polygons;
  for (const Vertices& ring : rings) {
    polygons.push_back(boost::make_shared<PolygonWithHoles2d<T>>());
    auto& points = polygons.back()->getExteriorPolygon().getPointColl();
    for (const Vertex& v : ring) points.emplace_back(static_cast<T>(v.x) / scale, static_cast<T>(v.y) / scale);
    if (ring.front().x % 2 == 0) points.push_back(points.front());
  }
  for (const eRasterRule rule : {eRR_Covered, eRR_Center, eRR_Touched}) {
    Pixels expected, clipped;
    for (omInt64 y = 0; y < 20; ++y)
      for (omInt64 x = 0; x < 20; ++x)
        if (isInPixels(rings, x, y, rule)) {
          expected.emplace(x, y);
          if (x >= 4 && x < 15 && y >= 6 && y < 13) clipped.emplace(x, y);
        }
    ASSERT_EQ(pixelsOf(rasterize(polygons, rule)), expected) << toString(rule);
    ASSERT_EQ(pixelsOf(rasterize(polygons, BoundingBox2d<T>(4, 6, 15, 13), rule)), clipped) << toString(rule);
  }
}

TEST(Rasterize, RandomRingsAgreeWithDecisionsInWholeNumbers) {
  support::Random random(14);
  for (int k = 0; k < 400; ++k) {
    std::vector<Vertices> rings(1 + random.below(3));
    const omInt64 step = k % 4 == 0 ? 1 : k % 4 == 1 ? 4 : 8;  // on eighths, on centres and borders, on borders
    for (Vertices& ring : rings)
      for (omUInt32 i = 1 + random.below(k % 16 == 0 ? 60 : 8); i-- > 0;)
        ring.push_back({step * random.below(static_cast<omUInt32>(153 / step)),
                        step * random.below(static_cast<omUInt32>(153 / step))});
    ASSERT_NO_FATAL_FAILURE(checkRings<omReal64>(rings, s_unit));
    ASSERT_NO_FATAL_FAILURE(checkRings<omReal32>(rings, s_unit));
    if (step < 8) continue;
    ASSERT_NO_FATAL_FAILURE(checkRings<omInt32>(rings, s_unit));
    ASSERT_NO_FATAL_FAILURE(checkRings<omUInt32>(rings, s_unit));
  }
}

// Triangles with common sides, their vertices anywhere, on centres, or next to these by one unit in the last place.
TEST(Rasterize, EachPixelIsInOnePartOfAPartition) {
  support::Random random(15);
  for (int k = 0; k < 50; ++k) {
    std::vector<std::pair<omReal64, omReal64>> vertices;
    for (int i = 0; i < 49; ++i) {
      const bool isFixed = i % 7 == 0 || i % 7 == 6 || i < 7 || i >= 42;
      const auto place = [&](int cell) {
        const omReal64 x = 10 * cell + (isFixed ? 0 : random.uniform(-1.5, 1.5));
        const omReal64 center = std::floor(x) + 0.5;
        return isFixed || random.below(3) == 0 ? x : random.below(2) == 0 ? center : std::nextafter(center, x);
      };
      const omReal64 x = place(i % 7);
      vertices.emplace_back(x, place(i / 7));
    }
    std::map<std::pair<omInt64, omInt64>, int> counts;
    for (int i = 0; i < 42; ++i) {
      if (i % 7 == 6) continue;
      const int far = i + 8 - i % 2, near = i + (i % 2);  // the ends of one of the diagonals
      for (const int other : {i + 1 - i % 2, i + 7 + i % 2})
        for (const auto& pixel : pixelsOf(rasterize(ringOf({vertices[near], vertices[far], vertices[other]}))))
          ++counts[pixel];
    }
    ASSERT_EQ(counts.size(), 3600u);
    for (const auto& [pixel, count] : counts) ASSERT_EQ(count, 1) << pixel.first << ", " << pixel.second;
  }
}

// The half of a box on one side of an edge that passes through centres, or by them at less than any rounding.
TEST(Rasterize, DecidesAtAnyMagnitude) {
  const BoundingBox2d<omReal64> box(0, 0, 8, 8);
  const auto nbPixels = [&](omReal64 x0, omReal64 y0, omReal64 x1, omReal64 y1) {
    // The region left of the edge, seen as the image is.
    return rasterize(ringOf<omReal64>({{x0, y0}, {x1, y1}, {-1e308, y1}, {-1e308, y0}}), box).getNbPixels();
  };
  const omReal64 tiny = std::numeric_limits<omReal64>::denorm_min();
  // How many centres an edge passes that is moved by half a unit in the last place of its end, there.
  for (const auto& [size, nbBelow, nbAbove] :
       {std::tuple{1e3, 28u, 36u}, {1e16, 21u, 43u}, {1e150, 0u, 64u}, {1e300, 0u, 64u}}) {
    EXPECT_EQ(nbPixels(-size, -size, size, size), 28u);  // centres on a right edge are not inside
    EXPECT_EQ(nbPixels(-size, -size, std::nextafter(size, 2 * size), size), nbAbove);
    EXPECT_EQ(nbPixels(-size, -size, std::nextafter(size, 0), size), nbBelow);
    EXPECT_EQ(nbPixels(0.5, -size, 0.5, size), 0u);
    EXPECT_EQ(nbPixels(0.5, -size, std::nextafter(0.5, 1), size), 8u);
  }
  EXPECT_EQ(nbPixels(tiny, tiny, 8, 8), 28u);  // just right of the diagonal's upper end, and just below it
  EXPECT_EQ(nbPixels(2 * tiny, tiny, 8, 8), 36u);
  EXPECT_EQ(nbPixels(0, tiny, 8, 8), 28u);
  const omInt32 largest = std::numeric_limits<omInt32>::max(), least = -largest;
  EXPECT_EQ(rasterize(ringOf<omInt32>({{least, least}, {largest, largest}, {least, largest}}),
                      BoundingBox2d<omInt32>(0, 0, 1000, 1000))
                .getNbPixels(),
            499500u);
  EXPECT_EQ(
      pixelsOf(rasterize(ringOf<omUInt32>({{4294967294u, 0}, {4294967295u, 0}, {4294967295u, 1}, {4294967294u, 1}}))),
      (Pixels{{4294967294, 0}}));
}

TEST(Rasterize, RefusesWhatCannotBeHeld) {
  const auto refusal = [](const Ring& ring, eRasterRule rule = eRR_Center) {
    return support::thrownBy<ORMIXGeometryException>([&] { rasterize(ring, rule); });
  };
  const auto squareAt = [](omReal64 x, omReal64 y, omReal64 size = 1) {
    return ringOf<omReal64>({{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}});
  };
  EXPECT_NE(refusal(ringOf<omReal64>({{0, 0}, {4, s_nan}, {4, 4}})).find("y of vertex 1 of ring 0 is nan"),
            std::string::npos);
  EXPECT_NE(refusal(ringOf<omReal64>({{0, 0}, {4, 4}, {-INFINITY, 4}})).find("x of vertex 2 of ring 0 is -inf"),
            std::string::npos);
  EXPECT_NE(refusal(squareAt(-1, 7)).find("pixels [-1, 0[ of row 7,"), std::string::npos);
  EXPECT_NE(refusal(squareAt(7, -3)).find("of row -3,"), std::string::npos);
  EXPECT_NE(refusal(squareAt(4294967295.0, 0)).find("pixels [4294967295, 4294967296["), std::string::npos);
  EXPECT_NE(refusal(squareAt(0, 0, 1e9)).find("1000000000 rows"), std::string::npos);
  EXPECT_NE(refusal(squareAt(0, 0x1p52)).find("row 4503599627370496"), std::string::npos);
  EXPECT_NE(refusal(ringOf<omReal64>({{1e300, 0}, {2e300, 0}, {2e300, 1}})).find("beyond column"), std::string::npos);
  EXPECT_EQ(rasterize(squareAt(-0.25, -0.25)).getNbPixels(), 1u);  // the pixels decide, not the vertices
  EXPECT_NE(refusal(squareAt(-0.25, 0), eRR_Touched).find("pixels [-1, "), std::string::npos);
  EXPECT_EQ(rasterize(squareAt(-0.75, -0.75, 3), eRR_Covered).getNbPixels(), 4u);
  for (const BoundingBox2d<omReal64>& box : {BoundingBox2d<omReal64>(0, -1, 1, 1), {0, 0, 0.5, 1}, {0, 0, 1, s_nan}})
    EXPECT_THROW(rasterize(squareAt(0, 0), box), ORMIXGeometryException);
  EXPECT_THROW(rasterize(std::vector<boost::shared_ptr<PolygonWithHoles2d<omInt32>>>(1)), ORMIXGeometryException);
  EXPECT_EQ(rasterize(Ring()), RowIntersections());
}

}  // namespace
