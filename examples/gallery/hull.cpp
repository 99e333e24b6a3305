// The convex hull of a cloud of points in space: no point is outside, not even by rounding.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>

int main() {
  using namespace ormix::geom;

  // Points in an ellipsoid, spread by multiples of irrational numbers.
  PointCloud3d<double> cloud;
  for (int i = 0; i < 400; ++i) {
    const double u = 2 * std::fmod(0.8191725133961645 * i, 1) - 1, v = 2 * std::fmod(0.6710436067037893 * i, 1) - 1,
                 w = 2 * std::fmod(0.5497004779019703 * i, 1) - 1;
    if (u * u + v * v + w * w < 1) cloud.getCollection().emplace_back(9 * u, 6 * v, 5 * w);
  }
  Mesh3d<double> hull;
  if (!quickHull(cloud, hull)) return 1;

  SvgWriter picture(700);
  drawMesh(picture, hull, {{1, -2, 2}});
  return picture.write("hull.svg") ? 0 : 1;
}
