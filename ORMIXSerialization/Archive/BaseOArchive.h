#pragma once

#include <ORMIXSerialization/Archive/ClassVersionRegistry.h>
#include <ORMIXSerialization/Archive/NumericArray.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <string_view>

namespace ormix {

/// An archive that is written: an ordered list of entries, each of which is one key with one value. Keys may repeat;
/// entries are read in the order in which they were written. All keys and texts must be valid UTF-8. Every operation
/// fails when the stream has failed; after a failure nothing more is written, and all operations including `close`
/// return the first failure.
class ORMIX_SERIALIZATION_API BaseOArchive : public ClassVersionRegistry {
 public:
  virtual ~BaseOArchive();

  /// Begins a list of entries under a key; at most 1,000 sections may be nested. See `ArchiveSectionManager`.
  virtual BoolResult beginSection(std::string_view key) = 0;
  /// Ends the current section; fails when there is none.
  virtual BoolResult endSection() = 0;

  /// Writes a Boolean value.
  virtual BoolResult writeBool(std::string_view key, bool value) = 0;
  /// Writes an integer.
  virtual BoolResult writeInteger(std::string_view key, omInt64 value) = 0;
  /// Writes an integer that is not negative.
  virtual BoolResult writeUnsigned(std::string_view key, omUInt64 value) = 0;
  /// Writes a real number, from which exactly the same value is read; NaN and infinity are allowed.
  /// @{
  virtual BoolResult writeReal(std::string_view key, omReal64 value) = 0;
  virtual BoolResult writeReal(std::string_view key, omReal32 value) = 0;
  /// @}
  /// Writes a text; fails when it is not valid UTF-8.
  virtual BoolResult writeText(std::string_view key, std::string_view value) = 0;
  /// Writes a numeric array of one or two dimensions. Linear in the numbers, without a copy of the whole.
  virtual BoolResult writeArray(std::string_view key, const NumericArrayView& array) = 0;

  /// Completes the archive and flushes its stream; nothing can be written afterwards. Fails when a section is open and
  /// when the stream has failed (a full disk, for example). A second call returns the result of the first one.
  virtual BoolResult close() = 0;

 protected:
  BaseOArchive() = default;
  BaseOArchive(const BaseOArchive&) = delete;
  BaseOArchive& operator=(const BaseOArchive&) = delete;
};

}  // namespace ormix
