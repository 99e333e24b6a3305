#include <ORMIXGeometry/Entity/3d/RoundSolidOf.h>
#include <ORMIXGeometry/Measure/3d/MeshMoments3d.h>
#include <ORMIXGeometry/Measure/3d/TriMeshMeasures.h>
#include <ORMIXGeometry/Transform/3d/CentroidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/EnvelopeTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SpatialParts.h>
#include <ORMIXGeometry/Transform/EnvelopeOf.h>
#include <ORMIXGeometry/Transform/WeightedMean.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXGeometry/Transform/DerivedTransform.ipp>

#include <cmath>
#include <utility>
#include <vector>

ORMIX_GEOMETRY_DERIVED_TRANSFORM3D_LEVELS(, CentroidTransform3d)

namespace ormix::geom {

namespace {

using Mean = detail::WeightedMean<3>;
using Centroid = Point3d<omReal64>;

bool setTo(Centroid& centroid, omReal64 x, omReal64 y, omReal64 z) {
  centroid.setCoords(x, y, z);
  return std::isfinite(x) && std::isfinite(y) && std::isfinite(z);
}
bool setTo(Centroid& centroid, const Mean& mean) {
  detail::Offset<3> at{};
  return mean.mean(at) && setTo(centroid, at[0], at[1], at[2]);
}

/// Adds a triangle, with its area as weight.
template <class T>
void addTriangle(const Point3dData<T>& p0, const Point3dData<T>& p1, const Point3dData<T>& p2, Mean& mean) {
  const auto offset = [&mean](const Point3dData<T>& p) {
    const T xyz[] = {p.getX(), p.getY(), p.getZ()};
    return mean.offsetOf(xyz);
  };
  const detail::Offset<3> a = offset(p0);
  const detail::Offset<3> b = offset(p1);
  const detail::Offset<3> c = offset(p2);
  detail::Offset<3> e, f, barycenter;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    e[axis] = b[axis] - a[axis];
    f[axis] = c[axis] - a[axis];
    barycenter[axis] = a[axis] + (e[axis] + f[axis]) / 3;
  }
  mean.add(detail::lengthOf<3>({e[1] * f[2] - e[2] * f[1], e[2] * f[0] - e[0] * f[2], e[0] * f[1] - e[1] * f[0]}) / 2,
           barycenter);
}

/// Calls `visit(mesh, sign)` for the meshes that count; the sign of cavities is -1. False where a hole is null.
template <class T, class Visit>
bool visitMeshes(const Mesh3d<T>& mesh, eHoleMsrPolicy, Visit visit) {
  visit(mesh, 1.0);
  return true;
}
template <class T, class Visit>
bool visitMeshes(const MeshWithHoles3d<T>& tree, eHoleMsrPolicy policy, Visit visit) {
  if (policy == eHMP_IgnoreHoles || !tree.hasHoles()) return visitMeshes(tree.getExteriorMesh(), policy, visit);
  std::vector<std::pair<const MeshWithHoles3d<T>*, omReal64>> pending{{&tree, 1.0}};
  while (!pending.empty()) {
    const auto [node, sign] = pending.back();
    pending.pop_back();
    visit(node->getExteriorMesh(), sign);
    for (auto hole = node->beginHole(); hole != node->endHole(); ++hole) {
      if (!*hole) return false;
      pending.emplace_back(hole->get(), -sign);
    }
  }
  return true;
}
template <class Visit>
bool visitMeshes(const Shape3d& shape, eHoleMsrPolicy policy, Visit visit) {
  for (const auto& mesh : shape.getMeshWithHolesColl())
    if (!mesh || !visitMeshes(*mesh, policy, visit)) return false;
  return true;
}

/// Of the volume of meshes, where there is none of their surface, where that has no area of the vertices.
template <class Entity>
bool centroidOfMeshes(const Entity& entity, eHoleMsrPolicy policy, Centroid& centroid) {
  bool isClosed = true;
  omReal64 surfaceArea = 0;
  detail::GrowingBox<CoordinateOf<Entity>, 3> box;
  Mean volume;
  const bool isWhole = visitMeshes(entity, policy, [&](const auto& mesh, omReal64 sign) {
    box.includeRun(coordinates(mesh.getVertexColl()), mesh.getNbVertices());
    surfaceArea += area(mesh);
    isClosed = isClosed && mesh.getNbTriangles() > 0 && mesh.isClosed();
    MeshMoments body;
    if (!isClosed || !moments(mesh, body)) return;
    const omReal64 place[] = {body.centroid.x, body.centroid.y, body.centroid.z};
    volume.add(sign * body.volume, volume.offsetOf(place));
  });
  if (!isWhole || !box.hasAnswer()) return false;
  detail::Offset<3> center{};
  if (isClosed && std::abs(volume.weight()) > detail::s_flatness * surfaceArea * box.extent() && volume.mean(center) &&
      box.contains(center))
    return setTo(centroid, center[0], center[1], center[2]);
  Mean surface;
  Mean vertices;
  visitMeshes(entity, policy, [&](const auto& mesh, omReal64) {
    detail::addPoints<3>(coordinates(mesh.getVertexColl()), mesh.getNbVertices(), vertices);
    visitTriangles(mesh, [&](const auto& p0, const auto& p1, const auto& p2) { addTriangle(p0, p1, p2, surface); });
  });
  return setTo(centroid, surface.weight() != 0 ? surface : vertices);
}

template <class T>
bool centroidOf(const Point3d<T>& point, eHoleMsrPolicy, Centroid& centroid) {
  return setTo(centroid, omReal64(point.getX()), omReal64(point.getY()), omReal64(point.getZ()));
}
template <class T>
bool centroidOf(const Segment3d<T>& segment, eHoleMsrPolicy, Centroid& centroid) {
  const Point3dData<T>& p0 = segment.getPoint0();
  const Point3dData<T>& p1 = segment.getPoint1();
  return setTo(centroid, omReal64(p0.getX()) / 2 + omReal64(p1.getX()) / 2,
               omReal64(p0.getY()) / 2 + omReal64(p1.getY()) / 2, omReal64(p0.getZ()) / 2 + omReal64(p1.getZ()) / 2);
}
template <class T>
bool centroidOf(const Triangle3d<T>& triangle, eHoleMsrPolicy, Centroid& centroid) {
  Mean mean;
  detail::visitRuns(triangle,
                    [&mean](const T* xyz, std::size_t nbPoints) { detail::addPoints<3>(xyz, nbPoints, mean); });
  return setTo(centroid, mean);
}
template <class T>
bool centroidOf(const BoundingBox3d<T>& box, eHoleMsrPolicy, Centroid& centroid) {
  return setTo(centroid, box.centerX(), box.centerY(), box.centerZ());
}
template <class T>
bool centroidOf(const PointCloud3d<T>& cloud, eHoleMsrPolicy, Centroid& centroid) {
  Mean mean;
  detail::addPoints<3>(coordinates(cloud.getCollection()), cloud.getCollection().size(), mean);
  return setTo(centroid, mean);
}
template <class T>
bool centroidOf(const Mesh3d<T>& mesh, eHoleMsrPolicy policy, Centroid& centroid) {
  return centroidOfMeshes(mesh, policy, centroid);
}
template <class T>
bool centroidOf(const MeshWithHoles3d<T>& mesh, eHoleMsrPolicy policy, Centroid& centroid) {
  return centroidOfMeshes(mesh, policy, centroid);
}
bool centroidOf(const Shape3d& shape, eHoleMsrPolicy policy, Centroid& centroid) {
  if (!shape.getMeshWithHolesColl().empty()) return centroidOfMeshes(shape, policy, centroid);
  Mean voxels;
  detail::visitVoxelRuns(shape, [&voxels](omReal64 x0, omReal64 x1, omReal64 y, omReal64 z) {
    const omReal64 middle[] = {x0 / 2 + x1 / 2, y + 0.5, z + 0.5};
    voxels.add(x1 - x0, voxels.offsetOf(middle));
  });
  return setTo(centroid, voxels);
}
/// Whether the sizes are numbers too, as for an envelope.
template <class Entity>
bool isWhole(const Entity& entity) {
  EnvelopeTransform3d::Result<Entity> box;
  return EnvelopeTransform3d().derive(entity, box);
}
/// Of cylinders, cones, tori, circles, spheres and ellipsoids.
template <class Entity>
bool centroidOf(const Entity& entity, eHoleMsrPolicy, Centroid& centroid) {
  if constexpr (detail::s_isRoundSolid<Entity>) {
    const SpatialPoint center = ormix::centroid(detail::roundSolidOf(entity));
    return isWhole(entity) && setTo(centroid, center.x, center.y, center.z);
  } else {
    return isWhole(entity) &&
           setTo(centroid, omReal64(entity.centerX()), omReal64(entity.centerY()), omReal64(entity.centerZ()));
  }
}
// Cubes and cuboids are turned about the origin of coordinates, their centre with them (intended).
template <class Solid>
bool centroidOfTurned(const Solid& solid, Centroid& centroid) {
  const RotationMatrix rows = eulerToMatrix(solid.getChi(), solid.getBeta(), solid.getAlpha());
  const omReal64 x = omReal64(solid.centerX());
  const omReal64 y = omReal64(solid.centerY());
  const omReal64 z = omReal64(solid.centerZ());
  const auto along = [&](const std::array<omReal64, 3>& row) { return row[0] * x + row[1] * y + row[2] * z; };
  return isWhole(solid) && setTo(centroid, along(rows[0]), along(rows[1]), along(rows[2]));
}
template <class T>
bool centroidOf(const Cube3d<T>& cube, eHoleMsrPolicy, Centroid& centroid) {
  return centroidOfTurned(cube, centroid);
}
template <class T>
bool centroidOf(const Cuboid3d<T>& cuboid, eHoleMsrPolicy, Centroid& centroid) {
  return centroidOfTurned(cuboid, centroid);
}

}  // namespace

template <class Entity>
bool CentroidTransform3d::derive(const Entity& entity, Result<Entity>& result) const {
  return centroidOf(entity, getHoleMsrPolicy(), result);
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::derivationsOfAll<CentroidTransform3d>(SpatialEntityList());
}  // namespace

}  // namespace ormix::geom
