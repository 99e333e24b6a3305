#pragma once

#include <ORMIXMath/MeshSimplification/CollapseTopology.h>
#include <ORMIXMath/MeshSimplification/Quadric.h>

#include <vector>

/// \file
/// A mesh while its edges collapse; not installed.

namespace ormix::detail {

/// What is known of a side beside its neighbours.
enum eSideFlag : omUInt8 {
  eSF_Queued = 1,    ///< The queue has it, for its edge.
  eSF_Feature = 2,   ///< Its edge is a feature.
  eSF_Refusals = 28  ///< How often its edge was refused, times s_oneRefusal.
};
inline constexpr omUInt8 s_oneRefusal = 4;

/// What collapses may do to a vertex.
enum eVertexFreedom : omUInt8 {
  eVF_Free,
  eVF_Locked,  ///< It stays in its place; others may collapse into it.
  eVF_Pinned   ///< No edge of it collapses, as several fans meet there.
};

/// A mesh while its edges collapse. The unit is chosen such that the extent is about 1.
struct CollapsingMesh {
  CollapseTopology topology;
  std::vector<SpatialPoint> positions;   ///< of the vertices
  std::vector<Quadric> quadrics;         ///< of the vertices, about their positions
  std::vector<eVertexFreedom> freedoms;  ///< of the vertices
  std::vector<omUInt8> sideFlags;        ///< of the sides, of eSideFlag

  const SpatialPoint& startOf(omUInt32 side) const { return positions[topology.start(side)]; }

  /// The normal of the triangle of a side, twice as long as its area.
  SpatialPoint normalOf(omUInt32 side) const {
    const SpatialPoint& p = startOf(side);
    return cross(startOf(nextSide(side)) - p, startOf(previousSide(side)) - p);
  }

  /// Whether the edge of a side is a feature or has one triangle.
  bool isFeature(omUInt32 side) const {
    return (sideFlags[side] & eSF_Feature) != 0 || topology.opposite(side) == s_noSide;
  }
};

/// An edge that may collapse, with the fans of its ends.
struct CollapsingEdge {
  omUInt32 side = s_noSide;
  omUInt32 ends[2] = {s_noSide, s_noSide};  ///< start and end of the side
  std::vector<omUInt32> fans[2];            ///< of the ends

  /// Whether a side is of a triangle that goes.
  bool isGoing(const CollapseTopology& topology, omUInt32 other) const {
    const omUInt32 opposite = topology.opposite(side);
    return other / 3 == side / 3 || (opposite != s_noSide && other / 3 == opposite / 3);
  }
};

}  // namespace ormix::detail
