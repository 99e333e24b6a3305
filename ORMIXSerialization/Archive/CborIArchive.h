#pragma once

#include <ORMIXSerialization/Archive/BaseIArchive.h>

#include <iosfwd>
#include <memory>

namespace ormix {

/// Reads what `CborOArchive` writes, and what another writer of CBOR may make of the same entries: lists of stated or
/// unstated length, reals of any width, integers for whole reals, typed arrays of other numbers or of big-endian ones,
/// plain lists of numbers. An archive extends to the end of its stream, which needs no seeking and is read in blocks.
class ORMIX_SERIALIZATION_API CborIArchive final : public BaseIArchive {
 public:
  /// Reads the archive's first entry. \param stream opened in binary mode; must outlive the archive
  explicit CborIArchive(std::istream& stream);
  ~CborIArchive() override;

  BoolResult beginSection(std::string_view key) override;
  BoolResult endSection() override;
  std::optional<std::string> nextKey() override;
  BoolResult readBool(std::string_view key, bool& value) override;
  BoolResult readInteger(std::string_view key, omInt64& value) override;
  BoolResult readUnsigned(std::string_view key, omUInt64& value) override;
  BoolResult readReal(std::string_view key, omReal64& value) override;
  BoolResult readReal(std::string_view key, omReal32& value) override;
  BoolResult readText(std::string_view key, std::string& value) override;
  BoolResult readArray(std::string_view key, NumericArraySink& sink) override;
  BoolResult close() override;
  BoolResult state() const override;

 private:
  struct Reader;
  std::unique_ptr<Reader> _reader;
};

}  // namespace ormix
