#pragma once

#include <ORMIXGeometry/Tools/MeshFiles/IndexedFaces.h>
#include <ORMIXGeometry/Tools/MeshFiles/TextLines.h>

#include <algorithm>
#include <utility>

// Not installed.
namespace ormix::geom::detail {

/// What the readers of vertices and faces have in common: the contents, why reading has stopped, and numbers that may
/// stand on further lines.
/// \tparam Real omReal32 or omReal64
template <class Real>
class FaceReader {
 protected:
  FaceReader(StlInput& input, LineContinuation continuation) : _block(input), _lines(_block, continuation) {}

  /// Stores why and where reading stops; the first reason counts. Always returns false.
  bool stop(eStlStop stop, std::string why) {
    if (!_contents.why.empty()) return false;
    _contents.stop = _block.hasFailed() ? eSS_ReadError : stop;
    _contents.why = _block.hasFailed() ? "reading failed" : std::move(why);
    setPlace();
    return false;
  }
  /// Stops where a number was expected: at another word or at the end.
  bool stopAtNumber(const std::string& where) {
    return _lines.atEnd() ? stop(eSS_InsideTriangle, "it ends inside " + where)
                          : stop(eSS_NoNumber, "a word in " + where + " is no number");
  }

  /// Ends reading at the last byte, with success unless reading failed.
  void finish(eStlStop why) {
    if (_block.hasFailed()) stop(eSS_ReadError, "");
    if (!_contents.why.empty()) return;
    _contents.stop = why;
    setPlace();
  }

  /// Takes a number of this line or of the next one that has a word.
  /// @{
  bool takeNumber(Real& number) {
    if (_lines.atEnd()) _lines.next();
    return _lines.nextNumber(number);
  }
  bool takeInteger(omInt64& number) {
    if (_lines.atEnd()) _lines.next();
    return _lines.nextInteger(number);
  }
  /// @}

  /// Adds a vertex; false when there are as many as indices allow.
  bool addVertex(Real x, Real y, Real z) {
    if (_contents.vertexColl.size() >= FaceColl::s_noVertex)
      return stop(eSS_TooMany, "it has more vertices than a mesh can hold");
    _contents.vertexColl.emplace_back(x, y, z);
    return true;
  }
  /// Ends a face; false when there are as many corners as indices allow.
  bool endFace() {
    if (_contents.faceColl.isFull()) return stop(eSS_TooMany, "it has more triangles than a mesh can hold");
    _contents.faceColl.endFace();
    return true;
  }

  /// How many records to reserve memory for when so many are declared and each takes at least so many bytes: no more
  /// than the rest of the file has room for, and 64 MiB, as a sparse file has a length without the data.
  std::size_t getRoom(omUInt64 nbDeclared, omUInt64 nbBytes) const {
    constexpr omUInt64 most = (omUInt64(64) << 20) / sizeof(Point3dData<Real>);
    return static_cast<std::size_t>(std::min({nbDeclared, _block.getNbLeft() / nbBytes, most}));
  }

  FileBlock _block;
  TextLines _lines;
  bool _isText = true;  ///< whether what follows is read by lines
  IndexedFaces<Real> _contents;

 private:
  void setPlace() {
    _contents.stopOffset = _isText ? _lines.getOffset() : _block.getOffset();
    _contents.stopLine = _isText ? _lines.getLine() : 0;
  }
};

}  // namespace ormix::geom::detail
