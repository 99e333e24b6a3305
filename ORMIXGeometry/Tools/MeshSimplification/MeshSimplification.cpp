#include "MeshSimplification.h"

#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXGeometry/Tools/MeshSimplification/SampledDistance.h>
#include <ORMIXMath/MeshSimplification/SimplifyTriangles.h>

#include <type_traits>
#include <utility>
#include <vector>

namespace ormix::geom {

namespace {

template <class T>
std::vector<SpatialPoint> pointsOf(const std::vector<Point3dData<T>>& vertices) {
  std::vector<SpatialPoint> points;
  points.reserve(vertices.size());
  for (const Point3dData<T>& vertex : vertices)
    points.push_back(toSpatialPoint(vertex.getX(), vertex.getY(), vertex.getZ()));
  return points;
}

/// Exact: the points have been rounded to T.
template <class T>
std::vector<Point3dData<T>> verticesOf(const std::vector<SpatialPoint>& points) {
  std::vector<Point3dData<T>> vertices;
  vertices.reserve(points.size());
  for (const SpatialPoint& p : points)
    vertices.emplace_back(static_cast<T>(p.x), static_cast<T>(p.y), static_cast<T>(p.z));
  return vertices;
}

/// Half-edges in order of the triangles, which those of a mesh from an archive need not have.
std::vector<MeshSide> sidesOf(const MeshTopology& topology) {
  const MeshTopology::HalfEdgeColl& halfEdges = topology.getHalfEdgeColl();
  std::vector<omUInt32> places(halfEdges.size());
  omUInt32 place = 0;
  for (const omUInt32 first : topology.getTriangleToHalfEdgeColl()) {
    omUInt32 halfEdge = first;
    for (int k = 0; k < 3; ++k, halfEdge = halfEdges[halfEdge].nextHalfEdgeIdx) places[halfEdge] = place++;
  }
  std::vector<MeshSide> sides(halfEdges.size());
  for (std::size_t i = 0; i < halfEdges.size(); ++i) {
    const omUInt32 opposite = halfEdges[i].oppositeHalfEdgeIdx;
    sides[places[i]] = {halfEdges[i].startVertexIdx, opposite == s_noHalfEdge ? s_noSide : places[opposite]};
  }
  return sides;
}

/// Sides of the triangles that have three corners, linked where an edge has two, in opposite directions.
std::vector<MeshSide> sidesOf(const std::vector<IndexTriangle>& triangles, std::size_t nbVertices) {
  std::vector<MeshSide> sides;
  sides.reserve(3 * triangles.size());
  for (const IndexTriangle& corners : triangles) {
    if (corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0]) continue;
    for (const omUInt32 corner : corners) sides.push_back({corner, s_noSide});
  }
  const auto endOf = [&sides](std::size_t side) { return sides[side % 3 == 2 ? side - 2 : side + 1].start; };
  detail::EdgeIndex edges(nbVertices, [&](auto visit) {
    for (omUInt32 side = 0; side < sides.size(); ++side) visit(side, sides[side].start, endOf(side));
  });
  edges.visitEdges([&](omUInt32, const detail::EdgeIndex::Side* first, const detail::EdgeIndex::Side* last) {
    if (last - first != 2 || sides[first[0].sideIdx].start == sides[first[1].sideIdx].start) return;
    sides[first[0].sideIdx].opposite = first[1].sideIdx;
    sides[first[1].sideIdx].opposite = first[0].sideIdx;
  });
  return sides;
}

template <class T>
BoolResult build(Mesh3d<T>& mesh, const SimplifiedTriangles& from) {
  typename Mesh3d<T>::IndexColl indices;
  indices.reserve(3 * from.triangles.size());
  for (const IndexTriangle& corners : from.triangles) indices.insert(indices.end(), corners.begin(), corners.end());
  return mesh.build(verticesOf<T>(from.vertices), std::move(indices));
}

template <class T>
BoolResult build(FaceVertexTriMesh3d<T>& mesh, const SimplifiedTriangles& from) {
  return mesh.build(verticesOf<T>(from.vertices), from.triangles);
}

/// Fills in what compares the surfaces.
template <class T>
void compareSurfaces(const TriMesh3d<T>& before, const TriMesh3d<T>& after, bool measuresDistances,
                     MeshSimplificationReport& report) {
  report.areaBefore = meshArea<T>(before);
  report.areaAfter = meshArea<T>(after);
  report.volumeBefore = meshLocalVolume<T>(before);
  report.volumeAfter = meshLocalVolume<T>(after);
  if (!measuresDistances) return;
  report.toInput = detail::sampledDistance(after, before);
  report.fromInput = detail::sampledDistance(before, after);
}

template <class Mesh>
BoolResult simplifyMesh(Mesh& mesh, std::vector<MeshSide> sides, const MeshSimplificationOptions& options,
                        MeshSimplificationReport* report) {
  using T = typename TriMesh3dOf<Mesh>::CoordinateType;
  MeshSimplificationReport found;
  Mesh simplified;
  {
    SimplifiedTriangles triangles;
    BoolResult result =
        simplifyTriangles<T>(pointsOf(mesh.getVertexColl()), std::move(sides), options, triangles, found);
    if (result) result = build(simplified, triangles);
    if (!result) return result;
    found.nbTrianglesBefore = mesh.getNbTriangles();
  }
  if (report != nullptr)
    compareSurfaces<T>(TriMesh3d<T>(mesh), TriMesh3d<T>(simplified), options.measuresDistances, found);
  if (options.progress && !options.progress(1))
    return failure("Simplification of meshes: stopped by its progress callback");
  if (report != nullptr) *report = found;
  mesh = std::move(simplified);
  return {};
}

}  // namespace

template <class T>
BoolResult MeshSimplification<T>::simplify(Mesh3d<T>& mesh, const MeshSimplificationOptions& options,
                                           MeshSimplificationReport* report) {
  const eMesh3dType role = mesh.getMesh3dType();
  BoolResult result = mesh.checkIntegrity();
  if (result) result = simplifyMesh(mesh, sidesOf(mesh.getTopology()), options, report);
  if (result) mesh.setMesh3dType(role);
  return result;
}

template <class T>
BoolResult MeshSimplification<T>::simplify(FaceVertexTriMesh3d<T>& mesh, const MeshSimplificationOptions& options,
                                           MeshSimplificationReport* report) {
  const BoolResult valid = mesh.checkIntegrity();
  if (!valid) return valid;
  return simplifyMesh(mesh, sidesOf(mesh.getTriangleColl(), mesh.getNbVertices()), options, report);
}

template class MeshSimplification<omInt32>;
template class MeshSimplification<omUInt32>;
template class MeshSimplification<omReal32>;
template class MeshSimplification<omReal64>;

}  // namespace ormix::geom
