// A circle through points of which a third are outliers: the robust fit (blue) with its residuals, and the plain fit
// (grey).
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>

int main() {
  using namespace ormix::geom;

  // An arc of radius 10 with noise of up to 0.3, and every third point somewhere else.
  std::vector<Point2dData<double>> points;
  for (int i = 0; i < 90; ++i) {
    const double angle = 0.045 * i, noise = 0.3 * std::sin(12.9898 * i);
    const double radius = i % 3 == 0 ? 11 + 7 * std::fmod(0.618034 * i, 1) : 10 + noise;
    points.emplace_back(radius * std::cos(angle), radius * std::sin(angle));
  }

  Circle2d<double> plain;
  if (!fitCircle(toSamples(points), plain)) return 1;
  Circle2dEstimator estimator;
  ormix::RobustOptions options;
  options.threshold = 0.5;  // the largest distance of an inlier
  ormix::RobustResult found;
  if (!robustEstimation(estimator, toSamples(points), options, found)) return 1;
  const Circle2d<double> robust({found.params(0), found.params(1)}, found.params(2));

  SvgWriter picture(480);
  picture.draw(plain, {"#9aa5ad", "none", 1.5, ""});
  picture.draw(robust, {"#1f78b4", "none", 2.5, ""});
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Point2d<double> point(points[i]);
    if (found.inliers[i])
      picture.draw(Segment2d<double>(points[i], nearestPoints(point, robust, eIP_Boundary).onB),
                   {"#c8402f", "none", 2, ""});
    picture.draw(point, {found.inliers[i] ? "#2f4858" : "#b5bec5", "none", 1.7, ""});
  }
  return picture.write("robust_fit.svg") ? 0 : 1;
}
