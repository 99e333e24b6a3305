#include <ORMIXGeometry/Tools/MeshFiles/MeshText.h>

#include <ostream>

namespace ormix::geom::detail {

void MeshText::writeLine(const std::string& line) {
  _block.write();
  _stream.write(line.data(), static_cast<std::streamsize>(line.size()));
  _stream.put('\n');
}

void MeshText::writeIndices(std::string_view begin, omUInt64 a, omUInt64 b, omUInt64 c) {
  char* out = append(_block.room(), begin);
  for (const omUInt64 index : {a, b, c}) {
    out = std::to_chars(out, out + 24, index).ptr;
    *out++ = ' ';
  }
  out[-1] = '\n';
  _block.setEnd(out);
}

}  // namespace ormix::geom::detail
