#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Tools/Svg/MeshView.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace ormix::geom {

namespace {

using Point = Point3dData<omReal64>;

omReal64 dot(const Point& a, const Point& b) { return a.getX() * b.getX() + a.getY() * b.getY() + a.getZ() * b.getZ(); }

/// The vector at length 1; the zero vector stays.
Point unit(const Point& vector) {
  const omReal64 length = vector.normL2();
  if (length == 0) return vector;
  return {vector.getX() / length, vector.getY() / length, vector.getZ() / length};
}

/// The axes of the picture in space: to the right, up, and towards the viewer.
struct Camera {
  explicit Camera(const Point& towardsViewer) : depth(unit(towardsViewer)) {
    const bool isAlongZ = std::abs(depth.getZ()) > 0.999;
    right = unit(crossProduct(isAlongZ ? Point(0, 1, 0) : Point(0, 0, 1), depth));
    up = crossProduct(depth, right);
    light = unit({depth.getX() + up.getX() / 2 - right.getX() / 2, depth.getY() + up.getY() / 2 - right.getY() / 2,
                  depth.getZ() + up.getZ() / 2 - right.getZ() / 2});
  }

  Point depth;
  Point right;
  Point up;
  Point light;
};

struct Face {
  std::array<Point2dData<omReal64>, 3> corners;
  omReal64 depth;
  omReal64 shade;
  bool isSeenFromInside;
};

/// The unit normal of a triangle; zero where it has none. Edges are brought near length 1, as their product could
/// overflow, by a power of two, which changes no digit.
Point unitNormal(const std::array<Point, 3>& corners) {
  const auto edge = [&corners](std::size_t k) {
    return Point(corners[k].getX() / 2 - corners[0].getX() / 2, corners[k].getY() / 2 - corners[0].getY() / 2,
                 corners[k].getZ() / 2 - corners[0].getZ() / 2);
  };
  Point edges[] = {edge(1), edge(2)};
  for (Point& each : edges) {
    const omReal64 largest = std::max({std::abs(each.getX()), std::abs(each.getY()), std::abs(each.getZ())});
    if (largest == 0 || !std::isfinite(largest)) return {};
    const int exponent = std::max(std::ilogb(largest), -1022);
    each.setCoords(std::ldexp(each.getX(), -exponent), std::ldexp(each.getY(), -exponent),
                   std::ldexp(each.getZ(), -exponent));
  }
  return unit(crossProduct(edges[0], edges[1]));
}

Face project(const std::array<Point, 3>& corners, const Camera& camera) {
  Face face{{}, 0, 0, false};
  for (std::size_t k = 0; k < 3; ++k) {
    face.corners[k].setCoords(dot(corners[k], camera.right), dot(corners[k], camera.up));
    face.depth += dot(corners[k], camera.depth) / 3;
  }
  const Point normal = unitNormal(corners);
  face.isSeenFromInside = dot(normal, camera.depth) < 0;
  const omReal64 cosine = face.isSeenFromInside ? -dot(normal, camera.light) : dot(normal, camera.light);
  constexpr omReal64 ambient = 0.35;
  face.shade = (ambient + (1 - ambient) * std::max(cosine, 0.0)) * (face.isSeenFromInside ? 0.6 : 1);
  return face;
}

bool isSeen(const Face& face) {
  return std::isfinite(face.depth) && std::all_of(face.corners.begin(), face.corners.end(), [](const auto& corner) {
           return std::isfinite(corner.getX()) && std::isfinite(corner.getY());
         });
}

std::string colour(const MeshViewOptions& options, omReal64 shade) {
  std::string text = "#";
  for (const omUInt8 component : {options.red, options.green, options.blue}) {
    const auto value = static_cast<unsigned>(shade * component);
    text += "0123456789abcdef"[value / 16];
    text += "0123456789abcdef"[value % 16];
  }
  return text;
}

}  // namespace

template <class T>
BoolResult drawMesh(SvgWriter& writer, const Mesh3d<T>& mesh, const MeshViewOptions& options) {
  const omReal64 distance = options.towardsViewer.normL2();
  if (!std::isfinite(distance) || distance == 0) return failure("The direction towards the viewer is no direction");
  const Camera camera(options.towardsViewer);
  std::vector<Face> faces;
  faces.reserve(mesh.getNbTriangles());
  bool isFinite = true;
  visitTriangles(mesh, [&](const Point3dData<T>& p0, const Point3dData<T>& p1, const Point3dData<T>& p2) {
    faces.push_back(project({cast<omReal64>(p0), cast<omReal64>(p1), cast<omReal64>(p2)}, camera));
    isFinite = isFinite && isSeen(faces.back());
  });
  if (!isFinite) return failure("A vertex of the mesh is not finite or too large");
  if (mesh.isClosed())
    faces.erase(std::remove_if(faces.begin(), faces.end(), [](const Face& face) { return face.isSeenFromInside; }),
                faces.end());
  std::sort(faces.begin(), faces.end(), [](const Face& a, const Face& b) { return a.depth < b.depth; });
  SvgStyle style;
  // Wide enough to leave no gap between neighbours.
  style.width = 0.5;
  for (const Face& face : faces) {
    Polygon2d<omReal64> outline;
    outline.getPointColl() = {face.corners[0], face.corners[1], face.corners[2], face.corners[0]};
    style.fill = style.stroke = colour(options, face.shade);
    if (const BoolResult result = writer.draw(outline, style); !result) return result;
  }
  return {};
}

template ORMIX_GEOMETRY_API BoolResult drawMesh(SvgWriter&, const Mesh3d<omInt32>&, const MeshViewOptions&);
template ORMIX_GEOMETRY_API BoolResult drawMesh(SvgWriter&, const Mesh3d<omUInt32>&, const MeshViewOptions&);
template ORMIX_GEOMETRY_API BoolResult drawMesh(SvgWriter&, const Mesh3d<omReal32>&, const MeshViewOptions&);
template ORMIX_GEOMETRY_API BoolResult drawMesh(SvgWriter&, const Mesh3d<omReal64>&, const MeshViewOptions&);

}  // namespace ormix::geom
