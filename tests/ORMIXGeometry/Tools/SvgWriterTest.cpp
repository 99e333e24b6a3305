#include <ORMIXGeometry/ORMIXGeometry.h>
#include <unistd.h>

#include <boost/property_tree/xml_parser.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <filesystem>
#include <fstream>
#include <regex>

#include "support/Checks.h"
#include "support/Random.h"

using namespace ormix;
using namespace ormix::geom;

namespace {

using Point = Point2dData<omReal64>;
using Tree = boost::property_tree::ptree;

std::string written(const SvgWriter& writer) {
  std::ostringstream stream;
  const BoolResult result = writer.write(stream);
  EXPECT_TRUE(result) << result.getMessage();
  return stream.str();
}

/// The picture as an XML parser sees it; fails when it is not well-formed.
Tree parsed(const std::string& svg) {
  std::istringstream stream(svg);
  Tree tree;
  EXPECT_NO_THROW(boost::property_tree::read_xml(stream, tree)) << svg;
  return tree;
}

/// A square view of ten units drawn on a hundred pixels, so that a pixel is a tenth.
SvgWriter tenUnits() {
  SvgWriter writer(100);
  EXPECT_TRUE(writer.setView({0, 0, 10, 10}));
  return writer;
}

/// The first shape's element of the picture.
std::string elementOf(const BaseGeometryEntity2d& entity, const SvgStyle& style = {}) {
  SvgWriter writer = tenUnits();
  const BoolResult drawn = writer.draw(entity, style);
  EXPECT_TRUE(drawn) << drawn.getMessage();
  const std::string svg = written(writer);
  parsed(svg);
  const std::size_t begin = svg.find("<g stroke-linejoin=\"round\">\n") + 28;
  return svg.substr(begin, svg.find("</g>\n<g font-family", begin) - begin);
}

std::string pathOf(const BaseGeometryEntity2d& entity) {
  const std::string element = elementOf(entity);
  std::smatch match;
  return std::regex_search(element, match, std::regex(" d=\"([^\"]*)\"")) ? match[1].str() : element;
}

std::vector<double> numbersOf(const std::string& text) {
  std::vector<double> numbers;
  const std::regex number("-?[0-9.]+(e[-+]?[0-9]+)?");
  for (std::sregex_iterator match(text.begin(), text.end(), number), end; match != end; ++match)
    numbers.push_back(std::stod(match->str()));
  return numbers;
}

using support::s_infinity;
using support::s_nan;
constexpr omReal64 s_halfTurn = 3.141592653589793;

}  // namespace

template <class T>
class SvgWriterTypedTest : public ::testing::Test {};
TYPED_TEST_SUITE(SvgWriterTypedTest, support::Scalars);

// The y axis points up: what lies at the bottom of the view has the largest y in pixels.
TYPED_TEST(SvgWriterTypedTest, drawsEveryTypedEntity) {
  using T = TypeParam;
  const Point2dData<T> center(3, 4);
  const auto expectDrawn = [](const BaseGeometryEntity2d& entity, const std::string& part) {
    EXPECT_NE(elementOf(entity).find(part), std::string::npos) << elementOf(entity);
  };
  expectDrawn(Point2d<T>(center), "<circle cx=\"30\" cy=\"60\"");
  expectDrawn(BoundingBox2d<T>(1, 2, 3, 5), " d=\"M10 80L30 80 30 50 10 50Z\"");
  expectDrawn(Segment2d<T>(0, 0, 10, 5), " d=\"M0 100L100 50\"");
  expectDrawn(Circle2d<T>(center, 2), "<ellipse cx=\"30\" cy=\"60\" rx=\"20\" ry=\"20\"");
  expectDrawn(Ellipse2d<T>(center, 2, 1, s_halfTurn / 4), "rx=\"20\" ry=\"10\" transform=\"rotate(-45 30 60)\"");
  EXPECT_EQ(numbersOf(pathOf(Square2d<T>(center, 2, 0))), (std::vector<double>{10, 80, 50, 80, 50, 40, 10, 40}));
  EXPECT_EQ(numbersOf(pathOf(Rectangle2d<T>(center, 2, 1, 0))), (std::vector<double>{10, 70, 50, 70, 50, 50, 10, 50}));
  for (const char* place : {"cx=\"10\" cy=\"80\"", "cx=\"30\" cy=\"60\""})
    expectDrawn(PointCloud2d<T>({{1, 2}, {3, 4}}), place);
}

TYPED_TEST(SvgWriterTypedTest, drawsRingsAsStoredAndHolesByTheEvenOddRule) {
  using T = TypeParam;
  const auto triangle = [](T size) {
    Polygon2d<T> ring;
    ring.getPointColl() = {{T(0), T(0)}, {size, T(0)}, {size, size}};
    return ring;
  };
  Polygon2d<T> ring = triangle(T(10));
  EXPECT_EQ(pathOf(ring), "M0 100L100 100 100 0") << "an open ring has no closing edge";
  closePolygon(ring);
  EXPECT_EQ(pathOf(ring), "M0 100L100 100 100 0Z");

  PolygonWithHoles2d<T> root;
  const auto hole = boost::make_shared<PolygonWithHoles2d<T>>(), island = boost::make_shared<PolygonWithHoles2d<T>>();
  root.getExteriorPolygon() = ring;
  hole->getExteriorPolygon() = triangle(T(5));
  island->getExteriorPolygon() = triangle(T(2));
  hole->getPolygonHoles() = {island};
  root.getPolygonHoles() = {hole};
  EXPECT_EQ(pathOf(root), "M0 100L100 100 100 0ZM0 100L50 100 50 50M0 100L20 100 20 80");
  EXPECT_NE(elementOf(root).find("fill-rule=\"evenodd\""), std::string::npos);
}

TEST(SvgWriter, vectorsAreArrowsFromTheirAnchor) {
  EXPECT_EQ(pathOf(Vector2d(5, 0)).substr(0, 12), "M0 100L50 10");
  SvgWriter writer = tenUnits();
  EXPECT_TRUE(writer.draw(Vector2d(5, 0), Point(1, 1)));
  EXPECT_NE(written(writer).find("M10 90L60 90M"), std::string::npos);
}

TEST(SvgWriter, linesAreClippedToTheView) {
  EXPECT_EQ(pathOf(Line2d(5, 0)), "M50 100L50 0");
  EXPECT_EQ(pathOf(Line2d(5, s_halfTurn / 2)), "M100 50L0 50");
  EXPECT_EQ(numbersOf(pathOf(Line2d(0, 3 * s_halfTurn / 4))), (std::vector<double>{100, 0, 0, 100}));
  EXPECT_EQ(elementOf(Line2d(20, 0)), "") << "passes by";
  EXPECT_EQ(pathOf(Parabola2d(Point(0, 5), Line2d(0, 0))), "M0 50L100 50") << "degenerated to its axis";
}

// Every point of each Bézier must be as far from the focus as from the directrix, and the ends on the view's border.
TEST(SvgWriter, parabolaArcsAreExactQuadraticBeziers) {
  for (const omReal64 theta : {0.0, 0.3, 1.2, s_halfTurn / 2, 2.9, -2.0}) {
    const Parabola2d parabola(Point(5, 5), Line2d(5 * std::cos(theta) + 5 * std::sin(theta) - 1.5, theta));
    const std::string path = pathOf(parabola);
    const std::vector<double> n = numbersOf(path);
    ASSERT_TRUE(n.size() >= 6u && n.size() % 6 == 0u) << path;
    for (std::size_t arc = 0; arc < n.size(); arc += 6)
      for (const double t : {0.0, 0.21, 0.5, 0.83, 1.0}) {
        const auto at = [&](std::size_t axis) {
          return (1 - t) * (1 - t) * n[arc + axis] + 2 * t * (1 - t) * n[arc + 2 + axis] + t * t * n[arc + 4 + axis];
        };
        const Point point(at(0) / 10, 10 - at(1) / 10);
        EXPECT_NEAR(distance(point, parabola.getFocus()), std::abs(parabola.getDirectrix().signedDistance(point)), 1e-3)
            << path << " at " << t;
        EXPECT_TRUE(point.getX() >= -1e-9 && point.getX() <= 10 + 1e-9) << path << " at " << t;
      }
  }
}

TEST(SvgWriter, viewEnclosesTheContent) {
  SvgWriter writer(110);
  EXPECT_TRUE(writer.draw(Circle2d<omReal64>(Point(1000, 2000), 50)));
  EXPECT_TRUE(writer.draw(Line2d(-1e6, 0))) << "endless entities do not widen the view";
  const Tree tree = parsed(written(writer));
  EXPECT_EQ(tree.get<std::string>("svg.<xmlattr>.viewBox"), "0 0 110 110");
  EXPECT_EQ(tree.get<double>("svg.g.ellipse.<xmlattr>.cx"), 55);
  EXPECT_EQ(tree.get<double>("svg.g.ellipse.<xmlattr>.rx"), 50);
}

TEST(SvgWriter, emptyAndSinglePointDrawingsAreValid) {
  parsed(written(SvgWriter()));
  for (const Point place : {Point(0, 0), Point(1e15, -1e15), Point(1e-300, 0)}) {
    SvgWriter writer(100);
    EXPECT_TRUE(writer.draw(Point2d<omReal64>(place.getX(), place.getY())));
    EXPECT_EQ(parsed(written(writer)).get<double>("svg.g.g.circle.<xmlattr>.cx"), 50);
  }
  EXPECT_EQ(pathOf(Polygon2d<omReal64>()), "");
}

TEST(SvgWriter, numbersThatAreNotFiniteAreRefused) {
  Polygon2d<omReal64> ring;
  ring.getPointColl() = {{0, 0}, {1, s_nan}, {2, 2}};
  SvgWriter writer;
  const std::string before = written(writer);
  const auto expectRefused = [&writer](const BaseGeometryEntity2d& entity) {
    const BoolResult drawn = writer.draw(entity);
    EXPECT_FALSE(drawn) << entity.getClassName();
    EXPECT_NE(drawn.getMessage().find(entity.getClassName()), std::string::npos) << drawn.getMessage();
  };
  expectRefused(ring);
  expectRefused(PointCloud2d<omReal32>({{0, 0}, {std::numeric_limits<omReal32>::infinity(), 1}}));
  expectRefused(Circle2d<omReal64>(Point(0, 0), s_infinity));
  expectRefused(Ellipse2d<omReal64>(Point(0, 0), 2, 1, s_nan));
  expectRefused(Line2d(s_nan, 0));
  expectRefused(Line2d(1, s_infinity));
  expectRefused(Vector2d(s_infinity, 0));
  expectRefused(Parabola2d(Point(s_nan, 0), Line2d(1, 1)));
  expectRefused(Segment2d<omReal64>(-1e308, 0, 1e308, 0));
  EXPECT_FALSE(writer.draw(Point2d<omReal64>(0, 0), {"black", "none", -1, ""}));
  EXPECT_EQ(written(writer), before);
}

TEST(SvgWriter, extentsThatOverflowTogetherFailToBeWritten) {
  SvgWriter writer;
  EXPECT_TRUE(writer.draw(Point2d<omReal64>(-1.5e308, 0)));
  EXPECT_TRUE(writer.draw(Point2d<omReal64>(1.5e308, 0)));
  std::ostringstream stream;
  EXPECT_FALSE(writer.write(stream));
  EXPECT_EQ(stream.str(), "");
  const std::string path = ::testing::TempDir() + "ormix_svg_" + std::to_string(::getpid());
  std::ofstream(path) << "old";
  EXPECT_FALSE(writer.write(path));
  std::stringstream kept;
  kept << std::ifstream(path).rdbuf();
  EXPECT_EQ(kept.str(), "old") << "an older picture stays until a whole one is there";
  std::filesystem::remove(path);
}

TEST(SvgWriter, whatIsFarOutsideAGivenViewIsLeftOut) {
  SvgWriter writer(100);
  EXPECT_TRUE(writer.setView({0, 0, 1e-300, 1e-300}));
  EXPECT_TRUE(writer.draw(Segment2d<omReal64>(0, 0, 1e300, 1), {"black", "none", 1, "far"}));
  const std::string svg = written(writer);
  EXPECT_EQ(svg.find("<path"), std::string::npos);
  EXPECT_EQ(svg.find("inf"), std::string::npos);
}

TEST(SvgWriter, viewMustBeAFiniteBox) {
  for (const BoundingBox2d<omReal64>& view :
       {BoundingBox2d<omReal64>(0, 0, 0, 1), {1, 0, 0, 1}, {0, 0, s_nan, 1}, {-1.5e308, 0, 1.5e308, 1}})
    EXPECT_FALSE(SvgWriter().setView(view)) << view;
}

TEST(SvgWriter, textsAreEscaped) {
  const std::string label = "a<b> & \"c\" \x01 \xC3\xA9\xEF\xBF\xBE\xEF\xBF\xBF\xEF\xBF\xBD";
  SvgWriter writer = tenUnits();
  EXPECT_TRUE(writer.draw(Circle2d<omReal64>(Point(5, 5), 1), {"black", "\"/><script>", 1, label}));
  const std::string svg = written(writer);
  const Tree tree = parsed(svg);
  EXPECT_EQ(tree.get<std::string>("svg.g.ellipse.<xmlattr>.fill"), "\"/><script>");
  EXPECT_NE(svg.find(">a&lt;b&gt; &amp; &quot;c&quot;   \xC3\xA9  \xEF\xBF\xBD</text>"), std::string::npos) << svg;
  for (const char* broken : {"\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80"})
    EXPECT_FALSE(writer.draw(Point2d<omReal64>(0, 0), {"black", "none", 1, broken}));
}

// As wide as they are taken to be, 7 pixels a letter and 14 high, no label covers another or leaves the picture; the
// first one stands on its entity, and of very many at one place those without room are left out.
TEST(SvgWriter, labelsDoNotCoverEachOther) {
  support::Random random(17);
  for (const omReal64 spread : {10.0, 0.5, 0.0}) {
    SvgWriter writer(800);
    EXPECT_TRUE(writer.setView({0, 0, 10, 10}));
    for (int i = 0; i < 10000; ++i)
      EXPECT_TRUE(writer.draw(Point2d<omReal64>(random.uniform(0, spread), 5 + random.uniform(0, spread / 2)),
                              {"black", "none", 1, "label" + std::to_string(i)}));
    const std::string svg = written(writer);
    const std::regex text("<text x=\"([^\"]*)\" y=\"([^\"]*)\">([^<]*)<");
    std::vector<std::array<double, 3>> labels;  // centre and half width
    for (std::sregex_iterator match(svg.begin(), svg.end(), text), end; match != end; ++match)
      labels.push_back({std::stod((*match)[1]), std::stod((*match)[2]), 3.5 * double((*match)[3].length())});
    EXPECT_GT(labels.size(), spread == 10 ? 150U : 10U);
    EXPECT_LT(labels.size(), 1000U);
    for (std::size_t i = 0; i < labels.size(); ++i) {
      const auto& [x, y, half] = labels[i];
      ASSERT_TRUE(x - half > -0.01 && x + half < 800.01 && y > 6.99 && y < 793.01) << i;
      for (std::size_t j = 0; j < i; ++j)
        ASSERT_TRUE(std::abs(x - labels[j][0]) > half + labels[j][2] - 0.01 || std::abs(y - labels[j][1]) > 13.99) << i;
    }
  }
}

TEST(SvgWriter, scaleBarsHaveARoundLength) {
  SvgWriter writer(800);
  EXPECT_TRUE(writer.setView({0, 0, 100, 50}));
  EXPECT_TRUE(writer.setScaleBar("<mm>", 0.5));
  // A quarter of the picture is 12.5 of the unit; 10 of it are 160 pixels.
  const std::string svg = written(writer);
  EXPECT_NE(svg.find("M14 381V386H174V381"), std::string::npos) << svg;
  EXPECT_NE(svg.find(">10 &lt;mm&gt;</text>"), std::string::npos) << svg;
  for (const omReal64 bad : {0.0, -1.0, s_nan, s_infinity}) EXPECT_FALSE(writer.setScaleBar("mm", bad));
  EXPECT_FALSE(writer.setScaleBar("\xFF"));
  EXPECT_EQ(written(writer), svg);
}

TEST(SvgWriter, thatWasMovedFromIsEmpty) {
  SvgWriter writer = tenUnits();
  EXPECT_TRUE(writer.draw(Circle2d<omReal64>(Point(5, 5), 1)));
  const SvgWriter moved(std::move(writer));
  SvgWriter fresh;
  EXPECT_EQ(written(writer), written(fresh));
  for (SvgWriter* each : {&writer, &fresh}) EXPECT_TRUE(each->draw(Circle2d<omReal64>(Point(5, 5), 1)));
  EXPECT_EQ(written(writer), written(fresh));
}

TEST(SvgWriter, pictureDoesNotDependOnTheLocale) {
  const Segment2d<omReal64> segment(1.25, 0, 3.75, 1000);
  const std::string expected = elementOf(segment);
  const support::CommaLocale comma;
  EXPECT_EQ(elementOf(segment), expected);
}

TEST(SvgWriter, failuresOfTheFileAreReported) {
  SvgWriter writer;
  for (int count = 0; count < 2000; ++count) EXPECT_TRUE(writer.draw(Point2d<omReal64>(count, count)));
  const std::string folder = ::testing::TempDir();
  for (const std::string& path : {std::string("/dev/full"), folder, folder + "/no/such/folder/a.svg"}) {
    const BoolResult result = writer.write(path);
    EXPECT_FALSE(result) << path;
    EXPECT_NE(result.getMessage().find(path), std::string::npos) << result.getMessage();
  }
  EXPECT_FALSE(SvgWriter().write("/dev/full")) << "also when everything fits into one buffer";
}
