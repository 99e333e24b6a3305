// Uses no symbol of the geometry library, and needs it all the same: for the classes that archives and the factory
// name.
#include <ORMIXSerialization/ORMIXSerialization.h>

#include <fstream>
#include <iostream>

int main() try {
  std::ofstream("line.json") << R"([
{"ormix-archive": [{"version": 1}, {"writer": "by hand"}]},
{"ormix::geom::Line2d": [
  {"ormix::geom::BaseGeometryEntity": [{"version": 1}]},
  {"ormix::geom::BaseGeometryEntity2d": [{"version": 1}]},
  {"ormix::geom::Line2d": [{"version": 1}]},
  {"_rho": 2}, {"_theta": 1}]}])";
  std::cout << ormix::load("line.json")->getClassName() << '\n';
  ormix::DynamicObjectFactory::getInstance().createShared("ormix::geom::AreaMsr3d");
} catch (const std::exception& exception) {
  return std::cerr << exception.what() << '\n', 1;
}
