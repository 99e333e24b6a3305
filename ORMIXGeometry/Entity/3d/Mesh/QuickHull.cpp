#include <ORMIXGeometry/Entity/3d/Mesh/QuickHull.h>
#include <ORMIXMath/Hull/ConvexHull3d.h>

#include <utility>

namespace ormix::geom {

template <class T>
BoolResult quickHull(const std::vector<Point3dData<T>>& points, Mesh3d<T>& mesh) {
  return quickHull(TriMesh3d<T>(points.data(), points.size(), static_cast<const omUInt32*>(nullptr), 0), mesh);
}

template <class T>
BoolResult quickHull(const TriMesh3d<T>& points, Mesh3d<T>& mesh) {
  const std::size_t nbPoints = points.getNbVertices();
  std::vector<IndexTriangle> triangles;
  if (BoolResult result = convexHull3d(points.getCoordinates(), nbPoints, triangles); !result) return result;
  // First 1 for points that are vertices of the hull and 0 for others; then the vertex index of each such point.
  std::vector<omUInt32> vertexIndices(nbPoints, 0);
  for (const IndexTriangle& triangle : triangles)
    for (const omUInt32 point : triangle) vertexIndices[point] = 1;
  typename Mesh3d<T>::VertexColl vertices;
  // Euler's formula for a closed surface of genus 0: V = F/2 + 2.
  vertices.reserve(triangles.size() / 2 + 2);
  for (std::size_t i = 0; i < nbPoints; ++i) {
    if (vertexIndices[i] == 0) continue;
    vertexIndices[i] = static_cast<omUInt32>(vertices.size());
    vertices.push_back(points.getVertex(i));
  }
  typename Mesh3d<T>::IndexColl corners;
  corners.reserve(3 * triangles.size());
  for (const IndexTriangle& triangle : triangles)
    for (const omUInt32 point : triangle) corners.push_back(vertexIndices[point]);
  return mesh.build(std::move(vertices), std::move(corners));
}

template ORMIX_GEOMETRY_API BoolResult quickHull(const std::vector<Point3dData<omInt32>>&, Mesh3d<omInt32>&);
template ORMIX_GEOMETRY_API BoolResult quickHull(const TriMesh3d<omInt32>&, Mesh3d<omInt32>&);
template ORMIX_GEOMETRY_API BoolResult quickHull(const std::vector<Point3dData<omUInt32>>&, Mesh3d<omUInt32>&);
template ORMIX_GEOMETRY_API BoolResult quickHull(const TriMesh3d<omUInt32>&, Mesh3d<omUInt32>&);
template ORMIX_GEOMETRY_API BoolResult quickHull(const std::vector<Point3dData<omReal32>>&, Mesh3d<omReal32>&);
template ORMIX_GEOMETRY_API BoolResult quickHull(const TriMesh3d<omReal32>&, Mesh3d<omReal32>&);
template ORMIX_GEOMETRY_API BoolResult quickHull(const std::vector<Point3dData<omReal64>>&, Mesh3d<omReal64>&);
template ORMIX_GEOMETRY_API BoolResult quickHull(const TriMesh3d<omReal64>&, Mesh3d<omReal64>&);

}  // namespace ormix::geom
