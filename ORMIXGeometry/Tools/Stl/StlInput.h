#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <string>
#include <string_view>

namespace ormix::geom {

/// The bytes of an STL file, or of a text in memory, in blocks.
class ORMIX_GEOMETRY_API StlInput {
 public:
  /// Bytes in memory, which must stay where they are.
  explicit StlInput(std::string_view bytes) : _bytes(bytes), _size(bytes.size()) {}
  /// Nothing, until a file is opened.
  StlInput() = default;
  ~StlInput();
  StlInput(const StlInput&) = delete;
  StlInput& operator=(const StlInput&) = delete;

  /// Opens a regular file; anything else (a directory, a pipe, which might never end, a device) is refused with a
  /// message that says why.
  BoolResult open(const std::string& path);

  /// Reads up to `size` bytes, fewer only at the end or when reading fails.
  std::size_t read(char* to, std::size_t size);
  /// True when reading failed, which is not the end.
  bool hasFailed() const { return _failed; }
  /// Bytes there were at the beginning.
  omUInt64 getSize() const { return _size; }
  /// Starts again at the first byte.
  void rewind();

  /// How many triangles to make room for beforehand: as many as so many bytes can hold, but no more than 256 MiB of
  /// coordinates, since a file may have holes.
  std::size_t getRoom(omUInt64 bytesOfTriangle) const;

 private:
  std::string_view _bytes;
  omUInt64 _size = 0;
  std::size_t _at = 0;
  int _file = -1;
  bool _failed = false;
};

}  // namespace ormix::geom
