#include <ORMIXGeometry/Tools/MeshFiles/FaceReader.h>
#include <ORMIXGeometry/Tools/MeshFiles/OffFile.h>

namespace ormix::geom::detail {

namespace {

template <class Real>
class OffReader : FaceReader<Real> {
  using Base = FaceReader<Real>;
  using Base::_contents;
  using Base::_lines;

 public:
  explicit OffReader(StlInput& input) : Base(input, LineContinuation::None) {}

  IndexedFaces<Real> read() {
    if (takeHeader() && takeVertices() && takeFaces()) Base::finish(eSS_EndOfSolid);
    return std::move(_contents);
  }

 private:
  bool takeHeader() {
    std::string_view word;
    if (!_lines.next() || !_lines.nextWord(word)) return stopAtCounts();
    if (std::from_chars(word.data(), word.data() + word.size(), _nbVertices).ptr != word.data() + word.size()) {
      if (!isOffKeyword(word)) return Base::stop(eSS_UnexpectedWord, "it does not begin with the word OFF");
      if (word.find_first_of("4n") != word.npos)
        return Base::stop(eSS_UnexpectedWord, "its vertices do not have three coordinates");
      if (!Base::takeInteger(_nbVertices)) return stopAtCounts();
    }
    _contents.nbObjects = 1;
    if (!Base::takeInteger(_nbFaces)) return stopAtCounts();
    if (_nbVertices >= 0 && _nbFaces >= 0) return true;
    return Base::stop(eSS_NoNumber, "a number of vertices or faces is negative");
  }

  bool stopAtCounts() {
    std::string_view word;
    if (_lines.nextWord(word) && word == "BINARY")
      return Base::stop(eSS_UnexpectedWord, "it is a binary OFF file, which is not read");
    return Base::stop(eSS_NoNumber, "it has no numbers of vertices and faces");
  }

  bool stopAfter(std::size_t nbRead, omInt64 nbDeclared, const char* what) {
    return Base::stop(eSS_EndOfFile,
                      "it ends after " + std::to_string(nbRead) + " of " + std::to_string(nbDeclared) + ' ' + what);
  }

  bool takeVertices() {
    _contents.vertexColl.reserve(Base::getRoom(static_cast<omUInt64>(_nbVertices), 6));
    for (omInt64 vertex = 0; vertex < _nbVertices; ++vertex) {
      Real x = 0, y = 0, z = 0;
      if (!_lines.next()) return stopAfter(_contents.vertexColl.size(), _nbVertices, "vertices");
      if (!Base::takeNumber(x) || !Base::takeNumber(y) || !Base::takeNumber(z)) return Base::stopAtNumber("a vertex");
      if (!Base::addVertex(x, y, z)) return false;
    }
    return true;
  }

  bool takeFaces() {
    _contents.faceColl.reserve(Base::getRoom(static_cast<omUInt64>(_nbFaces), 8));
    for (omInt64 face = 0; face < _nbFaces; ++face) {
      omInt64 nbCorners = 0;
      if (!_lines.next()) return stopAfter(_contents.faceColl.size(), _nbFaces, "faces");
      if (!Base::takeInteger(nbCorners)) return Base::stopAtNumber("a face");
      for (omInt64 corner = 0; corner < nbCorners; ++corner) {
        omInt64 index = 0;
        if (!Base::takeInteger(index)) return Base::stopAtNumber("a face");
        _contents.faceColl.addCorner(index);
      }
      if (!Base::endFace()) return false;
    }
    return true;
  }

  omInt64 _nbVertices = 0, _nbFaces = 0;
};

}  // namespace

bool isOffKeyword(std::string_view word) {
  for (const std::string_view letters : {"ST", "C", "N", "4", "n"})
    if (word.substr(0, letters.size()) == letters) word.remove_prefix(letters.size());
  return word == "OFF";
}

template <class Real>
IndexedFaces<Real> readOff(StlInput& input) {
  return OffReader<Real>(input).read();
}

template IndexedFaces<omReal32> readOff(StlInput&);
template IndexedFaces<omReal64> readOff(StlInput&);

template <class T>
void writeOff(std::ostream& stream, const TriMesh3d<T>& mesh, const NumberFormat& format) {
  MeshText text(stream, format);
  text.writeLine("OFF");
  text.writeIndices("", mesh.getNbVertices(), mesh.getNbTriangles(), 0);
  for (std::size_t vertex = 0; vertex < mesh.getNbVertices(); ++vertex) text.writeVertex("", mesh.getVertex(vertex));
  visitTriangleIndices(mesh, [&](omUInt32 a, omUInt32 b, omUInt32 c) { text.writeIndices("3 ", a, b, c); });
  text.finish();
}

template void writeOff(std::ostream&, const TriMesh3d<omInt32>&, const NumberFormat&);
template void writeOff(std::ostream&, const TriMesh3d<omUInt32>&, const NumberFormat&);
template void writeOff(std::ostream&, const TriMesh3d<omReal32>&, const NumberFormat&);
template void writeOff(std::ostream&, const TriMesh3d<omReal64>&, const NumberFormat&);

}  // namespace ormix::geom::detail
