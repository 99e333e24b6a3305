#pragma once

#include <ORMIXGeometry/Tools/Mesh/Repair.h>
#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>

#include <cstddef>
#include <vector>

/// \file
/// A mesh under repair, and the steps; not installed.

namespace ormix::geom::detail {

using ormix::detail::cross;
using ormix::detail::dot;
using ormix::detail::operator+;
using ormix::detail::operator-;
using ormix::detail::operator*;
using ormix::detail::operator/;

/// Triangles whose sides are joined or open, whatever their vertex indices say. The side 3 t + k of triangle t runs
/// from its corner k to the next one; joined sides run in opposite directions once the triangles are oriented.
struct RepairMesh {
  static constexpr omUInt32 s_none = 0xFFFFFFFFu;  ///< no vertex, no side

  std::vector<SpatialPoint> pointColl;  ///< vertices
  std::vector<omUInt32> originColl;     ///< of each vertex that of the mesh given; `s_none` for those added
  std::vector<omUInt32> indexColl;      ///< three vertices a triangle
  std::vector<omUInt32> oppositeColl;   ///< of each side the one it is joined to, or `s_none`; empty before step 3
  omReal64 scale = 1;                   ///< power of two by which coordinates are at most 1

  /// The side after a side, around its triangle.
  static omUInt32 next(omUInt32 side) { return side % 3 == 2 ? side - 2 : side + 1; }
  /// The side before it.
  static omUInt32 previous(omUInt32 side) { return side % 3 == 0 ? side + 2 : side - 1; }

  std::size_t getNbTriangles() const { return indexColl.size() / 3; }  ///< triangles
  omUInt32 start(omUInt32 side) const { return indexColl[side]; }      ///< vertex where a side starts
  omUInt32 end(omUInt32 side) const { return indexColl[next(side)]; }  ///< vertex where it ends
  /// A vertex, scaled so that products of three coordinates do not overflow.
  SpatialPoint at(omUInt32 vertex) const { return pointColl[vertex] * scale; }
  /// The triangles over all vertices.
  TriMesh3d<omReal64> view() const {
    return {pointColl.empty() ? nullptr : &pointColl[0].x, pointColl.size(), indexColl.data(), getNbTriangles()};
  }
  /// Whether no side is open.
  bool isClosed() const;

  /// Joins two sides.
  void join(omUInt32 side, omUInt32 other) {
    oppositeColl[side] = other;
    oppositeColl[other] = side;
  }
  /// Adds a triangle with open sides and returns the first of them.
  omUInt32 addTriangle(omUInt32 a, omUInt32 b, omUInt32 c);
  /// Adds a vertex at a scaled position and returns its index.
  omUInt32 addVertex(const SpatialPoint& scaled);
  /// Turns the triangles that are marked; those joined to them stay joined.
  void turn(const std::vector<bool>& isTurned);
  /// Removes the triangles that are marked; sides joined to them become open.
  void remove(const std::vector<bool>& isRemoved);
};

/// Steps of `repair`, in order; each adds what it did to the report.
/// @{
void dropInvalidTriangles(RepairMesh& mesh, RepairReport& report);
void mergeOpenVertices(RepairMesh& mesh, omReal64 tolerance, RepairReport& report);
void dropFins(RepairMesh& mesh, RepairReport& report);
void joinSides(RepairMesh& mesh, RepairReport& report);
void cutTurnedNeighbours(RepairMesh& mesh);
void orientNeighbours(RepairMesh& mesh, RepairReport& report);
void dropSingleTriangles(RepairMesh& mesh, RepairReport& report);
void removeFlatTriangles(RepairMesh& mesh, RepairReport& report);
BoolResult fillLoops(RepairMesh& mesh, std::size_t longestLoop, RepairReport& report);
void splitVertices(RepairMesh& mesh, RepairReport& report);
void splitRepeatedEdges(RepairMesh& mesh, RepairReport& report);
void turnShells(RepairMesh& mesh, RepairReport& report);
void dropUnusedVertices(RepairMesh& mesh, RepairReport& report);
/// @}

}  // namespace ormix::geom::detail
