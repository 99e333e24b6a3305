#pragma once

#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>
#include <ORMIXGeometry/Entity/3d/Circle/Circle3d.h>
#include <ORMIXGeometry/Entity/3d/Cone/Cone3d.h>
#include <ORMIXGeometry/Entity/3d/Cube/Cube3d.h>
#include <ORMIXGeometry/Entity/3d/Cuboid/Cuboid3d.h>
#include <ORMIXGeometry/Entity/3d/Cylinder/Cylinder3d.h>
#include <ORMIXGeometry/Entity/3d/Ellipsoid/Ellipsoid3d.h>
#include <ORMIXGeometry/Entity/3d/Line/Line3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXGeometry/Entity/3d/Segment/Segment3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/Entity/3d/Sphere/Sphere3d.h>
#include <ORMIXGeometry/Entity/3d/Torus/Torus3d.h>
#include <ORMIXGeometry/Entity/3d/Triangle/Triangle3d.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>
#include <ORMIXGeometry/Transform/3d/LinearTransform3d.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXGeometry/Transform/LinearTransform.ipp>

#include <cmath>

// The rule of each spatial entity under a linear transform, once for all seven. An entity's new fields are computed
// first and stored last, so that a failure changes nothing.

namespace ormix::geom::detail {

/// \name What is mapped as its counterpart in the plane.
/// @{
template <class Map, class T>
bool mapInSitu(const Map& map, Point3d<T>& point) {
  return mapCoords(map, point);
}
template <class Map>
bool mapInSitu(const Map& map, Vector3d& vector) {
  return mapAsPosition(map, vector, Point3dData<omReal64>(vector.getX(), vector.getY(), vector.getZ()));
}
template <class Map, class T>
bool mapInSitu(const Map& map, Segment3d<T>& segment) {
  return mapEnds(map, segment);
}
template <class Map, class T>
bool mapInSitu(const Map& map, BoundingBox3d<T>& box) {
  return mapCorners(map, box);
}
template <class Map, class T>
bool mapInSitu(const Map& map, Sphere3d<T>& sphere) {
  return mapBall(map, sphere);
}
/// @}

template <class Map, class T>
bool mapInSitu(const Map& map, Triangle3d<T>& triangle) {
  Point3dData<T> pt0 = triangle.getPoint0();
  Point3dData<T> pt1 = triangle.getPoint1();
  Point3dData<T> pt2 = triangle.getPoint2();
  if (!mapPoint(map, pt0, pt1, pt2)) return false;
  triangle.setCoords(pt0, pt1, pt2);
  return true;
}

/// Follows the orientation by the rotation that is in the map; unchanged, to the bit, where the map keeps directions.
/// False where the angles are not finite, and so no orientation.
template <class Map>
bool mapOrientation(const Map& map, EulerAngles& orientation) {
  using Math = std::decay_t<decltype(map.math)>;
  if constexpr (!preserves<Math>(eMR_Directions)) {
    // By the map's own angles and not its matrix, which a scale of zero leaves without a direction.
    const EulerAngles turned =
        composed(EulerAngles{map.math.getAlpha(), map.math.getBeta(), map.math.getChi()}, orientation);
    if (!std::isfinite(turned.alpha) || !std::isfinite(turned.beta) || !std::isfinite(turned.chi)) return false;
    orientation = turned;
  }
  return true;
}

template <class Map, class T>
bool mapInSitu(const Map& map, Ellipsoid3d<T>& ellipsoid) {
  Point3dData<T> center = ellipsoid.center();
  T majorRadius = ellipsoid.getMajorRadius();
  T mediumRadius = ellipsoid.getMediumRadius();
  T minorRadius = ellipsoid.getMinorRadius();
  EulerAngles angles{ellipsoid.getAlpha(), ellipsoid.getBeta(), ellipsoid.getChi()};
  if (!mapPoint(map, center) || !mapLength(map, majorRadius, mediumRadius, minorRadius) || !mapOrientation(map, angles))
    return false;
  ellipsoid.setCoords(center, majorRadius, mediumRadius, minorRadius, angles.alpha, angles.beta, angles.chi);
  return true;
}

// The matrix of a cube or a cuboid is Rz(chi)·Ry(beta)·Rx(alpha): its angles bear their names the other way round.

template <class Map, class T>
bool mapInSitu(const Map& map, Cube3d<T>& cube) {
  Point3dData<T> center = cube.center();
  T halfLength = cube.getHalfLength();
  EulerAngles angles{cube.getChi(), cube.getBeta(), cube.getAlpha()};
  if (!mapPoint(map, center) || !mapLength(map, halfLength) || !mapOrientation(map, angles)) return false;
  cube.setCoords(center, halfLength, angles.chi, angles.beta, angles.alpha);
  return true;
}

template <class Map, class T>
bool mapInSitu(const Map& map, Cuboid3d<T>& cuboid) {
  Point3dData<T> center = cuboid.center();
  T halfLength = cuboid.getHalfLength();
  T halfWidth = cuboid.getHalfWidth();
  T halfHeight = cuboid.getHalfHeight();
  EulerAngles angles{cuboid.getChi(), cuboid.getBeta(), cuboid.getAlpha()};
  if (!mapPoint(map, center) || !mapLength(map, halfLength, halfWidth, halfHeight) || !mapOrientation(map, angles))
    return false;
  cuboid.setCoords(center, halfLength, halfWidth, halfHeight, angles.chi, angles.beta, angles.alpha);
  return true;
}

/// \name Cylinders, cones, tori, circles and lines, each of which becomes its image as a set of points.
/// @{

/// The lengths under the map, without the sign of its scale.
template <class Map, class... T>
bool mapSize(const Map& map, T&... lengths) {
  const omReal64 factor = std::abs(lengthFactor(map.math));
  return (scaleLength(factor, lengths) && ...);
}

/// Turns a direction by the rotation that is in the map; unchanged, to the bit, where the map keeps directions. False
/// where the angles are not finite.
template <class Map>
bool turnDirection(const Map& map, Point3dData<omReal64>& direction) {
  if constexpr (!preserves<std::decay_t<decltype(map.math)>>(eMR_Directions)) {
    // By the map's own angles and not its matrix, which a scale of zero leaves without a direction.
    const RotationMatrix rows = eulerToMatrix(map.math.getAlpha(), map.math.getBeta(), map.math.getChi());
    const auto along = [&direction](const std::array<omReal64, 3>& row) {
      return row[0] * direction.getX() + row[1] * direction.getY() + row[2] * direction.getZ();
    };
    const Point3dData<omReal64> turned(along(rows[0]), along(rows[1]), along(rows[2]));
    if (!std::isfinite(turned.getX() + turned.getY() + turned.getZ())) return false;
    direction = turned;
  }
  return true;
}

template <class Map, class T>
bool mapInSitu(const Map& map, Cylinder3d<T>& cylinder) {
  Point3dData<T> pt0 = cylinder.getPoint0();
  Point3dData<T> pt1 = cylinder.getPoint1();
  T radius = cylinder.getRadius();
  if (!mapPoint(map, pt0, pt1) || !mapSize(map, radius)) return false;
  cylinder.setCoords(pt0, pt1, radius);
  return true;
}

template <class Map, class T>
bool mapInSitu(const Map& map, Cone3d<T>& cone) {
  Point3dData<T> pt0 = cone.getPoint0();
  Point3dData<T> pt1 = cone.getPoint1();
  T radius0 = cone.getRadius0();
  T radius1 = cone.getRadius1();
  if (!mapPoint(map, pt0, pt1) || !mapSize(map, radius0, radius1)) return false;
  cone.setCoords(pt0, pt1, radius0, radius1);
  return true;
}

template <class Map, class T>
bool mapInSitu(const Map& map, Torus3d<T>& torus) {
  Point3dData<T> center = torus.center();
  Point3dData<omReal64> axis = torus.getAxis();
  T majorRadius = torus.getMajorRadius();
  T minorRadius = torus.getMinorRadius();
  if (!mapPoint(map, center) || !mapSize(map, majorRadius, minorRadius) || !turnDirection(map, axis)) return false;
  torus.setCoords(center, axis, majorRadius, minorRadius);
  return true;
}

template <class Map, class T>
bool mapInSitu(const Map& map, Circle3d<T>& circle) {
  Point3dData<T> center = circle.center();
  Point3dData<omReal64> normal = circle.getNormal();
  T radius = circle.getRadius();
  if (!mapPoint(map, center) || !mapSize(map, radius) || !turnDirection(map, normal)) return false;
  circle.setCoords(center, normal, radius);
  return true;
}

template <class Map>
bool mapInSitu(const Map& map, Line3d& line) {
  using Math = std::decay_t<decltype(map.math)>;
  Point3dData<omReal64> point = line.getNearestPointFromOrigin();
  Point3dData<omReal64> direction = line.getDirection();
  if (!mapPoint(map, point)) return false;
  const auto& c = map.math.getCoefficients();
  const omReal64 x = direction.getX(), y = direction.getY(), z = direction.getZ();
  const Point3dData<omReal64> image(c.xx * x + c.xy * y + c.xz * z, c.yx * x + c.yy * y + c.yz * z,
                                    c.zx * x + c.zy * y + c.zz * z);
  const omReal64 length = std::hypot(image.getX(), image.getY(), image.getZ());
  if (!std::isfinite(length) || length == 0) return false;
  if constexpr (!preserves<Math>(eMR_Directions)) direction = image;
  line.setCoords(point, direction);
  return true;
}
/// @}

/// \name Runs of points and trees of them.
/// @{
template <class Map, class T>
bool mapInSitu(const Map& map, PointCloud3d<T>& cloud) {
  return mapPoints(map, cloud.getCollection());
}
template <class Map, class T>
bool mapToImage(const Map& map, const PointCloud3d<T>& cloud, PointCloud3d<T>& image) {
  return mapPoints(map, cloud.getCollection(), image.getCollection());
}
template <class Map, class T>
bool mapInSitu(const Map& map, Mesh3d<T>& mesh) {
  return mapPoints(map, mesh.getVertexColl());
}
inline constexpr auto s_verticesOfNode3d = [](auto& node) -> auto& { return node.getExteriorMesh().getVertexColl(); };
template <class Map, class T>
bool mapInSitu(const Map& map, MeshWithHoles3d<T>& mesh) {
  return mapTree(map, mesh, s_verticesOfNode3d);
}
/// @}

template <class Map>
bool mapInSitu(const Map& map, Shape3d& shape) {
  return mapTrees(map, shape.getMeshWithHolesColl(), s_verticesOfNode3d);
}

}  // namespace ormix::geom::detail
