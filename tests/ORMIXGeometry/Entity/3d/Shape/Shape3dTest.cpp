#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXSerialization/ORMIXSerialization.h>

#include "ORMIXGeometry/Entity/3d/Mesh/SampleMeshes.h"
#include "support/ArchiveFormats.h"
#include "support/Checks.h"

namespace {

using namespace meshes;
using Node = MeshWithHoles3d<omReal32>;

/// Slices 10 and 11, of three and no rows, and a tetrahedron in a tetrahedron.
Shape3d sample() {
  Shape3d shape;
  shape.getRowIntersections().zOffset = 10;
  auto& slices = shape.getRowIntersections().rowIntersectionsColl;
  slices.resize(2);
  EXPECT_TRUE(slices[0].setRows(4, {2, 0, 1}, {{1, 3}, {5, 9}, {2, 5}}));
  const auto body = boost::make_shared<Node>();
  body->getExteriorMesh() = tetrahedron<omReal32>();
  body->getMeshHoles().push_back(boost::make_shared<Node>(*body));
  shape.getMeshWithHolesColl() = {body, nullptr};
  return shape;
}

TEST(Shape3d, CountsVoxelsAndMeshes) {
  const Shape3d shape = sample();
  const std::array<std::size_t, 7> counts{shape.getNbVoxels(),           shape.getNbTotVertices(),
                                          shape.getNbTotEdges(),         shape.getNbTotTriangles(),
                                          shape.getNbExteriorVertices(), shape.getNbExteriorEdges(),
                                          shape.getNbExteriorTriangles()};
  EXPECT_EQ(counts, (std::array<std::size_t, 7>{2 + 4 + 3, 8, 12, 8, 4, 6, 4}));
  std::ostringstream expected;
  expected << '[' << shape.getMeshWithHolesColl()[0] << ", 0]";
  EXPECT_EQ(printed(shape), expected.str());
}

TEST(Shape3d, GivesRowsOfSlicesAndThrowsForIndicesOutOfRange) {
  const Shape3d shape = sample();
  EXPECT_EQ(shape.getStartY(10), 4u);
  EXPECT_EQ(shape.getEndY(10), 7u);
  EXPECT_EQ(shape.getEndY(11) - shape.getStartY(11), 0u);
  EXPECT_EQ(shape.getRowIntersections(10, 4)[1], (PixelRun{5, 9}));
  for (const omUInt64 z : {omUInt64{9}, omUInt64{12}, ~omUInt64{0}}) {
    const std::string text =
        "Invalid z index " + std::to_string(z) + " for shape with starting z index 10 and ending z index 12";
    EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { shape.getStartY(z); }), text);
    EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { shape.getEndY(z); }), text);
    EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { shape.getRowIntersections(z, 4); }), text);
  }
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { shape.getRowIntersections(10, 7); }),
            "Invalid y index 7 for shape with starting y index 4 and ending y index 7");
}

TEST(Shape3d, CopiesAreDeep) {
  const Shape3d shape = sample();
  Shape3d copy(shape);
  EXPECT_TRUE(compare(copy, shape, 0));
  EXPECT_NE(copy.getMeshWithHolesColl()[0], shape.getMeshWithHolesColl()[0]);
  copy.getMeshWithHolesColl()[0]->getMeshHoles()[0]->getExteriorMesh().setVertex(0, {0.5f, 0, 0});
  EXPECT_FALSE(compare(copy, shape, 0.25f));
  EXPECT_TRUE(compare(copy, shape, 0.5f));
  copy = shape;
  EXPECT_TRUE(compare(copy, shape, 0));
  copy.getMeshWithHolesColl()[0].reset();
  EXPECT_FALSE(compare(copy, shape, 0));
  copy = shape;
  copy.getRowIntersections().zOffset = 11;
  EXPECT_FALSE(compare(copy, shape, 0));
  copy.clearMeshWithHolesColl();
  EXPECT_EQ(copy.getNbVoxels(), shape.getNbVoxels());
  copy.clear();
  EXPECT_TRUE(compare(copy, Shape3d(), 0));
}

/// The JSON archive of a shape without surfaces, with these arrays.
std::string archived(const std::string& starts, const std::string& nbRows, const std::string& nbRuns,
                     const std::string& runs) {
  std::string text = support::archived<support::Json>(Shape3d());
  const std::string fields[4][2] = {
      {"startRowColl", starts}, {"nbRowsColl", nbRows}, {"nbRunsColl", nbRuns}, {"runColl", runs}};
  for (const auto& [key, array] : fields) {
    const std::string empty = "\"" + key + "\": []";
    text.replace(text.find(empty), empty.size(), "\"" + key + "\": " + array);
  }
  return text;
}

BoolResult read(const std::string& text, Shape3d& shape) { return support::readInto<support::Json>(text, shape); }

TEST(Shape3d, IsReadFromPackedRunsAndRefusesArraysThatDoNotFit) {
  Shape3d good;
  const BoolResult result = read(archived("[4, 0]", "[3, 0]", "[2, 0, 1]", "[[1, 3], [5, 9], [2, 5]]"), good);
  ASSERT_TRUE(result) << result.getMessage();
  good.getRowIntersections().zOffset = 10;
  EXPECT_EQ(good.getRowIntersections(), sample().getRowIntersections());
  const auto refusal = [](const std::string& starts, const std::string& nbRows, const std::string& nbRuns,
                          const std::string& runs) {
    Shape3d shape = sample();
    const BoolResult refused = read(archived(starts, nbRows, nbRuns, runs), shape);
    EXPECT_FALSE(refused);
    EXPECT_TRUE(compare(shape, sample(), 0));
    const std::string prefix = "Class ormix::geom::Shape3d: Key \"rowIntersectionsColl\": ";
    EXPECT_EQ(refused.getMessage().substr(0, prefix.size()), prefix);
    return refused.getMessage().substr(std::min(prefix.size(), refused.getMessage().size()));
  };
  EXPECT_EQ(refusal("[4]", "[1, 1]", "[1, 0]", "[[1, 3]]"), "start rows and numbers of rows are not equally many");
  EXPECT_EQ(refusal("[4]", "[4294967295]", "[1]", "[[1, 3]]"), "there are fewer rows than those of the slices");
  EXPECT_EQ(refusal("[4]", "[1]", "[1, 0]", "[[1, 3]]"), "there are more rows than those of the slices");
  EXPECT_EQ(refusal("[4]", "[2]", "[4294967295, 1]", "[[1, 3]]"), "there are fewer runs than those of the rows");
  EXPECT_EQ(refusal("[4]", "[1]", "[1]", "[[1, 3], [4, 5]]"), "there are more runs than those of the rows");
  EXPECT_EQ(refusal("[4]", "[1]", "[1]", "[[3, 3]]"), "Run [3, 3[ has no pixels");
  EXPECT_EQ(
      refusal("[4]", "[1]", "[2]", "[[1, 3], [2, 5]]"),
      "Can't add row intersection with row range [2, 5[ to existing row range [1, 3[, ranges should not intersect");
  EXPECT_NE(refusal("[18446744073709551615]", "[1]", "[1]", "[[1, 3]]"), "");
}

}  // namespace
