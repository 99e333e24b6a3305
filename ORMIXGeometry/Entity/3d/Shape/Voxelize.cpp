#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/Entity/3d/Shape/TriangleCrossings.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelRuns.h>
#include <ORMIXGeometry/Entity/3d/Shape/Voxelize.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <type_traits>

namespace ormix::geom {

namespace {

using detail::GridAxis;
using detail::RowCrossing;

template <class T>
using MeshColl = std::vector<const Mesh3d<T>*>;

[[noreturn]] void refuse(const std::string& reason) {
  logAndThrow("A mesh cannot be voxelized: " + reason, __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

GridAxis axisOf(const char* name, omReal64 origin, omReal64 spacing, omUInt32 nbCentres) {
  const GridAxis axis{origin, spacing, nbCentres};
  if (axis.isSound()) return axis;
  std::ostringstream text;
  text << "the grid has the origin " << origin << " and the spacing " << spacing << " along " << name
       << ", which must be finite, and the spacing positive and not below 2^-48 of the largest coordinate";
  refuse(text.str());
}

template <class T>
void checkFinite(const MeshColl<T>& meshes) {
  if constexpr (std::is_floating_point_v<T>)
    for (std::size_t mesh = 0; mesh < meshes.size(); ++mesh) {
      const auto& vertices = meshes[mesh]->getVertexColl();
      for (std::size_t vertex = 0; vertex < vertices.size(); ++vertex) {
        const Point3dData<T>& point = vertices[vertex];
        if (std::isfinite(point.getX()) && std::isfinite(point.getY()) && std::isfinite(point.getZ())) continue;
        std::ostringstream text;
        text << "vertex " << vertex << " of mesh " << mesh << " is " << point;
        refuse(text.str());
      }
    }
}

template <class T>
std::vector<RowCrossing> crossingsOf(const MeshColl<T>& meshes, const GridAxis& x, const GridAxis& y,
                                     const GridAxis& z) {
  std::vector<RowCrossing> crossings;
  detail::TriangleCrossings finder(x, y, z);
  const auto pointOf = [](const Point3dData<T>& point) {
    return toSpatialPoint(point.getX(), point.getY(), point.getZ());
  };
  for (const Mesh3d<T>* mesh : meshes)
    visitTriangles(*mesh, [&](const auto& a, const auto& b, const auto& c) {
      finder.visit(pointOf(a), pointOf(b), pointOf(c),
                   [&crossings](const RowCrossing& crossing) { crossings.push_back(crossing); });
    });
  return crossings;
}

/// Sorts by slice, row and column; slices in linear time, which most of the crossings of a large grid differ in.
void sortCrossings(std::vector<RowCrossing>& crossings, std::size_t nbSlices) {
  std::vector<std::size_t> ends(nbSlices + 1);
  for (const RowCrossing& crossing : crossings) ++ends[crossing.z + std::size_t{1}];
  for (std::size_t slice = 0; slice < nbSlices; ++slice) ends[slice + 1] += ends[slice];
  std::vector<RowCrossing> sorted(crossings.size());
  for (const RowCrossing& crossing : crossings) sorted[ends[crossing.z]++] = crossing;
  for (std::size_t slice = 0, begin = 0; slice < nbSlices; begin = ends[slice++])
    std::sort(sorted.begin() + static_cast<std::ptrdiff_t>(begin),
              sorted.begin() + static_cast<std::ptrdiff_t>(ends[slice]),
              [](const RowCrossing& a, const RowCrossing& b) { return a.y != b.y ? a.y < b.y : a.x < b.x; });
  crossings.swap(sorted);
}

/// Adds the runs of one row.
void addRow(const RowCrossing* first, const RowCrossing* last, eInsideRule rule,
            detail::RowIntersectionsBuilder& builder) {
  const omInt64 mask = rule == eIR_EvenOdd ? 1 : -1;
  const omUInt32 y = first->y, z = first->z;
  omInt64 winding = 0;
  omUInt32 begin = 0;
  while (first != last) {
    const bool wasInside = (winding & mask) != 0;
    const omUInt32 x = first->x;
    for (; first != last && first->x == x; ++first) winding += first->winding;
    const bool isInside = (winding & mask) != 0;
    if (isInside && !wasInside) begin = x;
    if (wasInside && !isInside) builder.addRun(y, {begin, x});
  }
  if ((winding & mask) != 0)
    refuse("it is open or its triangles are not oriented alike, as the row " + std::to_string(y) + " of slice " +
           std::to_string(z) + " does not leave it as often as it enters it");
}

template <class T>
RowIntersections3d voxelizeMeshes(const MeshColl<T>& meshes, const VoxelGrid& grid, eInsideRule rule) {
  if (omUInt64{grid.height} * grid.depth > s_maxNbGridRows)
    refuse("the grid has " + std::to_string(grid.depth) + " slices of " + std::to_string(grid.height) +
           " rows, more rows than " + std::to_string(s_maxNbGridRows));
  const GridAxis x = axisOf("x", grid.origin.getX(), grid.spacing.getX(), grid.width);
  const GridAxis y = axisOf("y", grid.origin.getY(), grid.spacing.getY(), grid.height);
  const GridAxis z = axisOf("z", grid.origin.getZ(), grid.spacing.getZ(), grid.depth);
  checkFinite(meshes);
  RowIntersections3d voxels;
  if (grid.width == 0 || grid.height == 0 || grid.depth == 0) return voxels;
  std::vector<RowCrossing> crossings = crossingsOf(meshes, x, y, z);
  if (crossings.empty()) return voxels;
  sortCrossings(crossings, grid.depth);
  voxels.zOffset = crossings.front().z;
  const RowCrossing* first = crossings.data();
  const RowCrossing* const last = first + crossings.size();
  while (first != last) {
    detail::RowIntersectionsBuilder builder;
    const omUInt32 slice = first->z;
    while (first != last && first->z == slice) {
      const RowCrossing* end = first;
      while (end != last && end->z == slice && end->y == first->y) ++end;
      addRow(first, end, rule, builder);
      first = end;
    }
    voxels.rowIntersectionsColl.resize(static_cast<std::size_t>(slice - voxels.zOffset));
    voxels.rowIntersectionsColl.push_back(builder.take());
  }
  detail::dropEmptySlices(voxels);
  return voxels;
}

template <class T>
void appendMeshes(const MeshWithHoles3d<T>& root, MeshColl<T>& meshes) {
  visitNodes(root, [&meshes](const MeshWithHoles3d<T>& node) {
    meshes.push_back(&node.getExteriorMesh());
    return true;
  });
}

}  // namespace

template <class T>
RowIntersections3d voxelize(const Mesh3d<T>& mesh, const VoxelGrid& grid, eInsideRule rule) {
  return voxelizeMeshes<T>({&mesh}, grid, rule);
}

template <class T>
RowIntersections3d voxelize(const MeshWithHoles3d<T>& mesh, const VoxelGrid& grid, eInsideRule rule) {
  MeshColl<T> meshes;
  appendMeshes(mesh, meshes);
  return voxelizeMeshes(meshes, grid, rule);
}

template <class T>
RowIntersections3d voxelize(const std::vector<boost::shared_ptr<MeshWithHoles3d<T>>>& roots, const VoxelGrid& grid,
                            eInsideRule rule) {
  MeshColl<T> meshes;
  for (const auto& root : roots) {
    if (!root)
      logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_NullPointer), __PRETTY_FUNCTION__, __FILE__,
                  __LINE__);
    appendMeshes(*root, meshes);
  }
  return voxelizeMeshes(meshes, grid, rule);
}

#define ORMIX_GEOMETRY_INSTANTIATE_VOXELIZE_OF(Entity) \
  template ORMIX_GEOMETRY_API RowIntersections3d voxelize(const Entity&, const VoxelGrid&, eInsideRule);
#define ORMIX_GEOMETRY_INSTANTIATE_VOXELIZE(T)               \
  ORMIX_GEOMETRY_INSTANTIATE_VOXELIZE_OF(Mesh3d<T>)          \
  ORMIX_GEOMETRY_INSTANTIATE_VOXELIZE_OF(MeshWithHoles3d<T>) \
  ORMIX_GEOMETRY_INSTANTIATE_VOXELIZE_OF(std::vector<boost::shared_ptr<MeshWithHoles3d<T>>>)

ORMIX_GEOMETRY_INSTANTIATE_VOXELIZE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_VOXELIZE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_VOXELIZE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_VOXELIZE(omReal64)

}  // namespace ormix::geom
