#pragma once

#include <ORMIXSerialization/Archive/BaseIArchive.h>

#include <iosfwd>
#include <memory>

namespace ormix {

/// Reads what `JsonOArchive` writes, with any white space. A stream that begins with a list is read into memory as a
/// whole, without seeking; it must be shorter than 4 GiB. Of any other stream only the beginning is read.
class ORMIX_SERIALIZATION_API JsonIArchive final : public BaseIArchive {
 public:
  /// Reads the stream and the header of the archive; `state()` is a failure if there is none.
  /// \param stream need not outlive the archive
  /// \throw std::bad_alloc when the stream does not fit into memory
  explicit JsonIArchive(std::istream& stream);
  ~JsonIArchive() override;

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
  const std::string* peekKey() override;

 private:
  struct Reader;
  std::unique_ptr<Reader> _reader;
};

}  // namespace ormix
