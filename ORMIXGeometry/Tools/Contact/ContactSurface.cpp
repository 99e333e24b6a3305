#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Tools/Contact/ContactChecks.h>
#include <ORMIXGeometry/Tools/Contact/ContactSurface.h>
#include <ORMIXMath/Contact/ContactPatches.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>
#include <utility>

namespace ormix::geom {

namespace {

using namespace ormix::detail;

/// The classes that have surfaces.
using SurfaceClassList =
    ClassList<Mesh3d<omReal64>, Mesh3d<omReal32>, Mesh3d<omInt32>, Mesh3d<omUInt32>, MeshWithHoles3d<omReal64>,
              MeshWithHoles3d<omReal32>, MeshWithHoles3d<omInt32>, MeshWithHoles3d<omUInt32>, Shape3d>;

// Distances that are always allowed for: they take less than a tenth of a second.
constexpr omReal64 s_leastNbTests = 1e6;

template <class T>
void addMesh(SurfaceMeshes& meshes, const Mesh3d<T>& mesh, omUInt32 body, bool isCavity) {
  meshes.begin(body, mesh.isClosed(), isCavity);
  const auto toPoint = [](const Point3dData<T>& point) {
    return toSpatialPoint(point.getX(), point.getY(), point.getZ());
  };
  visitTriangles(mesh, [&](const Point3dData<T>& p0, const Point3dData<T>& p1, const Point3dData<T>& p2) {
    meshes.add({toPoint(p0), toPoint(p1), toPoint(p2)});
  });
}

/// Adds the surfaces of a body.
/// \return true, for callTyped()
/// @{
template <class T>
bool addSurfaces(SurfaceMeshes& meshes, const Mesh3d<T>& mesh, omUInt32 body) {
  addMesh(meshes, mesh, body, false);
  return true;
}
template <class T>
bool addSurfaces(SurfaceMeshes& meshes, const MeshWithHoles3d<T>& mesh, omUInt32 body) {
  // A node and whether it is a cavity, which changes from level to level.
  std::vector<std::pair<const MeshWithHoles3d<T>*, bool>> pending{{&mesh, false}};
  while (!pending.empty()) {
    const auto [node, isCavity] = pending.back();
    pending.pop_back();
    addMesh(meshes, node->getExteriorMesh(), body, isCavity);
    for (const auto& hole : node->getMeshHoles())
      if (hole) pending.emplace_back(hole.get(), !isCavity);
  }
  return true;
}
bool addSurfaces(SurfaceMeshes& meshes, const Shape3d& shape, omUInt32 body) {
  for (const auto& mesh : shape.getMeshWithHolesColl())
    if (mesh) addSurfaces(meshes, *mesh, body);
  if (shape.getMeshWithHolesColl().empty() && shape.getNbVoxels() > 0)
    logAndThrow(formatMessage<eToolsMessage>(eToolsMessage::eTM_NoSurface, shape.getNbVoxels()), __PRETTY_FUNCTION__,
                __FILE__, __LINE__);
  return true;
}
/// @}

void addBody(SurfaceMeshes& meshes, const BaseGeometryEntity3d& entity, omUInt32 body) {
  if (!detail::callTyped(SurfaceClassList(), entity,
                         [&](const auto& typed) { return addSurfaces(meshes, typed, body); }))
    logAndThrow(formatMessage<eToolsMessage>(eToolsMessage::eTM_NoContact, toString(entity.getEntity3dType())),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

/// The parts of both surfaces in contact, in coordinates multiplied by a scale.
struct BothPatches {
  ContactPatches a;
  ContactPatches b;
  omReal64 scale;
};

BothPatches bothPatches(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b, omReal64 gap,
                        const ContactSurfaceOptions& options) {
  detail::requireNotNegative("gap", gap);
  detail::requireNotNegative("tolerance", options.tolerance);
  detail::requireNotNegative("effort", options.effort);
  SurfaceMeshes meshes;
  addBody(meshes, a, 0);
  addBody(meshes, b, 1);
  detail::requireFinite(meshes.prepare());
  const omReal64 scaledGap = meshes.scaledGap(gap);
  const FacingTriangles trianglesA(meshes.triangles(0));
  const FacingTriangles trianglesB(meshes.triangles(1));
  const auto nbTriangles = static_cast<omReal64>(trianglesA.triangles().size() + trianglesB.triangles().size());
  const omReal64 nbTests = std::clamp(options.effort * nbTriangles, s_leastNbTests, 1e15);
  const PatchLimits limits{options.tolerance, static_cast<std::size_t>(nbTests)};
  return {contactPatches(trianglesA.triangles(), trianglesB, scaledGap, limits),
          contactPatches(trianglesB.triangles(), trianglesA, scaledGap, limits), meshes.scale()};
}

ContactArea areaOf(const ContactPatches& patches, omReal64 scale) {
  return {(patches.inside + 0.5 * patches.undecided) / scale / scale, 0.5 * patches.undecided / scale / scale};
}

ContactSurface surfaceOf(const BothPatches& patches) {
  const ContactArea onA = areaOf(patches.a, patches.scale);
  const ContactArea onB = areaOf(patches.b, patches.scale);
  return {onA, onB, 0.5 * onA.area + 0.5 * onB.area, 0.5 * onA.bound + 0.5 * onB.bound};
}

/// A mesh of triangles, those with equal corners connected.
Mesh3d<omReal64> meshOf(const std::vector<Corners>& pieces, omReal64 scale) {
  const auto corner = [&pieces](std::size_t place) -> const SpatialPoint& { return pieces[place / 3][place % 3]; };
  const auto key = [&corner](std::size_t place) {
    const SpatialPoint& p = corner(place);
    return std::tie(p.x, p.y, p.z);
  };
  std::vector<std::size_t> order(3 * pieces.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(), [&key](std::size_t p, std::size_t q) { return key(p) < key(q); });
  Mesh3d<omReal64>::VertexColl vertices;
  Mesh3d<omReal64>::IndexColl indexOf(order.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    const SpatialPoint& p = corner(order[i]);
    if (i == 0 || key(order[i - 1]) != key(order[i])) vertices.emplace_back(p.x / scale, p.y / scale, p.z / scale);
    indexOf[order[i]] = static_cast<omUInt32>(vertices.size() - 1);
  }
  Mesh3d<omReal64>::IndexColl indices;
  for (std::size_t i = 0; i < indexOf.size(); i += 3) {
    // Pieces at the limits of precision may have lost an edge.
    if (indexOf[i] == indexOf[i + 1] || indexOf[i + 1] == indexOf[i + 2] || indexOf[i + 2] == indexOf[i]) continue;
    for (std::size_t k = 0; k < 3; ++k) indices.push_back(indexOf[i + k]);
  }
  Mesh3d<omReal64> mesh;
  const BoolResult isBuilt = mesh.build(std::move(vertices), std::move(indices), eNMP_OwnVertices);
  if (!isBuilt) logAndThrow(isBuilt.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return mesh;
}

}  // namespace

ContactSurface contactSurface(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b, omReal64 gap,
                              const ContactSurfaceOptions& options) {
  return surfaceOf(bothPatches(a, b, gap, options));
}

Contact3d contact(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b, omReal64 gap,
                  const ContactSurfaceOptions& options) {
  const BothPatches patches = bothPatches(a, b, gap, options);
  return {surfaceOf(patches), meshOf(patches.a.pieces, patches.scale), meshOf(patches.b.pieces, patches.scale)};
}

}  // namespace ormix::geom
