#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Tools/MeshFiles/MeshFile.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "../Stl/StlSamples.h"
#include "support/Random.h"

using namespace ormix;
using namespace ormix::geom;
using stlsamples::TemporaryFile;

namespace {

constexpr std::array<eMeshFileFormat, 7> s_formats{eMFF_StlAscii,        eMFF_StlBinary,    eMFF_Obj, eMFF_PlyAscii,
                                                   eMFF_PlyLittleEndian, eMFF_PlyBigEndian, eMFF_Off};

/// Coordinates of every size that a type holds, and triangles without any rule.
template <class T>
FaceVertexTriMesh3d<T> anyTriangles(support::Random& random) {
  const auto coordinate = [&random] {
    if constexpr (std::is_integral_v<T>)
      return static_cast<T>(random());
    else
      return static_cast<T>(random.uniform(-2, 2) * std::pow(10.0, random.uniform(-30, 30)));
  };
  FaceVertexTriMesh3d<T> mesh;
  for (int vertex = 0; vertex < 60; ++vertex) mesh.addVertex({coordinate(), coordinate(), coordinate()});
  const auto index = [&random] { return std::size_t{random.below(60)}; };
  for (int triangle = 0; triangle < 90; ++triangle) mesh.addTriangle(index(), index(), index());
  return mesh;
}

template <class T>
void expectReadAsWritten(support::Random& random) {
  const FaceVertexTriMesh3d<T> mesh = anyTriangles<T>(random);
  for (const eMeshFileFormat format : s_formats) {
    const TemporaryFile file;
    MeshWriteOptions options;
    options.format = format;
    ASSERT_TRUE(writeMesh(file.path, mesh, options)) << format;
    MeshReport report;
    const FaceVertexTriMesh3d<T> read = readFaceVertexTriMesh<T>(file.path, {}, report);
    EXPECT_EQ(report.format, format);
    EXPECT_EQ(report.message, "") << format;
    EXPECT_EQ(report.nbKept, mesh.getNbTriangles());
    EXPECT_TRUE(format <= eMFF_StlBinary || compare(read, mesh, 0)) << format;
    for (std::size_t at = 0; at < mesh.getNbTriangles(); ++at)
      for (std::size_t corner = 0; corner < 3; ++corner)
        EXPECT_EQ(static_cast<omReal32>(read.getTriangle(at)[corner].getY()),
                  static_cast<omReal32>(mesh.getTriangle(at)[corner].getY()));
    // A mesh of half-edges has the same triangles, and is written as such.
    const auto shared = readMesh<T>(file.path, {}, report);
    EXPECT_EQ(shared->getNbVertices(), read.getNbVertices() + 3 * report.nbSeparated);
    ASSERT_TRUE(writeMesh(file.path, *shared, options));
    EXPECT_TRUE(format <= eMFF_StlBinary || compare(*readMesh<T>(file.path), *shared, 0)) << format;
  }
}

struct Case {
  std::string what, bytes;
  std::size_t nbVertices, nbTriangles;
  std::string message;  ///< its beginning; empty when all is read
};

std::string ply(const std::string& format, const std::string& elements, const std::string& data) {
  return "ply\nformat " + format + " 1.0\n" + elements + "end_header\n" + data;
}

const std::string s_xyz = "property float x\nproperty float y\nproperty float z\n";
const std::string s_list = "property list uchar int vertex_indices\n";
const std::string s_points = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";

std::vector<Case> deviatingFiles() {
  const std::string bigPoints("\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x3F\x80\0\0\0\0\0\0\0\0\0\0\0\x3F\x80\0\0\0\0\0\0", 36);
  return {
      {"OBJ: attributes, comments, a continued line",
       "# c\no a\n" + s_points + "vn 0 0 1\nf 1/2/3 2//1 \\\n 3/1 4 # c\n", 4, 2, ""},
      {"OBJ: negative indices, other line ends", "v 0 0 0 1\rv 1 0 0 .5 .5 .5\rv 1e0 +1. -.0\rf -3 -2 -1", 3, 1, ""},
      {"OBJ: numbers of other systems", "v 1.#IND -1.#INF 1e-400\nv 1 0 0\nv 0 1 0\nf 1 2 3\n", 3, 1, ""},
      {"OBJ: a face before its vertices", "f 1 2 3\n" + s_points, 4, 1, ""},
      {"OBJ: indices without vertices",
       s_points + "f 1 2 5\nf 0 1 2\nf -5 1 2\nf a b c\nf 1 2\nf 1 2 99999999999\nf 1 2 3\n", 4, 1,
       "faces with fewer than three corners or an index without a vertex: 6"},
      {"OBJ: corners that repeat", s_points + "f 1 1 2 3 1\nf 1 1 2 2\n", 4, 1,
       "faces with fewer than three corners or an index without a vertex: 1"},
      {"OBJ: a word for a coordinate", s_points + "f 1 2 3\nv 1 x 2\nf 1 2 4\n", 4, 1,
       "a coordinate is no number, at byte 44 (line 6)"},
      {"OBJ: too large a number", "v 0 0 1e999\n", 0, 0, "a coordinate is no number"},
      {"OBJ: a short vertex", "v 0 0\n", 0, 0, "a vertex has fewer than three numbers"},
      {"OFF: counts behind the keyword, colours", "COFF 3 1 3 # c\n\n0 0 0 1 0 0 1\n1 0 0 1\n0 1 0\n3 0 1 2 255 0 0\n",
       3, 1, ""},
      {"OFF: no edges, one number a line", "OFF\n3 1\n0\n0\n0\n1 0 0\n0 1 0\n3 0 1\n2\n", 3, 1, ""},
      {"OFF: too few faces", "OFF\n3 2 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n", 3, 1, "it ends after 1 of 2 faces"},
      {"OFF: 4 billion vertices", "OFF\n4294967294 4294967294 0\n0 0 0\n", 1, 0,
       "it ends after 1 of 4294967294 vertices"},
      {"OFF: 4 billion corners", "OFF\n1 1 0\n0 0 0\n4294967294 0 0\n", 1, 0, "it ends inside a face"},
      {"OFF: negative counts", "OFF\n-1 0 0\n", 0, 0, "a number of vertices or faces is negative"},
      {"OFF: four coordinates", "4OFF\n0 0 0\n", 0, 0, "its vertices do not have three coordinates"},
      {"OFF: binary", "OFF BINARY\n....", 0, 0, "it is a binary OFF file"},
      {"PLY: any order, other types and elements",
       ply("ascii",
           "comment c\nelement face 1\nproperty uchar c\nproperty list uint short vertex_index\nelement edge 1\n" +
               ("property list uchar float a\nelement vertex 3\nproperty double z\nproperty list int int b\n" +
                std::string("property float32 y\nproperty int8 x\n")),
           "7 3 0 1 2\n2 1.5 2\n0 2 8 9 0 0\n0 0 0 1\n0 0 1 0\n"),
       3, 1, ""},
      {"PLY: big-endian",
       ply("binary_big_endian", "element vertex 3\n" + s_xyz + "element face 1\n" + s_list,
           bigPoints + std::string("\3\0\0\0\0\0\0\0\1\0\0\0\2", 13)),
       3, 1, ""},
      {"PLY: an element without properties",
       ply("ascii", "element a 4294967295\nelement vertex 1\n" + s_xyz, "0 0 0\n"), 1, 0, ""},
      {"PLY: 4 billion vertices", ply("binary_little_endian", "element vertex 4294967295\n" + s_xyz, bigPoints), 3, 0,
       "it ends after 3 of 4294967295 records of the element vertex"},
      {"PLY: 4 billion corners",
       ply("binary_little_endian",
           "element vertex 0\n" + s_xyz + "element face 1\nproperty list uint int vertex_index\n",
           "\xFF\xFF\xFF\xFF\1\1\1"),
       0, 0, "it ends inside a record of the element face"},
      {"PLY: no format", "ply\nelement vertex 0\nend_header\n", 0, 0, "its header has no format"},
      {"PLY: an unknown type", ply("ascii", "element vertex 1\nproperty quad x\n", ""), 0, 0,
       "a property of its header"},
      {"PLY: no coordinates", ply("ascii", "element vertex 1\nproperty float x\n", "0\n"), 0, 0,
       "its vertices have no"},
      {"PLY: no end of the header", "ply\nformat ascii 1.0\ncomment\n", 0, 0, "it ends inside its header"},
      {"a text of 16-bit characters", std::string("\xFE\xFF\0v\0 \0001", 8), 0, 0, "it is a text of 16-bit characters"},
  };
}

}  // namespace

TEST(MeshFile, everyFormatHoldsWhatWasWritten) {
  support::Random random(15);
  expectReadAsWritten<omInt32>(random);
  expectReadAsWritten<omUInt32>(random);
  expectReadAsWritten<omReal32>(random);
  expectReadAsWritten<omReal64>(random);
}

TEST(MeshFile, theExtensionChoosesTheFormat) {
  const TemporaryFile file;
  for (const auto& [extension, format] : {std::pair<const char*, eMeshFileFormat>{".OBJ", eMFF_Obj},
                                          {".ply", eMFF_PlyLittleEndian},
                                          {".off", eMFF_Off},
                                          {".stl", eMFF_StlBinary},
                                          {"", eMFF_StlBinary}}) {
    const std::string path = file.path + extension;
    MeshReport report;
    ASSERT_TRUE(writeMesh(path, *readMesh<omReal32>(TemporaryFile(s_points + "f 1 2 3 4").path)));
    readMesh<omReal32>(path, {}, report);
    EXPECT_EQ(report.format, format);
    EXPECT_EQ(report.nbKept, 2u);
    std::filesystem::remove(path);
  }
}

TEST(MeshFile, whatDeviatesIsReadAsFarAsItCanBeAndSaid) {
  for (const Case& one : deviatingFiles()) {
    const TemporaryFile file(one.bytes);
    MeshReport report;
    const FaceVertexTriMesh3d<omReal32> mesh = readFaceVertexTriMesh<omReal32>(file.path, {}, report);
    EXPECT_EQ(mesh.getNbVertices(), one.nbVertices) << one.what;
    EXPECT_EQ(mesh.getNbTriangles(), one.nbTriangles) << one.what;
    EXPECT_EQ(report.message.substr(0, one.message.size()), one.message) << one.what;
    EXPECT_EQ(report.message.empty(), one.message.empty()) << one.what << ": " << report.message;
    EXPECT_LE(report.stopOffset, one.bytes.size()) << one.what;
    // Cut anywhere, a file is read without harm, and no more is found than before, but for a polygon that was cut.
    for (std::size_t size = 0; size < one.bytes.size(); ++size) {
      const TemporaryFile cut(one.bytes.substr(0, size));
      EXPECT_LE(readMesh<omReal64>(cut.path, {}, report)->getNbTriangles(), one.nbTriangles + 1) << one.what << size;
    }
  }
}

TEST(MeshFile, concavePolygonsAreCutInside) {
  support::Random random(15);
  for (int round = 0; round < 300; ++round) {
    // A star around the origin in a plane, with corners in the middle of some edges, turned at random.
    const int nbCorners = static_cast<int>(4 + random.below(37));
    std::vector<std::array<omReal64, 2>> ring;
    for (int corner = 0; corner < nbCorners; ++corner) {
      const omReal64 angle = 6.2831853 * (corner + random.uniform(0.1, 0.9)) / nbCorners,
                     radius = random.uniform(0.1, 1);
      ring.push_back({std::ldexp(std::round(std::ldexp(radius * std::cos(angle), 10)), -9),
                      std::ldexp(std::round(std::ldexp(radius * std::sin(angle), 10)), -9)});
      if (corner > 0 && random.below(3) == 0) {
        const std::array<omReal64, 2> end = ring.back(), begin = ring[ring.size() - 2];
        ring.insert(ring.end() - 1, {(begin[0] + end[0]) / 2, (begin[1] + end[1]) / 2});
      }
    }
    omReal64 twice = 0;
    for (std::size_t at = 0, last = ring.size() - 1; at < ring.size(); last = at++)
      twice += ring[last][0] * ring[at][1] - ring[last][1] * ring[at][0];
    std::ostringstream text;
    text.precision(17);
    const std::array<omReal64, 2> slope{random.below(9) / 2.0 - 2, random.below(9) / 2.0 - 2};
    for (const auto& [x, y] : ring) text << "v " << x << ' ' << x * slope[0] + y * slope[1] << ' ' << y << '\n';
    text << 'f';
    for (std::size_t at = ring.size(); at > 0; --at) text << ' ' << at;
    MeshReport report;
    const auto mesh = readMesh<omReal64>(TemporaryFile(text.str()).path, {}, report);
    ASSERT_EQ(report.message, "") << text.str();
    ASSERT_EQ(mesh->getNbTriangles(), ring.size() - 2);
    omReal64 sum = 0;
    visitTriangles(*mesh, [&](const auto& a, const auto& b, const auto& c) {
      const omReal64 area =
          (b.getX() - a.getX()) * (c.getZ() - a.getZ()) - (b.getZ() - a.getZ()) * (c.getX() - a.getX());
      EXPECT_LT(area, 0) << text.str();
      sum -= area;
    });
    EXPECT_EQ(sum, twice) << text.str();
    EXPECT_EQ(report.defects.nbBoundaryEdges, ring.size());
  }
}
