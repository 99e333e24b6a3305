#pragma once

#include <ORMIXSerialization/Archive/ClassVersionRegistry.h>
#include <ORMIXSerialization/Archive/NumericArray.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <string_view>

namespace ormix {

/// An archive being written: an ordered list of entries, each one key with one value. Keys may repeat; what is written
/// first is read first. Every operation answers whether it succeeded; after a failure the archive accepts nothing more
/// and `close` answers the first failure again.
class ORMIX_SERIALIZATION_API BaseOArchive : public ClassVersionRegistry {
 public:
  virtual ~BaseOArchive();

  /// Opens a list of entries under a key; at most 1,000 may be open at once. See `ArchiveSectionManager`.
  virtual BoolResult beginSection(std::string_view key) = 0;
  virtual BoolResult endSection() = 0;

  virtual BoolResult writeBool(std::string_view key, bool value) = 0;
  virtual BoolResult writeInteger(std::string_view key, omInt64 value) = 0;
  virtual BoolResult writeUnsigned(std::string_view key, omUInt64 value) = 0;
  virtual BoolResult writeReal(std::string_view key, omReal64 value) = 0;
  virtual BoolResult writeReal(std::string_view key, omReal32 value) = 0;
  /// `value` is UTF-8.
  virtual BoolResult writeText(std::string_view key, std::string_view value) = 0;
  virtual BoolResult writeArray(std::string_view key, const NumericArrayView& array) = 0;

  /// Completes the archive and flushes its stream; the archive accepts nothing afterwards. A second call answers what
  /// the first one did. A full disk or a section left open is a failure.
  virtual BoolResult close() = 0;

 protected:
  BaseOArchive() = default;
  BaseOArchive(const BaseOArchive&) = delete;
  BaseOArchive& operator=(const BaseOArchive&) = delete;
};

}  // namespace ormix
