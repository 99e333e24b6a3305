#include <ORMIXGeometry/Tools/MeshFiles/FaceReader.h>
#include <ORMIXGeometry/Tools/MeshFiles/PlyBytes.h>
#include <ORMIXGeometry/Tools/MeshFiles/PlyFile.h>
#include <ORMIXMath/Scalar/Cast.h>

#include <array>
#include <ostream>

namespace ormix::geom::detail {

namespace {

/// A number of a file as an index or a count; -1 where it is none.
template <class Number>
omInt64 toIndex(Number number) {
  if constexpr (std::is_floating_point_v<Number>)
    return number >= 0 && number < Number(1e15) ? static_cast<omInt64>(number) : -1;
  else if constexpr (std::is_same_v<Number, omUInt64>)
    return number >> 62 == 0 ? static_cast<omInt64>(number) : -1;
  else
    return omInt64(number);
}

template <class Real>
class PlyReader : FaceReader<Real> {
  using Base = FaceReader<Real>;
  using Base::_block;
  using Base::_contents;
  using Base::_isText;
  using Base::_lines;

 public:
  explicit PlyReader(StlInput& input) : Base(input, LineContinuation::None) {}

  IndexedFaces<Real> read(eMeshFileFormat& format) {
    if (takeHeader()) takeElements();
    format = _header.format;
    return std::move(_contents);
  }

 private:
  bool takeHeader() {
    const std::string wrong = readPlyHeader(_lines, _header);
    if (!wrong.empty()) return Base::stop(_block.getNbUnread() == 0 ? eSS_EndOfFile : eSS_UnexpectedWord, wrong);
    _isSwapped = isSwapped(_header.format);
    _contents.nbObjects = 1;
    bool hasVertices = false;
    for (const PlyElement& element : _header.elements) {
      const bool isVertex = element.name == "vertex";
      if (isVertex && !(element.has(PlyRole::X) && element.has(PlyRole::Y) && element.has(PlyRole::Z)))
        return Base::stop(eSS_UnexpectedWord, "its vertices have no x, y and z");
      if (element.name == "face" && !element.has(PlyRole::Corners))
        return Base::stop(eSS_UnexpectedWord, "its faces have no list of vertices");
      hasVertices |= isVertex;
    }
    return hasVertices || Base::stop(eSS_UnexpectedWord, "it has no vertices");
  }

  void takeElements() {
    _isText = _header.format == eMFF_PlyAscii;
    for (const PlyElement& element : _header.elements) {
      if (element.properties.empty()) continue;
      const omUInt64 smallest = _isText ? 2 * element.properties.size() : element.getSmallestSize();
      const std::size_t room = Base::getRoom(element.nbRecords, smallest);
      if (element.name == "vertex") _contents.vertexColl.reserve(_contents.vertexColl.size() + room);
      if (element.name == "face") _contents.faceColl.reserve(room);
      for (omUInt64 record = 0; record < element.nbRecords; ++record) {
        const bool hasMore = _isText ? _lines.next() : _block.ensure(1);
        if (!hasMore) {
          Base::stop(eSS_EndOfFile, "it ends after " + std::to_string(record) + " of " +
                                        std::to_string(element.nbRecords) + " records of the element " + element.name);
          return;
        }
        if (!(_isText ? takeText(element) : takeBytes(element)) || !keep(element)) return;
      }
    }
    Base::finish(eSS_EndOfSolid);
  }

  /// Stores the vertex or the face of a record that was read.
  bool keep(const PlyElement& element) {
    if (element.name == "vertex") return Base::addVertex(_point[0], _point[1], _point[2]);
    return element.name != "face" || Base::endFace();
  }

  bool takeText(const PlyElement& element) {
    for (const PlyProperty& property : element.properties)
      if (!(property.isList() ? takeTextList(property) : takeTextNumber(property)))
        return Base::stopAtNumber("a record of the element " + element.name);
    return true;
  }
  bool takeTextNumber(const PlyProperty& property) {
    Real number = 0;
    if (!Base::takeNumber(number)) return false;
    if (property.role < PlyRole::Corners) _point[static_cast<std::size_t>(property.role)] = number;
    return true;
  }
  bool takeTextList(const PlyProperty& property) {
    omInt64 nbNumbers = 0;
    if (!Base::takeInteger(nbNumbers)) return false;
    _lines.skipWord();
    for (omInt64 at = 0; at < nbNumbers; ++at) {
      if (property.role != PlyRole::Corners) {
        Real number = 0;
        if (!Base::takeNumber(number)) return false;
        continue;
      }
      omInt64 index = 0;
      if (!Base::takeInteger(index)) return false;
      _lines.skipWord();
      _contents.faceColl.addCorner(index);
    }
    return true;
  }

  bool takeBytes(const PlyElement& element) {
    for (const PlyProperty& property : element.properties)
      if (!(property.isList() ? takeByteList(property) : takeByteNumber(property)))
        return Base::stop(eSS_InsideTriangle, "it ends inside a record of the element " + element.name);
    return true;
  }
  bool takeByteNumber(const PlyProperty& property) {
    const std::size_t size = sizeOf(property.type);
    if (!_block.ensure(size)) return false;
    if (property.role < PlyRole::Corners)
      _point[static_cast<std::size_t>(property.role)] =
          withNumber(property.type, _block.getAt(), _isSwapped, [](auto number) { return castScalar<Real>(number); });
    _block.setAt(_block.getAt() + size);
    return true;
  }
  /// A list is taken in parts, so that its declared length takes no memory.
  bool takeByteList(const PlyProperty& property) {
    if (!_block.ensure(sizeOf(property.countType))) return false;
    const auto index = [](auto number) { return toIndex(number); };
    omInt64 nbNumbers = withNumber(property.countType, _block.getAt(), _isSwapped, index);
    _block.setAt(_block.getAt() + sizeOf(property.countType));
    const std::size_t size = sizeOf(property.type);
    while (nbNumbers > 0) {
      if (!_block.ensure(size)) return false;
      const std::size_t nbHere = std::min(static_cast<std::size_t>(nbNumbers), _block.getNbUnread() / size);
      if (property.role == PlyRole::Corners)
        for (std::size_t at = 0; at < nbHere; ++at)
          _contents.faceColl.addCorner(withNumber(property.type, _block.getAt() + at * size, _isSwapped, index));
      _block.setAt(_block.getAt() + nbHere * size);
      nbNumbers -= static_cast<omInt64>(nbHere);
    }
    return true;
  }

  PlyHeader _header;
  bool _isSwapped = false;
  std::array<Real, 3> _point{};
};

template <class Number>
constexpr const char* s_typeName = nullptr;
template <>
constexpr const char* s_typeName<omInt32> = "int";
template <>
constexpr const char* s_typeName<omUInt32> = "uint";
template <>
constexpr const char* s_typeName<omReal32> = "float";
template <>
constexpr const char* s_typeName<omReal64> = "double";

template <class T>
std::string headerOf(const TriMesh3d<T>& mesh, eMeshFileFormat format, bool isMoved) {
  const std::string type = std::is_integral_v<T> && isMoved ? s_typeName<omReal32> : s_typeName<T>;
  const char* spelling = format == eMFF_PlyAscii          ? "ascii"
                         : format == eMFF_PlyLittleEndian ? "binary_little_endian"
                                                          : "binary_big_endian";
  std::string header = "ply\nformat " + std::string(spelling) + " 1.0\nelement vertex ";
  header += std::to_string(mesh.getNbVertices());
  for (const char* axis : {" x", " y", " z"}) header += "\nproperty " + type + axis;
  header += "\nelement face " + std::to_string(mesh.getNbTriangles());
  return header + "\nproperty list uchar uint vertex_indices\nend_header";
}

/// Writes vertices and faces as bytes.
template <class T>
void writeBytes(std::ostream& stream, const TriMesh3d<T>& mesh, bool isSwapped, const NumberFormat& numbers) {
  StlBlock block(stream, 3 * sizeof(omReal64));
  for (std::size_t vertex = 0; vertex < mesh.getNbVertices(); ++vertex) {
    char* out = block.room();
    const Point3dData<T>& point = mesh.getVertex(vertex);
    const std::array<T, 3> coords{point.getX(), point.getY(), point.getZ()};
    for (std::size_t axis = 0; axis < 3; ++axis)
      out =
          withCoordinate(numbers, axis, coords[axis], [&](auto number) { return storeNumber(out, number, isSwapped); });
    block.setEnd(out);
  }
  visitTriangleIndices(mesh, [&](omUInt32 a, omUInt32 b, omUInt32 c) {
    char* out = block.room();
    *out++ = 3;
    for (const omUInt32 index : {a, b, c}) out = storeNumber(out, index, isSwapped);
    block.setEnd(out);
  });
  block.write();
}

}  // namespace

template <class Real>
IndexedFaces<Real> readPly(StlInput& input, eMeshFileFormat& format) {
  return PlyReader<Real>(input).read(format);
}

template IndexedFaces<omReal32> readPly(StlInput&, eMeshFileFormat&);
template IndexedFaces<omReal64> readPly(StlInput&, eMeshFileFormat&);

template <class T>
void writePly(std::ostream& stream, const TriMesh3d<T>& mesh, eMeshFileFormat format, const NumberFormat& numbers) {
  MeshText text(stream, numbers);
  text.writeLine(headerOf(mesh, format, numbers.isMoved));
  if (format != eMFF_PlyAscii) return writeBytes(stream, mesh, isSwapped(format), numbers);
  for (std::size_t vertex = 0; vertex < mesh.getNbVertices(); ++vertex) text.writeVertex("", mesh.getVertex(vertex));
  visitTriangleIndices(mesh, [&](omUInt32 a, omUInt32 b, omUInt32 c) { text.writeIndices("3 ", a, b, c); });
  text.finish();
}

template void writePly(std::ostream&, const TriMesh3d<omInt32>&, eMeshFileFormat, const NumberFormat&);
template void writePly(std::ostream&, const TriMesh3d<omUInt32>&, eMeshFileFormat, const NumberFormat&);
template void writePly(std::ostream&, const TriMesh3d<omReal32>&, eMeshFileFormat, const NumberFormat&);
template void writePly(std::ostream&, const TriMesh3d<omReal64>&, eMeshFileFormat, const NumberFormat&);

}  // namespace ormix::geom::detail
