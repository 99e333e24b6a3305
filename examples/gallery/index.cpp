// An index of 900 points: those in a box (blue), those near a path (green), and the 25 nearest to a place (red).
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>

int main() {
  using namespace ormix::geom;
  using Point = Point2d<double>;

  std::vector<Point> points;  // a spiral of golden angles, as the seeds of a sunflower
  for (int i = 0; i < 900; ++i)
    points.emplace_back(std::sqrt(i) * std::cos(2.399963229728653 * i), std::sqrt(i) * std::sin(2.399963229728653 * i));
  const RTree<Point> index(points);

  const BoundingBox2d<double> box(-25, 5, -8, 18);
  const Segment2d<double> path({-20, -16}, {22, 2});
  const Point2dData<double> place(12, 16);

  SvgWriter picture(560);
  const auto draw = [&](const std::vector<std::size_t>& found, const char* colour) {
    for (const std::size_t i : found) picture.draw(index.getItem(i), {colour, "none", 1.8, ""});
  };
  for (const Point& point : points) picture.draw(point, {"#c3ccd2", "none", 1.2, ""});
  draw(index.query(box), "#1f78b4");
  draw(index.queryAlong(path, 1.2), "#3c8f57");
  draw(index.nearest(place, 25), "#c8402f");
  picture.draw(box, {"#1f78b4", "none", 1.5, ""});
  picture.draw(path, {"#3c8f57", "none", 1.5, ""});
  return picture.write("index.svg") ? 0 : 1;
}
