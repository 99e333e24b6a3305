#include <ORMIXGeometry/Entity/3d/Mesh/EdgeIndex.h>
#include <ORMIXGeometry/Tools/Svg/SharpEdges.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom::detail {

namespace {

using Point = Point3dData<omReal64>;

omReal64 dot(const Point& a, const Point& b) { return a.getX() * b.getX() + a.getY() * b.getY() + a.getZ() * b.getZ(); }

}  // namespace

Point unitNormal(const std::array<Point, 3>& corners) {
  const auto edge = [&corners](std::size_t k) {
    return Point(corners[k].getX() / 2 - corners[0].getX() / 2, corners[k].getY() / 2 - corners[0].getY() / 2,
                 corners[k].getZ() / 2 - corners[0].getZ() / 2);
  };
  // Edges are brought near length 1, as their product could overflow, by a power of two, which changes no digit.
  Point edges[] = {edge(1), edge(2)};
  for (Point& each : edges) {
    const omReal64 largest = std::max({std::abs(each.getX()), std::abs(each.getY()), std::abs(each.getZ())});
    if (largest == 0 || !std::isfinite(largest)) return {};
    const int exponent = std::max(std::ilogb(largest), -1022);
    each.setCoords(std::ldexp(each.getX(), -exponent), std::ldexp(each.getY(), -exponent),
                   std::ldexp(each.getZ(), -exponent));
  }
  const Point normal = crossProduct(edges[0], edges[1]);
  const omReal64 length = normal.normL2();
  // Of corners that are not numbers, it is neither.
  if (!(length > 0) || !std::isfinite(length)) return {};
  return {normal.getX() / length, normal.getY() / length, normal.getZ() / length};
}

template <class T>
SharpEdges findSharpEdges(const TriMesh3d<T>& mesh, omReal64 angle) {
  SharpEdges result{{}, true};
  std::vector<Point> normals;
  normals.reserve(mesh.getNbTriangles());
  visitTriangles(mesh, [&](const Point3dData<T>& p0, const Point3dData<T>& p1, const Point3dData<T>& p2) {
    normals.push_back(unitNormal({cast<omReal64>(p0), cast<omReal64>(p1), cast<omReal64>(p2)}));
  });
  const omUInt32* const indices = mesh.getIndices();
  EdgeIndex index(mesh.getNbVertices(), indices, mesh.getNbTriangles());
  index.visitEdges([&](omUInt32 lower, const EdgeIndex::Side* first, const EdgeIndex::Side* last) {
    SharpEdge edge{{lower, first->higherVertexIdx}, {first->sideIdx / 3, last[-1].sideIdx / 3}, s_pi};
    const bool isPair = last - first == 2;
    const bool areOpposite = isPair && (indices[first[0].sideIdx] == lower) != (indices[first[1].sideIdx] == lower);
    result.isClosed = result.isClosed && areOpposite;
    if (isPair) {
      const Point &a = normals[edge.triangles[0]], &b = normals[edge.triangles[1]];
      const omReal64 sine = crossProduct(a, b).normL2(), cosine = dot(a, b);
      edge.angle = std::atan2(sine, areOpposite ? cosine : -cosine);
    }
    if (edge.angle > angle) result.edges.push_back(edge);
  });
  return result;
}

template SharpEdges findSharpEdges(const TriMesh3d<omInt32>&, omReal64);
template SharpEdges findSharpEdges(const TriMesh3d<omUInt32>&, omReal64);
template SharpEdges findSharpEdges(const TriMesh3d<omReal32>&, omReal64);
template SharpEdges findSharpEdges(const TriMesh3d<omReal64>&, omReal64);

}  // namespace ormix::geom::detail
