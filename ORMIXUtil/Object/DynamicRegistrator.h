#pragma once

#include <ORMIXUtil/Object/DynamicObjectFactory.h>

namespace ormix {

/// Registers the class `X` in the factory as long as it lives: static registrators make the classes of a library known
/// while the library is loaded. `X` gives `getTypeName()`, `createNewObject()` and `createSharedObject()`.
template <class X>
class DynamicRegistrator {
 public:
  /// Registers the class, unless its name is taken.
  DynamicRegistrator()
      : _registered(DynamicObjectFactory::getInstance().registerClass(X::getTypeName(), &X::createNewObject,
                                                                      &X::createSharedObject)) {}
  /// Takes the registration back; a name that was taken before stays registered. An exception ends the process, as in
  /// every destructor.
  ~DynamicRegistrator() {
    if (_registered) DynamicObjectFactory::getInstance().unRegisterClass(X::getTypeName());
  }
  DynamicRegistrator(const DynamicRegistrator&) = delete;
  DynamicRegistrator& operator=(const DynamicRegistrator&) = delete;

 private:
  bool _registered;
};

}  // namespace ormix
