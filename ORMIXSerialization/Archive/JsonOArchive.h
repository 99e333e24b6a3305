#pragma once

#include <ORMIXSerialization/Archive/BaseOArchive.h>

#include <iosfwd>
#include <memory>

namespace ormix {

/// Writes an archive as JSON, to be read by people and to be exchanged: the archive and every section an array, every
/// entry an object of one member, the rows of numeric arrays arrays again. Reals are the shortest texts that read back
/// to the same bits, "nan", "inf" and "-inf" stand as texts. One line an entry, long lines are broken at a comma.
class ORMIX_SERIALIZATION_API JsonOArchive final : public BaseOArchive {
 public:
  /// \param stream must outlive the archive; its locale has no influence
  explicit JsonOArchive(std::ostream& stream);
  /// Closes the archive; a failure of that is only seen by those who call `close` themselves.
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
