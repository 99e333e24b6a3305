#pragma once

#include <ORMIXMath/MeshSimplification/CollapsingMesh.h>
#include <ORMIXMath/MeshSimplification/EdgePlacement.h>
#include <ORMIXMath/MeshSimplification/MeshSimplificationOptions.h>

#include <vector>

/// \file
/// Which edges may collapse, and to where; not installed.

namespace ormix::detail {

/// In place of a reason where nothing is against a collapse.
inline constexpr int s_notRefused = -1;

/// Vertices that others are compared with.
class VertexMarks {
 public:
  explicit VertexMarks(std::size_t nbVertices) : _rounds(nbVertices, 0) {}
  void clear() { ++_round; }
  void mark(omUInt32 vertex) { _rounds[vertex] = _round; }
  bool isMarked(omUInt32 vertex) const { return _rounds[vertex] == _round; }

 private:
  std::vector<omUInt32> _rounds;
  omUInt32 _round = 1;
};

/// Whether the surface remains of the same topology when an edge collapses: the vertices next to both ends are the
/// apexes of its triangles and no others, an inner edge has not both ends on boundaries, and no apex has only three
/// triangles around it (DeyEtAl1999).
bool keepsTopology(const CollapsingMesh& mesh, const CollapsingEdge& edge, VertexMarks& marks);

/// The ends of an edge to which it may collapse, and whether it may anywhere else.
struct AllowedPlaces {
  bool ends[2] = {true, true};
  bool elsewhere = true;

  bool none() const { return !ends[0] && !ends[1]; }
  void keepOnly(int end) {
    ends[1 - end] = false;
    elsewhere = false;
  }
};

/// What locked ends allow. Two locked ends allow nothing, nor does one where several fans meet.
AllowedPlaces allowedByLocks(const CollapsingMesh& mesh, const CollapsingEdge& edge);

/// Leaves what features allow: a vertex on one goes along it, and one where other than two of their edges meet stays.
void restrictToFeatures(const CollapsingMesh& mesh, const CollapsingEdge& edge, AllowedPlaces& allowed);

/// Whether triangles keep their sides when the ends of an edge move to a position: no normal turns by more than about
/// 60 degrees, and none becomes a needle that was not one.
bool keepsNormals(const CollapsingMesh& mesh, const CollapsingEdge& edge, const SpatialPoint& position);

/// How far boundaries have moved.
class BoundaryDrift {
 public:
  /// \param tolerance in the kernel's unit; what is infinite costs nothing
  BoundaryDrift(omReal64 tolerance, std::size_t nbVertices);

  /// Whether boundaries stay within their tolerance when the ends of an edge move to a position. What is allowed is
  /// entered by accept(), for the same edge and position.
  bool allows(const CollapsingMesh& mesh, const CollapsingEdge& edge, const SpatialPoint& position);
  void accept(omUInt32 kept);

 private:
  void moveEnd(const CollapsingMesh& mesh, const CollapsingEdge& edge, int end, const SpatialPoint& position);
  void moveEdge(const CollapsingMesh& mesh, const CollapsingEdge& edge, const SpatialPoint& position);

  omReal64 _tolerance;
  /// For the side on the boundary that starts at a vertex: how far a point of it may be from its place on the boundary
  /// of the input, and the other way round.
  std::vector<omReal64> _drifts;
  // What accept() enters: the side before the kept vertex and the one after it.
  omUInt32 _before = s_noSide;
  omReal64 _driftBefore = 0;
  omReal64 _driftAfter = 0;
};

}  // namespace ormix::detail
