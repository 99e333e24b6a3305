#pragma once

#include <ORMIXSerialization/Archive/ClassVersionRegistry.h>
#include <ORMIXSerialization/Archive/NumericArray.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <optional>
#include <string>
#include <string_view>

namespace ormix {

/// An archive being read, entry by entry in the order written. Each operation takes the next entry of the section it is
/// in, which must bear the key asked for and hold a value of that kind; a failure says which key was wanted and what
/// was found instead, leaves the output untouched, and every later operation fails too.
class ORMIX_SERIALIZATION_API BaseIArchive : public ClassVersionRegistry {
 public:
  virtual ~BaseIArchive();

  virtual BoolResult beginSection(std::string_view key) = 0;
  /// Leaves the section; entries of it that nobody has read are a failure that names the first one.
  virtual BoolResult endSection() = 0;
  /// The key of the next entry of the current section (or of the archive), nothing at its end or after a failure.
  virtual std::optional<std::string> nextKey() = 0;

  virtual BoolResult readBool(std::string_view key, bool& value) = 0;
  virtual BoolResult readInteger(std::string_view key, omInt64& value) = 0;
  virtual BoolResult readUnsigned(std::string_view key, omUInt64& value) = 0;
  /// Takes integers too, as other writers may spell whole reals.
  virtual BoolResult readReal(std::string_view key, omReal64& value) = 0;
  virtual BoolResult readReal(std::string_view key, omReal32& value) = 0;
  virtual BoolResult readText(std::string_view key, std::string& value) = 0;
  virtual BoolResult readArray(std::string_view key, NumericArraySink& sink) = 0;

  /// Ends reading: entries left in the archive, sections left open and anything that follows the archive's end are a
  /// failure.
  virtual BoolResult close() = 0;
  /// Good until an operation has failed; then that failure.
  virtual BoolResult state() const = 0;

 protected:
  BaseIArchive() = default;
  BaseIArchive(const BaseIArchive&) = delete;
  BaseIArchive& operator=(const BaseIArchive&) = delete;
};

}  // namespace ormix
