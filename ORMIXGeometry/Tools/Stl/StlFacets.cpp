#include <ORMIXGeometry/Tools/Stl/ScientificText.h>
#include <ORMIXGeometry/Tools/Stl/StlFacets.h>
#include <ORMIXMath/Scalar/Cast.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

#include <algorithm>
#include <cstring>
#include <ostream>

namespace ormix::geom::detail {

namespace {

/// Copies a text whose length is known at compile time, and returns the end of the copy.
template <std::size_t N>
char* append(char* out, const char (&text)[N]) {
  std::memcpy(out, text, N - 1);
  return out + N - 1;
}

void writeLittleEndian(char* out, omReal32 value) {
  omUInt32 bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  if (__BYTE_ORDER__ == __ORDER_BIG_ENDIAN__) bits = __builtin_bswap32(bits);
  std::memcpy(out, &bits, sizeof bits);
}

}  // namespace

template <class T>
std::array<omReal32, 3> stlNormal(const Point3dData<T>& a, const Point3dData<T>& b, const Point3dData<T>& c) {
  const auto real = [](T coordinate) { return static_cast<omReal64>(coordinate); };
  const omReal64 ax = real(a.getX()), ay = real(a.getY()), az = real(a.getZ());
  const omReal64 ux = real(b.getX()) - ax, uy = real(b.getY()) - ay, uz = real(b.getZ()) - az;
  const omReal64 vx = real(c.getX()) - ax, vy = real(c.getY()) - ay, vz = real(c.getZ()) - az;
  const omReal64 x = uy * vz - uz * vy, y = uz * vx - ux * vz, z = ux * vy - uy * vx;
  const omReal64 length = euclideanNorm(x, y, z);
  if (length == 0) return {};  // x, y and z may be -0, which must not be written
  return {static_cast<omReal32>(x / length), static_cast<omReal32>(y / length), static_cast<omReal32>(z / length)};
}

void StlBlock::write() {
  _stream.write(_bytes.data(), _at - _bytes.data());
  _at = _bytes.data();
}

StlAsciiFacets::StlAsciiFacets(std::ostream& stream, int precision, const StlOffsets& offsets)
    : _block(stream, 12 * (scientificLength(std::max(precision, 16)) + 1) + 100),
      _precision(precision),
      _offsets(offsets) {}

template <class T>
char* StlAsciiFacets::writeNumber(char* out, T value) const {
  return _precision == s_shortestDigits ? writeShortest(out, value) : writeScientific(out, value, _precision);
}

template <class T>
char* StlAsciiFacets::writeTriple(char* out, T x, T y, T z) const {
  out = writeNumber(out, x);
  *out++ = ' ';
  out = writeNumber(out, y);
  *out++ = ' ';
  out = writeNumber(out, z);
  *out++ = '\n';
  return out;
}

template <class T>
char* StlAsciiFacets::writeVertex(char* out, const Point3dData<T>& vertex) const {
  return writeTriple(append(out, "vertex "), stlCoordinate(vertex.getX(), _offsets[0]),
                     stlCoordinate(vertex.getY(), _offsets[1]), stlCoordinate(vertex.getZ(), _offsets[2]));
}

template <class T>
void StlAsciiFacets::operator()(const Point3dData<T>& a, const Point3dData<T>& b, const Point3dData<T>& c) {
  const auto [x, y, z] = stlNormal(a, b, c);
  char* out = writeTriple(append(_block.room(), "facet normal "), x, y, z);
  out = append(out, "outer loop\n");
  out = writeVertex(out, a);
  out = writeVertex(out, b);
  out = writeVertex(out, c);
  _block.setEnd(append(out, "endloop\nendfacet\n"));
}

template <class T>
void StlBinaryFacets::operator()(const Point3dData<T>& a, const Point3dData<T>& b, const Point3dData<T>& c) {
  char* out = _block.room();
  const auto write = [&out](omReal32 value) {
    writeLittleEndian(out, value);
    out += 4;
  };
  for (const omReal32 component : stlNormal(a, b, c)) write(component);
  for (const Point3dData<T>* vertex : {&a, &b, &c}) {
    write(castScalar<omReal32>(stlCoordinate(vertex->getX(), _offsets[0])));
    write(castScalar<omReal32>(stlCoordinate(vertex->getY(), _offsets[1])));
    write(castScalar<omReal32>(stlCoordinate(vertex->getZ(), _offsets[2])));
  }
  *out++ = 0;
  *out++ = 0;
  _block.setEnd(out);
}

#define ORMIX_STL_FACETS(T)                                                                                        \
  template std::array<omReal32, 3> stlNormal(const Point3dData<T>&, const Point3dData<T>&, const Point3dData<T>&); \
  template void StlAsciiFacets::operator()(const Point3dData<T>&, const Point3dData<T>&, const Point3dData<T>&);   \
  template void StlBinaryFacets::operator()(const Point3dData<T>&, const Point3dData<T>&, const Point3dData<T>&);
ORMIX_STL_FACETS(omInt32)
ORMIX_STL_FACETS(omUInt32)
ORMIX_STL_FACETS(omReal32)
ORMIX_STL_FACETS(omReal64)
#undef ORMIX_STL_FACETS

}  // namespace ormix::geom::detail
