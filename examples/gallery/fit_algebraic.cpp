// A circle of least squares of its equation (blue) through points all around, with the region of its centre (95 %): in
// closed form, and with a centre as sure as the radius.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>

int main() {
  using namespace ormix::geom;

  // A circle of radius 10 with noise of up to 2.
  std::vector<Point2dData<double>> points;
  for (int i = 0; i < 40; ++i) {
    const double angle = 0.157 * i, radius = 10 + 2 * std::sin(12.9898 * i * i);
    points.emplace_back(radius * std::cos(angle), radius * std::sin(angle));
  }

  ormix::FitOptions options;
  options.method = ormix::eFM_Algebraic;
  Circle2d<double> circle;
  FitReport report;
  Ellipse2d<double> region;
  if (!fitCircle(toSamples(points), options, circle, report) || !errorEllipse(report, 0, 1, 0.95, region)) return 1;

  SvgWriter picture(480);
  picture.draw(region, {"#1f78b4", "#cfe3f1", 1, ""});
  picture.draw(circle, {"#1f78b4", "none", 2.5, ""});
  for (const auto& point : points) picture.draw(Point2d<double>(point), {"#2f4858", "none", 1.7, ""});
  return picture.write("fit_algebraic.svg") ? 0 : 1;
}
