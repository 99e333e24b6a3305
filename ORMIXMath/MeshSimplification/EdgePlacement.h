#pragma once

#include <ORMIXMath/MeshSimplification/CollapsingMesh.h>
#include <ORMIXMath/MeshSimplification/MeshSimplificationOptions.h>

/// \file
/// Where the vertex is put that an edge becomes; not installed.

namespace ormix::detail {

/// A place for the vertex that an edge becomes.
struct CollapsePlace {
  SpatialPoint position;
  omReal64 cost;
  /// The end of the edge where this is, or s_noSide.
  omUInt32 end;
};

/// The places for one edge, from the cheapest to the dearest.
struct CollapsePlaces {
  CollapsePlace places[3];
  int nb = 0;

  void add(const CollapsePlace& place) {
    int at = nb++;
    for (; at > 0 && place.cost < places[at - 1].cost; --at) places[at] = places[at - 1];
    places[at] = place;
  }
};

/// Rounds positions in the unit of CollapsingMesh to what the mesh can hold.
struct CoordinateRounding {
  SpatialPoint (*round)(const SpatialPoint& position, omReal64 unit) = nullptr;  ///< or null, for omReal64
  omReal64 unit = 1;  ///< a power of two: positions times this have the unit of the coordinates

  SpatialPoint operator()(const SpatialPoint& position) const {
    return round == nullptr ? position : round(position, unit);
  }
};

/// Finds places for edges.
struct EdgePlacement {
  eCollapsePlacement placement;
  CoordinateRounding rounding;

  /// The cost at the cheapest place. Costs are squares of lengths times areas.
  omReal64 leastCost(const CollapsingMesh& mesh, omUInt32 side) const;

  /// All places: the ends, and where the quadrics are least unless an end is as good.
  CollapsePlaces places(const CollapsingMesh& mesh, omUInt32 side) const;

  /// The error at a place, see MeshSimplificationOptions::maxError.
  static omReal64 errorAt(const CollapsingMesh& mesh, omUInt32 side, const SpatialPoint& position);

  /// Moves a place such that the triangles around it, together, enclose what those of both fans do: along the direction
  /// in which that costs least (LindstromTurk1998). A place at an end stays.
  /// \return false where the place cannot be moved so
  bool keepVolume(const CollapsingMesh& mesh, const CollapsingEdge& edge, CollapsePlace& place) const;
};

}  // namespace ormix::detail
