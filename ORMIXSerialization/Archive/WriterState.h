#pragma once

#include <ORMIXSerialization/Archive/ByteOutput.h>
#include <ORMIXSerialization/Archive/FirstFailure.h>

#include <iosfwd>
#include <string_view>

namespace ormix {

/// Number of sections that may be open at once in an archive.
inline constexpr std::size_t s_maxArchiveDepth = 1000;

/// What both spellings share when writing: the stream, the sections open and the first failure.
class WriterState {
 public:
  explicit WriterState(std::ostream& stream);

  /// Whether an entry with this key may be started: nothing failed, the archive is open and the key is UTF-8.
  bool accepts(std::string_view key);
  /// The same for a section, which counts as open from here on.
  bool acceptsSection(std::string_view key);
  /// Whether there is a section to close, which counts as closed from here on.
  bool leavesSection();
  /// Whether the text may be written; it fails the archive otherwise.
  bool acceptsText(std::string_view key, std::string_view text);
  /// Success, or the first failure; asks the stream as well.
  BoolResult result();

  /// Whether the archive's end is still to be written; no entry is accepted from here on.
  bool beginClose();
  /// Flushes the stream.
  BoolResult endClose();

  std::size_t depth() const { return _depth; }

  ByteOutput out;

 private:
  FirstFailure _failure;
  std::size_t _depth = 0;
  bool _closed = false;
};

}  // namespace ormix
