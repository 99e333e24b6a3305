// Writes entities to an archive and reads them back without naming their classes: each stands in the archive under its
// class name, and the factory creates it.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <iostream>

int main() {
  using namespace ormix;
  using namespace ormix::geom;

  auto ring = boost::make_shared<Polygon2d<omInt32>>();
  fromString(*ring, "0 0, 10 0, 10 5, 0 5");
  const SerializationObjectPtrColl entities{
      boost::make_shared<Circle2d<omReal64>>(Point2dData<omReal64>(1, 2), 3), ring,
      boost::make_shared<Ellipse2d<omReal32>>(Point2dData<omReal32>(0, 0), 2.0f, 1.0f, 0.5)};
  // ".json" for people and other languages, anything else for the compact form; both say the same.
  for (const char* path : {"entities.json", "entities.cbor"}) {
    if (const BoolResult saved = saveAll(path, entities); !saved) return std::cerr << saved.getMessage() << '\n', 1;
    for (const SerializationObjectPtr& object : loadAll(path)) {
      const auto entity = boost::dynamic_pointer_cast<BaseGeometryEntity2d>(object);
      std::cout << entity->getClassName() << ": area " << AreaMsr2d::measure(*entity) << '\n';
    }
  }
}
