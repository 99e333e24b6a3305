#include <ORMIXGeometry/Entity/3d/RoundSolidOf.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Extent/SpatialExtents.h>
#include <ORMIXGeometry/Transform/3d/EnvelopeTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SpatialParts.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Enclosing/OrientedBox.h>
#include <ORMIXMath/Rotation/EulerAngles.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace ormix::geom {

namespace {

/// The cuboid with the corners of a box: turned about the origin of coordinates, its centre with it (intended).
Cuboid3d<omReal64> toCuboid(const OrientedBox& box) {
  const RotationMatrix& r = box.axes;
  const SpatialPoint& c = box.center;
  // The names of a cuboid's angles are in the reverse order (intended).
  const EulerAngles angles = matrixToEuler(r);
  const auto before = [&](std::size_t axis) { return r[0][axis] * c.x + r[1][axis] * c.y + r[2][axis] * c.z; };
  return {{before(0), before(1), before(2)},
          box.halfSizes[0],
          box.halfSizes[1],
          box.halfSizes[2],
          angles.chi,
          angles.beta,
          angles.alpha};
}

/// A box along the axes of a ball or an ellipsoid, the columns of `axes`.
OrientedBox boxAround(const SpatialPoint& center, const std::array<omReal64, 3>& radii, const RotationMatrix& axes) {
  std::array<std::size_t, 3> order{0, 1, 2};
  std::sort(order.begin(), order.end(), [&radii](std::size_t a, std::size_t b) { return radii[a] > radii[b]; });
  OrientedBox box;
  box.center = center;
  for (std::size_t k = 0; k < 3; ++k) {
    box.halfSizes[k] = radii[order[k]];
    for (std::size_t row = 0; row < 3; ++row) box.axes[row][k] = axes[row][order[k]];
  }
  // A rotation, not a reflection.
  const bool isOdd = (order[0] + 1) % 3 != order[1];
  if (isOdd)
    for (auto& row : box.axes) row[2] = -row[2];
  return box;
}

/// The box along the axis of a cylinder, a torus or a circle, which is the smallest: the size of any box along one of
/// its sides is a concave function of the square of the cosine there, these squares sum to 1, and so the logarithm of
/// the volume is least where one of them is 1.
OrientedBox boxAround(const RoundSolid& solid) {
  const SpatialPoint u = directionAcross(solid.axis);
  const SpatialPoint v = ormix::detail::cross(solid.axis, u);
  const bool isTorus = solid.kind == eRS_Torus;
  const omReal64 reach = isTorus ? solid.radius0 + solid.radius1 : solid.radius0;
  const omReal64 half = isTorus ? solid.radius1 : solid.height / 2;
  const SpatialPoint &w = solid.axis, center = centroid(solid);
  return boxAround(center, {reach, reach, half}, {{{u.x, v.x, w.x}, {u.y, v.y, w.y}, {u.z, v.z, w.z}}});
}

template <class Entity>
bool takeBox(const Entity& entity, OrientedBox& box) {
  if constexpr (!EnvelopeTransform3d::Supports<Entity>::value) {
    return false;
  } else {
    EnvelopeTransform3d::Result<Entity> envelope;
    if (!EnvelopeTransform3d().derive(entity, envelope)) return false;
    if constexpr (isListed<Entity>(ScalarClassList<Sphere3d>())) {
      const omReal64 radius = std::abs(omReal64(entity.getRadius()));
      box = boxAround({omReal64(entity.centerX()), omReal64(entity.centerY()), omReal64(entity.centerZ())},
                      {radius, radius, radius}, OrientedBox().axes);
      return true;
    } else if constexpr (isListed<Entity>(ScalarClassList<Ellipsoid3d>())) {
      box = boxAround({omReal64(entity.centerX()), omReal64(entity.centerY()), omReal64(entity.centerZ())},
                      {std::abs(omReal64(entity.getMajorRadius())), std::abs(omReal64(entity.getMediumRadius())),
                       std::abs(omReal64(entity.getMinorRadius()))},
                      eulerToMatrix(entity.getAlpha(), entity.getBeta(), entity.getChi()));
      return true;
    } else if constexpr (isListed<Entity>(ScalarClassList<Cone3d>())) {
      // The smallest box of a cone need not be along its axis.
      return false;
    } else if constexpr (detail::s_isRoundSolid<Entity>) {
      box = boxAround(detail::roundSolidOf(entity));
      return true;
    } else {
      return detail::useHullPoints(entity, [&box](const auto* xyz, std::size_t nbPoints) {
        const std::vector<omReal64> points(xyz, xyz + 3 * nbPoints);
        return static_cast<bool>(smallestOrientedBox(points.data(), nbPoints, box));
      });
    }
  }
}

}  // namespace

Cuboid3d<omReal64> smallestBox(const BaseGeometryEntity3d& entity) {
  OrientedBox box;
  const bool isTaken =
      detail::callTyped(SpatialEntityList(), entity, [&box](const auto& typed) { return takeBox(typed, box); });
  if (!isTaken)
    logAndThrow(
        formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformFailed, EnvelopeTransform3d::getTypeName(),
                                         toString(entity.getEntity3dType())),
        __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return toCuboid(box);
}

}  // namespace ormix::geom
