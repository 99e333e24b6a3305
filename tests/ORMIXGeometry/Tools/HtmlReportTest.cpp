#include <ORMIXGeometry/ORMIXGeometry.h>
#include <unistd.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "support/Checks.h"
#include "support/Random.h"
#include "support/SampleObjects.h"

using namespace ormix;
using namespace ormix::geom;

namespace {

/// A file that stands for three.js, until the end of a test.
class ThreeScript {
 public:
  explicit ThreeScript(const std::string& content = "window.THREE = {};")
      : _path(::testing::TempDir() + "three_" + std::to_string(::getpid()) + ".js") {
    std::ofstream(_path) << content;
  }
  ~ThreeScript() { std::filesystem::remove(_path); }
  const std::string& path() const { return _path; }

 private:
  std::string _path;
};

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t result = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++result;
  return result;
}

/// The numbers of an array in the first scene of a page, decoded by the textbook.
template <class Number>
std::vector<Number> numbersOf(const std::string& html, const std::string& name) {
  const std::string digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bytes;
  unsigned bits = 0, nbBits = 0;
  const std::size_t begin = html.find("\"" + name + "\":\"") + name.size() + 4;
  for (std::size_t i = begin; html[i] != '"' && html[i] != '='; ++i) {
    bits = bits << 6 | static_cast<unsigned>(digits.find(html[i]));
    if ((nbBits += 6) < 8) continue;
    nbBits -= 8;
    bytes += static_cast<char>(bits >> nbBits & 255);
  }
  std::vector<Number> numbers(bytes.size() / sizeof(Number));
  std::memcpy(numbers.data(), bytes.data(), bytes.size());
  return numbers;
}

const std::vector<Point3dData<omReal64>> s_corners{{0, 0, 0}, {4, 0, 0}, {0, 2, 0}, {0, 0, 1}};
const std::vector<omUInt32> s_triangles{0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3};

TriMesh3d<omReal64> viewOf(const std::vector<Point3dData<omReal64>>& points) {
  return {points.data(), points.size(), s_triangles.data(), s_triangles.size() / 3};
}

}  // namespace

// Far from the origin and of any size, positions in a page are those of the mesh in its frame, to single precision.
TEST(HtmlReport, scenesHaveTheirMeshes) {
  const ThreeScript three;
  for (const omReal64 size : {1.0, 1e-250, 1e300})
    for (const omReal64 offset : {0.0, 1e6}) {
      std::vector<Point3dData<omReal64>> points;
      for (const auto& p : s_corners) points.emplace_back((p.getX() + offset) * size, p.getY() * size, p.getZ() * size);
      HtmlReport report({"", "en", three.path()});
      HtmlScene scene("mm");
      ASSERT_TRUE(scene.draw(viewOf(points), {1e9 + 1, 1e9 + 2, support::s_nan, 1e9 + 5}));
      ASSERT_TRUE(report.addScene(scene, ""));
      const std::string html = report.toHtml();
      // The middle is at (2, 1, 0.5), the frame reaches 2 to either side.
      const auto positions = numbersOf<omReal32>(html, "positions");
      ASSERT_EQ(positions.size(), 12U);
      for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(positions[3 * i], s_corners[i].getX() / 2 - 1, 1e-7);
        EXPECT_NEAR(positions[3 * i + 1], s_corners[i].getY() / 2 - 0.5, 1e-7);
        EXPECT_NEAR(positions[3 * i + 2], s_corners[i].getZ() / 2 - 0.25, 1e-7);
      }
      EXPECT_EQ(numbersOf<omUInt32>(html, "indices"), s_triangles);
      EXPECT_EQ(numbersOf<omUInt32>(html, "edges").size(), 12U);
      // Small differences of large values are kept: each value is its place between the least and the greatest one.
      EXPECT_EQ(numbersOf<omReal32>(html, "levels"), (std::vector<omReal32>{0, 0.25F, -1e6F, 1}));
    }
}

TEST(HtmlReport, showsEveryEntityAndRefusesNull) {
  const ThreeScript three;
  ::setenv("ORMIX_THREE_SCRIPT", three.path().c_str(), 1);
  for (const auto& each : samples::classCases(JoinedLists<PlanarEntityList, SpatialEntityList>())) {
    const auto sample = each.makeSample();
    const auto planar = boost::dynamic_pointer_cast<BaseGeometryEntity2d>(sample);
    const auto spatial = boost::dynamic_pointer_cast<BaseGeometryEntity3d>(sample);
    EXPECT_EQ(planar ? count(toHtml(planar), "<img ") : count(toHtml(*spatial), "<canvas "), 1U) << each.name;
  }
  const auto circle = boost::make_shared<Circle2d<omReal32>>(Point2dData<omReal32>(1, 2), 3.F);
  const std::string page = toHtml(*circle, std::vector<GeometryEntity2dPtr>{circle, circle}, viewOf(s_corners),
                                  toFaceVertexTriMesh3d(viewOf(s_corners)), Plan3d(1, 0, 0));
  EXPECT_EQ(count(page, "<img "), 1U);
  EXPECT_EQ(count(page, "<canvas "), 1U);
  EXPECT_EQ(count(page, "<td>Circle2d</td>"), 3U);
  EXPECT_EQ(count(page, "<td>Mesh</td>"), 2U);
  EXPECT_EQ(count(page, ">28.2743<"), 3U) << "areas";
  ::unsetenv("ORMIX_THREE_SCRIPT");
  EXPECT_THROW(toHtml(GeometryEntity2dPtr()), ORMIXGeometryException);
  EXPECT_THROW(toHtml(Circle2d<omReal64>({0, support::s_nan}, 1)), ORMIXGeometryException);
  EXPECT_THROW(toHtml(Sphere3d<omReal64>(0, 0, support::s_infinity, 1)), ORMIXGeometryException);
}

TEST(HtmlReport, hasPicturesWithoutThree) {
  // More triangles than pictures show.
  FaceVertexTriMesh3d<omReal64> mesh;
  std::vector<Point3dData<omReal64>> points;
  std::vector<IndexTriangle> triangles;
  const omUInt32 side = 102;
  for (omUInt32 i = 0; i < side * side; ++i) points.emplace_back(i % side, i / side, std::sin(0.1 * i));
  for (omUInt32 i = 0; i < (side - 1) * side; ++i)
    if (i % side != side - 1) {
      triangles.push_back({i, i + 1, i + side});
      triangles.push_back({i + 1, i + side + 1, i + side});
    }
  ASSERT_TRUE(mesh.build(points, triangles));
  std::vector<omReal64> values(points.size(), -1);
  values.back() = support::s_nan;
  HtmlScene scene;
  ASSERT_TRUE(scene.draw(mesh, values));
  ASSERT_TRUE(scene.draw(BoundingBox3d<omInt32>(0, 0, 0, 5, 6, 7)));
  ASSERT_TRUE(scene.draw(Plan3d(-4, 0.3, 0)));
  ASSERT_TRUE(scene.draw(PointCloud3d<omReal64>(points)));
  HtmlReport report({"", "en", "/no/such/\"three\".js"});
  ASSERT_TRUE(report.addScene(scene, "a"));
  HtmlScene second;
  ASSERT_TRUE(second.draw(Sphere3d<omInt32>(1, 2, 3, 4)));
  ASSERT_TRUE(report.addScene(second, "b"));
  const std::string html = report.toHtml();
  EXPECT_EQ(count(html, "/no/such/&quot;three&quot;.js"), 1U);
  EXPECT_EQ(count(html, "data:image/svg+xml"), 2U);
  EXPECT_EQ(count(html, "<canvas"), 0U);
  EXPECT_EQ(count(html, "<script"), 0U);
}

// A mistaken call names its mistake and adds nothing.
TEST(HtmlReport, refusesWhatIsWrong) {
  HtmlScene scene;
  EXPECT_FALSE(scene.draw(viewOf(s_corners), {1, 2, 3}));
  EXPECT_FALSE(scene.draw(viewOf(s_corners), HtmlSceneStyle{"red", 1}));
  EXPECT_FALSE(scene.draw(viewOf(s_corners), HtmlSceneStyle{"#12345g", 1}));
  EXPECT_FALSE(scene.draw(viewOf(s_corners), HtmlSceneStyle{"#123456", support::s_nan}));
  EXPECT_FALSE(scene.draw(TriMesh3d<omReal64>(s_corners.data(), 3, s_triangles.data(), 4)));
  EXPECT_FALSE(scene.draw(TriMesh3d<omReal64>()));
  EXPECT_FALSE(scene.draw(Mesh3d<omReal64>()));
  EXPECT_FALSE(scene.draw(Plan3d(support::s_infinity, 0, 0)));
  EXPECT_FALSE(scene.draw(std::vector<Point3dData<omReal64>>{{0, 0, 1.7e308}, {0, 0, -1.7e308}}));
  EXPECT_TRUE(scene.isEmpty());
  HtmlReport report;
  const std::string before = report.toHtml();
  EXPECT_FALSE(report.addScene(scene, ""));
  const BoolResult table = report.addTable({"", {"a"}, {{"1"}, {"1", "2"}}});
  EXPECT_EQ(table.getMessage(), "Row 1 of a table has 2 cells for 1 columns");
  for (const char* path : {"/no/such.svg", "/no/such.stl", "/tmp", "/no/such.csv", "/etc/passwd"}) {
    const BoolResult added = report.addFile(path);
    EXPECT_FALSE(added) << path;
    EXPECT_NE(added.getMessage().find(path), std::string::npos) << added.getMessage();
  }
  EXPECT_EQ(report.toHtml(), before);
  EXPECT_FALSE(report.write("/no/such/folder/page.html"));
}

// Whatever bytes stand in texts and scripts, a page has the elements of its own and no others.
TEST(HtmlReport, textsStayTexts) {
  support::Random random(3);
  const ThreeScript three("a = '</script><!-- <script>';");
  const std::string bytes = "<>&\"'/!-=\\ascript\n\x01\x7F\xC2\x80\xEF\xBF\xBE\xF0\x9F\xBF\xBF\xFF\xED\xA0\x80";
  for (int run = 0; run < 200; ++run) {
    std::string text = "</script><!--";
    for (omUInt32 i = random.below(40); i > 0; --i) text += bytes[random.below(omUInt32(bytes.size()))];
    HtmlReport report({text, text, three.path()});
    report.addHeading(text);
    report.addText(text);
    report.addLegend(ColourScale(0, 1), text, text);
    ASSERT_TRUE(report.addTable({text, {text}, {{text}}}));
    HtmlScene scene(text);
    ASSERT_TRUE(scene.draw(viewOf(s_corners)));
    ASSERT_TRUE(report.addScene(scene, text));
    const std::string html = report.toHtml();
    EXPECT_EQ(count(html, "<script"), 4U + 1U) << text << ": data, three scripts, and one in a text of three.js";
    EXPECT_EQ(count(html, "</script"), 4U) << text;
    EXPECT_EQ(count(html, "<!"), 1U) << text << ": the document's type";
    EXPECT_EQ(count(html, "\xEF\xBF\xBE") + count(html, "\xF0\x9F\xBF\xBF") + count(html, "\xFF") + count(html, "\x01"),
              0U);
  }
}

TEST(HtmlReport, readsTablesOfValues) {
  const std::string path = ::testing::TempDir() + "html_" + std::to_string(::getpid()) + ".csv";
  std::ofstream(path) << "name,\"length, \"\"mm\"\"\"\r\n\"a\nb\",1.23456789012\r\n\r\nc,2,rest\n";
  HtmlReport report;
  ASSERT_TRUE(report.addFile(path, "Lengths"));
  const std::string html = report.toHtml();
  for (const char* part : {"<caption>Lengths</caption>", ">length, &quot;mm&quot;</th>", "<td>a b</td>",
                           "<td class=\"number\">1.23457</td>", "<td class=\"number\">2</td><td>rest</td>"})
    EXPECT_EQ(count(html, part), 1U) << part;
  // One long row among many short ones takes the space of its own cells.
  std::ofstream file(path);
  file << std::string(3000, ',');
  for (int row = 0; row < 3000; ++row) file << "\na";
  file.close();
  HtmlReport wide;
  ASSERT_TRUE(wide.addFile(path));
  EXPECT_LT(wide.toHtml().size(), 1000000U);
  std::filesystem::remove(path);
}
