#include <ORMIXMath/Index/BoxPairs.h>
#include <ORMIXMath/Index/BoxTree.h>
#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <type_traits>
#include <utility>

#include "support/Random.h"

namespace ormix::detail {
namespace {

template <class Dimension>
class BoxTree : public ::testing::Test {
 protected:
  static constexpr std::size_t s_dim = Dimension::value;
  using Box = IndexBox<s_dim>;

  /// On a coarse grid every other time, so that sides touch; some empty.
  static Box draw(support::Random& random, bool isCoarse) {
    Box box;
    if (random.below(20) == 0) return box;
    IndexPoint<s_dim> a;
    IndexPoint<s_dim> b;
    for (std::size_t d = 0; d < s_dim; ++d) {
      a[d] = isCoarse ? random.below(12) : random.uniform(0, 12);
      b[d] = a[d] + (isCoarse ? random.below(3) : random.uniform(0, 1));
    }
    box.add(a);
    box.add(b);
    return box;
  }
  static std::vector<Box> drawAll(support::Random& random, std::size_t nb, bool isCoarse) {
    std::vector<Box> boxes;
    for (std::size_t i = 0; i < nb; ++i) boxes.push_back(draw(random, isCoarse));
    return boxes;
  }
};

using Dimensions = ::testing::Types<std::integral_constant<std::size_t, 2>, std::integral_constant<std::size_t, 3>>;
TYPED_TEST_SUITE(BoxTree, Dimensions);

TYPED_TEST(BoxTree, FindsWhatALoopFinds) {
  constexpr std::size_t D = TypeParam::value;
  const omReal64 infinity = std::numeric_limits<omReal64>::infinity();
  support::Random random(11);
  for (int round = 0; round < 240; ++round) {
    const bool isCoarse = round % 2 == 0;
    const auto boxes = this->drawAll(random, random.below(round % 8 == 0 ? 700 : 80), isCoarse);
    const detail::BoxTree<D> tree(boxes, round % 3 == 0 ? eBO_Given : eBO_Curve);
    ASSERT_EQ(tree.size(), boxes.size());
    const IndexBox<D> box = this->draw(random, isCoarse);
    const omReal64 distance = isCoarse ? random.below(4) : random.uniform(0, 4);
    IndexPoint<D> direction{};
    for (omReal64& value : direction) value = isCoarse ? random.below(3) - 1.0 : random.uniform();
    const omReal64 maxParam = random.below(3) == 0 ? infinity : random.uniform(0, 10);

    std::multiset<std::size_t> expected[3];
    omReal64 least = infinity;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      if (boxes[i].empty() || box.empty()) continue;
      if (boxes[i].meets(box)) expected[0].insert(i);
      const omReal64 square = boxes[i].squareTo(box);
      if (square <= distance * distance * (1 + 1e-14)) expected[1].insert(i);
      least = std::min(least, square);
      omReal64 enter = 0;
      omReal64 leave = maxParam;
      for (std::size_t d = 0; d < D; ++d) {
        const omReal64 toLow = boxes[i].low[d] - box.low[d];
        const omReal64 toHigh = boxes[i].high[d] - box.low[d];
        if (direction[d] == 0) leave = toLow <= 0 && toHigh >= 0 ? leave : -1;
        if (direction[d] == 0) continue;
        enter = std::max(enter, std::min(toLow / direction[d], toHigh / direction[d]));
        leave = std::min(leave, std::max(toLow / direction[d], toHigh / direction[d]));
      }
      if (enter <= leave) expected[2].insert(i);
    }
    std::multiset<std::size_t> found[3];
    EXPECT_TRUE(tree.visitIntersecting(box, [&](std::size_t i) { return found[0].insert(i), true; }));
    EXPECT_TRUE(tree.visitWithin(box, distance, [&](std::size_t i) { return found[1].insert(i), true; }));
    EXPECT_EQ(found[0], expected[0]);
    EXPECT_EQ(found[1], expected[1]);
    if (box.empty()) continue;
    EXPECT_TRUE(tree.visitAlong(box.low, direction, maxParam, [&](std::size_t i) { return found[2].insert(i), true; }));
    EXPECT_EQ(found[2], expected[2]);
    std::size_t nbVisits = 0;
    EXPECT_EQ(tree.visitIntersecting(box, [&](std::size_t) { return ++nbVisits < 2; }), expected[0].size() < 2);
    EXPECT_EQ(nbVisits, std::min<std::size_t>(expected[0].size(), 2));

    const auto squareOf = [&](std::size_t i) { return boxes[i].squareTo(box); };
    EXPECT_EQ(tree.nearest(box, infinity, squareOf).square, least);
    EXPECT_EQ(tree.nearest(box, least, squareOf).item, detail::BoxTree<D>::s_none);
  }
}

TYPED_TEST(BoxTree, FindsThePairsThatALoopFinds) {
  constexpr std::size_t D = TypeParam::value;
  const omReal64 infinity = std::numeric_limits<omReal64>::infinity();
  support::Random random(12);
  for (int round = 0; round < 120; ++round) {
    const bool isCoarse = round % 2 == 0;
    const auto boxesA = this->drawAll(random, random.below(round % 8 == 0 ? 600 : 70), isCoarse);
    auto boxesB = this->drawAll(random, random.below(20), isCoarse);
    const omReal64 shift = random.below(3) == 0 ? 0 : random.below(20);
    for (auto& box : boxesB)
      for (auto* corner : {&box.low, &box.high}) (*corner)[0] += shift;
    const omReal64 distance = isCoarse ? random.below(2) : random.uniform(0, 0.5);
    const detail::BoxTree<D> treeA(boxesA, round % 3 == 0 ? eBO_Given : eBO_Curve);
    const detail::BoxTree<D> treeB(boxesB, eBO_Curve);
    for (const bool isSelf : {false, true}) {
      const auto& seconds = isSelf ? boxesA : boxesB;
      std::multiset<std::pair<std::size_t, std::size_t>> expected;
      omReal64 least = infinity;
      for (std::size_t i = 0; i < boxesA.size(); ++i)
        for (std::size_t k = isSelf ? i + 1 : 0; k < seconds.size(); ++k) {
          const omReal64 square = boxesA[i].squareTo(seconds[k]);
          if (square <= distance * distance * (1 + 1e-14)) expected.insert({i, k});
          least = std::min(least, square);
        }
      std::multiset<std::pair<std::size_t, std::size_t>> found;
      const auto visit = [&](std::size_t i, std::size_t k) {
        found.insert(isSelf ? std::pair(std::min(i, k), std::max(i, k)) : std::pair(i, k));
        return true;
      };
      EXPECT_TRUE(isSelf ? visitPairs(treeA, distance, visit) : visitPairs(treeA, treeB, distance, visit));
      EXPECT_EQ(found, expected);
      const auto squareOf = [&](std::size_t i, std::size_t k) { return boxesA[i].squareTo(seconds[k]); };
      const NearestItems nearest =
          isSelf ? nearestPair(treeA, infinity, squareOf) : nearestPair(treeA, treeB, infinity, squareOf);
      EXPECT_EQ(nearest.square, least);
      if (nearest.square < infinity) {
        EXPECT_EQ(squareOf(nearest.itemA, nearest.itemB), least);
      }
    }
  }
}

}  // namespace
}  // namespace ormix::detail
