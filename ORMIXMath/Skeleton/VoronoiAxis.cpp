#include <ORMIXMath/Skeleton/VoronoiAxis.h>

// Conversions inside Boost.Polygon that are intended there.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#include <boost/polygon/voronoi.hpp>
#pragma GCC diagnostic pop

#include <cmath>
#include <functional>

namespace ormix::detail {

namespace {

using Diagram = boost::polygon::voronoi_diagram<omReal64>;

PlanarPoint toReal(const GridPoint& point) { return toPlanarPoint(point.x, point.y); }

/// Finds the edges of a diagram that are inside.
class AxisCollector {
 public:
  AxisCollector(const SnappedBoundary& boundary, const BoundaryGraph& graph, const Diagram& diagram, GridAxis& axis)
      : _edges(boundary.edges), _graph(graph), _diagram(diagram), _axis(axis) {
    _newVertex.assign(diagram.num_vertices(), s_none);
  }

  /// \return false for an edge that its parts do not agree on
  bool collect() {
    for (const Diagram::edge_type& edge : _diagram.edges()) {
      if (!std::less<>()(&edge, edge.twin()) || !edge.is_primary() || !edge.is_finite()) continue;
      const omUInt32 left = siteOf(*edge.cell()), right = siteOf(*edge.twin()->cell());
      const PlanarPoint start = pointOf(*edge.vertex0()), end = pointOf(*edge.vertex1());
      const PlanarPoint middle{start.x / 2 + end.x / 2, start.y / 2 + end.y / 2};
      const bool isInside = isInsideOf(left, middle);
      if (isInside != isInsideOf(right, middle)) return false;
      if (!isInside) continue;
      const omUInt32 corner = cornerOf(left, right);
      _axis.edges.push_back(
          {{vertexOf(*edge.vertex0(), end, corner, left), vertexOf(*edge.vertex1(), start, corner, left)},
           {left, right}});
    }
    return true;
  }

 private:
  static PlanarPoint pointOf(const Diagram::vertex_type& vertex) { return {vertex.x(), vertex.y()}; }
  bool isVertex(omUInt32 site) const { return site >= _edges.size(); }

  omUInt32 siteOf(const Diagram::cell_type& cell) const {
    const auto edge = static_cast<omUInt32>(cell.source_index());
    if (cell.contains_segment()) return edge;
    const bool isStart = cell.source_category() == boost::polygon::SOURCE_CATEGORY_SEGMENT_START_POINT;
    return static_cast<omUInt32>(_edges.size()) + (isStart ? _graph.startVertex : _graph.endVertex)[edge];
  }

  PlanarPoint placeOf(omUInt32 vertexSite) const {
    return toReal(_edges[_graph.vertexToEdge[vertexSite - _edges.size()]].start);
  }

  /// Signed distance from the line of an edge, positive inside.
  omReal64 heightOver(omUInt32 edge, const PlanarPoint& point) const {
    const PlanarPoint start = toReal(_edges[edge].start), end = toReal(_edges[edge].end);
    return ((end.x - start.x) * (point.y - start.y) - (end.y - start.y) * (point.x - start.x)) /
           std::hypot(end.x - start.x, end.y - start.y);
  }

  /// Next to a vertex, its cell is on the side where it has more than half a turn.
  bool isInsideOf(omUInt32 site, const PlanarPoint& point) const {
    return isVertex(site) ? _graph.isReflex[site - _edges.size()] != 0 : heightOver(site, point) > 0;
  }

  /// The sector that the edge between two sites bisects from its corner on, if it does.
  omUInt32 cornerOf(omUInt32 left, omUInt32 right) const {
    if (isVertex(left) || isVertex(right)) return s_none;
    if (_graph.faceNext[left] == right) return right;
    return _graph.faceNext[right] == left ? left : s_none;
  }

  omReal64 radiusOf(omUInt32 site, const PlanarPoint& point) const {
    if (!isVertex(site)) return std::abs(heightOver(site, point));
    const PlanarPoint place = placeOf(site);
    return std::hypot(point.x - place.x, point.y - place.y);
  }

  /// The index of an end of an edge of the axis; each sector has a vertex of its own in its corner.
  omUInt32 vertexOf(const Diagram::vertex_type& vertex, const PlanarPoint& otherEnd, omUInt32 corner, omUInt32 site) {
    const PlanarPoint point = pointOf(vertex);
    if (corner != s_none) {
      const PlanarPoint place = toReal(_edges[corner].start);
      const omReal64 toCorner = std::hypot(point.x - place.x, point.y - place.y);
      // Vertices of the diagram are right to a small part of a unit.
      if (toCorner < 0.25 && toCorner < std::hypot(otherEnd.x - place.x, otherEnd.y - place.y))
        return add({place, 0}, corner);
    }
    const auto index = static_cast<std::size_t>(&vertex - _diagram.vertices().data());
    if (_newVertex[index] == s_none) _newVertex[index] = add({point, radiusOf(site, point)}, s_none);
    return _newVertex[index];
  }

  omUInt32 add(const AxisVertex& vertex, omUInt32 sector) {
    _axis.vertices.push_back(vertex);
    _axis.vertexToSector.push_back(sector);
    return static_cast<omUInt32>(_axis.vertices.size() - 1);
  }

  const std::vector<GridEdge>& _edges;
  const BoundaryGraph& _graph;
  const Diagram& _diagram;
  GridAxis& _axis;
  std::vector<omUInt32> _newVertex;  // of each vertex of the diagram
};

}  // namespace

BoolResult voronoiAxis(const SnappedBoundary& boundary, const BoundaryGraph& graph, GridAxis& axis) {
  boost::polygon::voronoi_builder<omInt32> builder;
  for (const GridEdge& edge : boundary.edges)
    builder.insert_segment(edge.start.x, edge.start.y, edge.end.x, edge.end.y);
  Diagram diagram;
  builder.construct(&diagram);
  builder.clear();
  axis = GridAxis();
  if (!AxisCollector(boundary, graph, diagram, axis).collect())
    return failure("The Voronoi diagram has an edge that is inside and outside");
  return true;
}

}  // namespace ormix::detail
