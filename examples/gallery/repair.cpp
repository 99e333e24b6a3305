// A scan with a hole and triangles that are turned (left), and the closed body that repair makes of it (right).
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>
#include <iostream>

int main() {
  using namespace ormix::geom;
  using Point = Point3dData<double>;

  // The hull of points on an egg, spread by golden angles.
  std::vector<Point> points;
  for (int i = 0; i < 180; ++i) {
    const double z = 1 - (2 * i + 1) / 180.0, radius = std::sqrt(1 - z * z) * (1 + 0.25 * z);
    points.emplace_back(8 * radius * std::cos(2.399963229728653 * i), 8 * radius * std::sin(2.399963229728653 * i),
                        11 * z);
  }
  Mesh3d<double> egg;
  if (!quickHull(points, egg)) return 1;

  // As a scanner saw it: nothing of one place, and every ninth triangle turned.
  FaceVertexTriMesh3d<double> scan;
  scan.getVertexColl() = egg.getVertexColl();
  for (std::size_t i = 0; i < egg.getNbTriangles(); ++i) {
    const auto [a, b, c] = egg.getTriangleVertexIndices(i);
    if (distance(egg.getVertex(a), Point(4, -7, 2)) < 4.5) continue;
    scan.addTriangle(a, i % 9 == 0 ? c : b, i % 9 == 0 ? b : c);
  }

  Mesh3d<double> body;
  RepairReport report;
  if (!repair(scan, body, {}, report)) return 1;
  for (const std::string& line : report.log) std::cout << line << '\n';

  SvgWriter picture(900);
  drawMesh(picture, toMesh3d(scan));
  TranslationTransform3d(20, 10, 0).applyInSitu(body);  // to the right, as it is looked at from (1, -2, 1)
  drawMesh(picture, body);
  return picture.write("repair.svg") ? 0 : 1;
}
