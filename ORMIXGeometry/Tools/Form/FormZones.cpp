#include <ORMIXGeometry/Tools/Form/FormZones.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>

#include <algorithm>

namespace ormix::geom {

namespace {

using ormix::detail::operator*;
using ormix::detail::operator+;
using ormix::detail::operator-;
using ormix::detail::dot;

/// The element at three distances from the reference.
template <class Entity, class MakeAt>
FormZone<Entity> zoneAt(const MakeAt& at, omReal64 reference, const FormDeviation& form) {
  return {at(reference), at(form.lowest), at(form.highest)};
}

}  // namespace

FormZone<Line2d> zoneOfLine(const FormDeviation& form) {
  Vector2d along;
  along.setCoords(Point2dData<omReal64>(form.direction.x, form.direction.y));
  const auto at = [&](omReal64 distance) {
    // Distances are positive to the left.
    Line2d line;
    line.setCoords(
        Point2dData<omReal64>(form.point.x - distance * form.direction.y, form.point.y + distance * form.direction.x),
        along);
    return line;
  };
  return zoneAt<Line2d>(at, 0, form);
}

FormZone<Plan3d> zoneOfPlane(const FormDeviation& form) {
  Vector3d normal;
  normal.setCoords(Point3dData<omReal64>(form.direction.x, form.direction.y, form.direction.z));
  const auto at = [&](omReal64 distance) {
    const SpatialPoint point = form.point + form.direction * distance;
    Plan3d plan;
    plan.setCoords(Point3dData<omReal64>(point.x, point.y, point.z), normal);
    return plan;
  };
  return zoneAt<Plan3d>(at, 0, form);
}

FormZone<Circle2d<omReal64>> zoneOfCircle(const FormDeviation& form) {
  const Point2dData<omReal64> center(form.point.x, form.point.y);
  return zoneAt<Circle2d<omReal64>>([&](omReal64 radius) { return Circle2d<omReal64>(center, radius); }, form.radius,
                                    form);
}

FormZone<Sphere3d<omReal64>> zoneOfSphere(const FormDeviation& form) {
  const Point3dData<omReal64> center(form.point.x, form.point.y, form.point.z);
  return zoneAt<Sphere3d<omReal64>>([&](omReal64 radius) { return Sphere3d<omReal64>(center, radius); }, form.radius,
                                    form);
}

FormZone<Cylinder3d<omReal64>> zoneOfCylinder(const FormDeviation& form, const SampleView& points) {
  const auto footOf = [&](std::size_t i) {
    return dot(SpatialPoint{points[i][0], points[i][1], points[i][2]} - form.point, form.direction);
  };
  omReal64 first = points.nbSamples > 0 ? footOf(0) : 0;
  omReal64 last = first;
  for (std::size_t i = 1; i < points.nbSamples; ++i) {
    const omReal64 foot = footOf(i);
    first = std::min(first, foot);
    last = std::max(last, foot);
  }
  const auto onAxis = [&form](omReal64 height) {
    const SpatialPoint p = form.point + form.direction * height;
    return Point3dData<omReal64>(p.x, p.y, p.z);
  };
  return zoneAt<Cylinder3d<omReal64>>(
      [&](omReal64 radius) { return Cylinder3d<omReal64>(onAxis(first), onAxis(last), radius); }, form.radius, form);
}

}  // namespace ormix::geom
