#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshWalks.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Mesh/ComponentParts.h>
#include <ORMIXGeometry/Tools/Mesh/Components.h>
#include <ORMIXMath/Index/DisjointSets.h>

#include <utility>

namespace ormix::geom {

namespace {

constexpr omUInt32 s_unlabelled = s_noHalfEdge;

void require(const BoolResult& result) {
  if (!result) logAndThrow(result.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class T>
std::size_t labelByVertices(const TriMesh3d<T>& mesh, std::vector<omUInt32>& labels) {
  ormix::detail::DisjointSets vertices(mesh.getNbVertices());
  visitTriangleIndices(mesh, [&vertices](omUInt32 i0, omUInt32 i1, omUInt32 i2) {
    vertices.unite(i0, i1);
    vertices.unite(i0, i2);
  });
  // Sets of vertices are numbered in order of the first triangles that use them.
  std::vector<omUInt32> found(mesh.getNbTriangles());
  std::vector<omUInt32> numbers(mesh.getNbVertices(), s_unlabelled);
  omUInt32 nbSets = 0;
  for (omUInt32 t = 0; t < found.size(); ++t) {
    omUInt32& number = numbers[vertices.lowest(mesh.getTriangleVertexIndices(t)[0])];
    if (number == s_unlabelled) number = nbSets++;
    found[t] = number;
  }
  labels.swap(found);
  return nbSets;
}

template <class T>
std::size_t labelByEdges(const TriMesh3d<T>& mesh, bool onlyManifold, std::vector<omUInt32>& labels) {
  using Side = detail::EdgeIndex::Side;
  detail::EdgeIndex edges(mesh.getNbVertices(), [&mesh](auto visit) {
    const omUInt32* corners = mesh.getIndices();
    for (omUInt32 first = 0; first < 3 * mesh.getNbTriangles(); first += 3, corners += 3)
      for (omUInt32 k = 0; k < 3; ++k)
        if (const omUInt32 end = corners[k == 2 ? 0 : k + 1]; corners[k] != end) visit(first + k, corners[k], end);
  });
  ormix::detail::DisjointSets triangles(mesh.getNbTriangles());
  edges.visitEdges([&](omUInt32, const Side* first, const Side* last) {
    if (onlyManifold && last - first != 2) return;
    for (const Side* side = first + 1; side < last; ++side) triangles.unite(first->sideIdx / 3, side->sideIdx / 3);
  });
  return triangles.number(labels);
}

/// One mesh for the triangles of each label.
template <class Mesh, class T, class Build>
std::vector<Mesh> split(const TriMesh3d<T>& mesh, const std::vector<omUInt32>& labels, std::size_t nbComponents,
                        Build build) {
  const detail::TrianglesByComponent triangles(labels, nbComponents);
  detail::ComponentCutter<T> cutter(mesh);
  std::vector<Mesh> components(nbComponents);
  for (std::size_t k = 0; k < nbComponents; ++k) {
    std::vector<Point3dData<T>> vertices;
    std::vector<IndexTriangle> corners;
    cutter.cut(triangles.begin(k), triangles.end(k), vertices, corners);
    require(build(components[k], std::move(vertices), std::move(corners)));
  }
  return components;
}

template <class Mesh, class T>
std::vector<Mesh> splitFaceVertex(const TriMesh3d<T>& mesh, eMeshConnectivity connectivity) {
  std::vector<omUInt32> labels;
  const std::size_t nbComponents = labelComponents(mesh, labels, connectivity);
  return split<Mesh>(mesh, labels, nbComponents, [](Mesh& component, auto&& vertices, auto&& triangles) {
    return component.build(std::move(vertices), std::move(triangles));
  });
}

}  // namespace

template <class T>
std::size_t labelComponents(const TriMesh3d<T>& mesh, std::vector<omUInt32>& labels, eMeshConnectivity connectivity) {
  require(checkIndices(mesh));
  if (connectivity == eMC_Vertices) return labelByVertices(mesh, labels);
  return labelByEdges(mesh, connectivity == eMC_ManifoldEdges, labels);
}

template <class T>
std::vector<FaceVertexTriMesh3d<T>> extractComponents(const TriMesh3d<T>& mesh, eMeshConnectivity connectivity) {
  return splitFaceVertex<FaceVertexTriMesh3d<T>>(mesh, connectivity);
}

template <class T>
std::vector<FaceVertexTriMesh3d<T>> extractComponents(const FaceVertexTriMesh3d<T>& mesh,
                                                      eMeshConnectivity connectivity) {
  return splitFaceVertex<FaceVertexTriMesh3d<T>>(TriMesh3d<T>(mesh), connectivity);
}

template <class T>
std::vector<FaceVertexAdjTriMesh3d<T>> extractComponents(const FaceVertexAdjTriMesh3d<T>& mesh,
                                                         eMeshConnectivity connectivity) {
  return splitFaceVertex<FaceVertexAdjTriMesh3d<T>>(TriMesh3d<T>(mesh), connectivity);
}

template <class T>
std::vector<Mesh3d<T>> extractComponents(const Mesh3d<T>& mesh, eMeshConnectivity connectivity) {
  require(checkIndices(mesh));
  std::vector<omUInt32> labels;
  // Half-edges know their neighbours, and an edge of them has two triangles at most.
  const std::size_t nbComponents = connectivity == eMC_Vertices ? labelByVertices(TriMesh3d<T>(mesh), labels)
                                                                : labelComponents(mesh.getTopology(), labels);
  return split<Mesh3d<T>>(TriMesh3d<T>(mesh), labels, nbComponents,
                          [&mesh](Mesh3d<T>& component, auto&& vertices, auto&& triangles) {
                            typename Mesh3d<T>::IndexColl indices;
                            indices.reserve(3 * triangles.size());
                            for (const IndexTriangle& t : triangles) indices.insert(indices.end(), t.begin(), t.end());
                            component.setMesh3dType(mesh.getMesh3dType());
                            return component.build(std::move(vertices), std::move(indices));
                          });
}

#define ORMIX_GEOMETRY_INSTANTIATE_COMPONENTS(T)                                                                   \
  template ORMIX_GEOMETRY_API std::size_t labelComponents(const TriMesh3d<T>&, std::vector<omUInt32>&,             \
                                                          eMeshConnectivity);                                      \
  template ORMIX_GEOMETRY_API std::vector<FaceVertexTriMesh3d<T>> extractComponents(const TriMesh3d<T>&,           \
                                                                                    eMeshConnectivity);            \
  template ORMIX_GEOMETRY_API std::vector<FaceVertexTriMesh3d<T>> extractComponents(const FaceVertexTriMesh3d<T>&, \
                                                                                    eMeshConnectivity);            \
  template ORMIX_GEOMETRY_API std::vector<FaceVertexAdjTriMesh3d<T>> extractComponents(                            \
      const FaceVertexAdjTriMesh3d<T>&, eMeshConnectivity);                                                        \
  template ORMIX_GEOMETRY_API std::vector<Mesh3d<T>> extractComponents(const Mesh3d<T>&, eMeshConnectivity);
ORMIX_GEOMETRY_INSTANTIATE_COMPONENTS(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_COMPONENTS(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_COMPONENTS(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_COMPONENTS(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_COMPONENTS

}  // namespace ormix::geom
