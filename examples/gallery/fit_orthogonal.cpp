// A circle through the points of a short arc (dark): of least squares of its equation (grey), which is too small, and
// of least squares of distances (blue), with the region of its centre (95 %); the circle that was measured is green.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>
#include <random>

int main() {
  using namespace ormix::geom;

  // 45 degrees of a circle of radius 10, with noise of 2 % of it.
  std::mt19937 random(1);
  std::vector<Point2dData<double>> points;
  for (int i = 0; i < 60; ++i) {
    double noise = -6;  // the sum of twelve equally distributed numbers is nearly normal
    for (int k = 0; k < 12; ++k) noise += static_cast<double>(random()) / 4294967296.0;
    const double angle = 1.178 + 0.0131 * i, radius = 10 + 0.2 * noise;
    points.emplace_back(radius * std::cos(angle), radius * std::sin(angle));
  }

  Circle2d<double> algebraic, orthogonal;
  FitReport report;
  Ellipse2d<double> region;
  if (!fitCircle(toSamples(points), algebraic) ||
      !fitCircle(toSamples(points), ormix::FitOptions(), orthogonal, report) ||
      !errorEllipse(report, 0, 1, 0.95, region))
    return 1;

  SvgWriter picture(480);
  picture.draw(region, {"#1f78b4", "#cfe3f1", 1, ""});
  picture.draw(Circle2d<double>({0, 0}, 10), {"#33a02c", "none", 1.5, ""});
  picture.draw(algebraic, {"#9aa5ad", "none", 2, ""});
  picture.draw(orthogonal, {"#1f78b4", "none", 2.5, ""});
  for (const auto& point : points) picture.draw(Point2d<double>(point), {"#2f4858", "none", 1.7, ""});
  return picture.write("fit_orthogonal.svg") ? 0 : 1;
}
