#pragma once

#include <ORMIXSerialization/Archive/BaseOArchive.h>

#include <iosfwd>
#include <memory>

namespace ormix {

/// Writes an archive as CBOR (RFC 8949): the archive and every section as an array, every entry as a map of one pair,
/// and numeric arrays as little-endian typed arrays (RFC 8746) with their dimensions. Numbers keep their bits. The
/// stream is written in blocks, without seeking.
class ORMIX_SERIALIZATION_API CborOArchive final : public BaseOArchive {
 public:
  /// Writes the header of the archive.
  /// \param stream open in binary mode; must outlive the archive
  explicit CborOArchive(std::ostream& stream);
  /// Closes the archive. Call `close` before to learn whether that fails.
  ~CborOArchive() override;

  BoolResult beginSection(std::string_view key) override;
  BoolResult endSection() override;
  BoolResult writeBool(std::string_view key, bool value) override;
  BoolResult writeInteger(std::string_view key, omInt64 value) override;
  BoolResult writeUnsigned(std::string_view key, omUInt64 value) override;
  BoolResult writeReal(std::string_view key, omReal64 value) override;
  BoolResult writeReal(std::string_view key, omReal32 value) override;
  BoolResult writeText(std::string_view key, std::string_view value) override;
  BoolResult writeArray(std::string_view key, const NumericArrayView& array) override;
  BoolResult close() override;

 private:
  struct Writer;
  std::unique_ptr<Writer> _writer;
};

}  // namespace ormix
