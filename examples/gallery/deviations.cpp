// A ball as it was made: a sphere fitted to its vertices, and their deviations from it as colours, blue inside.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>

int main() {
  using namespace ormix::geom;

  // The hull of points near a sphere of radius 10: grooves of a tool, and slightly oval.
  std::vector<Point3dData<double>> points;
  for (int i = 0; i < 600; ++i) {
    const double z = 1 - (2 * i + 1) / 600.0, angle = 2.399963229728653 * i;
    const double x = std::sqrt(1 - z * z) * std::cos(angle), y = std::sqrt(1 - z * z) * std::sin(angle);
    const double radius = 10 + 0.04 * std::sin(9 * z) + 0.15 * x * x;
    points.emplace_back(radius * x, radius * y, radius * z);
  }
  Mesh3d<double> ball;
  if (!quickHull(points, ball)) return 1;
  Sphere3d<double> sphere;
  if (!fitSphere(toSamples(ball.getVertexColl()), sphere)) return 1;

  MeshViewOptions view;
  for (const Point3dData<double>& vertex : ball.getVertexColl())
    view.values.push_back(distance(vertex, sphere.center()) - sphere.getRadius());
  view.scale = ColourScale::over(view.values);
  SvgWriter picture(560);
  if (!drawMesh(picture, ball, view)) return 1;
  return picture.write("deviations.svg") ? 0 : 1;
}
