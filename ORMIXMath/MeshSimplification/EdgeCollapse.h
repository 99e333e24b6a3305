#pragma once

#include <ORMIXMath/MeshSimplification/CollapseIntersections.h>
#include <ORMIXMath/MeshSimplification/CollapseQueue.h>
#include <ORMIXMath/MeshSimplification/CollapseRules.h>
#include <ORMIXMath/MeshSimplification/EdgePlacement.h>
#include <ORMIXMath/MeshSimplification/VertexQuadrics.h>

#include <array>
#include <limits>
#include <optional>

/// \file
/// Collapsing edges in order of their costs; not installed.

namespace ormix::detail {

/// What collapses need of the options, in the kernel's unit.
struct CollapseSettings {
  std::size_t nbTriangles = 0;
  omReal64 maxError = std::numeric_limits<omReal64>::infinity();
  omReal64 boundaryTolerance = std::numeric_limits<omReal64>::infinity();
  bool isMemoryless = false;
  bool keepsVolume = false;
  bool keepsFeatures = false;
  bool avoidsIntersections = false;
};

/// Collapses the edges of a mesh from the cheapest on, until there are few enough triangles, or none can collapse.
///
/// Costs are computed once for all edges and again when an edge is taken from the queue: an edge that has become dearer
/// by then goes back. As quadrics only grow, an edge never costs less than when it was put into the queue, so that
/// nothing need be done for the neighbours of an edge that collapses. Memoryless costs may fall too; such an edge comes
/// later than it might.
///
/// An edge that is refused comes back when costs are twice as high, and if it is refused again, four times, and so on.
class EdgeCollapse {
 public:
  EdgeCollapse(CollapsingMesh& mesh, const CollapseSettings& settings, const EdgePlacement& placement,
               const VertexQuadrics& vertexQuadrics);

  /// \param goOn asked at the beginning, and then now and then, with the number of triangles; false ends it
  /// \return whether `goOn` was always true
  template <class GoOn>
  bool run(GoOn goOn) {
    if (!goOn(_mesh.topology.nbTriangles())) return false;
    enqueueAll();
    std::size_t nbSteps = 0;
    omUInt32 side;
    while (_mesh.topology.nbTriangles() > _settings.nbTriangles && pop(side)) {
      step(side);
      if (++nbSteps % s_stepsOfReport == 0 && !goOn(_mesh.topology.nbTriangles())) return false;
    }
    return true;
  }

  std::size_t nbCollapses() const { return _nbCollapses; }
  const std::array<std::size_t, s_nbCollapseRefusals>& nbRefusals() const { return _nbRefusals; }
  omReal64 greatestError() const { return _greatestError; }

 private:
  static constexpr std::size_t s_stepsOfReport = 4096;

  void enqueueAll();
  bool pop(omUInt32& side);
  void prefetch() const;
  void enqueue(omUInt32 side, std::size_t bucket);
  void enqueueAgain(omUInt32 side, int reason);
  void step(omUInt32 side);
  int openEdge(omUInt32 side);
  int tryPlaces(const AllowedPlaces& allowed, CollapsePlaces& places);
  bool allows(const AllowedPlaces& allowed, const CollapsePlace& place) const;
  int refusal(const CollapsePlace& place, omReal64& error);
  void collapseTo(const CollapsePlace& place, omReal64 error);
  void reviveEdges(const std::vector<omUInt32>& fan);
  void joinEdges(const CollapseTopology::Merged& merged);
  void freshen(omUInt32 side);
  omReal64 costOf(omUInt32 side);

  CollapsingMesh& _mesh;
  const CollapseSettings _settings;
  const EdgePlacement _placement;
  const VertexQuadrics _vertexQuadrics;
  CollapseQueue _queue;
  VertexMarks _marks;
  BoundaryDrift _drift;
  std::optional<CollapseIntersections> _intersections;  ///< where these are to be avoided
  CollapsingEdge _edge;                                 ///< the one being looked at
  std::vector<omUInt32> _ring;
  std::size_t _nbCollapses = 0;
  std::array<std::size_t, s_nbCollapseRefusals> _nbRefusals{};
  omReal64 _greatestError = 0;
};

}  // namespace ormix::detail
