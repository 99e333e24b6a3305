#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>

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

// Two faces along the y axis, one turned by an angle, both looking at the viewer: their common edge is drawn when the
// angle is beyond the limit, and their shades differ. The other four edges are boundaries.
TEST(MeshView, TellsFacesApartThatDifferByAFewDegrees) {
  const auto folded = [](omReal64 degrees, omReal64 edgeAngle) {
    const omReal64 angle = degrees * 3.141592653589793 / 180;
    Mesh3d<omReal64> mesh;
    EXPECT_TRUE(
        mesh.build({{0, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {std::cos(angle), 0, std::sin(angle)}}, {0, 1, 2, 1, 0, 3}));
    MeshViewOptions options;
    options.towardsViewer = {0, 0, 1};
    options.edgeAngle = edgeAngle;
    return picture(mesh, options);
  };
  const auto nbLines = [](const std::string& svg) {
    std::size_t count = 0;
    for (std::size_t at = svg.find("fill=\"none\""); at != std::string::npos; at = svg.find("fill=\"none\"", at + 1))
      ++count;
    return count;
  };
  const omReal64 usual = MeshViewOptions().edgeAngle;
  EXPECT_EQ(nbLines(folded(0, usual)), 4U);
  EXPECT_EQ(nbLines(folded(4, usual)), 5U);
  EXPECT_EQ(nbLines(folded(-4, usual)), 5U);
  EXPECT_EQ(nbLines(folded(4, 0.1)), 4U);
  const std::vector<int> shades = brightness(folded(4, usual));
  ASSERT_EQ(shades.size(), 2U);
  EXPECT_NE(shades[0], shades[1]);
}

// A face has the colour of the mean of its corners' values, shaded: on a scale that diverges, red above 0 and blue
// below.
TEST(MeshView, ShowsValuesAsColours) {
  MeshViewOptions options;
  options.towardsViewer = {1, 1, 1};
  options.scale = ColourScale(-1, 1);
  for (const omReal64 value : {-0.9, 0.9}) {
    options.values.assign(4, value);
    const std::string svg = picture(tetrahedron(1), options);
    const std::size_t at = svg.find("fill=\"#") + 7;
    EXPECT_EQ(std::stoi(svg.substr(at, 2), nullptr, 16) > std::stoi(svg.substr(at + 4, 2), nullptr, 16), value > 0);
  }
  options.values.resize(3);
  SvgWriter writer;
  EXPECT_FALSE(drawMesh(writer, tetrahedron(1), options));
}

}  // namespace
