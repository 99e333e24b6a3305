#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/Measure/3d/TriMeshMeasures.h>
#include <ORMIXGeometry/Tools/Mesh/Repair.h>
#include <ORMIXGeometry/Tools/Mesh/RepairMesh.h>
#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXMath/Shape/TriangleMesh.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ormix::geom {

namespace {

using detail::RepairMesh;

template <class T>
RepairMesh toRepairMesh(const TriMesh3d<T>& mesh) {
  RepairMesh result;
  omReal64 largest = 0;
  result.pointColl.reserve(mesh.getNbVertices());
  for (std::size_t vertex = 0; vertex < mesh.getNbVertices(); ++vertex) {
    const Point3dData<T>& point = mesh.getVertex(vertex);
    result.pointColl.push_back(toSpatialPoint(point.getX(), point.getY(), point.getZ()));
    result.originColl.push_back(static_cast<omUInt32>(vertex));
    for (const T coordinate : {point.getX(), point.getY(), point.getZ()})
      if (const omReal64 size = std::fabs(static_cast<omReal64>(coordinate)); std::isfinite(size))
        largest = std::max(largest, size);
  }
  if (largest > 0) result.scale = std::ldexp(1.0, std::clamp(-std::ilogb(largest), -1000, 1000));
  result.indexColl.assign(mesh.getIndices(), mesh.getIndices() + 3 * mesh.getNbTriangles());
  return result;
}

template <class T>
FaceVertexTriMesh3d<T> toFaceVertexTriMesh(const RepairMesh& repaired, const TriMesh3d<T>& mesh) {
  typename FaceVertexTriMesh3d<T>::VertexColl vertices;
  vertices.reserve(repaired.pointColl.size());
  for (std::size_t vertex = 0; vertex < repaired.pointColl.size(); ++vertex) {
    const SpatialPoint& p = repaired.pointColl[vertex];
    if (repaired.originColl[vertex] != RepairMesh::s_none)
      vertices.push_back(mesh.getVertex(repaired.originColl[vertex]));
    else
      vertices.emplace_back(ormix::round<T, omReal64>(p.x), ormix::round<T, omReal64>(p.y),
                            ormix::round<T, omReal64>(p.z));
  }
  std::vector<IndexTriangle> triangles(repaired.getNbTriangles());
  for (std::size_t at = 0; at < repaired.indexColl.size(); ++at) triangles[at / 3][at % 3] = repaired.indexColl[at];
  FaceVertexTriMesh3d<T> result;
  result.build(std::move(vertices), std::move(triangles));  // the indices are valid
  return result;
}

/// All steps but the last conversion.
BoolResult repairSteps(RepairMesh& mesh, const RepairOptions& options, RepairReport& report) {
  if (options.dropsTriangles) detail::dropInvalidTriangles(mesh, report);
  if (options.mergesVertices) {
    detail::mergeOpenVertices(mesh, options.tolerance, report);
    if (options.dropsTriangles) detail::dropInvalidTriangles(mesh, report);
  }
  if (options.dropsTriangles) detail::dropFins(mesh, report);
  detail::joinSides(mesh, report);
  if (options.orientsTriangles)
    detail::orientNeighbours(mesh, report);
  else
    detail::cutTurnedNeighbours(mesh);
  if (options.dropsTriangles) {
    detail::dropSingleTriangles(mesh, report);
    detail::removeFlatTriangles(mesh, report);
  }
  if (options.fillsLoops && options.orientsTriangles) {
    const BoolResult filled = detail::fillLoops(mesh, options.longestLoop, report);
    if (!filled) return filled;
    if (options.dropsTriangles && report.nbFilledLoops != 0) detail::removeFlatTriangles(mesh, report);
  }
  if (options.splitsVertices) {
    detail::splitVertices(mesh, report);
    detail::splitRepeatedEdges(mesh, report);
  } else {
    report.nbSeparatedEdges = 0;  // their triangles were paired, but share the vertices
  }
  if (options.orientsTriangles) detail::turnShells(mesh, report);
  if (options.dropsVertices) detail::dropUnusedVertices(mesh, report);
  report.isClosed = mesh.isClosed();
  if (mesh.getNbTriangles() > MeshTopology::s_maxNbTriangles) return detail::tooManyTriangles();
  return mesh.pointColl.size() > MeshTopology::s_maxNbVertices ? detail::tooManyVertices() : BoolResult();
}

/// What was done, one line for each kind of change.
void writeLog(RepairReport& report) {
  std::vector<std::string> lines;
  const auto add = [&lines](std::size_t count, const char* what) {
    if (count != 0) lines.push_back(what + (": " + std::to_string(count)));
  };
  add(report.nbNotFinite, "triangles dropped, as a coordinate is not finite");
  add(report.nbDegenerate, "triangles dropped, as two corners are the same vertex");
  add(report.nbDuplicate, "triangles dropped, as an earlier one has the same corners");
  add(report.nbMergedVertices, "vertices of open edges merged");
  add(report.nbFins, "triangles dropped, as they hang on edges of three triangles and more");
  add(report.nbSeparatedEdges, "edges of three triangles and more taken apart");
  add(report.nbCutEdges, "edges cut open, as no orientation agrees there");
  add(report.nbSingle, "triangles dropped, as no other is joined to them");
  add(report.nbTurned, "triangles turned");
  add(report.nbFlat, "flat triangles taken out");
  add(report.nbFilledLoops, "boundary loops filled");
  add(report.nbAddedTriangles, "triangles added");
  add(report.nbSplitVertices, "vertices added where sheets touch");
  add(report.nbSplitEdges, "edges halved, as others had the same ends");
  add(report.nbAddedVertices, "vertices added amid edges");
  add(report.nbUnusedVertices, "unused vertices dropped");
  report.log.insert(report.log.begin(), lines.begin(), lines.end());
}

template <class T>
BoolResult repairTo(FaceVertexTriMesh3d<T>& result, const TriMesh3d<T>& mesh, const RepairOptions& options,
                    RepairReport& report) {
  report = {};
  if (!(options.tolerance >= 0))
    return failure("The tolerance of a repair must be at least 0, " + std::to_string(options.tolerance) + " was given");
  if (const BoolResult valid = checkIndices(mesh); !valid) return valid;
  report.areaBefore = meshArea<T>(mesh);
  report.volumeBefore = meshSignedVolume<T>(mesh);
  RepairMesh repaired = toRepairMesh(mesh);
  if (const BoolResult done = repairSteps(repaired, options, report); !done) return done;
  FaceVertexTriMesh3d<T> built = toFaceVertexTriMesh(repaired, mesh);
  report.areaAfter = meshArea<T>(TriMesh3d<T>(built));
  report.volumeAfter = meshSignedVolume<T>(TriMesh3d<T>(built));
  writeLog(report);
  result = std::move(built);
  return {};
}

}  // namespace

template <class T>
BoolResult repair(FaceVertexTriMesh3d<T>& mesh, const RepairOptions& options, RepairReport& report) {
  return repairTo(mesh, TriMesh3d<T>(mesh), options, report);
}

template <class T>
BoolResult repair(const TriMesh3d<T>& mesh, Mesh3d<T>& result, const RepairOptions& options, RepairReport& report) {
  FaceVertexTriMesh3d<T> repaired;
  if (const BoolResult done = repairTo(repaired, mesh, options, report); !done) return done;
  std::vector<omUInt32> indices;
  indices.reserve(3 * repaired.getNbTriangles());
  for (const IndexTriangle& triangle : repaired.getTriangleColl())
    indices.insert(indices.end(), triangle.begin(), triangle.end());
  return result.build(std::move(repaired.getVertexColl()), std::move(indices), eNMP_OwnVertices);
}

#define ORMIX_GEOMETRY_INSTANTIATE_REPAIR(T)                                                                   \
  template ORMIX_GEOMETRY_API BoolResult repair(FaceVertexTriMesh3d<T>&, const RepairOptions&, RepairReport&); \
  template ORMIX_GEOMETRY_API BoolResult repair(const TriMesh3d<T>&, Mesh3d<T>&, const RepairOptions&, RepairReport&);
ORMIX_GEOMETRY_INSTANTIATE_REPAIR(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_REPAIR(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_REPAIR(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_REPAIR(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_REPAIR

}  // namespace ormix::geom
