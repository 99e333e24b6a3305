/// \file
/// The smallest program with a measure, whose start StartBenchmark.cpp times.

#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>

#include <iostream>

int main() {
  const ormix::geom::Circle2d<ormix::omReal64> circle({1, 2}, 3);
  std::cout << ormix::geom::AreaMsr2d::measure(circle) << '\n';
}
