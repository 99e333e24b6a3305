#include <ORMIXGeometry/Entity/3d/Point/Point3dDataArchive.h>
#include <ORMIXSerialization/ORMIXSerialization.h>

#include "ORMIXGeometry/Entity/3d/Mesh/SampleMeshes.h"
#include "support/ArchiveFormats.h"

namespace {

using namespace meshes;
using Mesh = Mesh3d<omReal32>;

/// The parts of a mesh, to be archived as they are.
struct Parts {
  omUInt32 version = 3;
  Mesh::VertexColl vertices;
  MeshTopology::HalfEdgeColl halfEdges;
  Indices firsts;

  Parts() {
    const auto mesh = tetrahedron<omReal32>();
    vertices = mesh.getVertexColl();
    halfEdges = mesh.getHalfEdgeColl();
    firsts = mesh.getTriangleToHalfEdgeColl();
  }

  /// Exchanges two half-edges, with all that refers to them.
  void exchange(omUInt32 a, omUInt32 b) {
    const auto renamed = [a, b](omUInt32& index) { index = index == a ? b : index == b ? a : index; };
    std::swap(halfEdges[a], halfEdges[b]);
    for (HalfEdge& halfEdge : halfEdges) {
      renamed(halfEdge.nextHalfEdgeIdx);
      renamed(halfEdge.oppositeHalfEdgeIdx);
    }
    for (omUInt32& first : firsts) renamed(first);
  }
};

template <class Format>
class Mesh3dArchive : public ::testing::Test {
 protected:
  static BoolResult read(const Parts& parts, Mesh& mesh) {
    const std::string bytes = support::archived<Format>([&parts](BaseOArchive& archive) {
      for (const std::string& level : {BaseGeometryEntity::getTypeName(), BaseGeometryEntity3d::getTypeName(),
                                       BaseTypedGeometryEntity3d<omReal32>::getTypeName()})
        writeClassVersion(archive, level, 1);
      writeClassVersion(archive, Mesh::getTypeName(), parts.version);
      writeItem(archive, "_mesh3dType", eM3DT_Interior);
      writeItem(archive, "_vertexColl", parts.vertices);
      writeItem(archive, "_halfEdgeColl", parts.halfEdges);
      writeItem(archive, "_triangleToHalfEdgeColl", parts.firsts);
    });
    return support::readInto<Format>(bytes, mesh);
  }
  /// The archive of the parts is refused with a text that names class and key, and leaves a mesh as it was.
  static std::string refusal(const Parts& parts, const std::string& key) {
    Mesh mesh;
    mesh.addVertex({7, 8, 9});
    const BoolResult result = read(parts, mesh);
    EXPECT_FALSE(result);
    EXPECT_EQ(printed(mesh), "[vertices=[[7, 8, 9]], triangles=[]]");
    const std::string prefix = "Class ormix::geom::Mesh3d<ormix::omReal32>: Key \"" + key + "\": ";
    EXPECT_EQ(result.getMessage().substr(0, prefix.size()), prefix);
    return result.getMessage().substr(std::min(prefix.size(), result.getMessage().size()));
  }
};
TYPED_TEST_SUITE(Mesh3dArchive, support::Formats);

TYPED_TEST(Mesh3dArchive, MayOrderHalfEdgesFreely) {
  Parts parts;
  parts.exchange(0, 7);
  parts.exchange(4, 11);
  parts.firsts[2] = parts.halfEdges[parts.firsts[2]].nextHalfEdgeIdx;
  Mesh mesh;
  const BoolResult result = this->read(parts, mesh);
  ASSERT_TRUE(result) << result.getMessage();
  EXPECT_TRUE(mesh.getHalfEdgeColl() == parts.halfEdges);
  const std::string triangles = "triangles=[[0, 2, 1], [0, 1, 3], [3, 2, 0], [1, 2, 3]]]";
  EXPECT_NE(printed(mesh).find(triangles), std::string::npos) << printed(mesh);
  EXPECT_EQ(mesh.getTriangleVertexIndices(2), (std::array<std::size_t, 3>{3, 2, 0}));
  EXPECT_EQ(getNbComponents(mesh.getTopology()), 1u);
  mesh.reverseOrientation();
  EXPECT_TRUE(mesh.checkIntegrity());
  EXPECT_EQ(mesh.getTriangleVertexIndices(2), (std::array<std::size_t, 3>{3, 0, 2}));
  mesh.addVertex({});
  EXPECT_FALSE(mesh.addTriangle(2, 0, 4));
  EXPECT_FALSE(mesh.addTriangle(0, 2, 4));
}

TYPED_TEST(Mesh3dArchive, OfOtherVersionsIsRefused) {
  Parts parts;
  for (parts.version = 0; parts.version < 3; ++parts.version)
    EXPECT_EQ(this->refusal(parts, "version"), std::to_string(parts.version) + " is older than 3, the oldest known");
  Mesh mesh;
  parts.version = 4;
  EXPECT_THROW(this->read(parts, mesh), ORMIXSerializationException);
}

// Every value of every field replaced by every other that could be there, and by some that could not.
TYPED_TEST(Mesh3dArchive, WithAnyWrongIndexIsRefused) {
  const Parts good;
  std::vector<omUInt32> hostile{s_noHalfEdge, s_noHalfEdge - 1, omUInt32{1} << 31};
  for (omUInt32 value = 0; value <= good.halfEdges.size(); ++value) hostile.push_back(value);
  const std::array<omUInt32 HalfEdge::*, 4> fields{&HalfEdge::startVertexIdx, &HalfEdge::nextHalfEdgeIdx,
                                                   &HalfEdge::oppositeHalfEdgeIdx, &HalfEdge::triangleIdx};
  for (std::size_t index = 0; index < good.halfEdges.size(); ++index)
    for (const auto field : fields)
      for (const omUInt32 value : hostile) {
        Parts parts;
        if (parts.halfEdges[index].*field == value) continue;
        parts.halfEdges[index].*field = value;
        EXPECT_NE(this->refusal(parts, "_halfEdgeColl"), "");
      }
  for (std::size_t triangle = 0; triangle < good.firsts.size(); ++triangle)
    for (const omUInt32 value : hostile) {
      if (value / 3 == triangle) continue;
      Parts parts;
      parts.firsts[triangle] = value;
      EXPECT_NE(this->refusal(parts, "_triangleToHalfEdgeColl"), "");
    }
}

TYPED_TEST(Mesh3dArchive, WithABrokenRuleIsRefusedByName) {
  const auto refusal = [](const std::string& key, const std::function<void(Parts&)>& breakRule) {
    Parts parts;
    breakRule(parts);
    return TestFixture::refusal(parts, key);
  };
  EXPECT_EQ(refusal("_halfEdgeColl", [](Parts& parts) { parts.vertices.pop_back(); }),
            "Vertex with index 3 is not valid given vertex collection size 3");
  EXPECT_EQ(refusal("_triangleToHalfEdgeColl", [](Parts& parts) { parts.firsts.pop_back(); }),
            "12 half edges are not three for each of 3 triangles");
  const auto unlink = [](Parts& parts) {
    parts.halfEdges[0].oppositeHalfEdgeIdx = parts.halfEdges[8].oppositeHalfEdgeIdx = s_noHalfEdge;
  };
  EXPECT_EQ(refusal("_halfEdgeColl", unlink), "Half edges with indexes 0 and 8 should be linked");
  const auto repeat = [](Parts& parts) {
    for (HalfEdge& halfEdge : parts.halfEdges) halfEdge.oppositeHalfEdgeIdx = s_noHalfEdge;
    for (std::size_t k = 0; k < 3; ++k) parts.halfEdges[3 + k].startVertexIdx = parts.halfEdges[k].startVertexIdx;
  };
  EXPECT_EQ(refusal("_halfEdgeColl", repeat), "Half edge with index 3 runs as that with index 0 does");
  const auto joinCycles = [](Parts& parts) {
    for (omUInt32 index = 0; index < 6; ++index) parts.halfEdges[index].nextHalfEdgeIdx = (index + 1) % 6;
  };
  EXPECT_EQ(refusal("_halfEdgeColl", joinCycles), "Half edge with index 0 is not in a cycle of three");
}

}  // namespace
