// Writes a page for page_test.py: hostile texts everywhere, a table, a picture, a cube whose colours follow x, and
// entities of most kinds. Usage: make_page OUTPUT.html
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <iostream>

using namespace ormix;
using namespace ormix::geom;

namespace {

const std::string s_hostile =
    "</script><script>window.hacked = 1</script><img src=x onerror=\"hacked = 1\">\"'&\xEF\xBF\xBE\xFF";

bool require(const BoolResult& result) {
  if (!result) std::cerr << result.getMessage() << '\n';
  return static_cast<bool>(result);
}

HtmlScene cube() {
  const BoundingBox3d<omReal64> box(-1, -1, -1, 1, 1, 1);
  Mesh3d<omReal64> mesh;
  std::vector<Point3dData<omReal64>> corners;
  std::vector<omReal64> values;
  for (int i = 0; i < 8; ++i) corners.emplace_back(i & 1 ? 1 : -1, i & 2 ? 1 : -1, i & 4 ? 1 : -1);
  require(quickHull(corners, mesh));
  for (const auto& vertex : mesh.getVertexColl()) values.push_back(vertex.getX());
  HtmlScene scene("mm");
  require(scene.draw(mesh, values));
  scene.setScale("x" + s_hostile, "µm");
  return scene;
}

HtmlScene entities() {
  HtmlScene scene(s_hostile);
  require(scene.draw(Sphere3d<omReal64>(1e9, 0, 0, 3)));
  require(scene.draw(Ellipsoid3d<omReal32>(1e9F, 0, 6, 4, 1, 2, 0, 0, 1), {"#009e73", 0.5}));
  require(scene.draw(Cuboid3d<omReal64>(1e9 + 5, 0, 0, 1, 2, 3, 0, 0, 0), {"#d55e00", 1}));
  require(scene.draw(BoundingBox3d<omReal64>(1e9 - 4, -4, -4, 1e9 + 8, 4, 4)));
  require(scene.draw(Plan3d(-4, 0, 0)));
  require(scene.draw(std::vector<Point3dData<omReal64>>{{1e9, 5, 5}, {1e9, 6, 5}}, {0, std::nan("")}));
  return scene;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  HtmlReport report({"Title" + s_hostile});
  for (const char* section : {"1 ", "2 ", "3 "}) report.addHeading(section + s_hostile);
  report.addText(s_hostile + "\n\nmore");
  bool isGood = require(report.addTable(
      {s_hostile, {"name" + s_hostile, "value"}, {{s_hostile, "10"}, {"b", "9"}, {"a", "-1e3"}, {"c"}}}));
  SvgWriter picture;
  isGood = require(picture.draw(Circle2d<omReal64>({0, 0}, 1), {"black", "none", 1, "label"})) && isGood;
  isGood = require(report.addPicture(picture, s_hostile)) && isGood;
  isGood = require(report.addScene(cube(), "Cube" + s_hostile)) && isGood;
  isGood = require(report.addScene(entities(), "Entities")) && isGood;
  return isGood && require(report.write(argv[1])) ? 0 : 1;
}
