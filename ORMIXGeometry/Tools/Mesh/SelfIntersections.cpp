#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Mesh/SelfIntersections.h>
#include <ORMIXGeometry/Tools/Mesh/TriangleBoxes.h>
#include <ORMIXMath/Distance/TrianglesMeet.h>
#include <ORMIXMath/Index/MeetingPairs.h>

#include <algorithm>

namespace ormix::geom {

namespace {

/// Corners that both triangles have; of triangles with three different ones.
int nbCommonCorners(const IndexTriangle& a, const IndexTriangle& b) {
  int nb = 0;
  for (const omUInt32 corner : a)
    for (const omUInt32 other : b) nb += corner == other ? 1 : 0;
  return nb;
}

template <class T>
SpatialTriangle triangleAt(const TriMesh3d<T>& mesh, std::size_t triangleIdx) {
  const std::array<SpatialPoint, 3> corners = detail::spatialCorners(mesh, triangleIdx);
  return {corners[0], corners[1], corners[2]};
}

template <class T>
std::vector<ormix::detail::IndexBox<3>> boxesOf(const TriMesh3d<T>& mesh) {
  std::vector<ormix::detail::IndexBox<3>> boxes(mesh.getNbTriangles());
  for (std::size_t t = 0; t < boxes.size(); ++t)
    if (!detail::hasEqualCorners(mesh.getIndices() + 3 * t) && !isDegenerate(triangleAt(mesh, t)))
      boxes[t] = detail::triangleBox(mesh, t);
  return boxes;
}

}  // namespace

template <class T>
SelfIntersections findSelfIntersections(const TriMesh3d<T>& mesh, const SelfIntersectionOptions& options) {
  if (const BoolResult refused = checkIndices(mesh); !refused)
    logAndThrow(refused.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  constexpr std::size_t s_alwaysTested = 1000000;
  const std::size_t maxNbTested =
      options.maxNbTestedATriangle > std::numeric_limits<std::size_t>::max() / (mesh.getNbTriangles() + 1) / 2
          ? std::numeric_limits<std::size_t>::max()
          : options.maxNbTestedATriangle * mesh.getNbTriangles() + s_alwaysTested;
  SelfIntersections found;
  std::size_t nbTested = 0;
  const ormix::detail::BoxTree<3> tree(boxesOf(mesh));
  found.isComplete = ormix::detail::visitMeetingPairs(tree, [&](std::size_t a, std::size_t b) {
    if (++nbTested > maxNbTested) return false;
    const IndexTriangle cornersOfA = mesh.getTriangleVertexIndices(a), cornersOfB = mesh.getTriangleVertexIndices(b);
    if (nbCommonCorners(cornersOfA, cornersOfB) == 3) return true;
    if (!trianglesCrossBeyondShared(triangleAt(mesh, a), cornersOfA, triangleAt(mesh, b), cornersOfB)) return true;
    const auto [first, second] = std::minmax(a, b);
    ++found.nbPairs;
    found.pairColl.push_back({static_cast<omUInt32>(first), static_cast<omUInt32>(second)});
    return true;
  });
  std::sort(found.pairColl.begin(), found.pairColl.end());
  if (found.pairColl.size() > options.maxNbListed) found.pairColl.resize(options.maxNbListed);
  return found;
}

template ORMIX_GEOMETRY_API SelfIntersections findSelfIntersections(const TriMesh3d<omInt32>&,
                                                                    const SelfIntersectionOptions&);
template ORMIX_GEOMETRY_API SelfIntersections findSelfIntersections(const TriMesh3d<omUInt32>&,
                                                                    const SelfIntersectionOptions&);
template ORMIX_GEOMETRY_API SelfIntersections findSelfIntersections(const TriMesh3d<omReal32>&,
                                                                    const SelfIntersectionOptions&);
template ORMIX_GEOMETRY_API SelfIntersections findSelfIntersections(const TriMesh3d<omReal64>&,
                                                                    const SelfIntersectionOptions&);

}  // namespace ormix::geom
