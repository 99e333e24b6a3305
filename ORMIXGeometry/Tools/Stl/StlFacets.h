#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>

#include <array>
#include <iosfwd>
#include <string_view>
#include <type_traits>
#include <vector>

// Not installed.
namespace ormix::geom {

/// What is added to the coordinates on each axis.
using StlOffsets = std::array<omReal32, 3>;

/// The unit normal of a triangle, computed in omReal64; the zero vector where it has no area.
template <class T>
std::array<omReal32, 3> stlNormal(const Point3dData<T>& a, const Point3dData<T>& b, const Point3dData<T>& c);

/// A coordinate as it is written: floating coordinates in their own type, integers by way of omReal32.
template <class T>
auto stlCoordinate(T coordinate, omReal32 offset) {
  if constexpr (std::is_floating_point_v<T>)
    return coordinate + static_cast<T>(offset);
  else
    return static_cast<omReal32>(coordinate) + offset;
}

/// Collects the bytes of facets and gives them to a stream in blocks.
class StlBlock {
 public:
  /// \param largestFacet most bytes between two calls of `room`
  StlBlock(std::ostream& stream, std::size_t largestFacet)
      : _stream(stream), _bytes(s_size + largestFacet), _at(_bytes.data()) {}

  /// Where the next facet goes.
  char* room() {
    if (static_cast<std::size_t>(_at - _bytes.data()) > s_size) write();
    return _at;
  }
  void setEnd(char* end) { _at = end; }
  /// Gives what is left to the stream.
  void write();

 private:
  static constexpr std::size_t s_size = std::size_t(1) << 17;
  std::ostream& _stream;
  std::vector<char> _bytes;
  char* _at;
};

/// How the numbers of an ASCII file look: scientific notation with so many decimals, or the fewest digits that read
/// back as the same number.
inline constexpr int s_shortestDigits = -1;

/// Writes triangles as ASCII facets, a keyword a line.
class StlAsciiFacets {
 public:
  StlAsciiFacets(std::ostream& stream, int precision, const StlOffsets& offsets);
  template <class T>
  void operator()(const Point3dData<T>& a, const Point3dData<T>& b, const Point3dData<T>& c);
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
  StlBinaryFacets(std::ostream& stream, const StlOffsets& offsets) : _block(stream, 50), _offsets(offsets) {}
  template <class T>
  void operator()(const Point3dData<T>& a, const Point3dData<T>& b, const Point3dData<T>& c);
  void finish() { _block.write(); }

 private:
  StlBlock _block;
  StlOffsets _offsets;
};

}  // namespace ormix::geom
