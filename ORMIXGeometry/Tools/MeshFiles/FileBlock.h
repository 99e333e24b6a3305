#pragma once

#include <ORMIXGeometry/Tools/Stl/StlInput.h>

#include <algorithm>
#include <vector>

// Not installed.
namespace ormix::geom::detail {

/// A window over the bytes of an input that moves forward: those from `at` to `end` are in memory. It grows only where
/// more unread bytes are asked for, that is for a line that is longer than a block.
class FileBlock {
 public:
  /// \param input must stay valid as long as this object
  explicit FileBlock(StlInput& input);

  /// The unread bytes in memory; one more byte behind them may be written to.
  /// @{
  char* getAt() { return _at; }
  char* getEnd() { return _end; }
  std::size_t getNbUnread() const { return static_cast<std::size_t>(_end - _at); }
  /// @}
  /// Says that the bytes before this address have been read.
  void setAt(char* at) { _at = at; }

  /// Moves the unread bytes to the start of the memory and reads more behind them; false when the input has ended.
  bool more();
  /// Whether there are that many unread bytes, after reading more if need be.
  bool ensure(std::size_t nbBytes) {
    while (getNbUnread() < nbBytes)
      if (!more()) return false;
    return true;
  }

  /// The number of bytes before `at`.
  omUInt64 getOffset() const { return _offset + static_cast<omUInt64>(_at - _bytes.data()); }
  /// Whether the input has failed, which its end is not.
  bool hasFailed() const { return _input.hasFailed(); }
  /// The number of bytes of the input that have not been read, as far as its length is known.
  omUInt64 getNbLeft() const { return _input.getSize() - std::min(_input.getSize(), getOffset()); }

 private:
  StlInput& _input;
  std::vector<char> _bytes;
  char* _at;
  char* _end;
  omUInt64 _offset = 0;
};

}  // namespace ormix::geom::detail
