// A circle through points of which seven in ten are outliers, their noise unknown: a contrario (blue, its inliers
// dark), with the region of its centre (95 %), and by the least median (grey), which fails beyond half.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>
#include <random>

int main() {
  using namespace ormix::geom;

  std::mt19937 random(4);
  const auto uniform = [&random] { return static_cast<double>(random()) / 4294967296.0; };
  std::vector<Point2dData<double>> points;
  for (int i = 0; i < 200; ++i) {
    const double angle = 6.2831853 * uniform(), radius = 6 + 0.1 * (uniform() + uniform() - 1);
    if (i % 10 < 3) {
      points.emplace_back(2 + radius * std::cos(angle), 1 + radius * std::sin(angle));
    } else {
      const double y = 24 * uniform() - 12;
      points.emplace_back(24 * uniform() - 12, y);
    }
  }

  Circle2dEstimator estimator;
  ormix::RobustOptions median, robust;
  median.method = ormix::eRM_LMedS;
  robust.method = ormix::eRM_Acontrario;
  ormix::RobustResult misled;
  if (!robustEstimation(estimator, toSamples(points), median, misled)) return 1;
  ormix::FitOptions options;
  options.robust = &robust;
  Circle2d<double> circle;
  FitReport report;
  Ellipse2d<double> region;
  if (!fitCircle(toSamples(points), options, circle, report) || !errorEllipse(report, 0, 1, 0.95, region)) return 1;

  SvgWriter picture(480);
  const Circle2d<double> wrong({misled.params(0), misled.params(1)}, misled.params(2));
  picture.draw(wrong, {"#9aa5ad", "none", 2, ""});
  picture.draw(region, {"#1f78b4", "#cfe3f1", 1, ""});
  picture.draw(circle, {"#1f78b4", "none", 2.5, ""});
  for (std::size_t i = 0; i < points.size(); ++i)
    picture.draw(Point2d<double>(points[i]), {report.inliers[i] ? "#2f4858" : "#b5bec5", "none", 1.7, ""});
  return picture.write("fit_a_contrario.svg") ? 0 : 1;
}
