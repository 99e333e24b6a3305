#include <ORMIXGeometry/ORMIXGeometry.h>

#include <boost/smart_ptr/make_shared.hpp>

#include "StlSamples.h"
#include "support/Checks.h"

using namespace ormix;
using namespace ormix::geom;
using namespace stlsamples;

namespace {

struct Offset {
  omReal32 x = 0, y = 0, z = 0;
};

/// One triangle a face, corners not shared.
template <class T>
Mesh3d<T> meshOf(const std::vector<std::array<T, 9>>& triangles) {
  Mesh3d<T> mesh;
  for (const std::array<T, 9>& c : triangles) {
    const std::size_t first = mesh.addVertex({c[0], c[1], c[2]});
    mesh.addVertex({c[3], c[4], c[5]});
    mesh.addVertex({c[6], c[7], c[8]});
    EXPECT_TRUE(mesh.addTriangle(first, first + 1, first + 2));
  }
  return mesh;
}

template <class T>
std::string asciiOf(const Mesh3d<T>& mesh, std::streamsize precision = 6, const Offset& offset = {}) {
  std::ostringstream stream;
  stream.precision(precision);
  writeStLAscii(stream, mesh, offset.x, offset.y, offset.z);
  return stream.str();
}

}  // namespace

TEST(StlSave, aFacetIsWrittenAsItAlwaysWas) {
  const auto mesh = meshOf<omReal64>({{0, 0, 0, 2, 0, 0, 0, 0.5, 0}, {1, 1, 1, 2, 2, 2, 3, 3, 3}});
  EXPECT_EQ(asciiOf(mesh, 1, {0.5F, -1, 100}),
            "facet normal 0.0e+00 0.0e+00 1.0e+00\nouter loop\n"
            "vertex 5.0e-01 -1.0e+00 1.0e+02\nvertex 2.5e+00 -1.0e+00 1.0e+02\nvertex 5.0e-01 -5.0e-01 1.0e+02\n"
            "endloop\nendfacet\nfacet normal 0.0e+00 0.0e+00 0.0e+00\nouter loop\n"
            "vertex 1.5e+00 0.0e+00 1.0e+02\nvertex 2.5e+00 1.0e+00 1.0e+02\nvertex 3.5e+00 2.0e+00 1.0e+02\n"
            "endloop\nendfacet\n");
}

TEST(StlSave, sumsAreTakenInTheTypeOfTheMesh) {
  EXPECT_NE(asciiOf(meshOf<omReal64>({{16777217, 0, 0}}), 9).find("vertex 1.677721700e+07 "), std::string::npos);
  EXPECT_NE(asciiOf(meshOf<omInt32>({{16777217, 0, 0}}), 9, {1, 0, 0}).find("vertex 1.677721600e+07 "),
            std::string::npos);
}

TEST(StlSave, theStreamKeepsTheScientificFlag) {
  std::ostringstream stream;
  stream << std::fixed;
  for (const bool hasNumbers : {false, true}) {
    writeStLAscii(stream, hasNumbers ? meshOf<omReal32>({{}}) : Mesh3d<omReal32>(), 0, 0, 0);
    EXPECT_EQ(stream.flags() & std::ios_base::floatfield,
              hasNumbers ? std::ios_base::scientific : std::ios_base::fixed);
  }
}

TEST(StlSave, headersAndFooters) {
  std::ostringstream text, bytes;
  writeStLAsciiHeader(text, "my part");
  writeStLAsciiFooter(text, "");
  EXPECT_EQ(text.str(), "solid my part\nendsolid \n");
  writeStLBinaryHeader(bytes, 0x1234567890u);
  const std::string begin = "exported from ORMIX " + getSDKStrVersion();
  EXPECT_EQ(bytes.str(), begin + std::string(80 - begin.size(), '-') + "\x90\x78\x56\x34");
}

TEST(StlSave, aFacetWithoutAreaHasAPlainZeroNormal) {
  const auto mesh = meshOf<omReal64>({{1, 0, 0, 0, 0, 0, 2, 0, 0}});  // of which the z would be -0
  const std::string zeros = "facet normal 0.000000e+00 0.000000e+00 0.000000e+00\n";
  EXPECT_EQ(asciiOf(mesh).substr(0, zeros.size()), zeros);
  std::ostringstream record;
  writeStLBinary(record, mesh, 0, 0, 0);
  EXPECT_EQ(record.str().substr(0, 12), std::string(12, '\0'));
}

TEST(StlSave, aMeshIsMovedIntoThePositiveOctant) {
  const TemporaryFile file;
  const auto savedCorners = [&](omReal32 at) {
    EXPECT_TRUE(saveToStLBinary(file.path, meshOf<omReal32>(tetrahedron(at))));
    const std::string bytes = file.bytes();
    EXPECT_EQ(bytes.size(), 84u + 50u * 4u);
    std::vector<Corners> triangles(4);
    for (std::size_t at50 = 0; at50 < 4; ++at50) std::memcpy(triangles[at50].data(), &bytes[84 + 50 * at50 + 12], 36);
    return triangles;
  };
  EXPECT_EQ(savedCorners(0), tetrahedron(1));
  EXPECT_EQ(savedCorners(-7), tetrahedron(1));
  EXPECT_EQ(savedCorners(2), tetrahedron(2));
  EXPECT_TRUE(saveToStLAscii(file.path, meshOf<omInt32>({{-3, 5, 0, 0, 5, 0, 0, 6, 0}}), "p"));
  EXPECT_EQ(file.bytes(),
            "solid p\nfacet normal 0.000000e+00 0.000000e+00 1.000000e+00\nouter loop\n"
            "vertex 1.000000e+00 5.000000e+00 1.000000e+00\nvertex 4.000000e+00 5.000000e+00 1.000000e+00\n"
            "vertex 4.000000e+00 6.000000e+00 1.000000e+00\nendloop\nendfacet\nendsolid p\n");
  EXPECT_TRUE(saveToStLBinary(file.path, Mesh3d<omUInt32>()));
  EXPECT_EQ(file.bytes().size(), 84u);
}

/// A node with one triangle whose coordinates are this number.
boost::shared_ptr<MeshWithHoles3d<omReal32>> node(omReal32 at) {
  auto result = boost::make_shared<MeshWithHoles3d<omReal32>>();
  Corners corners;
  corners.fill(at);
  result->getExteriorMesh() = meshOf<omReal32>({corners});
  return result;
}

/// The first coordinate of each record.
std::vector<omReal32> firstCoordinates(const std::string& records) {
  std::vector<omReal32> coords(records.size() / 50);
  for (std::size_t at = 0; at < coords.size(); ++at) std::memcpy(&coords[at], &records[50 * at + 12], 4);
  return coords;
}

TEST(StlSave, holesFollowTheirMeshInOrder) {
  const auto root = node(1), island = node(3);
  root->getMeshHoles() = {node(2), nullptr, node(4)};
  root->getMeshHoles()[0]->getMeshHoles() = {island};
  for (const bool withHoles : {true, false}) {
    const std::vector<omReal32> expected = withHoles ? std::vector<omReal32>{1, 2, 3, 4} : std::vector<omReal32>{1};
    std::ostringstream records, text;
    writeStLBinary(records, *root, withHoles, 0, 0, 0);
    EXPECT_EQ(firstCoordinates(records.str()), expected);
    writeStLAscii(text, *root, withHoles, 0.5f, 0, 0);
    std::string joined;
    for (const omReal32 at : expected) joined += asciiOf(node(at)->getExteriorMesh(), 6, {0.5f, 0, 0});
    EXPECT_EQ(text.str(), joined);
  }
}

TEST(StlSave, shapesAreWrittenAsOneFile) {
  const TemporaryFile file;
  const auto first = boost::make_shared<Shape3d>(), second = boost::make_shared<Shape3d>();
  first->getMeshWithHolesColl() = {node(3), nullptr, node(5)};
  first->getMeshWithHolesColl()[0]->getMeshHoles() = {node(4)};
  second->getMeshWithHolesColl() = {node(-1)};
  const auto saved = [&] { return firstCoordinates(file.bytes().substr(84)); };
  for (const bool withHoles : {true, false}) {
    EXPECT_TRUE(saveToStLBinary(file.path, *first, withHoles));
    EXPECT_EQ(saved(), withHoles ? (std::vector<omReal32>{3, 4, 5}) : (std::vector<omReal32>{3, 5}));
  }
  EXPECT_TRUE(saveToStLBinary(file.path, {first, nullptr, second}, true));
  EXPECT_EQ(saved(), (std::vector<omReal32>{5, 6, 7, 1})) << "all are moved alike";
  EXPECT_EQ(file.bytes()[80], 4);
  EXPECT_TRUE(saveToStLAscii(file.path, {first, second}, false, "p"));
  const std::string text = file.bytes();
  EXPECT_EQ(text.substr(0, 8), "solid p\n");
  EXPECT_EQ(text.substr(text.size() - 11), "endsolid p\n");
  EXPECT_NE(text.find("vertex 7.000000e+00 7.000000e+00 7.000000e+00\n"), std::string::npos);
  EXPECT_TRUE(saveToStLAscii(file.path, Shape3d(), true, ""));
  EXPECT_EQ(file.bytes(), "solid \nendsolid \n");
}

TEST(StlSave, voxelsWithoutASurfaceAreWrittenByTheirFaces) {
  const TemporaryFile file("old");
  const auto voxels = boost::make_shared<Shape3d>(), both = boost::make_shared<Shape3d>();
  for (const auto& shape : {voxels, both}) {
    // A box of 3 × 3 × 3 voxels around a cavity.
    auto& slices = shape->getRowIntersections().rowIntersectionsColl;
    slices.resize(3);
    for (RowIntersections& slice : slices) EXPECT_TRUE(slice.setRows(0, {1, 1, 1}, {{0, 3}, {0, 3}, {0, 3}}));
    EXPECT_TRUE(slices[1].setRows(0, {1, 2, 1}, {{0, 3}, {0, 1}, {2, 3}, {0, 3}}));
  }
  voxels->getMeshWithHolesColl() = {nullptr, boost::make_shared<MeshWithHoles3d<omReal32>>()};
  both->getMeshWithHolesColl() = {node(3)};
  const auto nbTriangles = [&file](const BoolResult& saved) {
    EXPECT_TRUE(saved);
    return (file.bytes().size() - 84) / 50;
  };
  EXPECT_EQ(nbTriangles(saveToStLBinary(file.path, *voxels, true)), 108u + 12u);
  EXPECT_EQ(nbTriangles(saveToStLBinary(file.path, *voxels, false)), 108u);
  EXPECT_EQ(nbTriangles(saveToStLBinary(file.path, {both, voxels}, true)), 1u + 108u + 12u);
  EXPECT_TRUE(saveToStLAscii(file.path, *voxels, true, "p"));
  const std::string before = file.bytes();
  EXPECT_EQ(std::count(before.begin(), before.end(), '\n'), 7 * 120 + 2);
  EXPECT_TRUE(voxels->getRowIntersections().rowIntersectionsColl[1].addRun(5, 16777216, 16777217));
  EXPECT_EQ(saveToStLAscii(file.path, *voxels, true, "p").getMessage().substr(0, 43 + file.path.size()),
            "Failed to write mesh 3d data to file " + file.path + ": Surf");
  EXPECT_EQ(file.bytes(), before);
}

TEST(StlSave, whatCannotBeWrittenIsAFailureWithThePath) {
  const Mesh3d<omReal32> mesh = meshOf<omReal32>(tetrahedron());
  for (const std::string& path :
       {std::string("/dev/full"), ::testing::TempDir(), ::testing::TempDir() + "no/such/folder/a.stl"})
    for (const BoolResult& saved : {saveToStLAscii(path, mesh, "p"), saveToStLBinary(path, mesh)}) {
      EXPECT_FALSE(saved) << path;
      EXPECT_EQ(saved.getMessage(), "Failed to write mesh 3d data to file " + path);
    }
  EXPECT_FALSE(std::filesystem::exists(::testing::TempDir() + "no"));
}

TEST(StlSave, aStreamThatFailsAnywhereShowsIt) {
  struct Limited : std::streambuf {
    explicit Limited(std::size_t room) : left(room) {}
    int_type overflow(int_type c) override { return left == 0 ? traits_type::eof() : (--left, c); }
    std::size_t left;
  };
  const Mesh3d<omReal32> mesh = meshOf<omReal32>(tetrahedron());
  const auto writeAll = [&](std::ostream& stream, bool isAscii) {
    isAscii ? writeStLAscii(stream, mesh, 0, 0, 0) : writeStLBinary(stream, mesh, 0, 0, 0);
  };
  for (const bool isAscii : {true, false}) {
    std::ostringstream whole;
    writeAll(whole, isAscii);
    for (std::size_t room = 0; room <= whole.str().size(); ++room) {
      Limited buffer(room);
      std::ostream stream(&buffer);
      writeAll(stream, isAscii);
      EXPECT_EQ(stream.good(), room == whole.str().size()) << room;
      EXPECT_EQ(buffer.left, 0u) << "what there is room for is written";
    }
  }
}

TEST(StlSave, numbersDoNotDependOnTheLocale) {
  const Mesh3d<omReal64> mesh = meshOf<omReal64>({{0.5, 1.25, 3e-9, 0.1, 0, 7}});
  const std::string expected = asciiOf(mesh) + asciiOf(mesh, 17);
  const support::CommaLocale comma;
  EXPECT_EQ(asciiOf(mesh) + asciiOf(mesh, 17), expected);
}
