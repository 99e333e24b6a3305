#pragma once

#include <ORMIXSerialization/Archive/BaseOArchive.h>

#include <iosfwd>
#include <memory>

namespace ormix {

/// Writes an archive as JSON, for people and for exchange with other programs: the archive, every section, every
/// numeric array and each of its rows as an array, every entry as an object of one member. A finite real is the
/// shortest number from which the same bits are read; the others are the strings "nan", "inf" and "-inf". Each entry of
/// the archive begins a line; lines of more than 100 characters are broken after a comma.
class ORMIX_SERIALIZATION_API JsonOArchive final : public BaseOArchive {
 public:
  /// Writes the header of the archive.
  /// \param stream must outlive the archive; its locale has no influence
  explicit JsonOArchive(std::ostream& stream);
  /// Closes the archive. Call `close` before to learn whether that fails.
  ~JsonOArchive() override;

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
