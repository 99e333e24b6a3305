#include <ORMIXMath/Skeleton/BoundaryGraph.h>

#include <algorithm>
#include <sstream>

namespace ormix::detail {

namespace {

/// One end of an edge, seen from the vertex that it lies on.
struct Ray {
  GridPoint vertex;
  GridPoint to;  ///< the other end
  omUInt32 edge;
  bool isStart;  ///< whether the edge starts at the vertex
};

/// Whether the direction of a comes before that of b in counter-clockwise order from that of the x axis.
bool isBefore(const Ray& a, const Ray& b) {
  const auto isLower = [](const Ray& ray) {
    return ray.to.y < ray.vertex.y || (ray.to.y == ray.vertex.y && ray.to.x < ray.vertex.x);
  };
  if (isLower(a) != isLower(b)) return isLower(b);
  return cross(a.vertex, a.to, b.to) > 0;
}

BoolResult notAlternating(const SnappedBoundary& boundary, const Ray& ray) {
  const GridEdge& edge = boundary.edges[ray.edge];
  const PlanarPoint place = boundary.grid.fromGrid(toPlanarPoint(ray.vertex.x, ray.vertex.y));
  std::ostringstream text;
  text.precision(17);
  text << "Rings overlap, or a hole is outside, at [" << place.x << ", " << place.y << "], edge " << edge.pointIdx
       << " of ring " << edge.ringIdx;
  return failure(text.str());
}

/// Finds the sectors between the rays of one vertex.
bool addSectors(Ray* first, Ray* last, BoundaryGraph& graph) {
  std::sort(first, last, isBefore);
  char isReflex = 0;
  for (Ray* ray = first; ray != last; ++ray) {
    const Ray& next = ray + 1 == last ? *first : ray[1];
    if (ray->isStart == next.isStart) return false;
    if (!ray->isStart) continue;
    graph.faceNext[next.edge] = ray->edge;
    // Half a turn is no reflex sector, and less than nothing is more than half a turn.
    if (cross(ray->vertex, ray->to, next.to) < 0) isReflex = 1;
  }
  graph.isReflex.push_back(isReflex);
  return true;
}

/// Counts the walks; those around parts of the interior run counter-clockwise.
void countWalks(const SnappedBoundary& boundary, BoundaryGraph& graph) {
  std::vector<char> isVisited(boundary.edges.size(), 0);
  long double total = 0;
  for (std::size_t first = 0; first < isVisited.size(); ++first) {
    if (isVisited[first]) continue;
    const GridPoint& origin = boundary.edges[first].start;
    long double area = 0;
    for (std::size_t edge = first; !isVisited[edge]; edge = graph.faceNext[edge]) {
      isVisited[edge] = 1;
      area += static_cast<long double>(cross(origin, boundary.edges[edge].start, boundary.edges[edge].end));
    }
    ++graph.nbWalks;
    if (area > 0) ++graph.nbFaces;
    total += area;
  }
  graph.area = static_cast<omReal64>(total / 2);
}

}  // namespace

BoolResult buildBoundaryGraph(const SnappedBoundary& boundary, BoundaryGraph& graph) {
  const std::vector<GridEdge>& edges = boundary.edges;
  std::vector<Ray> rays;
  rays.reserve(2 * edges.size());
  for (std::size_t i = 0; i < edges.size(); ++i) {
    rays.push_back({edges[i].start, edges[i].end, static_cast<omUInt32>(i), true});
    rays.push_back({edges[i].end, edges[i].start, static_cast<omUInt32>(i), false});
  }
  std::sort(rays.begin(), rays.end(), [](const Ray& a, const Ray& b) { return a.vertex < b.vertex; });

  graph = BoundaryGraph();
  for (auto* of : {&graph.startVertex, &graph.endVertex, &graph.faceNext}) of->assign(edges.size(), s_none);
  for (std::size_t first = 0; first < rays.size();) {
    std::size_t last = first;
    const auto vertex = static_cast<omUInt32>(graph.vertexToEdge.size());
    omUInt32 edge = s_none;
    for (; last < rays.size() && rays[last].vertex == rays[first].vertex; ++last) {
      const Ray& ray = rays[last];
      (ray.isStart ? graph.startVertex : graph.endVertex)[ray.edge] = vertex;
      if (ray.isStart && (edge == s_none || edges[edge].startPointIdx == s_none)) edge = ray.edge;
    }
    if (!addSectors(rays.data() + first, rays.data() + last, graph)) return notAlternating(boundary, rays[first]);
    graph.vertexToEdge.push_back(edge);
    first = last;
  }
  countWalks(boundary, graph);
  if (!(graph.area > 0)) return failure("The rings bound no area");
  return true;
}

}  // namespace ormix::detail
