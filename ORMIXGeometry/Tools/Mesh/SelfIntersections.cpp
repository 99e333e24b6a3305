#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Mesh/SelfIntersections.h>
#include <ORMIXGeometry/Tools/Mesh/TriangleBoxes.h>
#include <ORMIXMath/Distance/Orientation3d.h>
#include <ORMIXMath/Distance/TrianglesMeet.h>
#include <ORMIXMath/Index/MeetingPairs.h>

#include <algorithm>
#include <limits>

namespace ormix::geom {

namespace {

template <class T>
SpatialTriangle triangleAt(const TriMesh3d<T>& mesh, std::size_t triangleIdx) {
  const std::array<SpatialPoint, 3> corners = detail::spatialCorners(mesh, triangleIdx);
  return {corners[0], corners[1], corners[2]};
}

/// The corners that two triangles have in common, by their places in the first and the second.
struct CommonCorners {
  CommonCorners(const IndexTriangle& a, const IndexTriangle& b) {
    for (unsigned i = 0; i < 3; ++i)
      for (unsigned k = 0; k < 3; ++k)
        if (a[i] == b[k]) {
          ++count;
          inA |= 1u << i;
          inB |= 1u << k;
        }
  }
  int count = 0;
  unsigned inA = 0;  ///< bits
  unsigned inB = 0;  ///< bits
};

/// Whether the corners of b that it does not share, bits of `shared`, all lie strictly on one side of the plane of a.
bool isOnOneSide(const SpatialTriangle& a, const SpatialTriangle& b, unsigned shared) {
  int side = 0;
  const std::array<const SpatialPoint*, 3> corners{&b.p0, &b.p1, &b.p2};
  for (unsigned k = 0; k < 3; ++k) {
    if ((shared >> k & 1) != 0) continue;
    const int next = orientation3d(a.p0, a.p1, a.p2, *corners[k]);
    if (next == 0 || next + side == 0) return false;
    side = next;
  }
  return true;
}

template <class T>
std::vector<ormix::detail::IndexBox<3>> boxesOf(const TriMesh3d<T>& mesh) {
  std::vector<ormix::detail::IndexBox<3>> boxes(mesh.getNbTriangles());
  for (std::size_t t = 0; t < boxes.size(); ++t)
    if (!detail::hasEqualCorners(mesh.getIndices() + 3 * t) && !isDegenerate(triangleAt(mesh, t)))
      boxes[t] = detail::triangleBox(mesh, t);
  return boxes;
}

/// Sorts the pairs and drops those beyond a number.
void keepFirst(std::vector<std::array<omUInt32, 2>>& pairs, std::size_t maxNb) {
  std::sort(pairs.begin(), pairs.end());
  if (pairs.size() > maxNb) pairs.resize(maxNb);
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
    const CommonCorners common(cornersOfA, cornersOfB);
    if (common.count == 3) return true;
    const SpatialTriangle triangleA = triangleAt(mesh, a), triangleB = triangleAt(mesh, b);
    // Most pairs are neighbours that are told apart by one plane.
    if (isOnOneSide(triangleA, triangleB, common.inB)) return true;
    if (common.count < 2 && isOnOneSide(triangleB, triangleA, common.inA)) return true;
    if (!trianglesCrossBeyondShared(triangleA, cornersOfA, triangleB, cornersOfB)) return true;
    const auto [first, second] = std::minmax(a, b);
    ++found.nbPairs;
    found.pairColl.push_back({static_cast<omUInt32>(first), static_cast<omUInt32>(second)});
    if (found.pairColl.size() / 2 > options.maxNbListed) keepFirst(found.pairColl, options.maxNbListed);
    return true;
  });
  keepFirst(found.pairColl, options.maxNbListed);
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
