#include <ORMIXGeometry/ORMIXGeometry.h>
#include <iostream>

int main() {
  using namespace ormix::geom;
  const std::vector<Point2dData<double>> points{{5, 0}, {4, 3}, {3, 4}, {0, 5}, {-3, 4}, {-4, 3}};
  Circle2d<double> circle;
  if (const ormix::BoolResult result = fitCircle(toSamples(points), circle); !result)
    return std::cerr << result.getMessage(), 1;
  std::cout << "radius " << circle.getRadius() << ", area " << AreaMsr2d::measure(circle) << '\n';
}
