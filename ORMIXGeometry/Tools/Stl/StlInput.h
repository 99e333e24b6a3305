#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <string>
#include <string_view>

namespace ormix::geom {

/// Sequential access to the bytes of a file of a mesh, in any format, or of memory.
class ORMIX_GEOMETRY_API StlInput {
 public:
  /// Reads from memory, which must stay valid as long as this object.
  explicit StlInput(std::string_view bytes) : _bytes(bytes), _size(bytes.size()) {}
  /// No bytes, until a file is opened.
  StlInput() = default;
  ~StlInput();
  StlInput(const StlInput&) = delete;
  StlInput& operator=(const StlInput&) = delete;

  /// Opens a regular file. Fails with a message for anything else: a directory, a device, or a pipe, which might never
  /// end.
  BoolResult open(const std::string& path);

  /// Reads up to `size` bytes and returns how many were read: fewer only at the end or when reading fails.
  std::size_t read(char* to, std::size_t size);
  /// Whether reading has failed, which the end of the file is not; no more bytes follow then, not even after rewind().
  bool hasFailed() const { return _failed; }
  /// The length in bytes, as it was when the file was opened.
  omUInt64 getSize() const { return _size; }
  /// Returns to the first byte, unless reading has failed.
  void rewind();

  /// The number of triangles for which to reserve memory: as many as the file has room for at `bytesOfTriangle` bytes
  /// each, but at most 256 MiB of coordinates, since a sparse file may declare a length without having the data.
  std::size_t getRoom(omUInt64 bytesOfTriangle) const;

 private:
  std::string_view _bytes;
  omUInt64 _size = 0;
  std::size_t _at = 0;
  int _file = -1;
  bool _failed = false;
};

}  // namespace ormix::geom
