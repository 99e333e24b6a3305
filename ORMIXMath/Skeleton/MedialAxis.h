#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Enclosing/LargestInscribedCircle.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <array>
#include <cstddef>
#include <vector>

/// \file
/// The medial axis of a region of the plane that rings bound: the centers of the circles inside that touch the boundary
/// at two or more places (Blum1967). It is the part of the Voronoi diagram of the edges and vertices of the rings that
/// lies inside (Lee1982).

namespace ormix {

/// One ring of a boundary.
struct BoundaryRing {
  RingView vertices;  ///< closed whether or not the first vertex is repeated; in either direction
  bool isHole;        ///< whether the region lies outside
};

/// A part of the boundary: a vertex or an edge, the latter with the region to its left.
struct AxisPart {
  PlanarPoint start;  ///< where the edge starts, or the vertex
  PlanarPoint end;    ///< where the edge ends; the same as `start` of a vertex
  omUInt32 ringIdx;   ///< index of the ring
  omUInt32 pointIdx;  ///< index of the vertex in its ring, or of that of both ends of the edge that comes first there
  bool isVertex;      ///< whether it is a vertex
};

/// A point of the axis where edges begin and end.
struct AxisVertex {
  PlanarPoint point;  ///< where it is
  omReal64 radius;    ///< its distance to the boundary; exactly 0 at a convex vertex of the region
};

/// A part of the axis between two vertices, whose points are equally far from two parts of the boundary and nearer to
/// no other: an arc of a parabola when one of them is a vertex and the other an edge, else a segment.
struct AxisEdge {
  std::array<omUInt32, 2> vertices;  ///< indices of the first and of the last vertex
  std::array<omUInt32, 2> parts;  ///< indices of the part to the left of the way from first to last, and to the right
};

/// A medial axis.
struct MedialAxis {
  std::vector<AxisVertex> vertices;  ///< in no order
  std::vector<AxisEdge> edges;       ///< in no order
  std::vector<AxisPart> parts;       ///< those that edges refer to, in order of their rings and vertices
};

/// How medialAxis() works.
struct MedialAxisOptions {
  /// Edges up to this length are shrunk to a vertex, in units of the grid that vertices are snapped to, as snapping
  /// makes many tiny edges of one vertex with many nearest parts. A vertex moves by at most 16 times this length, 6e-8
  /// of the extent by default, and only over such edges. 0 keeps all.
  omReal64 mergeLength = 4;
};

/// A vertex of a ring, or the edge that starts there.
struct BoundaryPlace {
  omUInt32 ringIdx;   ///< index of the ring
  omUInt32 pointIdx;  ///< index of the vertex in its ring
};

/// What medialAxis() found and did.
struct MedialAxisReport {
  omReal64 gridUnit = 0;          ///< distance of neighbours of the grid, in the unit of the coordinates
  std::size_t nbMovedPoints = 0;  ///< vertices that are not on the grid
  omReal64 greatestMove = 0;      ///< how far at most one was moved by snapping
  /// Vertices that fall on their predecessor, in the given coordinates or on the grid.
  std::vector<BoundaryPlace> mergedPoints;
  /// Edges that bound no area on the grid, as they cover each other from both sides, and of rings that shrink to a
  /// line.
  std::vector<BoundaryPlace> lostEdges;
  std::size_t nbSplitEdges = 0;   ///< edges that were divided where vertices of others lie on them
  std::size_t nbMergedEdges = 0;  ///< edges of the axis that were shrunk
  std::size_t nbComponents = 0;   ///< connected parts of the region's interior
  std::size_t nbCycles = 0;       ///< cycles of the axis before parts that meet in a vertex are joined
  std::size_t nbAttempts = 0;     ///< diagrams that were made until one passed all checks
  omReal64 areaError = 0;         ///< relative difference of the area of all cells and the area of the rings
};

/// The medial axis of a region, exact for the boundary after its vertices are rounded to a grid of at least 2^30 × 2^30
/// points over its extent; vertices whose coordinates are integers or halves of them stay where they are.
///
/// Rings may touch themselves and each other at vertices. The axis has a vertex of radius 0 at each convex vertex;
/// where a ring leads from one sector of a vertex into another, as the ring of pixels that are connected over a corner
/// does, their ends are one vertex, so that the axis is connected as the region is. Every diagram is checked before it
/// is answered: the cells of its edges must have the area of the region to 1e-12, and the axis as many components and
/// cycles as the rings have. The Voronoi diagram of Boost.Polygon does not always pass; it is made again, for the
/// region turned by an angle, up to four times.
///
/// O(n log n) time for n vertices, about 1 KB a vertex while it is computed.
/// \param axis replaced on success, unchanged otherwise
/// \param report where given, replaced in any case
/// \return a failure that says what is wrong, and where: a coordinate that is not finite, rings that cross, rings that
/// bound no area, or a diagram that did not pass its checks
ORMIX_MATH_API BoolResult medialAxis(const std::vector<BoundaryRing>& rings, const MedialAxisOptions& options,
                                     MedialAxis& axis, MedialAxisReport* report = nullptr);

}  // namespace ormix
