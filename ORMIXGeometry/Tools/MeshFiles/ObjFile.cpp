#include <ORMIXGeometry/Tools/MeshFiles/FaceReader.h>
#include <ORMIXGeometry/Tools/MeshFiles/ObjFile.h>

namespace ormix::geom::detail {

namespace {

template <class Real>
class ObjReader : FaceReader<Real> {
  using Base = FaceReader<Real>;
  using Base::_contents;
  using Base::_lines;

 public:
  explicit ObjReader(StlInput& input) : Base(input, LineContinuation::Backslash) {}

  IndexedFaces<Real> read() {
    while (_lines.next())
      if (!takeStatement()) break;
    if (_contents.vertexColl.empty()) Base::stop(eSS_EndOfFile, "it has no vertices");
    Base::finish(eSS_EndOfFile);
    return std::move(_contents);
  }

 private:
  bool takeStatement() {
    std::string_view keyword;
    _lines.nextWord(keyword);
    if (keyword == "v") return takeVertex();
    if (keyword == "f") return takeFace();
    if (keyword == "o") ++_contents.nbObjects;
    return true;
  }

  bool takeVertex() {
    Real x = 0, y = 0, z = 0;
    if (!_lines.nextNumber(x) || !_lines.nextNumber(y) || !_lines.nextNumber(z)) {
      const bool isShort = _lines.atEnd();
      return Base::stop(eSS_NoNumber, isShort ? "a vertex has fewer than three numbers" : "a coordinate is no number");
    }
    return Base::addVertex(x, y, z);
  }

  /// A corner that is no integer has no vertex, so that the face is left out.
  bool takeFace() {
    const auto nbVertices = static_cast<omInt64>(_contents.vertexColl.size());
    while (!_lines.atEnd()) {
      omInt64 index = 0;
      if (!_lines.nextInteger(index)) index = 0;
      _lines.skipWord();
      _contents.faceColl.addCorner(index < 0 ? nbVertices + std::max(index, -nbVertices - 1) : index - 1);
    }
    return Base::endFace();
  }
};

}  // namespace

template <class Real>
IndexedFaces<Real> readObj(StlInput& input) {
  return ObjReader<Real>(input).read();
}

template IndexedFaces<omReal32> readObj(StlInput&);
template IndexedFaces<omReal64> readObj(StlInput&);

template <class T>
void writeObj(std::ostream& stream, const TriMesh3d<T>& mesh, const std::string& name, const NumberFormat& format) {
  MeshText text(stream, format);
  text.writeLine("o " + name);
  for (std::size_t vertex = 0; vertex < mesh.getNbVertices(); ++vertex) text.writeVertex("v ", mesh.getVertex(vertex));
  visitTriangleIndices(mesh, [&](omUInt32 a, omUInt32 b, omUInt32 c) {
    text.writeIndices("f ", omUInt64(a) + 1, omUInt64(b) + 1, omUInt64(c) + 1);
  });
  text.finish();
}

template void writeObj(std::ostream&, const TriMesh3d<omInt32>&, const std::string&, const NumberFormat&);
template void writeObj(std::ostream&, const TriMesh3d<omUInt32>&, const std::string&, const NumberFormat&);
template void writeObj(std::ostream&, const TriMesh3d<omReal32>&, const std::string&, const NumberFormat&);
template void writeObj(std::ostream&, const TriMesh3d<omReal64>&, const std::string&, const NumberFormat&);

}  // namespace ormix::geom::detail
