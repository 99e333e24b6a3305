#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/ORMIXGeometryLogger.h>
#include <ORMIXGeometry/Tools/Stl/MeshFile.h>
#include <ORMIXGeometry/Tools/Stl/StlLoad.h>
#include <ORMIXGeometry/Tools/Stl/StlSave.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>
#include <cmath>

#include "StlSamples.h"
#include "support/LogCapture.h"

namespace {
int g_readsUntilFailure = 0;  ///< the read of a file that fails, counted from 1; 0 for none
}

/// Takes the place of the C library's, in the library too.
extern "C" ssize_t read(int file, void* bytes, std::size_t size) {
  if (g_readsUntilFailure > 0 && --g_readsUntilFailure == 0) {
    errno = EIO;
    return -1;
  }
  return ::syscall(SYS_read, file, bytes, size);
}

using namespace ormix;
using namespace ormix::geom;
using namespace stlsamples;

namespace {

using Mesh = Mesh3d<omReal32>;

/// The corners of each triangle, in order.
template <class T>
std::vector<Corners> cornersOf(const Mesh3d<T>& mesh) {
  std::vector<Corners> triangles;
  visitTriangles(mesh, [&](const auto& a, const auto& b, const auto& c) {
    triangles.push_back({omReal32(a.getX()), omReal32(a.getY()), omReal32(a.getZ()), omReal32(b.getX()),
                         omReal32(b.getY()), omReal32(b.getZ()), omReal32(c.getX()), omReal32(c.getY()),
                         omReal32(c.getZ())});
  });
  return triangles;
}

MeshReport report(const std::string& bytes, const MeshReadOptions& options = {}) {
  const TemporaryFile file(bytes);
  MeshReport result;
  const auto mesh = readMesh<omReal64>(file.path, options, result);
  EXPECT_TRUE(mesh->checkIntegrity());
  EXPECT_EQ(mesh->getNbTriangles(), result.nbKept);
  return result;
}

/// Two triangles back to back, with the same corners.
std::vector<Corners> backToBack() { return {{0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 0, 0, 0, 1, 0, 1, 0, 0}}; }

}  // namespace

TEST(StlLoad, verticesAreMergedAndTrianglesKeepTheirOrder) {
  for (const std::string& bytes : {binary(tetrahedron()), ascii(facets(tetrahedron()))}) {
    const TemporaryFile file(bytes);
    const auto mesh = readFromStLFile<omReal32>(file.path);
    EXPECT_EQ(mesh->getVertexColl(), (Mesh::VertexColl{{0, 0, 0}, {0, 0, 1}, {0, 1, 0}, {1, 0, 0}}));
    EXPECT_EQ(cornersOf(*mesh), tetrahedron());
    EXPECT_TRUE(mesh->isClosed());
    EXPECT_EQ(cornersOf(*readFromStLFile<omInt32>(file.path)), tetrahedron());
    EXPECT_EQ(cornersOf(*readFromStLFile<omUInt32>(file.path)), tetrahedron());
    EXPECT_EQ(cornersOf(*readFromStLFile<omReal64>(file.path)), tetrahedron());
  }
}

TEST(StlLoad, theContentTellsTheKind) {
  const auto isAscii = [](const std::string& bytes) { return stlFileHasASCIIFormat(TemporaryFile(bytes).path); };
  EXPECT_TRUE(isAscii("SOLID p\nFacet nORMAL"));
  EXPECT_TRUE(isAscii("normal facet solid\n"));
  EXPECT_TRUE(isAscii(binary({}, 0, "solid facet normal\n")));
  EXPECT_FALSE(isAscii("solid p facet normal"));
  EXPECT_FALSE(isAscii(binary(tetrahedron(), 4, "solid")));
  const std::string begin = "solid\nnormal";
  EXPECT_TRUE(isAscii(begin + std::string(251 - begin.size(), ' ') + "facet"));
  EXPECT_FALSE(isAscii(begin + std::string(252 - begin.size(), ' ') + "facet"));
  EXPECT_FALSE(stlFileHasASCIIFormat("/no/such/file"));
}

TEST(StlLoad, everyTriangleOfAHostileFileStays) {
  for (const HostileFile& hostile : hostileFiles()) {
    const TemporaryFile file(hostile.bytes);
    const auto mesh = readFromStLFile<omReal32>(file.path);
    EXPECT_EQ(mesh->getNbTriangles(), hostile.nbTriangles) << hostile.what;
    EXPECT_TRUE(mesh->checkIntegrity()) << hostile.what;
    EXPECT_EQ(readFromStLFile<omUInt32>(file.path)->getNbTriangles(), hostile.nbTriangles) << hostile.what;
    MeshReport found;
    EXPECT_TRUE(readMesh<omInt32>(file.path, {}, found)->checkIntegrity()) << hostile.what;
    EXPECT_EQ(found.nbKept, found.nbTriangles) << hostile.what;
  }
}

TEST(StlLoad, trianglesThatNoMeshCanShareGetVerticesOfTheirOwn) {
  const Corners one = tetrahedron()[0], degenerate{0, 0, 0, 1, 0, 0, 0, 0, 0};
  const std::vector<Corners> triangles{one, one, degenerate, one};
  const auto mesh = readStLBinary<omReal32>(TemporaryFile(binary(triangles)).path);
  EXPECT_EQ(cornersOf(*mesh), triangles);
  EXPECT_EQ(mesh->getNbVertices(), 3u + 3 * 3u);
}

TEST(StlLoad, whatCannotBeReadIsEmptyAndLoggedWithThePath) {
  const TemporaryFile empty, pipe;
  std::filesystem::remove(pipe.path);
  ASSERT_EQ(::mkfifo(pipe.path.c_str(), 0600), 0);
  for (const std::string& path :
       {empty.path, pipe.path, ::testing::TempDir(), std::string("/no/such/file"), std::string("/dev/null")}) {
    support::LogCapture log(getORMIXGeometryLoggerName());
    MeshReport found;
    EXPECT_TRUE(readFromStLFile<omReal32>(path)->isEmpty());
    EXPECT_TRUE(readStLAscii<omInt32>(path)->isEmpty());
    EXPECT_TRUE(readStLBinary<omUInt32>(path)->isEmpty());
    EXPECT_TRUE(readMesh<omReal64>(path, {}, found)->isEmpty());
    EXPECT_FALSE(found.message.empty());
    EXPECT_FALSE(stlFileHasASCIIFormat(path));
    ASSERT_EQ(log.messages().size(), 4u) << path;
    for (const auto& [level, text] : log.messages()) {
      EXPECT_EQ(level, s_errorLogLevel);
      EXPECT_NE(text.find(path), std::string::npos) << text;
    }
  }
}

TEST(StlLoad, aReadThatFailsIsSaid) {
  const std::vector<Corners> many(20000, tetrahedron()[3]);
  for (const std::string& bytes : {binary(many), binary(many, 20000, "solid"), ascii(facets(many))}) {
    const TemporaryFile file(bytes);
    for (int failing = 1; failing <= 4; ++failing) {
      const support::LogCapture log(getORMIXGeometryLoggerName());
      MeshReport found;
      g_readsUntilFailure = failing;
      const auto reported = readMesh<omReal32>(file.path, {}, found);
      EXPECT_EQ(g_readsUntilFailure, 0);
      EXPECT_EQ(found.stop, eSS_ReadError) << failing;
      EXPECT_LT(reported->getNbTriangles(), many.size());
      g_readsUntilFailure = failing;
      EXPECT_LT(readFromStLFile<omReal32>(file.path)->getNbTriangles(), many.size());
      EXPECT_EQ(g_readsUntilFailure, 0);
      ASSERT_EQ(log.messages().size(), 2u) << failing;
      for (const auto& [level, text] : log.messages())
        EXPECT_NE(text.find("reading failed"), std::string::npos) << text;
    }
  }
}

TEST(MeshFile, aSoundFileHasNothingWrong) {
  for (const std::string& bytes : {binary(tetrahedron()), ascii(facets(tetrahedron()), "of two words")}) {
    const MeshReport found = report(bytes);
    EXPECT_EQ(found.message, "");
    EXPECT_EQ(found.stop, eSS_EndOfSolid + (found.format == eMFF_StlAscii ? 1 : 0)) << "a text ends with its file";
    EXPECT_EQ(found.nbBytes, bytes.size());
    EXPECT_EQ(found.stopOffset, bytes.size());
    EXPECT_EQ(found.nbTriangles, 4u);
    EXPECT_EQ(found.nbVertices, 4u);
    EXPECT_EQ(found.nbMergedVertices, 8u);
    EXPECT_EQ(found.nbSeparated, 0u);
    EXPECT_EQ(found.defects.nbEdges, 6u);
    EXPECT_EQ(found.defects.nbComponents, 1u);
    EXPECT_EQ(found.defects.nbBoundaryEdges + found.defects.nbNonManifoldEdges + found.defects.nbFlippedNeighbours, 0u);
  }
}

TEST(MeshFile, lengthAndContentTellTheKind) {
  const auto format = [](const std::string& bytes) { return report(bytes).format; };
  EXPECT_EQ(format(binary(tetrahedron(), 4, "solid facet normal\n")), eMFF_StlBinary);
  EXPECT_EQ(format(binary(tetrahedron(), 7, "solid facet normal\n")), eMFF_StlBinary) << "a text has no NUL";
  EXPECT_EQ(format("\xEF\xBB\xBF \r\n SOLID " + std::string(1000, 'x') + "\n" + facetWith("1")), eMFF_StlAscii);
  EXPECT_EQ(report(binary(tetrahedron(), 0)).nbKept, 4u) << "a count that was never filled in";
  EXPECT_NE(report(binary(tetrahedron(), 7)).message, "");
}

TEST(MeshFile, defectsAreCounted) {
  std::vector<Corners> open = tetrahedron();
  const Corners last = open.back();
  open.pop_back();
  EXPECT_EQ(report(binary(open)).defects.nbBoundaryLoops, 1u);
  EXPECT_EQ(report(binary(open)).defects.nbBoundaryEdges, 3u);

  std::vector<Corners> flipped = open;
  flipped.push_back({last[0], last[1], last[2], last[6], last[7], last[8], last[3], last[4], last[5]});
  const MeshReport turned = report(binary(flipped));
  EXPECT_EQ(turned.defects.nbFlippedNeighbours, 3u);
  EXPECT_EQ(turned.defects.nbComponents, 1u);
  EXPECT_EQ(turned.nbSeparated, 1u);

  std::vector<Corners> several = tetrahedron();
  for (const Corners& corners : tetrahedron(5)) several.push_back(corners);
  several.push_back(several[0]);
  several.push_back(Corners{});
  const MeshReport found = report(binary(several));
  EXPECT_EQ(found.defects.nbComponents, 2u);
  EXPECT_EQ(found.defects.nbDuplicate, 1u);
  EXPECT_EQ(found.defects.nbDegenerate, 1u);
  EXPECT_EQ(found.defects.nbNonManifoldEdges, 3u);
  EXPECT_EQ(found.nbSeparated, 2u);
  EXPECT_EQ(report(binary(backToBack())).defects.nbDuplicate, 1u);
  EXPECT_EQ(report(binary(backToBack())).defects.nbBoundaryEdges, 0u);
}

TEST(MeshFile, trianglesThatAddNothingMayBeLeftOut) {
  std::vector<Corners> triangles = backToBack();
  triangles.push_back({1, 0, 0, 0, 1, 0, 0, 0, 0});  // the first one, turned
  triangles.push_back(Corners{});
  EXPECT_EQ(report(binary(triangles)).nbKept, 4u);
  EXPECT_EQ(report(binary(triangles), {true, false}).nbKept, 3u);
  EXPECT_EQ(report(binary(triangles), {false, true}).nbKept, 3u);
  EXPECT_EQ(report(binary(triangles), {true, true}).nbKept, 2u) << "back to back is not the same";
}

TEST(MeshFile, whatIsWrittenUnmovedIsReadBitByBit) {
  const TemporaryFile file;
  const auto mesh = readFromStLFile<omReal32>(TemporaryFile(binary(tetrahedron(-1.1f, 1.0f / 3))).path);
  for (const eMeshFileFormat format : {eMFF_StlAscii, eMFF_StlBinary}) {
    MeshWriteOptions options;
    options.format = format;
    ASSERT_TRUE(writeMesh(file.path, *mesh, options));
    EXPECT_EQ(cornersOf(*readMesh<omReal32>(file.path)), tetrahedron(-1.1f, 1.0f / 3));
  }
  EXPECT_FALSE(writeMesh("/dev/full", *mesh));
}
