#pragma once

#include <ORMIXSerialization/Archive/ByteOutput.h>
#include <ORMIXSerialization/Archive/FirstFailure.h>

#include <iosfwd>
#include <string_view>

namespace ormix {

/// The maximum number of nested sections in an archive.
inline constexpr std::size_t s_maxArchiveDepth = 1000;

/// The state that writing has in both formats: the output, the number of open sections and the first failure.
class WriterState {
 public:
  /// \param stream must outlive this object
  explicit WriterState(std::ostream& stream);

  /// Whether an entry with this key can be written: nothing has failed, the archive is not closed and the key is UTF-8.
  /// If not, the archive fails.
  bool accepts(std::string_view key);
  /// The same for a section, which is open afterwards; fails when too many are open.
  bool openSection(std::string_view key);
  /// Marks the current section as closed; fails when there is none.
  bool closeSection();
  /// The same as `accepts` for an entry with a text, which must be UTF-8.
  bool acceptsText(std::string_view key, std::string_view text);
  /// Success, or the first failure; tests the state of the stream as well.
  BoolResult result() { return out.good() && !_failure.failed() ? BoolResult() : failedResult(); }

  /// Closes the archive for further entries. Returns whether the caller must write the end of the archive.
  bool beginClose();
  /// Flushes the stream and returns `result()`.
  BoolResult endClose();

  /// The number of open sections.
  std::size_t depth() const { return _depth; }

  ByteOutput out;  ///< the bytes of the archive

 private:
  BoolResult failedResult();

  FirstFailure _failure;
  std::size_t _depth = 0;
  bool _closed = false;
};

}  // namespace ormix
