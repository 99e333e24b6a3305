#include <ORMIXGeometry/ORMIXGeometry.h>
#include <ORMIXMath/Distance/TrianglesMeet.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <map>

#include "support/ArchiveFormats.h"
#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using namespace ormix::geom;
using support::s_infinity;
using support::s_nan;

/// A kind of items with what a loop over all of them needs: the oracle. Coordinates are whole numbers every other time,
/// so that items touch.
template <class Item>
class RTreeOf : public ::testing::Test {
 protected:
  using Tree = RTree<Item>;
  using Kept = RTreeItem<Item>;
  using T = typename Kept::Coordinate;
  static constexpr std::size_t s_dim = Kept::s_dimension;
  using Numbers = std::array<omReal64, s_dim>;

  static typename Kept::Point toPoint(const Numbers& p) {
    if constexpr (s_dim == 2)
      return {T(p[0]), T(p[1])};
    else
      return {T(p[0]), T(p[1]), T(p[2])};
  }
  static Numbers numbersOf(const typename Kept::Point& p) {
    if constexpr (s_dim == 2)
      return {p.getX(), p.getY()};
    else
      return {p.getX(), p.getY(), p.getZ()};
  }

  static Numbers drawPoint(support::Random& random, bool isWhole, omReal64 size = 10) {
    Numbers p;
    for (omReal64& x : p) x = T(isWhole ? omReal64(random.below(omUInt32(size))) : random.uniform(0, size));
    return p;
  }
  static Item draw(support::Random& random, bool isWhole) {
    const Numbers start = drawPoint(random, isWhole);
    typename Kept::Points points;
    for (std::size_t k = 0; k < points.size(); ++k) {
      Numbers p = start;
      for (std::size_t d = 0; d < s_dim && k > 0; ++d)
        p[d] += isWhole ? random.below(4) - (Kept::s_kind == eRTI_Box ? 0.0 : 1.0) : random.uniform(0, 2);
      points[k] = toPoint(p);
    }
    return Kept::fromPoints(points);
  }

  /// The distance of an item from a segment, which may be a point.
  static omReal64 distanceOf(const Item& item, const Numbers& a, const Numbers& b) {
    const auto points = Kept::toPoints(item);
    if constexpr (Kept::s_kind == eRTI_Triangle) {
      const auto corner = [&](std::size_t k) { return spatial(numbersOf(points[k])); };
      return segmentTriangleNearestPair({spatial(a), spatial(b)}, {corner(0), corner(1), corner(2)}).distance;
    } else if constexpr (Kept::s_kind == eRTI_Box) {
      // The distance along the segment is convex: the least value by narrowing.
      const auto at = [&](omReal64 part) {
        omReal64 square = 0;
        for (std::size_t d = 0; d < s_dim; ++d) {
          const omReal64 x = a[d] + part * (b[d] - a[d]);
          square += std::pow(std::max({numbersOf(points[0])[d] - x, x - numbersOf(points[1])[d], 0.0}), 2);
        }
        return std::sqrt(square);
      };
      omReal64 low = 0, high = 1;
      for (int step = 0; step < 90; ++step) {
        const omReal64 third = (high - low) / 3;
        (at(low + third) < at(high - third) ? high : low) += at(low + third) < at(high - third) ? -third : third;
      }
      return std::min({at(low), at(0), at(1)});
    } else if constexpr (s_dim == 2) {
      const auto point = [](const Numbers& p) { return PlanarPoint{p[0], p[1]}; };
      return nearestOnSegments(PlanarSegment{point(numbersOf(points.front())), point(numbersOf(points.back()))},
                               PlanarSegment{point(a), point(b)})
          .distance;
    } else {
      return nearestOnSegments(SpatialSegment{spatial(numbersOf(points.front())), spatial(numbersOf(points.back()))},
                               SpatialSegment{spatial(a), spatial(b)})
          .distance;
    }
  }
  static SpatialPoint spatial(const Numbers& p) {
    if constexpr (s_dim == 3)
      return {p[0], p[1], p[2]};
    else
      return {p[0], p[1], 0};
  }
  static SearchPoint<s_dim> place(const Numbers& p) {
    if constexpr (s_dim == 2)
      return {p[0], p[1]};
    else
      return {p[0], p[1], p[2]};
  }

  /// Expects the indices to be all items that are surely within the distance and none that are surely not.
  static void expectWithin(const std::vector<std::size_t>& found, const std::map<std::size_t, Item>& items,
                           const Numbers& a, const Numbers& b, omReal64 distance) {
    EXPECT_TRUE(std::is_sorted(found.begin(), found.end()));
    for (const auto& [index, item] : items) {
      const omReal64 exact = distanceOf(item, a, b);
      const bool isFound = std::binary_search(found.begin(), found.end(), index);
      if (std::abs(exact - distance) <= 1e-9) continue;
      EXPECT_EQ(isFound, exact < distance) << item << ' ' << exact;
    }
  }

  /// All queries of a tree of these items, against a loop over them.
  static void expectQueries(const Tree& tree, const std::map<std::size_t, Item>& items, support::Random& random,
                            bool isWhole) {
    ASSERT_EQ(tree.size(), items.size());
    const Numbers a = drawPoint(random, isWhole), b = drawPoint(random, isWhole);
    const omReal64 distance = isWhole ? random.below(3) : random.uniform(0, 2);
    expectWithin(tree.queryWithin(place(a), distance), items, a, a, distance);
    expectWithin(tree.queryAlong({place(a), place(b)}, distance), items, a, b, distance);
    EXPECT_EQ(tree.countWithin(place(a), distance), tree.queryWithin(place(a), distance).size());
    Numbers direction{}, far{};
    for (std::size_t d = 0; d < s_dim; ++d) far[d] = a[d] + 1000 * (direction[d] = b[d] - a[d]);
    if (direction != Numbers{})
      expectWithin(tree.queryAlongRay(place(a), place(direction), distance + 0.5), items, a, far, distance + 0.5);

    // A box that the item's own box meets is met unless the item passes beside it: seen by the item's pieces.
    Numbers low, high;
    for (std::size_t d = 0; d < s_dim; ++d) std::tie(low[d], high[d]) = std::minmax({a[d], b[d]});
    const SearchBox<s_dim> box(place(low), place(high));
    const auto found = tree.query(box);
    EXPECT_EQ(found.size(), tree.count(box));
    for (const auto& [index, item] : items) {
      const bool isFound = std::binary_search(found.begin(), found.end(), index);
      omReal64 outside = 0;  // of the nearest of many points of the item
      omReal64 nearest = s_infinity;
      const auto points = Kept::toPoints(item);
      constexpr int s_nbSteps = Kept::s_kind == eRTI_Point ? 0 : 12;
      for (int i = 0; i <= s_nbSteps; ++i)
        for (int k = 0; i + k <= s_nbSteps; ++k) {
          outside = 0;
          for (std::size_t d = 0; d < s_dim; ++d) {
            omReal64 x = numbersOf(points[0])[d];
            if (s_nbSteps > 0) x += (numbersOf(points[1])[d] - x) * i / s_nbSteps;
            if (Kept::s_kind == eRTI_Triangle)
              x += (numbersOf(points.back())[d] - numbersOf(points[0])[d]) * k / s_nbSteps;
            if (Kept::s_kind == eRTI_Box)
              x = std::clamp((low[d] + high[d]) / 2, numbersOf(points[0])[d], numbersOf(points[1])[d]);
            outside = std::max({outside, low[d] - x, x - high[d]});
          }
          nearest = std::min(nearest, outside);
        }
      if (nearest > 0 && nearest <= 0.5) continue;
      EXPECT_EQ(isFound, nearest == 0) << item;
    }
    std::size_t nbVisits = 0;
    EXPECT_EQ(tree.query(box, [&nbVisits](std::size_t) { return ++nbVisits < 2; }), found.size() < 2);
    EXPECT_EQ(nbVisits, std::min<std::size_t>(found.size(), 2));

    std::vector<omReal64> distances;
    for (const auto& [index, item] : items) distances.push_back(distanceOf(item, a, a));
    std::sort(distances.begin(), distances.end());
    const std::size_t k = 1 + random.below(12);
    const auto neighbours = tree.neighbours(place(a), k, isWhole ? s_infinity : 3);
    while (!distances.empty() && (distances.size() > k || (!isWhole && distances.back() > 3))) distances.pop_back();
    ASSERT_EQ(neighbours.size(), distances.size());
    for (std::size_t i = 0; i < neighbours.size(); ++i) {
      EXPECT_NEAR(neighbours[i].distance, distances[i], 1e-12);
      EXPECT_NEAR(distanceOf(items.at(neighbours[i].index), a, a), distances[i], 1e-12);
    }
  }
};

using Items = ::testing::Types<Point2d<omReal32>, Point2d<omReal64>, Segment2d<omReal32>, Segment2d<omReal64>,
                               BoundingBox2d<omReal32>, BoundingBox2d<omReal64>, Point3d<omReal32>, Point3d<omReal64>,
                               Segment3d<omReal32>, Segment3d<omReal64>, BoundingBox3d<omReal32>,
                               BoundingBox3d<omReal64>, LightTriangle3d<omReal32>, LightTriangle3d<omReal64>>;
TYPED_TEST_SUITE(RTreeOf, Items);

TYPED_TEST(RTreeOf, FindsWhatALoopFindsThroughChanges) {
  support::Random random(21);
  for (int round = 0; round < 8; ++round) {
    const bool isWhole = round % 2 == 0;
    std::vector<TypeParam> items;
    std::map<std::size_t, TypeParam> expected;
    for (omUInt32 nb = random.below(90); nb > 0; --nb) items.push_back(this->draw(random, isWhole));
    for (std::size_t i = 0; i < items.size(); ++i) expected.emplace(i, items[i]);
    RTree<TypeParam> tree(items);
    this->expectQueries(tree, expected, random, isWhole);
    for (int change = 0; change < 40; ++change) {
      if (random.below(2) == 0 || expected.empty()) {
        const TypeParam item = this->draw(random, isWhole);
        EXPECT_TRUE(expected.emplace(tree.insert(item), item).second);
      } else {
        const auto gone = std::next(expected.begin(), random.below(static_cast<omUInt32>(expected.size())));
        EXPECT_TRUE(tree.remove(gone->first));
        EXPECT_FALSE(tree.remove(gone->first));
        expected.erase(gone);
      }
    }
    this->expectQueries(tree, expected, random, isWhole);
    // Copies are trees of their own, and what is read is packed again.
    RTree<TypeParam> copied(tree);
    const std::string text = support::printed(tree);
    copied.insert(this->draw(random, isWhole));
    EXPECT_EQ(support::printed(tree), text);
    const std::string bytes =
        support::archived<support::Cbor>([&](BaseOArchive& archive) { EXPECT_TRUE(tree.write(archive)); });
    EXPECT_TRUE(support::readInto<support::Cbor>(bytes, copied));
    EXPECT_EQ(support::printed(copied), text);
    this->expectQueries(copied, expected, random, isWhole);
    while (!expected.empty()) {
      EXPECT_TRUE(tree.remove(expected.begin()->second));
      expected.erase(expected.begin());
    }
    EXPECT_TRUE(tree.isEmpty());
  }
}

TYPED_TEST(RTreeOf, DistancesAreThoseOfAllPairs) {
  support::Random random(22);
  for (int round = 0; round < 8; ++round) {
    const bool isWhole = round % 3 == 0;
    std::vector<TypeParam> all[2];
    for (std::vector<TypeParam>& items : all)
      for (omUInt32 nb = 2 + random.below(16); nb > 0; --nb) items.push_back(this->draw(random, isWhole));
    const auto pairDistance = [](const TypeParam& a, const TypeParam& b) {
      return distance(RTree<TypeParam>({a}), RTree<TypeParam>({b}));
    };
    const RTree<TypeParam> treeA(all[0]);
    RTree<TypeParam> treeB(all[1]);
    if (round % 2 == 0) treeB.remove(treeB.insert(this->draw(random, isWhole)));
    omReal64 least = s_infinity;
    for (const TypeParam& a : all[0])
      for (const TypeParam& b : all[1]) least = std::min(least, pairDistance(a, b));
    const auto found = nearestPair(treeA, treeB);
    EXPECT_NEAR(found.distance, least, 1e-12);
    EXPECT_EQ(found.distance == 0, least == 0);
    EXPECT_NEAR(distance(treeB, treeA), found.distance, 1e-12);
    // The points are on the items, and as far apart as it is said.
    const auto onA = this->numbersOf(cast<typename TestFixture::T>(found.onA));
    const auto onB = this->numbersOf(cast<typename TestFixture::T>(found.onB));
    EXPECT_NEAR(this->distanceOf(all[0][found.indexA], onA, onA), 0, 1e-5);
    EXPECT_NEAR(this->distanceOf(all[1][found.indexB], onB, onB), 0, 1e-5);
    EXPECT_NEAR(distance(found.onA, found.onB), found.distance, 1e-12);
    EXPECT_EQ(distance(treeA, treeB, found.distance), s_infinity);
    EXPECT_NEAR(distance(treeA, treeB, found.distance + 1), found.distance, 1e-12);
    EXPECT_EQ(distance(treeA, treeA), 0);

    omReal64 leastOfSelf = s_infinity;
    for (std::size_t i = 0; i < all[0].size(); ++i)
      for (std::size_t k = i + 1; k < all[0].size(); ++k) {
        const auto a = TestFixture::Kept::toPoints(all[0][i]), b = TestFixture::Kept::toPoints(all[0][k]);
        const bool isAdjacent =
            (TestFixture::Kept::s_kind == eRTI_Segment || TestFixture::Kept::s_kind == eRTI_Triangle) &&
            std::find_first_of(a.begin(), a.end(), b.begin(), b.end()) != a.end();
        if (!isAdjacent) leastOfSelf = std::min(leastOfSelf, pairDistance(all[0][i], all[0][k]));
      }
    if (leastOfSelf < s_infinity) {
      EXPECT_NEAR(selfDistance(treeA), leastOfSelf, 1e-12);
    } else {
      EXPECT_EQ(selfDistance(treeA), s_infinity);
    }
  }
}

TYPED_TEST(RTreeOf, TakesExtremeCoordinates) {
  const omReal64 unit = std::is_same_v<typename TestFixture::T, omReal32> ? 1e37 : 1e300;
  support::Random random(23);
  for (const omReal64 scale : {unit, 1 / unit}) {
    std::vector<TypeParam> items[2], large[2];
    for (int tree : {0, 1})
      for (int i = 0; i < 50; ++i) {
        items[tree].push_back(this->draw(random, true));
        auto points = TestFixture::Kept::toPoints(items[tree].back());
        for (auto& point : points) {
          auto p = this->numbersOf(point);
          if (tree == 1) p[0] += 20;
          point = this->toPoint(p);
        }
        items[tree].back() = TestFixture::Kept::fromPoints(points);
        for (auto& point : points) {
          auto p = this->numbersOf(point);
          for (omReal64& x : p) x *= scale;
          point = this->toPoint(p);
        }
        large[tree].push_back(TestFixture::Kept::fromPoints(points));
      }
    const RTree<TypeParam> smallA(items[0]), smallB(items[1]), largeA(large[0]), largeB(large[1]);
    const omReal64 expected = distance(smallA, smallB);
    EXPECT_NEAR(distance(largeA, largeB) / scale, expected, 1e-5 * expected);
    auto p = this->drawPoint(random, true);
    const auto near = smallA.neighbours(this->place(p), 5);
    for (omReal64& x : p) x *= scale;
    const auto nearLarge = largeA.neighbours(this->place(p), 5);
    ASSERT_EQ(nearLarge.size(), near.size());
    for (std::size_t i = 0; i < near.size() && scale > 1; ++i)
      EXPECT_NEAR(nearLarge[i].distance / scale, near[i].distance, 1e-5 * (1 + near[i].distance));
  }
}

TYPED_TEST(RTreeOf, RefusesWhatItCannotKeepAndNamesIt) {
  support::Random random(24);
  const auto refuses = [](const std::string& part, auto function) {
    const std::string message = support::thrownBy<ORMIXGeometryException>(function);
    EXPECT_NE(message.find(part), std::string::npos) << message;
  };
  RTree<TypeParam> tree({this->draw(random, true), this->draw(random, true)});
  const std::string before = support::printed(tree);
  for (const omReal64 bad : {s_nan, s_infinity, -s_infinity}) {
    auto points = TestFixture::Kept::toPoints(this->draw(random, true));
    auto p = this->numbersOf(points.back());
    p.back() = bad;
    points.back() = this->toPoint(p);
    const TypeParam item = TestFixture::Kept::fromPoints(points);
    refuses("Item 1 of an index", [&] { RTree<TypeParam> made({this->draw(random, true), item}); });
    refuses("Item 2 of an index", [&] { tree.insert(item); });
    refuses("point of a search", [&] { tree.nearest(this->place(p)); });
    refuses("segment of a search", [&] { tree.queryAlong({this->place(p), this->place(p)}); });
  }
  const auto at = this->place(this->drawPoint(random, true));
  auto nan = this->drawPoint(random, true);
  nan[0] = s_nan;
  refuses("box of a search", [&] { tree.query({at, this->place(nan)}); });
  refuses("at least 0", [&] { tree.queryWithin(at, -1); });
  refuses("at least 0", [&] { tree.neighbours(at, 1, s_nan); });
  refuses("0 were", [&] { tree.nearest(at, 0); });
  refuses("direction", [&] { tree.queryAlongRay(at, this->place({})); });
  refuses("Item 2 is not available", [&] { tree.remove(std::size_t(2)); });
  refuses("no envelope", [&] { RTree<TypeParam>().envelope(); });
  refuses("no distance", [&] { distance(tree, RTree<TypeParam>()); });
  EXPECT_EQ(support::printed(tree), before);
  EXPECT_TRUE(RTree<TypeParam>().nearest(at, 3).empty() && RTree<TypeParam>().queryAlongRay(at, at).empty());
  tree.remove(std::size_t(0));
  refuses("Item 0 has been removed", [&] { tree.getItem(0); });

  // Hostile archives: an item that is NaN, indices that are none.
  const std::string text =
      support::archived<support::Json>([&](BaseOArchive& archive) { EXPECT_TRUE(tree.write(archive)); });
  const auto refusesText = [&](const std::string& key, const std::string& by) {
    const std::size_t first = text.find_first_of("-0123456789", text.find(key));
    const std::size_t last = text.find_first_of(",]", first);
    const BoolResult result = support::readInto<support::Json>(text.substr(0, first) + by + text.substr(last), tree);
    EXPECT_NE(result.getMessage().find("Key \"" + key + "\""), std::string::npos) << result.getMessage();
  };
  refusesText("_itemColl", "\"nan\"");
  refusesText("_removedColl", "2");
  EXPECT_EQ(tree.size(), 1u);
}

TEST(RTree, TakesAMillionEqualItems) {
  const std::vector<Segment2d<omReal64>> items(1000000, {0, 0, 1, 1});
  RTree<Segment2d<omReal64>> tree(items);
  EXPECT_EQ(tree.nearest({5, 5}, 2).size(), 2u);
  EXPECT_EQ(tree.count({{0.25, 0}, {1, 0.125}}), 0u);
  EXPECT_EQ(distance(tree, tree), 0);
  EXPECT_EQ(selfDistance(RTree<Point2d<omReal32>>(std::vector<Point2d<omReal32>>(1000000))), 0);
}

TEST(RTree, EmptyBoxesAreNeverFound) {
  using Box = BoundingBox2d<omReal64>;
  RTree<Box> tree({Box(1, 1, -1, -1), Box(1, 0, 0, 5)});
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(tree.size(), 2u);
    EXPECT_TRUE(tree.query({{-9, -9}, {9, 9}}).empty() && tree.nearest({0, 0}).empty());
    EXPECT_EQ(distance(tree, RTree<Box>({Box(0, 0, 1, 1)})), s_infinity);
    EXPECT_TRUE(tree.remove(Box(1, 0, 0, 5)) && tree.insert(Box(1, 0, 0, 5)) == 2u + round);
  }
}

TEST(CreateRTree, IndexesThePartsOfEntities) {
  const auto polygon = boost::make_shared<Polygon2d<omInt32>>();
  polygon->getPointColl() = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
  const RTree<Segment2d<omReal64>> segments = createRTree(*polygon);
  EXPECT_EQ(support::printed(segments.getItem(3)), "[p0=[0, 4], p1=[0, 0]]");
  PolygonWithHoles2d<omReal32> holed;
  holed.getExteriorPolygon().getPointColl() = {{0, 0}, {9, 0}, {0, 9}, {0, 0}};
  holed.getPolygonHoles().push_back(boost::make_shared<PolygonWithHoles2d<omReal32>>(holed));
  EXPECT_EQ(createRTree(holed).size(), 6u);
  EXPECT_EQ(createRTree(PointCloud3d<omUInt32>({{1, 2, 3}, {4, 5, 6}})).nearest({4, 4, 4}),
            std::vector<std::size_t>{1});
  Mesh3d<omReal64> mesh;
  ASSERT_TRUE(quickHull(PointCloud3d<omReal64>({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}), mesh));
  EXPECT_EQ(createRTree(mesh).queryAlongRay({-1, 0.25, 0.25}, {1, 0, 0}).size(), 2u);
  EXPECT_EQ(selfDistance(createRTree(mesh)), s_infinity);

  std::vector<GeometryEntity2dPtr> entities = {
      polygon, boost::make_shared<Line2d>(1, 0.5), nullptr,
      boost::make_shared<Circle2d<omReal32>>(Point2dData<omReal32>(9, 9), 1.f)};
  EXPECT_EQ(createRTree(entities).query({{-100, -100}, {100, 100}}), (std::vector<std::size_t>{0, 3}));
  entities.push_back(boost::make_shared<Point2d<omReal64>>(0, s_nan));
  EXPECT_NE(support::thrownBy<ORMIXGeometryException>([&] { createRTree(entities); }).find("Item 4"),
            std::string::npos);
}

}  // namespace
