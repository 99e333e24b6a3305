#include <ORMIXGeometry/ORMIXGeometry.h>

#include <iostream>

int main() {
  using namespace ormix::geom;
  Polygon2d<double> ring;
  fromString(ring, "0 0, 10 0, 10 5, 0 5");
  const Circle2d<double> circle(Point2dData<double>(1, 2), 3);
  std::cout << "area " << AreaMsr2d::measure(ring) << ", perimeter " << PerimeterMsr2d::measure(circle) << '\n';

  if (const ormix::BoolResult saved = ormix::save("ring.json", ring); !saved) return std::cerr << saved.getMessage(), 1;
  const auto loaded = boost::dynamic_pointer_cast<Polygon2d<double>>(ormix::load("ring.json"));
  return loaded && AreaMsr2d::measure(*loaded) == 50 ? 0 : 1;
}
