#pragma once

#include <ORMIXGeometry/Tools/Stl/ScientificText.h>
#include <ORMIXGeometry/Tools/Stl/StlFacets.h>

#include <charconv>
#include <string_view>

// Not installed.
namespace ormix::geom::detail {

/// How coordinates are written.
struct NumberFormat {
  int precision = s_shortestDigits;  ///< decimals in scientific notation, or `s_shortestDigits`
  bool isMoved = false;              ///< whether the offsets are added, to integers as omReal32
  StlOffsets offsets{};              ///< translation on each axis
};

/// The coordinate of an axis as it is written: unchanged, or translated.
template <class T, class Write>
char* withCoordinate(const NumberFormat& format, std::size_t axis, T coordinate, Write write) {
  return format.isMoved ? write(stlCoordinate(coordinate, format.offsets[axis])) : write(coordinate);
}

/// Writes the lines of a text file of vertices and faces.
class MeshText {
 public:
  /// Nothing is written yet.
  MeshText(std::ostream& stream, const NumberFormat& format)
      : _stream(stream), _block(stream, 3 * (scientificLength(16) + 1) + 16), _format(format) {}

  /// Writes a text and a line end.
  void writeLine(const std::string& line);
  /// Writes a short text, three coordinates and a line end.
  template <class T>
  void writeVertex(std::string_view begin, const Point3dData<T>& vertex) {
    char* out = append(_block.room(), begin);
    const auto write = [&](std::size_t axis, T coordinate) {
      out = withCoordinate(_format, axis, coordinate, [&](auto number) { return writeNumber(out, number); });
      *out++ = axis == 2 ? '\n' : ' ';
    };
    write(0, vertex.getX());
    write(1, vertex.getY());
    write(2, vertex.getZ());
    _block.setEnd(out);
  }
  /// Writes a short text, three indices and a line end.
  void writeIndices(std::string_view begin, omUInt64 a, omUInt64 b, omUInt64 c);
  /// Writes what is left in memory; to be called at the end.
  void finish() { _block.write(); }

 private:
  static char* append(char* out, std::string_view text) { return out + text.copy(out, text.size()); }
  template <class Number>
  char* writeNumber(char* out, Number number) const {
    if constexpr (std::is_integral_v<Number>)
      return std::to_chars(out, out + 24, number).ptr;
    else
      return _format.precision == s_shortestDigits ? writeShortest(out, number)
                                                   : writeScientific(out, number, _format.precision);
  }

  std::ostream& _stream;
  StlBlock _block;
  NumberFormat _format;
};

}  // namespace ormix::geom::detail
