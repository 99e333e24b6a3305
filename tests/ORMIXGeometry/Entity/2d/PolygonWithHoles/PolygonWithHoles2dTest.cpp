#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXSerialization/ORMIXSerialization.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <utility>

#include "ORMIXGeometry/Entity/2d/PolygonWithHoles/SampleTree.h"

namespace {

using namespace polygontree;

TEST(PolygonWithHoles2d, StartsAlone) {
  const Node node;
  EXPECT_EQ(node.getPolygon2dType(), eP2DT_Exterior);
  EXPECT_TRUE(node.isEmpty());
  EXPECT_FALSE(node.hasHoles());
  EXPECT_FALSE(node.getParent());
  EXPECT_EQ(node.getNbTotPolygons(), 1u);
  EXPECT_EQ(node.getNbTotPoints(), 0u);
}

TEST(PolygonWithHoles2d, CountsItsWholeTree) {
  const NodePtr tree = sampleTree();
  EXPECT_EQ(tree->getNbTotPolygons(), 4u);
  EXPECT_EQ(tree->getNbTotPoints(), 17u);
  EXPECT_EQ(tree->getNbExteriorPoints(), 5u);
  EXPECT_EQ(tree->getNbHoles(), 2u);
  EXPECT_EQ(std::distance(tree->beginHole(), tree->endHole()), 2);
}

TEST(PolygonWithHoles2d, PrintsItsTree) {
  Node node;
  node.getExteriorPolygon().getPointColl() = {{0, 0}, {1, 2}};
  node.getPolygonHoles() = {boost::make_shared<Node>(), nullptr, boost::make_shared<Node>()};
  node.getPolygonHoles()[0]->getPolygonHoles().push_back(boost::make_shared<Node>());
  std::ostringstream stream;
  stream << node;
  EXPECT_EQ(stream.str(),
            "[exterior=[[0, 0], [1, 2]], holes=[[exterior=[], holes=[[exterior=[], holes=[]]]], null, "
            "[exterior=[], holes=[]]]]");
}

TEST(PolygonWithHoles2d, KnowsItsParentWhileItLives) {
  NodePtr tree = sampleTree();
  const NodePtr hole = tree->getPolygonHoles()[0];
  const NodePtr island = hole->getPolygonHoles()[0];
  EXPECT_EQ(hole->getParent(), tree);
  EXPECT_EQ(island->getParent(), hole);
  tree.reset();
  EXPECT_FALSE(hole->getParent());
  EXPECT_EQ(island->getParent(), hole);
  hole->setParent(nullptr);
  island->setParent(nullptr);
  EXPECT_FALSE(island->getParent());
}

TEST(PolygonWithHoles2d, ClearForgetsAllButTheRole) {
  const NodePtr tree = sampleTree();
  const NodePtr hole = tree->getPolygonHoles()[0];
  hole->clear();
  EXPECT_FALSE(hole->getParent());
  EXPECT_TRUE(hole->isEmpty());
  EXPECT_FALSE(hole->hasHoles());
  EXPECT_EQ(hole->getPolygon2dType(), eP2DT_Interior);
  EXPECT_EQ(tree->getNbTotPolygons(), 3u);
  tree->clearPolygonHoles();
  EXPECT_EQ(tree->getNbTotPolygons(), 1u);
  EXPECT_EQ(tree->getNbExteriorPoints(), 5u);
}

TEST(PolygonWithHoles2d, CopiesAreDeepAndLinkTheirOwnParents) {
  const NodePtr tree = sampleTree();
  const NodePtr constructed = boost::make_shared<Node>(*tree);
  const NodePtr duplicated(static_cast<Node*>(tree->duplicate()));
  const auto shared = boost::dynamic_pointer_cast<Node>(tree->duplicateShared());
  const NodePtr assigned = boost::make_shared<Node>();
  *assigned = *tree;
  const NodePtr copied = sampleTree();
  copied->copy(*tree);
  const NodePtr casted = boost::make_shared<Node>(cast<omReal64, omReal64>(*tree));
  for (const NodePtr& copy : {constructed, duplicated, shared, assigned, copied, casted}) {
    EXPECT_EQ(printed(*copy), printed(*tree));
    EXPECT_NE(copy->getPolygonHoles()[0], tree->getPolygonHoles()[0]);
    EXPECT_TRUE(isLinked(*copy));
  }
  EXPECT_TRUE(isLinked(*tree));
}

TEST(PolygonWithHoles2d, MovesTakeTheHolesAlong) {
  NodePtr tree = sampleTree();
  const std::string expected = printed(*tree);
  const NodePtr hole = tree->getPolygonHoles()[0];
  Node onStack(std::move(*tree));
  EXPECT_EQ(hole->getParent(), tree) << "the node given, as the new one cannot be seen";
  EXPECT_FALSE(tree->hasHoles());
  EXPECT_TRUE(tree->isEmpty());
  const NodePtr moved = boost::make_shared<Node>(std::move(onStack));
  EXPECT_EQ(hole->getParent(), moved);
  *tree = std::move(*moved);
  EXPECT_EQ(hole->getParent(), tree);
  EXPECT_EQ(printed(*tree), expected);
  EXPECT_TRUE(isLinked(*tree));
  static_assert(std::is_nothrow_move_constructible_v<Node> && std::is_nothrow_move_assignable_v<Node>);
}

// The first hole was given its parent, the second got it by the copy, the third is given it and is none of its holes.
TEST(PolygonWithHoles2d, LivingParentsAreNotLost) {
  using Change = void (*)(Node&);
  const Change changes[] = {[](Node& node) { node = Node(); },
                            [](Node& node) {
                              const Node other;
                              node = other;
                            },
                            [](Node& node) { node.copy(*sampleTree()); },
                            [](Node& node) {
                              std::stringstream bytes;
                              CborOArchive out(bytes);
                              ASSERT_TRUE(sampleTree()->write(out));
                              ASSERT_TRUE(out.close());
                              CborIArchive in(bytes);
                              ASSERT_TRUE(node.read(in));
                            },
                            [](Node& node) { const Node moved(std::move(node)); },
                            [](Node& node) { Node().operator=(std::move(node)); },
                            [](Node& node) { node.clearPolygonHoles(); }};
  for (const Change change : changes) {
    SCOPED_TRACE(&change - changes);
    const NodePtr tree = boost::make_shared<Node>(*sampleTree());
    const NodePtr outside = boost::make_shared<Node>();
    const std::vector<NodePtr> holes{tree->getPolygonHoles()[0], tree->getPolygonHoles()[1], outside};
    holes[0]->setParent(tree);
    outside->setParent(tree);
    change(*tree);
    for (const NodePtr& hole : holes) EXPECT_EQ(hole->getParent(), tree);
    EXPECT_TRUE(isLinked(*tree));
  }
  // Moved to a node that is seen, holes go along; others stay.
  const NodePtr tree = sampleTree();
  const NodePtr outside = boost::make_shared<Node>();
  outside->setParent(tree);
  const NodePtr target = sampleTree();
  const NodePtr former = target->getPolygonHoles()[0];
  *target = std::move(*tree);
  EXPECT_TRUE(isLinked(*target));
  EXPECT_EQ(outside->getParent(), tree);
  EXPECT_EQ(former->getParent(), target);
}

TEST(PolygonWithHoles2d, TheParentMayBePartOfAnotherObject) {
  auto owner = boost::make_shared<std::pair<Node, Node>>();
  const boost::shared_ptr<const Node> part(owner, &owner->second);
  const NodePtr hole = boost::make_shared<Node>();
  hole->setParent(part);
  EXPECT_EQ(hole->getParent(), part);
  owner->second.getPolygonHoles().push_back(hole);
  const NodePtr moved = boost::make_shared<Node>(std::move(owner->second));
  EXPECT_EQ(hole->getParent(), moved);
}

// Into a hole at any depth, linked to its parent or not.
TEST(PolygonWithHoles2d, AMoveIntoANodeBelowIsACopy) {
  for (const bool isLinkedUp : {true, false}) {
    for (const bool isDeep : {true, false}) {
      const NodePtr tree = sampleTree();
      const std::string expected = printed(*tree);
      Node& child = *tree->getPolygonHoles()[0];
      Node& below = isDeep ? *child.getPolygonHoles()[0] : child;
      if (!isLinkedUp) below.setParent(nullptr);
      below = std::move(*tree);
      EXPECT_EQ(printed(below), expected);
      EXPECT_EQ(tree->getNbTotPolygons(), isDeep ? 7u : 6u);
    }
  }
}

TEST(PolygonWithHoles2d, AssignmentKeepsThePlaceInTheTree) {
  const NodePtr tree = sampleTree();
  const NodePtr hole = tree->getPolygonHoles()[1];
  const NodePtr other = sampleTree();
  EXPECT_FALSE(Node(*hole).getParent());
  *hole = *other;
  EXPECT_EQ(hole->getParent(), tree);
  EXPECT_TRUE(isLinked(*tree));
  EXPECT_EQ(tree->getNbTotPolygons(), 7u);
}

TEST(PolygonWithHoles2d, MayBeAssignedItselfOrItsOwnHole) {
  const NodePtr tree = sampleTree();
  const std::string expected = printed(*tree);
  const Node& itself = *tree;
  *tree = itself;
  EXPECT_EQ(printed(*tree), expected);
  const std::string hole = printed(*tree->getPolygonHoles()[0]);
  *tree = *tree->getPolygonHoles()[0];
  EXPECT_EQ(printed(*tree), hole);
  const std::string island = printed(*tree->getPolygonHoles()[0]);
  *tree = std::move(*tree->getPolygonHoles()[0]);
  EXPECT_EQ(printed(*tree), island);
  EXPECT_TRUE(isLinked(*tree));
}

TEST(PolygonWithHoles2d, IsCastRingByRing) {
  const NodePtr tree = sampleTree();
  tree->getExteriorPolygon().getPointColl()[0].setCoords(1.75, -1.75);
  tree->getPolygonHoles().push_back(nullptr);
  const auto asInt = cast<omInt32, omReal64>(*tree);
  EXPECT_EQ(asInt.getExteriorPolygon().getPointColl()[0], (Point2dData<omInt32>(1, -1)));
  EXPECT_EQ(asInt.getNbTotPoints(), 17u);
  EXPECT_EQ(asInt.getPolygonHoles()[0]->getPolygon2dType(), eP2DT_Interior);
  EXPECT_FALSE(asInt.getPolygonHoles()[2]);
  PolygonWithHoles2d<omReal64> back;
  cast(asInt, back);
  EXPECT_EQ(back.getNbTotPolygons(), 4u);
}

TEST(PolygonWithHoles2d, TakesNullHolesAsNone) {
  Node node;
  node.getPolygonHoles().assign(3, nullptr);
  EXPECT_TRUE(node.hasHoles());
  EXPECT_EQ(node.getNbTotPolygons(), 1u);
  Node copy(node);
  EXPECT_EQ(copy.getNbHoles(), 3u);
  copy = std::move(node);
  copy.clear();
}

TEST(PolygonWithHoles2d, LeavesHolesOfOtherOwnersWhole) {
  NodePtr tree = sampleTree();
  const NodePtr hole = tree->getPolygonHoles()[0];
  const std::string expected = printed(*hole);
  tree->clearPolygonHoles();
  tree.reset();
  EXPECT_EQ(printed(*hole), expected);
  EXPECT_TRUE(isLinked(*hole));
}

TEST(VisitNodes, GoesInOrderAndStopsWhenTold) {
  const NodePtr tree = sampleTree();
  tree->getPolygonHoles().insert(tree->getPolygonHoles().begin(), nullptr);
  std::vector<const Node*> visited;
  const auto note = [&visited](const Node& node) {
    visited.push_back(&node);
    return visited.size() < 5;
  };
  EXPECT_TRUE(visitNodes(std::as_const(*tree), note));
  const auto& first = tree->getPolygonHoles()[1];
  EXPECT_EQ(visited, (std::vector<const Node*>{tree.get(), first.get(), first->getPolygonHoles()[0].get(),
                                               tree->getPolygonHoles()[2].get()}));
  visited.resize(3);
  EXPECT_FALSE(visitNodes(*tree, note));
  EXPECT_EQ(visited.size(), 5u);
}

// Deeper than any stack would bear if a level took a call.
TEST(DeepPolygonWithHoles2d, IsCopiedCountedPrintedAndDestroyed) {
  NodePtr tree = chain(s_nbDeepLevels);
  EXPECT_EQ(tree->getNbTotPolygons(), s_nbDeepLevels);
  EXPECT_EQ(tree->getNbTotPoints(), 0u);
  NodePtr copy = boost::make_shared<Node>(*tree);
  EXPECT_EQ(copy->getNbTotPolygons(), s_nbDeepLevels);
  EXPECT_GT(printed(*copy).size(), s_nbDeepLevels);
  *copy = cast<omReal64, omReal64>(*tree);
  copy.reset();
  tree->clearPolygonHoles();
  EXPECT_EQ(tree->getNbTotPolygons(), 1u);
}

TEST(DeepPolygonWithHoles2d, IsDestroyedInEveryShape) {
  // A comb: each level has a leaf, the next level and another leaf, the middle one shared with a caller half-way.
  NodePtr tree = boost::make_shared<Node>();
  NodePtr shared;
  Node* level = tree.get();
  for (std::size_t depth = 0; depth < s_nbDeepLevels / 4; ++depth) {
    const NodePtr next = boost::make_shared<Node>();
    level->getPolygonHoles() = {boost::make_shared<Node>(), next, nullptr, boost::make_shared<Node>()};
    if (depth == s_nbDeepLevels / 8) shared = next;
    level = next.get();
  }
  const omUInt32 nbShared = shared->getNbTotPolygons();
  tree.reset();
  EXPECT_EQ(shared->getNbTotPolygons(), nbShared);
}

}  // namespace
