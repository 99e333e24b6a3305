#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXGeometry/Tools/Stl/StlTriangles.h>

#include <cstddef>
#include <string>
#include <vector>

// Not installed.
namespace ormix::geom::detail {

/// The faces of a file, polygons with any number of corners, as one run of vertex indices.
class FaceColl {
 public:
  static constexpr omUInt32 s_noVertex = 0xFFFFFFFFu;  ///< an index that no vertex has

  /// Adds a corner to the last face. An index that 32 bits do not hold is stored as `s_noVertex`.
  void addCorner(omInt64 vertexIdx) {
    _cornerColl.push_back(vertexIdx < 0 || vertexIdx > omInt64(s_noVertex) ? s_noVertex
                                                                           : static_cast<omUInt32>(vertexIdx));
  }
  /// Ends the last face.
  void endFace();
  /// Removes the corners of the face that was not ended.
  void dropFace() { _cornerColl.resize(_begin); }
  /// Reserves memory for that many triangles.
  void reserve(std::size_t nbTriangles) { _cornerColl.reserve(3 * nbTriangles); }
  /// Whether no further face can be counted with 32 bits.
  bool isFull() const { return _cornerColl.size() >= s_noVertex; }

  /// The number of faces, without the one that was not ended.
  std::size_t size() const { return _endColl.empty() ? _begin / 3 : _endColl.size(); }
  /// Whether all faces have three corners.
  bool hasTrianglesOnly() const { return _endColl.empty(); }
  /// All corners, and where each face ends among them; no ends while all faces have three corners.
  /// @{
  const std::vector<omUInt32>& getCornerColl() const { return _cornerColl; }
  const std::vector<omUInt32>& getEndColl() const { return _endColl; }
  /// @}

 private:
  std::vector<omUInt32> _cornerColl, _endColl;
  std::size_t _begin = 0;  ///< of the face that was not ended
};

/// What was read of a file of vertices and faces, and where and why reading stopped.
/// \tparam Real omReal32 or omReal64, the type in which coordinates are read
template <class Real>
struct IndexedFaces {
  std::vector<Point3dData<Real>> vertexColl;  ///< in order of the file
  FaceColl faceColl;                          ///< in order of the file, with indices that no vertex may have
  omUInt64 nbObjects = 0;                     ///< objects begun
  eStlStop stop = eSS_EndOfSolid;             ///< why reading stopped
  omUInt64 stopOffset = 0;                    ///< byte at which reading stopped
  omUInt64 stopLine = 0;                      ///< its line, counted from 1; 0 in a binary part
  std::string why;                            ///< what is wrong; empty when all was read
};

/// The triangles of faces.
struct CutFaces {
  std::vector<omUInt32> indexColl;  ///< three vertex indices a triangle, in order of the faces
  std::size_t nbPolygons = 0;       ///< faces of more than three corners, which were cut
  std::size_t nbSkipped = 0;        ///< faces left out: fewer than three corners, or an index without a vertex
  std::size_t nbFanned = 0;         ///< polygons that were cut without regard to their shape
};

/// Cuts faces into triangles. One with three corners is kept as it is, equal corners or not. Of the others, equal
/// corners that follow each other count once; a polygon of n corners gives n - 2 triangles: convex ones the fan of
/// their first corner, others by cutting ears in the projection along the greatest component of their normal, decided
/// exactly (Meisters1975). Where there is no ear, as in polygons that cross themselves, the rest is a
/// fan.
///
/// Linear for convex polygons, n r for r corners that are not. Beyond 2^30 comparisons in one file all further
/// polygons that are not convex are fans, so that a file cannot take hours.
template <class Real>
CutFaces cutFaces(const std::vector<Point3dData<Real>>& vertices, const FaceColl& faces);

}  // namespace ormix::geom::detail
