#include <ORMIXGeometry/Tools/MeshFiles/FileBlock.h>

#include <cstring>

namespace ormix::geom::detail {

namespace {
constexpr std::size_t s_blockSize = std::size_t(1) << 18;
}

FileBlock::FileBlock(StlInput& input)
    : _input(input), _bytes(s_blockSize + 1), _at(_bytes.data()), _end(_bytes.data()) {
  more();
}

bool FileBlock::more() {
  const std::size_t kept = getNbUnread();
  _offset += static_cast<omUInt64>(_at - _bytes.data());
  if (kept != 0) std::memmove(_bytes.data(), _at, kept);
  _at = _bytes.data();
  _end = _at + kept;
  if (2 * kept > _bytes.size()) {
    std::vector<char> grown(2 * _bytes.size());
    std::memcpy(grown.data(), _at, kept);
    _bytes.swap(grown);
    _at = _bytes.data();
    _end = _at + kept;
  }
  const std::size_t got = _input.read(_end, _bytes.size() - 1 - kept);
  _end += got;
  return got != 0;
}

}  // namespace ormix::geom::detail
