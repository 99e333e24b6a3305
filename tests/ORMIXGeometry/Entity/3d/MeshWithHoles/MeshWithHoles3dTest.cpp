#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXSerialization/ORMIXSerialization.h>

#include <utility>

#include "ORMIXGeometry/Entity/3d/Mesh/SampleMeshes.h"

namespace {

using namespace meshes;
using Node = MeshWithHoles3d<omReal64>;
using NodePtr = boost::shared_ptr<Node>;

#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t s_nbDeepLevels = 100000;
#else
constexpr std::size_t s_nbDeepLevels = 1000000;
#endif

NodePtr node(Mesh3d<omReal64> mesh = {}) {
  const NodePtr made = boost::make_shared<Node>();
  made->getExteriorMesh() = std::move(mesh);
  return made;
}

void addHole(const NodePtr& parent, const NodePtr& hole) {
  parent->getMeshHoles().push_back(hole);
  hole->setParent(parent);
}

/// A torus with two cavities, a tetrahedron in the first.
NodePtr sampleTree() {
  Mesh3d<omReal64> torus;
  EXPECT_TRUE(torus.build(points(12), grid(4, 3, true)));
  const NodePtr tree = node(torus);
  Mesh3d<omReal64> cavity = tetrahedron();
  cavity.setMesh3dType(eM3DT_Interior);
  addHole(tree, node(cavity));
  addHole(tree, node());
  addHole(tree->getMeshHoles()[0], node(tetrahedron()));
  return tree;
}

NodePtr chain(std::size_t nbLevels) {
  const NodePtr root = node();
  for (NodePtr last = root; nbLevels > 1; --nbLevels) {
    const NodePtr next = node();
    addHole(last, next);
    last = next;
  }
  return root;
}

bool isLinked(const Node& root) {
  return visitNodes(root, [](const Node& parent) {
    for (const NodePtr& hole : parent.getMeshHoles())
      if (hole && hole->getParent().get() != &parent) return false;
    return true;
  });
}

TEST(MeshWithHoles3d, StartsAlone) {
  const Node mesh;
  EXPECT_TRUE(mesh.isEmpty());
  EXPECT_FALSE(mesh.hasHoles());
  EXPECT_FALSE(mesh.getParent());
  EXPECT_EQ(mesh.getMesh3dType(), eM3DT_Exterior);
  EXPECT_EQ(mesh.getNbTotMesh(), 1u);
  EXPECT_EQ(printed(mesh), "[[vertices=[], triangles=[]]]");
}

TEST(MeshWithHoles3d, CountsItsExteriorAndItsTree) {
  const NodePtr tree = sampleTree();
  EXPECT_EQ(tree->getNbExteriorVertices(), 12u);
  EXPECT_EQ(tree->getNbExteriorEdges(), 36u);
  EXPECT_EQ(tree->getNbExteriorTriangles(), 24u);
  EXPECT_EQ(tree->getNbTotMesh(), 4u);
  EXPECT_EQ(tree->getNbTotVertices(), 12u + 4 + 4);
  EXPECT_EQ(tree->getNbTotEdges(), 36u + 6 + 6);
  EXPECT_EQ(tree->getNbTotTriangles(), 24u + 4 + 4);
  EXPECT_EQ(tree->getMeshHoles()[0]->getMesh3dType(), eM3DT_Interior);
  EXPECT_EQ(std::distance(tree->beginHole(), tree->endHole()), 2);
}

TEST(MeshWithHoles3d, PrintsAddressesOfItsHoles) {
  const NodePtr tree = node(tetrahedron());
  tree->getMeshHoles() = {node(), nullptr};
  std::ostringstream address;
  address << tree->getMeshHoles()[0];
  EXPECT_EQ(printed(*tree), "[" + printed(tetrahedron()) + ", [" + address.str() + ", 0]]");
}

TEST(MeshWithHoles3d, CopiesAreDeepAndLinkTheirOwnParents) {
  const NodePtr tree = sampleTree();
  const NodePtr constructed = boost::make_shared<Node>(*tree);
  const auto duplicated = boost::dynamic_pointer_cast<Node>(tree->duplicateShared());
  const NodePtr assigned = sampleTree();
  *assigned = *tree;
  const NodePtr casted = cast<omReal64, omReal64>(*tree);
  for (const NodePtr& copy : {constructed, duplicated, assigned, casted}) {
    EXPECT_TRUE(compare(*copy, *tree, 0));
    EXPECT_NE(copy->getMeshHoles()[0], tree->getMeshHoles()[0]);
    EXPECT_TRUE(isLinked(*copy));
  }
  const NodePtr moved = boost::make_shared<Node>(std::move(*constructed));
  EXPECT_TRUE(compare(*moved, *tree, 0));
  EXPECT_TRUE(isLinked(*moved));
  *moved = std::move(*moved->getMeshHoles()[0]);
  EXPECT_TRUE(compare(*moved, *tree->getMeshHoles()[0], 0));
  EXPECT_TRUE(isLinked(*moved) && isLinked(*tree));
  static_assert(std::is_nothrow_move_constructible_v<Node> && std::is_nothrow_move_assignable_v<Node>);
}

TEST(MeshWithHoles3d, IsClearedAndKeepsItsRole) {
  const NodePtr tree = sampleTree();
  const NodePtr hole = tree->getMeshHoles()[0];
  hole->clear();
  EXPECT_FALSE(hole->getParent());
  EXPECT_TRUE(hole->isEmpty() && !hole->hasHoles());
  EXPECT_EQ(hole->getMesh3dType(), eM3DT_Interior);
  tree->clearMeshHoles();
  EXPECT_EQ(tree->getNbTotMesh(), 1u);
  EXPECT_FALSE(tree->isEmpty());
}

TEST(MeshWithHoles3d, IsComparedNodeByNode) {
  const NodePtr tree = sampleTree();
  const NodePtr other = sampleTree();
  Mesh3d<omReal64>& inner = other->getMeshHoles()[0]->getMeshHoles()[0]->getExteriorMesh();
  inner.setVertex(0, {0.5, 0, 0});
  EXPECT_TRUE(compare(*tree, *other, 0.5));
  EXPECT_FALSE(compare(*tree, *other, 0.25));
  const NodePtr without = sampleTree();
  without->getMeshHoles().pop_back();
  EXPECT_FALSE(compare(*tree, *without, 9));
  without->getMeshHoles().push_back(nullptr);
  EXPECT_FALSE(compare(*tree, *without, 9));
  EXPECT_FALSE(compare(*without, *tree, 9));
  EXPECT_TRUE(compare(*without, *without, 9));
}

TEST(MeshWithHoles3d, IsCastMeshByMesh) {
  const NodePtr tree = sampleTree();
  tree->getMeshHoles()[0]->getExteriorMesh().setVertex(0, {-1.75, 1.75, 0});
  tree->getMeshHoles().push_back(nullptr);
  const boost::shared_ptr<MeshWithHoles3d<omInt32>> asInt = cast<omInt32, omReal64>(*tree);
  EXPECT_EQ(asInt->getMeshHoles()[0]->getExteriorMesh().getVertex(0), (Point3dData<omInt32>(-1, 1, 0)));
  EXPECT_EQ(asInt->getMeshHoles()[0]->getMesh3dType(), eM3DT_Interior);
  EXPECT_EQ(asInt->getMeshHoles()[0]->getParent(), asInt);
  EXPECT_EQ(asInt->getNbTotTriangles(), tree->getNbTotTriangles());
  EXPECT_FALSE(asInt->getMeshHoles()[2]);
}

template <class Out>
BoolResult write(const Node& mesh, std::string& bytes) {
  std::ostringstream stream;
  Out archive(stream);
  const BoolResult result = mesh.write(archive);
  archive.close();
  bytes = stream.str();
  return result;
}

TEST(MeshWithHoles3d, IsArchivedWithItsParents) {
  std::string bytes;
  const NodePtr tree = sampleTree();
  ASSERT_TRUE(write<CborOArchive>(*tree, bytes));
  std::istringstream stream(bytes);
  CborIArchive archive(stream);
  const NodePtr restored = boost::make_shared<Node>();
  const BoolResult result = restored->read(archive);
  ASSERT_TRUE(result) << result.getMessage();
  EXPECT_TRUE(compare(*restored, *tree, 0));
  EXPECT_TRUE(isLinked(*restored));
}

TEST(MeshWithHoles3d, IsNotArchivedWithNullHolesOrTooDeep) {
  std::string bytes;
  EXPECT_FALSE(write<CborOArchive>(*chain(1500), bytes));
  const NodePtr withNull = node();
  withNull->getMeshHoles().push_back(nullptr);
  EXPECT_FALSE(write<JsonOArchive>(*withNull, bytes));
}

// A broken mesh deep inside fails the whole read.
TEST(MeshWithHoles3d, RefusesABrokenHole) {
  std::string text;
  const NodePtr tree = sampleTree();
  ASSERT_TRUE(write<JsonOArchive>(*tree, text));
  const std::string halfEdges = "\"_halfEdgeColl\": [[";
  const std::size_t last = text.rfind(halfEdges) + halfEdges.size();
  text.replace(last, 1, "9");
  std::istringstream stream(text);
  JsonIArchive archive(stream);
  Node restored;
  const BoolResult result = restored.read(archive);
  EXPECT_FALSE(result);
  EXPECT_EQ(result.getMessage(),
            "Class ormix::geom::Mesh3d<ormix::omReal64>: Key \"_halfEdgeColl\": Vertex with index 9 is not valid given "
            "vertex collection size 4");
  EXPECT_TRUE(restored.isEmpty() && !restored.hasHoles());
}

// Deeper than any stack would bear if a level took a call.
TEST(DeepMeshWithHoles3d, IsCopiedComparedCountedAndDestroyed) {
  const NodePtr tree = chain(s_nbDeepLevels / 4);
  EXPECT_EQ(tree->getNbTotMesh(), s_nbDeepLevels / 4);
  EXPECT_EQ(tree->getNbTotEdges(), 0u);
  NodePtr copy = boost::make_shared<Node>(*tree);
  EXPECT_TRUE(compare(*copy, *tree, 0));
  copy = cast<omReal64, omReal64>(*tree);
  EXPECT_EQ(copy->getNbTotMesh(), s_nbDeepLevels / 4);
}

}  // namespace
