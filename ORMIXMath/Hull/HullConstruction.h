#pragma once

#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>
#include <vector>

/// \file
/// Quickhull with exact decisions; not installed.

namespace ormix::detail {

/// No point, no facet.
constexpr omUInt32 s_noIndex = 0xFFFFFFFF;

/// As many points as can have all their facets, up to twice as many, numbered.
constexpr std::size_t s_mostPoints = std::size_t{1} << 31;

/// The plane of a facet as rounded arithmetic sees it.
struct HullPlane {
  SpatialPoint origin;
  SpatialPoint normal;   ///< not of unit length
  omReal64 uncertainty;  ///< heights beyond it have the right sign for all points of the hull's box

  omReal64 height(const SpatialPoint& p) const {
    return normal.x * (p.x - origin.x) + normal.y * (p.y - origin.y) + normal.z * (p.z - origin.z);
  }
};

/// A triangle of the boundary, counter-clockwise seen from outside.
struct HullFacet {
  HullPlane plane;
  std::array<omUInt32, 3> vertices;    ///< the first is s_noIndex when the facet is not in use
  std::array<omUInt32, 3> neighbours;  ///< across the edge opposite to each vertex
  omUInt32 outside;                    ///< head of the chain of points that wait above it, the farthest first
  omReal64 farthest;                   ///< height of that one
  omUInt32 nbOutside;                  ///< length of that chain
  omUInt32 visit;                      ///< number of the last search that came here

  bool isUsed() const { return vertices[0] != s_noIndex; }
};

/// Side of a facet's plane on which a point lies: 1 outside, -1 inside, 0 exactly on it.
int sideOfFacet(const HullFacet& facet, const std::vector<SpatialPoint>& points, const SpatialPoint& p);

/// Grows the hull of points from a tetrahedron by the farthest point above a facet until none is left (Barber1996).
///
/// A point is above a facet only strictly, by the exact determinant. So the facets above which a new point lies are
/// connected, no edge of their horizon is in line with the point, and no new facet is degenerate. A point above a
/// removed facet but above none of the new ones is inside: by the same exactness it can be above no facet that stayed,
/// since on the way there it would cross the horizon, where a new facet's plane lies between those of its neighbours.
/// What remains is flat faces cut in any way, with vertices that a later point has put inside a face or an edge: see
/// trianglesOfFaces().
class HullConstruction {
 public:
  /// Finite coordinates of magnitudes that may be cubed without overflow. Keeps a reference.
  explicit HullConstruction(const std::vector<SpatialPoint>& points) : _points(points) {}

  /// The dimension of what the points span, -1 for none; facets() are the hull's when it is 3.
  int run();

  const std::vector<HullFacet>& facets() const { return _facets; }
  const std::vector<SpatialPoint>& points() const { return _points; }

 private:
  /// An edge between a facet seen from the new point and one that is not.
  struct HorizonEdge {
    omUInt32 from;
    omUInt32 to;
    omUInt32 beyond;  ///< the facet not seen
  };

  int findSimplex(std::array<omUInt32, 4>& simplex) const;
  void startFrom(const std::array<omUInt32, 4>& simplex);
  omUInt32 takeScheduled();
  void insertRest();
  void insert(omUInt32 apex, omUInt32 facet);
  void findHorizon(omUInt32 facet, const SpatialPoint& eye);
  void buildCone(omUInt32 apex);
  void distribute();
  void scheduleCone();
  void assign(omUInt32 point);
  std::size_t firstToTry(const SpatialPoint& p);
  void putAbove(omUInt32 facet, omUInt32 point, omReal64 height);
  omUInt32 newFacet(omUInt32 a, omUInt32 b, omUInt32 c);

  const std::vector<SpatialPoint>& _points;
  SpatialPoint _extent{};
  std::vector<HullFacet> _facets;
  std::vector<omUInt32> _unused;    // facets to be used again
  std::vector<omUInt32> _crowded;   // facets made with many points above them, oldest first
  std::vector<omUInt32> _pending;   // facets made with few
  std::vector<omUInt32> _next;      // of each point, the one after it in its chain
  std::vector<omUInt32> _startsAt;  // of each point, the new facet whose horizon edge starts there
  std::vector<omUInt32> _seen;      // facets above which the new point lies
  std::vector<omUInt32> _cone;      // facets from the horizon to the new point
  std::vector<HullPlane> _conePlanes;
  std::vector<HorizonEdge> _horizon;
  std::vector<omUInt32> _above;  // of each point, the facet in whose chain it waits; empty until insertRest()
  std::size_t _nbCrowdedTaken = 0;
  omUInt64 _nbSteps = 0;  // facets made, and planes that points were held against
  omUInt32 _visit = 0;
};

}  // namespace ormix::detail
