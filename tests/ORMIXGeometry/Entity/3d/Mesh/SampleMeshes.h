#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshWalks.h>

#include "support/Checks.h"
#include "support/Random.h"

// Meshes and what is asked of all of them.
namespace meshes {

using namespace ormix;
using namespace ormix::geom;
using support::printed;

using Indices = std::vector<omUInt32>;

/// The corner of the unit cube at the origin.
template <class T = omReal64>
Mesh3d<T> tetrahedron() {
  Mesh3d<T> mesh;
  EXPECT_TRUE(mesh.build({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3}));
  return mesh;
}

/// The triangles (0, i, i + 1), without the last of them around if the fan is open.
inline Indices fan(omUInt32 valence, bool isClosed) {
  Indices indices;
  for (omUInt32 rim = 1; rim < valence + (isClosed ? 1 : 0); ++rim)
    indices.insert(indices.end(), {0, rim, rim % valence + 1});
  return indices;
}

/// Triangles of random vertices, few enough that edges are shared, taken and touched by several fans.
inline Indices soup(support::Random& random, omUInt32 nbVertices, std::size_t nbTriangles) {
  Indices indices(3 * nbTriangles);
  for (omUInt32& index : indices) index = random.below(nbVertices);
  return indices;
}

/// Points with coordinates of their own.
inline Mesh3d<omReal64>::VertexColl points(std::size_t nbVertices) {
  Mesh3d<omReal64>::VertexColl vertices;
  for (std::size_t index = 0; index < nbVertices; ++index)
    vertices.push_back({omReal64(index), omReal64(index * index % 101), -omReal64(index)});
  return vertices;
}

/// The triangles added one by one; a refused one gets vertices of its own.
inline Mesh3d<omReal64> addedOneByOne(const Mesh3d<omReal64>::VertexColl& vertices, const Indices& indices,
                                      Indices* owners = nullptr) {
  Mesh3d<omReal64> mesh;
  for (const auto& vertex : vertices) mesh.addVertex(vertex);
  for (std::size_t first = 0; first < indices.size(); first += 3) {
    if (mesh.addTriangle(indices[first], indices[first + 1], indices[first + 2])) continue;
    if (owners) owners->push_back(omUInt32(first / 3));
    std::array<std::size_t, 3> own{};
    for (std::size_t corner = 0; corner < 3; ++corner) own[corner] = mesh.addVertex(vertices[indices[first + corner]]);
    EXPECT_TRUE(mesh.addTriangle(own[0], own[1], own[2]));
  }
  return mesh;
}

/// Everything a mesh consists of.
template <class T>
void expectSame(const Mesh3d<T>& a, const Mesh3d<T>& b) {
  EXPECT_EQ(a.getMesh3dType(), b.getMesh3dType());
  EXPECT_TRUE(a.getVertexColl() == b.getVertexColl());
  EXPECT_TRUE(a.getHalfEdgeColl() == b.getHalfEdgeColl());
  EXPECT_TRUE(a.getTriangleToHalfEdgeColl() == b.getTriangleToHalfEdgeColl());
}

}  // namespace meshes
