#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>

#include <array>
#include <iosfwd>
#include <string_view>
#include <type_traits>
#include <vector>

// Not installed.
namespace ormix::geom::detail {

/// The translation that is added to the coordinates, on each axis.
using StlOffsets = std::array<omReal32, 3>;

/// The unit normal of a triangle, computed in omReal64; three times +0 for a triangle without area.
template <class T>
std::array<omReal32, 3> stlNormal(const Point3dData<T>& a, const Point3dData<T>& b, const Point3dData<T>& c);

/// The translated coordinate as it is written: that of a floating type in this type, an integer as omReal32.
template <class T>
auto stlCoordinate(T coordinate, omReal32 offset) {
  if constexpr (std::is_floating_point_v<T>)
    return coordinate + static_cast<T>(offset);
  else
    return static_cast<omReal32>(coordinate) + offset;
}

/// A buffer of the bytes of facets, which are written to a stream in blocks.
class StlBlock {
 public:
  /// \param largestFacet the most bytes that are written to the buffer between two calls of `room`
  StlBlock(std::ostream& stream, std::size_t largestFacet)
      : _stream(stream), _bytes(s_size + largestFacet), _at(_bytes.data()) {}

  /// The address where the next facet is to be written; `largestFacet` bytes are free there.
  char* room() {
    if (static_cast<std::size_t>(_at - _bytes.data()) > s_size) write();
    return _at;
  }
  /// To be called with the address after the last byte of the facet.
  void setEnd(char* end) { _at = end; }
  /// Writes the bytes in the buffer to the stream.
  void write();

 private:
  static constexpr std::size_t s_size = std::size_t(1) << 17;
  std::ostream& _stream;
  std::vector<char> _bytes;
  char* _at;
};

/// The precision that stands for the fewest digits that read back as the same number; any other is the number of
/// decimals in scientific notation.
inline constexpr int s_shortestDigits = -1;

/// Writes triangles as ASCII facets, one keyword on each line.
class StlAsciiFacets {
 public:
  /// \param precision decimals, or `s_shortestDigits`
  StlAsciiFacets(std::ostream& stream, int precision, const StlOffsets& offsets);
  /// Writes a triangle.
  template <class T>
  void operator()(const Point3dData<T>& a, const Point3dData<T>& b, const Point3dData<T>& c);
  /// Writes the bytes left in the buffer; to be called after the last triangle.
  void finish() { _block.write(); }

 private:
  template <class T>
  char* writeTriple(char* out, T x, T y, T z) const;
  template <class T>
  char* writeNumber(char* out, T value) const;
  template <class T>
  char* writeVertex(char* out, const Point3dData<T>& vertex) const;

  StlBlock _block;
  int _precision;
  StlOffsets _offsets;
};

/// Writes triangles as records of a binary file.
class StlBinaryFacets {
 public:
  /// Nothing is written yet.
  StlBinaryFacets(std::ostream& stream, const StlOffsets& offsets) : _block(stream, 50), _offsets(offsets) {}
  /// Writes a triangle.
  template <class T>
  void operator()(const Point3dData<T>& a, const Point3dData<T>& b, const Point3dData<T>& c);
  /// Writes the bytes left in the buffer; to be called after the last triangle.
  void finish() { _block.write(); }

 private:
  StlBlock _block;
  StlOffsets _offsets;
};

}  // namespace ormix::geom::detail
