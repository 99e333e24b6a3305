#pragma once

#include <ORMIXUtil/Export.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

namespace ormix {

/// An object known by the name of its class: it can be created by that name, duplicated and copied without its class
/// being known to the caller. The order of the virtual functions is part of the interface.
class ORMIX_UTIL_API BaseDynamicObject {
 public:
  virtual ~BaseDynamicObject();

  /// The registered name of the object's class; the reference stays valid while the class's library is loaded.
  virtual const std::string& getClassName() const = 0;
  /// A new default-constructed object of the same class; the caller owns it.
  virtual BaseDynamicObject* createNew() const = 0;
  /// The same as a shared pointer, made in one allocation.
  virtual boost::shared_ptr<BaseDynamicObject> createShared() const = 0;
  /// Whether `duplicate` and `copy` work for this class.
  virtual bool hasCopySupport() const = 0;
  /// A new copy of this object; the caller owns it.
  virtual BaseDynamicObject* duplicate() const = 0;
  /// The same as a shared pointer, made in one allocation.
  virtual boost::shared_ptr<BaseDynamicObject> duplicateShared() const = 0;
  /// Fills a freshly constructed object from another one of its class; the same as `copy` unless a class says
  /// otherwise.
  virtual void initCtorCopy(const BaseDynamicObject& other);
  /// Takes over the contents of `other`, which must be of this object's class (not checked).
  virtual void copy(const BaseDynamicObject& other) = 0;

 protected:
  BaseDynamicObject() = default;
  BaseDynamicObject(const BaseDynamicObject&) = default;
  BaseDynamicObject(BaseDynamicObject&&) = default;
  BaseDynamicObject& operator=(const BaseDynamicObject&) = default;
  BaseDynamicObject& operator=(BaseDynamicObject&&) = default;
};

}  // namespace ormix
