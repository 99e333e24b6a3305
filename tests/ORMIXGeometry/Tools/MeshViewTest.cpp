#include <ORMIXGeometry/ORMIXGeometry.h>

#include "support/Checks.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

/// The corner of a cube.
Mesh3d<omReal64> tetrahedron(omReal64 size) {
  Mesh3d<omReal64> mesh;
  EXPECT_TRUE(mesh.build({{0, 0, 0}, {size, 0, 0}, {0, size, 0}, {0, 0, size}}, {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3}));
  return mesh;
}

/// A triangle in the plane z = height, facing up.
void addTriangleAt(Mesh3d<omReal64>& mesh, omReal64 height) {
  const std::size_t first = mesh.getNbVertices();
  mesh.addVertex({0, 0, height});
  mesh.addVertex({1, 0, height});
  mesh.addVertex({0, 1, height});
  ASSERT_TRUE(mesh.addTriangle(first, first + 1, first + 2));
}

std::string picture(const Mesh3d<omReal64>& mesh, const MeshViewOptions& options = {}) {
  SvgWriter writer;
  EXPECT_TRUE(drawMesh(writer, mesh, options));
  std::ostringstream stream;
  EXPECT_TRUE(writer.write(stream));
  return stream.str();
}

/// The fill colours in order of drawing, as sums of their hexadecimal digits' values: the larger, the brighter.
std::vector<int> brightness(const std::string& svg) {
  std::vector<int> result;
  for (std::size_t at = svg.find("fill=\"#"); at != std::string::npos; at = svg.find("fill=\"#", at + 1)) {
    int sum = 0;
    for (std::size_t k = 0; k < 3; ++k) sum += std::stoi(svg.substr(at + 7 + 2 * k, 2), nullptr, 16);
    result.push_back(sum);
  }
  return result;
}

TEST(MeshView, DrawsNearTrianglesOverFarOnes) {
  Mesh3d<omReal64> mesh;
  addTriangleAt(mesh, 1);
  addTriangleAt(mesh, 0);
  // The second triangle is turned over: seen from above it shows its inside, which is darker.
  mesh.setVertex(4, {0, 1, 0});
  mesh.setVertex(5, {1, 0, 0});
  // From below the lower one is nearer, and shows its outside.
  for (const omReal64 z : {1, -3}) {
    const std::vector<int> seen = brightness(picture(mesh, {{0, 0, z}}));
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_LT(seen[0], seen[1]);
  }
}

TEST(MeshView, LeavesOutTheInsideOfAClosedMesh) {
  EXPECT_EQ(brightness(picture(tetrahedron(1), {{1, 1, 1}})).size(), 1U);
  EXPECT_EQ(brightness(picture(tetrahedron(1), {{-1, -1, -1}})).size(), 3U);
}

// Of the brightness of a small one, whatever the size that a picture can have.
TEST(MeshView, ShadesMeshesOfAnySize) {
  const std::vector<int> expected = brightness(picture(tetrahedron(1), {{-1, -2, -3}}));
  EXPECT_EQ(expected.size(), 3U);
  for (const omReal64 size : {1e-250, 1e155, 1e300})
    EXPECT_EQ(brightness(picture(tetrahedron(size), {{-1, -2, -3}})), expected) << size;
}

TEST(MeshView, AddsNothingOfWhatIsNotFinite) {
  Mesh3d<omReal64> mesh;
  addTriangleAt(mesh, 0);
  SvgWriter writer;
  EXPECT_FALSE(drawMesh(writer, mesh, {{0, 0, 0}}));
  EXPECT_FALSE(drawMesh(writer, mesh, {{0, support::s_nan, 1}}));
  for (const omReal64 bad : {support::s_nan, support::s_infinity}) {
    addTriangleAt(mesh, 0);
    mesh.setVertex(mesh.getNbVertices() - 1, {1, bad, 0});
    EXPECT_FALSE(drawMesh(writer, mesh));
  }
  std::ostringstream stream;
  ASSERT_TRUE(writer.write(stream));
  EXPECT_TRUE(brightness(stream.str()).empty());
}

}  // namespace
