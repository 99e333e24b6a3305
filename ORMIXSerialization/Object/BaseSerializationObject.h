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

  void copy(const BaseDynamicObject& other) override;
  /// Appends the object to the archive.
  virtual BoolResult write(BaseOArchive& archive) const;
  /// Takes the object from the archive's next entries. A failed `read` leaves the object as it was; the message names
  /// the class and the key.
  virtual BoolResult read(BaseIArchive& archive);

 protected:
  BaseSerializationObject() = default;
  BaseSerializationObject(const BaseSerializationObject&) = default;
  BaseSerializationObject(BaseSerializationObject&&) = default;
  BaseSerializationObject& operator=(const BaseSerializationObject&) = default;
  BaseSerializationObject& operator=(BaseSerializationObject&&) = default;
};

}  // namespace ormix
