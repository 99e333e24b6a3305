// What polygons with holes and meshes with holes share: parents, deep copies, moves and archives of trees.

#include <ORMIXSerialization/ORMIXSerialization.h>

#include "support/ArchiveFormats.h"
#include "support/Checks.h"
#include "support/SampleObjects.h"

namespace {

using namespace samples;
using namespace support;

#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t s_nbDeepLevels = 100000;
#elif defined(__has_feature)
constexpr std::size_t s_nbDeepLevels = __has_feature(address_sanitizer) ? 100000 : 1000000;
#else
constexpr std::size_t s_nbDeepLevels = 1000000;
#endif

template <class T>
auto& holesOf(PolygonWithHoles2d<T>& node) {
  return node.getPolygonHoles();
}
template <class T>
auto& holesOf(MeshWithHoles3d<T>& node) {
  return node.getMeshHoles();
}
template <class N>
void clearHoles(N& node) {
  if constexpr (isOf<PolygonWithHoles2d, N>)
    node.clearPolygonHoles();
  else
    node.clearMeshHoles();
}
template <class N>
std::size_t nbNodes(const N& node) {
  if constexpr (isOf<PolygonWithHoles2d, N>)
    return node.getNbTotPolygons();
  else
    return node.getNbTotMesh();
}
/// Coordinates are cast as those of points are.
template <class TOut, class T>
boost::shared_ptr<PolygonWithHoles2d<TOut>> castTree(const PolygonWithHoles2d<T>& node) {
  return boost::make_shared<PolygonWithHoles2d<TOut>>(cast<TOut, T>(node));
}
template <class TOut, class T>
boost::shared_ptr<MeshWithHoles3d<TOut>> castTree(const MeshWithHoles3d<T>& node) {
  return cast<TOut, T>(node);
}

template <class N>
class HoleTree : public ::testing::Test {
 public:
  using Node = N;
  using NodePtr = boost::shared_ptr<Node>;

  /// A region with two holes, in the first of which is an island.
  static NodePtr sample() { return boost::make_shared<Node>(Sample<Node>::make()); }
  static NodePtr addHole(Node& parent) {
    holesOf(parent).push_back(boost::make_shared<Node>());
    return holesOf(parent).back();
  }
  /// A tree of `nbLevels` empty nodes, each the only hole of the one above.
  static NodePtr chain(std::size_t nbLevels) {
    const NodePtr root = boost::make_shared<Node>();
    for (NodePtr last = root; nbLevels > 1; --nbLevels) {
      const NodePtr next = addHole(*last);
      next->setParent(last);
      last = next;
    }
    return root;
  }
  /// Whether every hole below has the node that holds it as its parent.
  static bool isLinked(const Node& root) {
    return visitNodes(root, [](const Node& node) {
      return std::all_of(node.beginHole(), node.endHole(),
                         [&](const NodePtr& hole) { return !hole || hole->getParent().get() == &node; });
    });
  }

  const NodePtr tree = sample();
  const NodePtr hole = holesOf(*tree)[0];
  const NodePtr island = holesOf(*hole)[0];
  const std::string text = describe(*tree);
};
using Nodes = ::testing::Types<PolygonWithHoles2d<omReal64>, MeshWithHoles3d<omReal64>>;
TYPED_TEST_SUITE(HoleTree, Nodes);

TYPED_TEST(HoleTree, KnowsItsParentWhileThatLives) {
  const TypeParam alone;
  EXPECT_TRUE(alone.isEmpty() && !alone.hasHoles() && !alone.getParent());
  EXPECT_EQ(nbNodes(alone), 1u);
  EXPECT_EQ(nbNodes(*this->tree), 4u);
  auto root = this->sample();
  const auto first = holesOf(*root)[0];
  EXPECT_EQ(first->getParent(), root);
  root.reset();
  EXPECT_FALSE(first->getParent());
  EXPECT_EQ(describe(*first), describe(*this->hole)) << "left whole";
  EXPECT_EQ(this->island->getParent(), this->hole);
  this->island->setParent(nullptr);
  EXPECT_FALSE(this->island->getParent());
}

TYPED_TEST(HoleTree, ClearForgetsAllButTheRole) {
  this->hole->clear();
  EXPECT_FALSE(this->hole->getParent());
  EXPECT_TRUE(this->hole->isEmpty() && !this->hole->hasHoles());
  EXPECT_NE(describe(*this->hole), describe(TypeParam())) << "it is interior";
  EXPECT_EQ(nbNodes(*this->tree), 3u);
  clearHoles(*this->tree);
  EXPECT_EQ(nbNodes(*this->tree), 1u);
  EXPECT_FALSE(this->tree->isEmpty());
}

TYPED_TEST(HoleTree, CopiesAreDeepAndLinkTheirOwnParents) {
  using Ptr = typename TestFixture::NodePtr;
  const Ptr constructed = boost::make_shared<TypeParam>(*this->tree);
  const Ptr duplicated(static_cast<TypeParam*>(this->tree->duplicate()));
  const Ptr assigned = boost::make_shared<TypeParam>();
  *assigned = *this->tree;
  const Ptr copied = this->sample();
  copied->copy(*this->tree);
  const Ptr casted = castTree<omReal64>(*this->tree);
  for (const Ptr& copy : {constructed, duplicated, assigned, copied, casted}) {
    EXPECT_EQ(describe(*copy), this->text);
    EXPECT_NE(holesOf(*copy)[0], this->hole);
    EXPECT_TRUE(this->isLinked(*copy));
  }
  EXPECT_TRUE(this->isLinked(*this->tree));
}

// The first hole was given its parent, the second got it by the copy, the third is given it and is none of its holes.
TYPED_TEST(HoleTree, LivingParentsAreNotLost) {
  using Ptr = typename TestFixture::NodePtr;
  using Change = void (*)(TypeParam&);
  const Change changes[] = {
      [](TypeParam& node) { node = TypeParam(); },
      [](TypeParam& node) {
        const TypeParam other;
        node = other;
      },
      [](TypeParam& node) { node.copy(*TestFixture::sample()); },
      [](TypeParam& node) { EXPECT_SUCCESS(readInto<Cbor>(archived<Cbor>(*TestFixture::sample()), node)); },
      [](TypeParam& node) { const TypeParam moved(std::move(node)); },
      [](TypeParam& node) { TypeParam().operator=(std::move(node)); },
      [](TypeParam& node) { clearHoles(node); }};
  for (const Change change : changes) {
    SCOPED_TRACE(&change - changes);
    const Ptr root = this->sample();
    const Ptr outside = boost::make_shared<TypeParam>();
    const std::vector<Ptr> children{holesOf(*root)[0], holesOf(*root)[1], outside};
    children[0]->setParent(root);
    outside->setParent(root);
    change(*root);
    for (const Ptr& child : children) EXPECT_EQ(child->getParent(), root);
    EXPECT_TRUE(this->isLinked(*root));
  }
  // Moved to a node to which a pointer leads, holes go along; others stay.
  const Ptr outside = boost::make_shared<TypeParam>();
  outside->setParent(this->tree);
  const Ptr target = this->sample();
  const Ptr former = holesOf(*target)[0];
  *target = std::move(*this->tree);
  EXPECT_TRUE(this->isLinked(*target));
  EXPECT_EQ(outside->getParent(), this->tree);
  EXPECT_EQ(former->getParent(), target);
}

TYPED_TEST(HoleTree, TheParentMayBePartOfAnotherObject) {
  const auto owner = boost::make_shared<std::pair<TypeParam, TypeParam>>();
  const boost::shared_ptr<const TypeParam> part(owner, &owner->second);
  this->hole->setParent(part);
  EXPECT_EQ(this->hole->getParent(), part);
  // Each hole follows the pointer that it was given itself, which may have another owner.
  auto keeper = boost::make_shared<boost::shared_ptr<const TypeParam>>(part);
  this->island->setParent(boost::shared_ptr<const TypeParam>(keeper, part.get()));
  EXPECT_EQ(this->island->getParent(), part);
  keeper.reset();
  EXPECT_FALSE(this->island->getParent());
  EXPECT_EQ(this->hole->getParent(), part);
  holesOf(owner->second).push_back(this->hole);
  const auto moved = boost::make_shared<TypeParam>(std::move(owner->second));
  EXPECT_EQ(this->hole->getParent(), moved);
}

// Into a hole at any depth, linked to its parent or not.
TYPED_TEST(HoleTree, AMoveIntoANodeBelowIsACopy) {
  for (const bool isLinkedUp : {true, false}) {
    for (const bool isDeep : {true, false}) {
      const auto root = this->sample();
      TypeParam& child = *holesOf(*root)[0];
      TypeParam& below = isDeep ? *holesOf(child)[0] : child;
      if (!isLinkedUp) below.setParent(nullptr);
      below = std::move(*root);
      EXPECT_EQ(describe(below), this->text);
      EXPECT_EQ(nbNodes(*root), isDeep ? 7u : 6u);
    }
  }
}

TYPED_TEST(HoleTree, MovesTakeTheHolesAlong) {
  TypeParam onStack(std::move(*this->tree));
  EXPECT_EQ(this->hole->getParent(), this->tree) << "the node given, as no pointer leads to the new one";
  EXPECT_TRUE(this->tree->isEmpty() && !this->tree->hasHoles());
  const auto moved = boost::make_shared<TypeParam>(std::move(onStack));
  EXPECT_EQ(this->hole->getParent(), moved);
  *this->tree = std::move(*moved);
  EXPECT_EQ(this->hole->getParent(), this->tree);
  EXPECT_EQ(describe(*this->tree), this->text);
  EXPECT_TRUE(this->isLinked(*this->tree));
  static_assert(std::is_nothrow_move_constructible_v<TypeParam> && std::is_nothrow_move_assignable_v<TypeParam>);
}

TYPED_TEST(HoleTree, AssignmentKeepsThePlaceAndMayTakeOwnHoles) {
  EXPECT_FALSE(TypeParam(*this->hole).getParent());
  *holesOf(*this->tree)[1] = *this->sample();
  EXPECT_EQ(holesOf(*this->tree)[1]->getParent(), this->tree);
  EXPECT_EQ(nbNodes(*this->tree), 7u);
  const std::string all = describe(*this->tree), part = describe(*this->hole), inner = describe(*this->island);
  const TypeParam& itself = *this->tree;
  *this->tree = itself;
  EXPECT_EQ(describe(*this->tree), all);
  *this->tree = *this->hole;
  EXPECT_EQ(describe(*this->tree), part);
  *this->tree = std::move(*holesOf(*this->tree)[0]);
  EXPECT_EQ(describe(*this->tree), inner);
  EXPECT_TRUE(this->isLinked(*this->tree));
}

TYPED_TEST(HoleTree, TakesNullHolesAsNone) {
  holesOf(*this->tree).push_back(nullptr);
  EXPECT_EQ(nbNodes(*this->tree), 4u);
  const auto asInt = castTree<omInt32>(*this->tree);
  EXPECT_FALSE(holesOf(*asInt)[2]);
  EXPECT_EQ(holesOf(*asInt)[0]->getParent(), asInt);
  TypeParam copy(*this->tree);
  EXPECT_EQ(copy.getNbHoles(), 3u);
  copy = TypeParam();
  EXPECT_FALSE(copy.hasHoles());
  std::vector<const TypeParam*> visited;
  const auto note = [&visited](const TypeParam& node) {
    visited.push_back(&node);
    return visited.size() < 5;
  };
  holesOf(*this->tree).insert(holesOf(*this->tree).begin(), nullptr);
  EXPECT_TRUE(visitNodes(std::as_const(*this->tree), note));
  EXPECT_EQ(visited, (std::vector<const TypeParam*>{this->tree.get(), this->hole.get(), this->island.get(),
                                                    holesOf(*this->tree)[2].get()}));
  visited.resize(3);
  EXPECT_FALSE(visitNodes(*this->tree, note)) << "stopped when told";
  EXPECT_EQ(visited.size(), 5u);
}

// Deeper than any stack would bear if a level took a call.
TYPED_TEST(HoleTree, IsCopiedCountedAndDestroyedAtAnyDepth) {
  const auto chain = this->chain(s_nbDeepLevels / 4);
  EXPECT_EQ(nbNodes(*chain), s_nbDeepLevels / 4);
  auto copy = boost::make_shared<TypeParam>(*chain);
  EXPECT_EQ(describe(*copy), describe(*chain));
  *copy = *castTree<omReal64>(*chain);
  EXPECT_EQ(nbNodes(*copy), s_nbDeepLevels / 4);
  copy.reset();
  clearHoles(*chain);
  EXPECT_EQ(nbNodes(*chain), 1u);
  // A comb: each level has a leaf, the next level and another leaf, the middle one shared with a caller half-way.
  auto comb = boost::make_shared<TypeParam>();
  auto shared = comb;
  TypeParam* level = comb.get();
  for (std::size_t depth = 0; depth < s_nbDeepLevels / 8; ++depth) {
    this->addHole(*level);
    const auto next = this->addHole(*level);
    holesOf(*level).push_back(nullptr);
    this->addHole(*level);
    if (depth == s_nbDeepLevels / 16) shared = next;
    level = next.get();
  }
  const std::size_t nbShared = nbNodes(*shared);
  comb.reset();
  EXPECT_EQ(nbNodes(*shared), nbShared);
}

// Their nodes lie in blocks of 32. Each ends alone, and the block with the last of them, under whatever pointer.
TYPED_TEST(HoleTree, HolesThatAreMadeTogetherAreAsThoseMadeOneByOne) {
  using Ptr = typename TestFixture::NodePtr;
  for (const bool isCopy : {false, true}) {
    Ptr root = boost::make_shared<TypeParam>();
    holesOf(*root) = {nullptr, this->hole};
    const auto first = root->addHoles(70);
    EXPECT_EQ(first - root->beginHole(), 2);
    EXPECT_EQ(root->addHoles(0), root->endHole());
    EXPECT_THROW(root->addHoles(std::numeric_limits<std::size_t>::max()), std::length_error);
    ASSERT_EQ(root->getNbHoles(), 72u);
    holesOf(*root).erase(holesOf(*root).begin() + 1);
    EXPECT_TRUE(this->isLinked(*root));
    if (isCopy) root = boost::make_shared<TypeParam>(*root);
    const Ptr kept = holesOf(*root)[40];
    EXPECT_EQ(kept->shared_from_this(), kept);
    EXPECT_EQ(kept.use_count(), 2);
    EXPECT_EQ(describe(*kept), describe(TypeParam()));
    *holesOf(*root)[5] = *this->tree;
    const boost::weak_ptr<TypeParam> ended = holesOf(*root)[41], removed = holesOf(*root)[7];
    holesOf(*root).erase(holesOf(*root).begin() + 7);
    EXPECT_TRUE(removed.expired() && !ended.expired());
    EXPECT_TRUE(this->isLinked(*root));
    root.reset();
    EXPECT_TRUE(ended.expired());
    EXPECT_FALSE(kept->getParent());
    *kept = *this->tree;
    EXPECT_EQ(describe(*kept), this->text);
  }
}

TEST(HolesOfPolygons, AreCountedCastAndPrinted) {
  using Node = PolygonWithHoles2d<omReal64>;
  Node tree = Sample<Node>::make();
  EXPECT_EQ(tree.getNbTotPoints(), 20u);
  EXPECT_EQ(tree.getNbExteriorPoints(), 5u);
  tree.getExteriorPolygon().getPointColl()[0].setCoords(1.75, -1.75);
  const auto asInt = cast<omInt32, omReal64>(tree);
  EXPECT_EQ(asInt.getExteriorPolygon().getPointColl()[0], (Point2dData<omInt32>(1, -1)));
  EXPECT_EQ(asInt.getPolygonHoles()[0]->getPolygon2dType(), eP2DT_Interior);
  tree.getPolygonHoles() = {nullptr};
  EXPECT_EQ(printed(tree).substr(printed(tree).find("holes")), "holes=[null]]");
  // Deeper than any stack would bear if a level took a call.
  EXPECT_GT(printed(*HoleTree<Node>::chain(200000)).size(), 200000u);
}

TEST(HolesOfMeshes, AreCountedCastComparedAndPrinted) {
  using Node = MeshWithHoles3d<omReal64>;
  Node tree = Sample<Node>::make();
  const std::array<std::size_t, 6> counts{tree.getNbExteriorVertices(),  tree.getNbExteriorEdges(),
                                          tree.getNbExteriorTriangles(), tree.getNbTotVertices(),
                                          tree.getNbTotEdges(),          tree.getNbTotTriangles()};
  EXPECT_EQ(counts, (std::array<std::size_t, 6>{4, 6, 4, 4 * 4, 4 * 6, 4 * 4}));
  Node other = tree;
  other.getMeshHoles()[0]->getMeshHoles()[0]->getExteriorMesh().setVertex(0, {1.5, 2, 3});
  EXPECT_TRUE(compare(tree, other, 0.5));
  EXPECT_FALSE(compare(tree, other, 0.25));
  const auto asInt = cast<omInt32, omReal64>(other);
  EXPECT_EQ(asInt->getMeshHoles()[0]->getMeshHoles()[0]->getExteriorMesh().getVertex(0),
            (Point3dData<omInt32>(1, 2, 3)));
  EXPECT_EQ(asInt->getMeshHoles()[0]->getMesh3dType(), eM3DT_Interior);
  other = tree;
  other.getMeshHoles().pop_back();
  EXPECT_FALSE(compare(tree, other, 9));
  other.getMeshHoles().push_back(nullptr);
  EXPECT_FALSE(compare(tree, other, 9) || compare(other, tree, 9));
  EXPECT_TRUE(compare(other, other, 9));
  std::ostringstream address;
  address << other.getMeshHoles()[0];
  EXPECT_EQ(printed(other), "[" + printed(other.getExteriorMesh()) + ", [" + address.str() + ", 0]]");
  // A broken mesh deep inside fails the whole read.
  std::string text = archived<Json>(tree);
  const std::string halfEdges = "\"_halfEdgeColl\": [[";
  text.replace(text.rfind(halfEdges) + halfEdges.size(), 1, "9");
  Node restored;
  EXPECT_FAILURE(readInto<Json>(text, restored),
                 "Key \"_halfEdgeColl\": Vertex with index 9 is not valid given vertex collection size 4");
  EXPECT_TRUE(restored.isEmpty() && !restored.hasHoles());
}

template <class Format, class Test>
void expectArchived(Test& test) {
  using Node = typename Test::Node;
  const std::string bytes = archived<Format>(*test.tree);
  const auto restored = boost::make_shared<Node>();
  EXPECT_SUCCESS(readInto<Format>(bytes, *restored));
  EXPECT_EQ(describe(*restored), test.text);
  EXPECT_TRUE(Test::isLinked(*restored));
  Node onStack;
  EXPECT_SUCCESS(readInto<Format>(bytes, onStack));
  EXPECT_FALSE(holesOf(onStack)[0]->getParent());
  EXPECT_TRUE(Test::isLinked(*boost::make_shared<Node>(std::move(onStack))));
  EXPECT_FALSE(readInto<Format>(bytes.substr(0, bytes.size() * 2 / 3), *test.tree));
  EXPECT_EQ(describe(*test.tree), test.text);
  EXPECT_TRUE(Test::isLinked(*test.tree));
  EXPECT_SUCCESS(readInto<Format>(bytes, *test.hole));
  EXPECT_TRUE(Test::isLinked(*test.tree)) << "also after reading into a hole";
  std::ostringstream stream;
  Node withNull;
  holesOf(withNull).push_back(nullptr);
  typename Format::Output first(stream), second(stream);
  EXPECT_FALSE(withNull.write(first));
  EXPECT_FAILURE(Test::chain(1500)->write(second), "nested deeper");
}

TYPED_TEST(HoleTree, IsArchivedWithItsParents) { expectArchived<Cbor>(*this); }
TYPED_TEST(HoleTree, IsArchivedAsTextWithItsParents) { expectArchived<Json>(*this); }

}  // namespace
