#pragma once

#include <ORMIXUtil/Object/DynamicObjectFactory.h>

namespace ormix {

/// Registers the class `X` in the factory as long as it lives: one static registrator a class makes a library's classes
/// known while the library is loaded. `X` gives `getTypeName()`, `createNewObject()` and `createSharedObject()`.
template <class X>
class DynamicRegistrator {
 public:
  DynamicRegistrator()
      : _registered(DynamicObjectFactory::getInstance().registerClass(X::getTypeName(), &X::createNewObject,
                                                                      &X::createSharedObject)) {}
  // noexcept as every destructor: an exception while unloading ends the process. A name that somebody else had
  // registered first stays theirs.
  ~DynamicRegistrator() {
    if (_registered) DynamicObjectFactory::getInstance().unRegisterClass(X::getTypeName());
  }
  DynamicRegistrator(const DynamicRegistrator&) = delete;
  DynamicRegistrator& operator=(const DynamicRegistrator&) = delete;

 private:
  bool _registered;
};

}  // namespace ormix
