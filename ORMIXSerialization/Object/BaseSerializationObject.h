#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/Object/BaseDynamicObject.h>
#include <ORMIXUtil/ProcessingResult.h>

namespace ormix {

class BaseIArchive;
class BaseOArchive;

/// A dynamic object that can be written to and read from archives.
class ORMIX_SERIALIZATION_API BaseSerializationObject : public BaseDynamicObject {
 public:
  ~BaseSerializationObject() override;

  /// Copies nothing: the class has no data. Derived classes copy theirs; `other` must be of the same class (not
  /// checked).
  void copy(const BaseDynamicObject& other) override;
  /// Appends the object's class versions and fields to the current section of the archive. Linear in the data.
  /// \return failure when the archive cannot be written; the archive then holds a part of the object
  virtual BoolResult write(BaseOArchive& archive) const;
  /// Replaces the object by one that is read from the next entries of the current section. Linear in the data.
  /// \return failure, with the class and the key in the message, when the entries are not those of such an object; the
  ///         object is then unchanged
  /// \throw ORMIXSerializationException when a newer version of the class has written the archive
  virtual BoolResult read(BaseIArchive& archive);

 protected:
  BaseSerializationObject() = default;
  BaseSerializationObject(const BaseSerializationObject&) = default;
  BaseSerializationObject(BaseSerializationObject&&) = default;
  BaseSerializationObject& operator=(const BaseSerializationObject&) = default;
  BaseSerializationObject& operator=(BaseSerializationObject&&) = default;
};

}  // namespace ormix
