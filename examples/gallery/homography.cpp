// A plate seen at an angle: the homography of twelve marks, three of which were mistaken (red), and the plate's grid.
#include <ORMIXGeometry/ORMIXGeometry.h>

namespace {

ormix::Matrix3x3 matrixOf(const ormix::RealVector& params) {
  ormix::Matrix3x3 matrix;
  for (std::size_t i = 0; i < 9; ++i) matrix(i / 3, i % 3) = params(i);
  return matrix;
}

}  // namespace

int main() {
  using namespace ormix::geom;

  // Marks on the plate, and where a camera saw them, to two digits.
  const std::vector<Point2dData<double>> marks{{0, 0}, {4, 0},  {8, 0}, {12, 0}, {0, 4}, {4, 4},
                                               {8, 4}, {12, 4}, {0, 8}, {4, 8},  {8, 8}, {12, 8}};
  const std::vector<Point2dData<double>> seen{{2, 1},       {5, 1.61},    {6.5, 4.6},   {9.41, 2.5},
                                              {0.91, 3.64}, {5.4, 6.3},   {6.12, 4.18}, {8.08, 4.38},
                                              {0, 5.83},    {2.73, 5.91}, {7.3, 1.3},   {6.92, 6.03}};

  HomographyTransform2dEstimator estimator;
  ormix::RobustOptions options;
  options.threshold = 0.05;  // in the picture
  ormix::RobustResult found;
  if (!robustEstimation(estimator, toSamples(marks, seen), options, found)) return 1;
  const HomographyTransform2d toPicture(matrixOf(found.params));

  SvgWriter picture(640);
  for (int i = 0; i <= 12; ++i) {
    const SvgStyle style{"#1f78b4", "none", i % 4 == 0 ? 2.0 : 0.7, ""};
    picture.draw(*toPicture.apply(Segment2d<double>(i, 0, i, 8)), style);
    if (i <= 8) picture.draw(*toPicture.apply(Segment2d<double>(0, i, 12, i)), style);
  }
  for (std::size_t i = 0; i < seen.size(); ++i)
    picture.draw(Point2d<double>(seen[i]), {found.inliers[i] ? "#2f4858" : "#c8402f", "none", 3, ""});
  return picture.write("homography.svg") ? 0 : 1;
}
