#pragma once

#include <ORMIXSerialization/Export.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <memory>
#include <string>

namespace ormix {

class BaseSerializationObject;

namespace detail {

/// The classes of which an archive has created objects by name: an archive of many objects asks the factory of dynamic
/// objects for each class once. What is remembered is forgotten when any class has been unregistered since, as the
/// library that has its code may be closed.
class ORMIX_SERIALIZATION_API CreatedClasses {
 public:
  CreatedClasses();
  ~CreatedClasses();

  /// A new object of the class with this registered name; null when the class is not serializable.
  /// \throw UnHandleException that names the class when it is not registered, or without a way to create it
  boost::shared_ptr<BaseSerializationObject> create(const std::string& className);

  /// See BaseIArchive.
  /// @{
  void setUnseen(const BaseSerializationObject* object) noexcept;
  bool takeUnseen(const BaseSerializationObject& object) noexcept;
  /// @}

 private:
  struct Places;
  std::unique_ptr<Places> _places;
};

}  // namespace detail

}  // namespace ormix
