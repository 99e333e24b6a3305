#include <ORMIXUtil/Exception/UnHandleException.h>
#include <ORMIXUtil/Object/DynamicObjectFactory.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace ormix {

namespace {
struct Creators {
  DynamicObjectFactory::CreateNew createNew;
  DynamicObjectFactory::CreateShared createShared;
};

template <class Creator>
Creator required(Creator creator, const std::string& name) {
  if (creator) return creator;
  throw UnHandleException("Class \"" + name + "\" is registered without this way of creating its objects",
                          __PRETTY_FUNCTION__, __FILE__, __LINE__);
}
}  // namespace

struct DynamicObjectFactory::Registry {
  mutable std::shared_mutex mutex;
  std::unordered_map<std::string, Creators> classes;
  std::atomic<omUInt64> nbUnregistered{0};

  /// Copies the creators out, so that an object is never constructed under the lock.
  Creators find(const std::string& name) const {
    {
      const std::shared_lock<std::shared_mutex> lock(mutex);
      const auto found = classes.find(name);
      if (found != classes.end()) return found->second;
    }
    throw UnHandleException("Class \"" + name + "\" is not registered in the dynamic object factory",
                            __PRETTY_FUNCTION__, __FILE__, __LINE__);
  }
};

DynamicObjectFactory::DynamicObjectFactory() : _registry(new Registry) {}
DynamicObjectFactory::~DynamicObjectFactory() { delete _registry; }

DynamicObjectFactory& DynamicObjectFactory::getInstance() {
  static DynamicObjectFactory factory;
  return factory;
}

bool DynamicObjectFactory::registerClass(const std::string& name, CreateNew newCreator, CreateShared sharedCreator) {
  const std::unique_lock<std::shared_mutex> lock(_registry->mutex);
  return _registry->classes.emplace(name, Creators{newCreator, sharedCreator}).second;
}

bool DynamicObjectFactory::unRegisterClass(const std::string& name) {
  const std::unique_lock<std::shared_mutex> lock(_registry->mutex);
  const bool wasRegistered = _registry->classes.erase(name) != 0;
  if (wasRegistered) ++_registry->nbUnregistered;
  return wasRegistered;
}

bool DynamicObjectFactory::isRegistered(const std::string& name) const {
  const std::shared_lock<std::shared_mutex> lock(_registry->mutex);
  return _registry->classes.count(name) != 0;
}

std::vector<std::string> DynamicObjectFactory::getRegisteredNames() const {
  std::vector<std::string> names;
  {
    const std::shared_lock<std::shared_mutex> lock(_registry->mutex);
    names.reserve(_registry->classes.size());
    for (const auto& entry : _registry->classes) names.push_back(entry.first);
  }
  std::sort(names.begin(), names.end());
  return names;
}

BaseDynamicObject* DynamicObjectFactory::createNew(const std::string& name) const {
  return required(_registry->find(name).createNew, name)();
}

boost::shared_ptr<BaseDynamicObject> DynamicObjectFactory::createShared(const std::string& name) const {
  return getSharedCreator(name)();
}

DynamicObjectFactory::CreateShared DynamicObjectFactory::getSharedCreator(const std::string& name) const {
  return required(_registry->find(name).createShared, name);
}

omUInt64 DynamicObjectFactory::getNbUnregistered() const noexcept { return _registry->nbUnregistered; }

}  // namespace ormix
