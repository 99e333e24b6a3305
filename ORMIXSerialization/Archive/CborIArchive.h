#pragma once

#include <ORMIXSerialization/Archive/BaseIArchive.h>

#include <iosfwd>
#include <memory>

namespace ormix {

/// Reads what `CborOArchive` writes, and other encodings of the same entries in CBOR: lists of definite or indefinite
/// length, reals of any width, integers for whole reals, typed arrays with other element types or big-endian byte
/// order, and lists of numbers. The archive must extend to the end of its stream, which is read in blocks, without
/// seeking.
class ORMIX_SERIALIZATION_API CborIArchive final : public BaseIArchive {
 public:
  /// Reads the header of the archive; `state()` is a failure if there is none.
  /// \param stream open in binary mode; must outlive the archive
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
  const std::string* peekKey() override;

 private:
  struct Reader;
  std::unique_ptr<Reader> _reader;
};

}  // namespace ormix
