#pragma once

#include <ORMIXSerialization/Archive/ClassVersionRegistry.h>
#include <ORMIXSerialization/Archive/CreatedClasses.h>
#include <ORMIXSerialization/Archive/NumericArray.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <optional>
#include <string>
#include <string_view>

namespace ormix {

/// An archive that is read entry by entry, in the order in which the entries were written. Each operation reads the
/// next entry of the current section, which must have the given key and a value of the given kind. Otherwise it fails
/// with a message that names the expected key and what was found, leaves its output parameter unchanged, and all later
/// operations fail with the same message.
class ORMIX_SERIALIZATION_API BaseIArchive : public ClassVersionRegistry {
 public:
  virtual ~BaseIArchive();

  /// Enters the section under `key`: the following operations read its entries. At most 1,000 sections may be nested.
  virtual BoolResult beginSection(std::string_view key) = 0;
  /// Leaves the current section. Fails when entries of it have not been read, and names the first of them.
  virtual BoolResult endSection() = 0;
  /// The key of the next entry of the current section (or of the archive), which is not consumed; no value at the end
  /// and after a failure.
  virtual std::optional<std::string> nextKey() = 0;

  /// Reads a Boolean value.
  virtual BoolResult readBool(std::string_view key, bool& value) = 0;
  /// Reads an integer; fails when it is outside the range of `omInt64`.
  virtual BoolResult readInteger(std::string_view key, omInt64& value) = 0;
  /// Reads an integer; fails when it is negative or outside the range of `omUInt64`.
  virtual BoolResult readUnsigned(std::string_view key, omUInt64& value) = 0;
  /// Reads a real number, which may be NaN or infinite. An integer is converted to the nearest real, since other
  /// writers may write whole numbers as integers.
  virtual BoolResult readReal(std::string_view key, omReal64& value) = 0;
  /// The same, converted to the nearest `omReal32`; fails when a finite number is outside the range of that type.
  virtual BoolResult readReal(std::string_view key, omReal32& value) = 0;
  /// Reads a text and checks that it is valid UTF-8.
  virtual BoolResult readText(std::string_view key, std::string& value) = 0;
  /// Reads a numeric array and passes its rows to the sink in blocks. Fails when its rows do not have `sink.nbColumns`
  /// numbers or a number does not fit into the type `sink.scalar`; the sink may then have received a part of the rows.
  /// Linear in the numbers; memory for one block.
  virtual BoolResult readArray(std::string_view key, NumericArraySink& sink) = 0;

  /// Ends reading. Fails when entries have not been read, when sections are open and when data follow the archive. A
  /// second call returns the result of the first one.
  virtual BoolResult close() = 0;
  /// Success until an operation has failed; then that failure.
  virtual BoolResult state() const = 0;

  /// As `nextKey`, without a copy: the key is valid until the next operation, null where `nextKey` has no value.
  virtual const std::string* peekKey();

  /// A new object of the class with this registered name, as the factory of dynamic objects makes it; null when its
  /// class is not serializable. The name is resolved once, and again after a class has been unregistered.
  /// \throw UnHandleException as the factory
  boost::shared_ptr<BaseSerializationObject> createObject(const std::string& className) {
    return _createdClasses.create(className);
  }

  /// \name Reading directly into a new object, which may be left incomplete when that fails.
  /// @{
  /// Names the object, null for none, whose `read` is the next call and may fill it directly: no pointer to it exists
  /// outside this archive, which releases it when that fails. Only for one that `createObject` has returned.
  void setUnseen(const BaseSerializationObject* object) { _createdClasses.setUnseen(object); }
  /// Whether this is the object that setUnseen() named; true once.
  bool takeUnseen(const BaseSerializationObject& object) { return _createdClasses.takeUnseen(object); }
  /// @}

 protected:
  BaseIArchive() = default;
  BaseIArchive(const BaseIArchive&) = delete;
  BaseIArchive& operator=(const BaseIArchive&) = delete;

 private:
  std::optional<std::string> _nextKey;
  detail::CreatedClasses _createdClasses;
};

}  // namespace ormix
