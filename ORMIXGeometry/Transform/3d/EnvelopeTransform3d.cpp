#include <ORMIXGeometry/Entity/3d/RoundSolidOf.h>
#include <ORMIXGeometry/Transform/3d/EnvelopeTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SpatialParts.h>
#include <ORMIXGeometry/Transform/EnvelopeOf.h>
#include <ORMIXGeometry/Transform/DerivedTransform.ipp>

#include <cmath>

ORMIX_GEOMETRY_DERIVED_TRANSFORM3D_LEVELS(, EnvelopeTransform3d)

namespace ormix::geom {

namespace {

template <class T>
using Box = detail::GrowingBox<T, 3>;

template <class T>
std::array<T, 3> toArray(const Point3dData<T>& point) {
  return {point.getX(), point.getY(), point.getZ()};
}

template <class T, class Entity>
bool grow(Box<T>& box, const Entity& entity) {
  return detail::visitRuns(entity, [&box](const T* xyz, std::size_t nbPoints) { box.includeRun(xyz, nbPoints); });
}

template <class T>
bool grow(Box<T>& box, const Sphere3d<T>& sphere) {
  const detail::HalfExtent radius{std::abs(omReal64(sphere.getRadius())), true};
  box.setAround(toArray(sphere.center()), {radius, radius, radius});
  return true;
}

template <class T>
bool grow(Box<T>& box, const Ellipsoid3d<T>& ellipsoid) {
  const std::array<omReal64, 3> radii{omReal64(ellipsoid.getMajorRadius()), omReal64(ellipsoid.getMediumRadius()),
                                      omReal64(ellipsoid.getMinorRadius())};
  const Matrix3x3& axes = ellipsoid.getMatRot();
  const auto halfExtent = [&](std::size_t row) {
    return detail::ellipsoidHalfExtent<3>({axes(row, 0), axes(row, 1), axes(row, 2)}, radii);
  };
  box.setAround(toArray(ellipsoid.center()), {halfExtent(0), halfExtent(1), halfExtent(2)});
  return true;
}

/// How far a disc across a unit vector reaches along an axis, and a ball around it.
detail::HalfExtent discHalfExtent(omReal64 first, omReal64 second, omReal64 radius, omReal64 ball = 0) {
  // Across the axis where the other components are 0, along it where they are a unit vector.
  const omReal64 sine = std::hypot(first, second);
  return {ormix::detail::sumUp(sine * radius, ball), sine == 0 || sine == 1 || radius == 0};
}
template <class T>
Box<T> boxOfDisc(const Point3dData<T>& center, const SpatialPoint& axis, omReal64 radius, omReal64 ball = 0) {
  Box<T> box;
  box.setAround(toArray(center),
                {discHalfExtent(axis.y, axis.z, radius, ball), discHalfExtent(axis.z, axis.x, radius, ball),
                 discHalfExtent(axis.x, axis.y, radius, ball)});
  return box;
}

/// The box of both discs of a cylinder or a cone.
template <class T, class Solid>
bool growFrustum(Box<T>& box, const Solid& entity) {
  const RoundSolid solid = detail::roundSolidOf(entity);
  // Without a number there is no axis.
  if (!std::isfinite(solid.height)) return false;
  box = boxOfDisc(entity.getPoint0(), solid.axis, solid.radius0);
  const Box<T> other = boxOfDisc(entity.getPoint1(), solid.axis, solid.radius1);
  box.isFinite = box.isFinite && other.isFinite;
  for (std::size_t axis = 0; axis < 3; ++axis) box.include(axis, other.low[axis], other.high[axis]);
  return true;
}
template <class T>
bool grow(Box<T>& box, const Cylinder3d<T>& cylinder) {
  return growFrustum(box, cylinder);
}
template <class T>
bool grow(Box<T>& box, const Cone3d<T>& cone) {
  return growFrustum(box, cone);
}
template <class T>
bool grow(Box<T>& box, const Torus3d<T>& torus) {
  const RoundSolid solid = detail::roundSolidOf(torus);
  box = boxOfDisc(torus.center(), solid.axis, solid.radius0, solid.radius1);
  return true;
}
template <class T>
bool grow(Box<T>& box, const Circle3d<T>& circle) {
  const RoundSolid solid = detail::roundSolidOf(circle);
  box = boxOfDisc(circle.center(), solid.axis, solid.radius0);
  return true;
}

// Cubes and cuboids are turned about the origin of coordinates, their centre with them (intended).
template <class T, class Solid>
bool growTurned(Box<T>& box, const Solid& solid, const std::array<omReal64, 3>& halfSizes) {
  const std::array<T, 3> center = toArray(solid.center());
  if (solid.getAlpha() == 0 && solid.getBeta() == 0 && solid.getChi() == 0) {
    std::array<detail::HalfExtent, 3> extents{};
    for (std::size_t axis = 0; axis < 3; ++axis) extents[axis] = {std::abs(halfSizes[axis]), true};
    box.setAround(center, extents);
    return true;
  }
  Box<omReal64> corners;
  detail::visitPoints(detail::cornersOf(solid),
                      [&corners](const omReal64* xyz, std::size_t nbPoints) { corners.includeRun(xyz, nbPoints); });
  omReal64 size = 0;
  for (std::size_t axis = 0; axis < 3; ++axis) size += std::abs(omReal64(center[axis])) + std::abs(halfSizes[axis]);
  box.setRounded(corners, size * detail::s_turnError);
  return true;
}

template <class T>
bool grow(Box<T>& box, const Cube3d<T>& cube) {
  const omReal64 half = omReal64(cube.getHalfLength());
  return growTurned(box, cube, {half, half, half});
}

template <class T>
bool grow(Box<T>& box, const Cuboid3d<T>& cuboid) {
  return growTurned(
      box, cuboid,
      {omReal64(cuboid.getHalfLength()), omReal64(cuboid.getHalfWidth()), omReal64(cuboid.getHalfHeight())});
}

bool grow(Box<omReal32>& box, const Shape3d& shape) {
  if (!shape.getMeshWithHolesColl().empty()) return grow<omReal32, Shape3d>(box, shape);
  Box<omReal64> voxels;
  detail::visitVoxelRuns(shape, [&voxels](omReal64 x0, omReal64 x1, omReal64 y, omReal64 z) {
    const omReal64 xyz[] = {x0, y, z, x1, y + 1, z + 1};
    voxels.includeRun(xyz, 2);
  });
  box.setRounded(voxels);
  return true;
}

}  // namespace

template <class Entity>
bool EnvelopeTransform3d::derive(const Entity& entity, Result<Entity>& result) const {
  Box<CoordinateOf<Entity>> box;
  if (!grow(box, entity) || !box.hasAnswer()) return false;
  result.setCoords({box.low[0], box.low[1], box.low[2]}, {box.high[0], box.high[1], box.high[2]});
  return true;
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::derivationsOfAll<EnvelopeTransform3d>(SpatialEntityList());
}  // namespace

}  // namespace ormix::geom
