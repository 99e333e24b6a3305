// Opens the geometry library at run time, twice in a row: while it is open its classes can be created by name, after it
// is closed their names are unknown and the library has really left the process.
#include <ORMIXUtil/ORMIXUtil.h>

#include <dlfcn.h>

#include <iostream>
#include <stdexcept>
#include <string>

namespace {

constexpr const char* s_className = "ormix::geom::Circle2d<ormix::omReal64>";

void check(bool condition, const std::string& what) {
  if (!condition) throw std::runtime_error(what);
}

bool isLoaded(const char* path) {
  void* const handle = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
  if (handle) dlclose(handle);
  return handle != nullptr;
}

/// Creates, copies and destroys an object of a class this program was never compiled against.
void useObject(const ormix::DynamicObjectFactory& factory) {
  const boost::shared_ptr<ormix::BaseDynamicObject> object = factory.createShared(s_className);
  check(object->getClassName() == s_className, "created a " + object->getClassName());
  check(object->duplicateShared()->getClassName() == s_className, "the copy is of another class");
  ormix::logMessage(ormix::getLogger(ormix::getBaseLoggerName() + ".ORMIXGeometry"), ormix::s_errorLogLevel,
                    "logged while the library is open");
}

bool throwsNamingTheClass(const ormix::DynamicObjectFactory& factory) {
  try {
    factory.createShared(s_className);
  } catch (const ormix::UnHandleException& error) {
    return std::string(error.what()).find(s_className) != std::string::npos;
  }
  return false;
}

void openUseClose(const char* path) {
  const ormix::DynamicObjectFactory& factory = ormix::DynamicObjectFactory::getInstance();
  check(!isLoaded(path), "the library is loaded before it is opened");
  void* const library = dlopen(path, RTLD_NOW);
  if (!library) throw std::runtime_error(std::string("not opened: ") + dlerror());
  check(factory.isRegistered(s_className), "the class is not registered by opening the library");
  useObject(factory);
  check(dlclose(library) == 0, "not closed");
  check(!isLoaded(path), "the library stays in the process after it was closed");
  check(factory.getRegisteredNames().empty(), "names stay registered after the library was closed");
  check(throwsNamingTheClass(factory), "creating an unknown class does not throw an exception that names it");
}

}  // namespace

int main(int argc, char** argv) {
  try {
    check(argc == 2, "usage: ormix_open_by_name LIBRARY");
    for (int round = 0; round < 2; ++round) openUseClose(argv[1]);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
