#pragma once

#include <ORMIXUtil/Object/BaseDynamicObject.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <string>
#include <vector>

namespace ormix {

/// Creates dynamic objects by the names of their classes. One for the whole process; all operations may be called from
/// several threads at once.
class ORMIX_UTIL_API DynamicObjectFactory {
 public:
  using CreateNew = BaseDynamicObject* (*)();
  using CreateShared = boost::shared_ptr<BaseDynamicObject> (*)();

  static DynamicObjectFactory& getInstance();

  /// Makes a class known. False, and nothing changed, when the name is known already. Either creator may be null: its
  /// objects cannot be created in that way then.
  bool registerClass(const std::string& name, CreateNew newCreator, CreateShared sharedCreator);
  /// Forgets a class. False when the name was not known.
  bool unRegisterClass(const std::string& name);
  bool isRegistered(const std::string& name) const;
  /// The known names, sorted.
  std::vector<std::string> getRegisteredNames() const;

  /// A new default-constructed object, owned by the caller.
  /// \throw UnHandleException that names the class when it is not registered, or without this creator
  BaseDynamicObject* createNew(const std::string& name) const;
  /// The same as a shared pointer, made in one allocation.
  boost::shared_ptr<BaseDynamicObject> createShared(const std::string& name) const;

  /// The function by which `createShared` makes objects of a class, to be called while the class is registered.
  /// \throw UnHandleException as `createShared`
  CreateShared getSharedCreator(const std::string& name) const;
  /// How many classes have been unregistered so far. While this number stays the same, so does what is registered under
  /// a name that was found, and its creator may be called.
  omUInt64 getNbUnregistered() const noexcept;

  DynamicObjectFactory(const DynamicObjectFactory&) = delete;
  DynamicObjectFactory& operator=(const DynamicObjectFactory&) = delete;

 private:
  struct Registry;
  DynamicObjectFactory();
  ~DynamicObjectFactory();
  Registry* _registry;
};

}  // namespace ormix
