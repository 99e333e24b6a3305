#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Entity/ClassList.h>
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <ORMIXGeometry/Transform/3d/HomographyTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <algorithm>
#include <boost/numeric/ublas/matrix.hpp>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

/// \file
/// The models of reports as entities and transforms: `Reported<Class>` has the name, the number of parameters, the
/// object of some parameters and the parameters of an object, as the fits report them. Cylinders and cones, whose ends
/// are not reported, have no object; `imageOf` says what becomes of the rest. Not installed.

namespace ormix::geom::detail {

using Values = std::vector<omReal64>;
using Real = omReal64;

template <class Class>
struct Reported;

template <>
struct Reported<Point2d<Real>> {
  static constexpr std::string_view s_name = "Point2d";
  static constexpr std::size_t s_nb = 2;
  static Point2d<Real> made(const Values& p) { return {p[0], p[1]}; }
  static Values params(const Point2d<Real>& point) { return {point.getX(), point.getY()}; }
};
template <>
struct Reported<Line2d> {
  static constexpr std::string_view s_name = "Line2d";
  static constexpr std::size_t s_nb = 2;
  static Line2d made(const Values& p) { return {p[0], p[1]}; }
  static Values params(const Line2d& line) { return {line.getRho(), line.getTheta()}; }
};
template <>
struct Reported<Circle2d<Real>> {
  static constexpr std::string_view s_name = "Circle2d";
  static constexpr std::size_t s_nb = 3;
  static Circle2d<Real> made(const Values& p) {
    Circle2d<Real> circle;
    circle.setCoords({p[0], p[1]}, p[2]);
    return circle;
  }
  static Values params(const Circle2d<Real>& c) { return {c.centerX(), c.centerY(), c.getRadius()}; }
};
template <>
struct Reported<Ellipse2d<Real>> {
  static constexpr std::string_view s_name = "Ellipse2d";
  static constexpr std::size_t s_nb = 5;
  static Ellipse2d<Real> made(const Values& p) {
    Ellipse2d<Real> ellipse;
    ellipse.setCoords({p[0], p[1]}, p[2], p[3], p[4]);
    return ellipse;
  }
  static Values params(const Ellipse2d<Real>& e) {
    return {e.centerX(), e.centerY(), e.getMajorRadius(), e.getMinorRadius(), e.getTheta()};
  }
};
/// By the normal and the distance of the origin along it.
template <>
struct Reported<Plan3d> {
  static constexpr std::string_view s_name = "Plan3d";
  static constexpr std::size_t s_nb = 4;
  static Plan3d made(const Values& p) {
    const Real length = std::hypot(std::hypot(p[0], p[1]), p[2]);
    return {p[3] / length, std::atan2(std::hypot(p[0], p[1]), p[2]), std::atan2(p[1], p[0])};
  }
  static Values params(const Plan3d& plan) {
    return {plan.getSinTheta() * plan.getCosPhi(), plan.getSinTheta() * plan.getSinPhi(), plan.getCosTheta(),
            plan.getRho()};
  }
};
template <>
struct Reported<Sphere3d<Real>> {
  static constexpr std::string_view s_name = "Sphere3d";
  static constexpr std::size_t s_nb = 4;
  static Sphere3d<Real> made(const Values& p) {
    Sphere3d<Real> sphere;
    sphere.setCoords({p[0], p[1], p[2]}, p[3]);
    return sphere;
  }
  static Values params(const Sphere3d<Real>& s) { return {s.centerX(), s.centerY(), s.centerZ(), s.getRadius()}; }
};
/// By the vector of the rotation of its axes.
template <>
struct Reported<Ellipsoid3d<Real>> {
  static constexpr std::string_view s_name = "Ellipsoid3d";
  static constexpr std::size_t s_nb = 9;
  static Ellipsoid3d<Real> made(const Values& p) {
    const Real length = std::hypot(std::hypot(p[6], p[7]), p[8]);
    const Real factor = length > 0 ? std::sin(length / 2) / length : 0.5;
    EulerAngles angles;
    quaternionToEuler(std::cos(length / 2), factor * p[6], factor * p[7], factor * p[8], angles.alpha, angles.beta,
                      angles.chi);
    Ellipsoid3d<Real> ellipsoid;
    ellipsoid.setCoords({p[0], p[1], p[2]}, p[3], p[4], p[5], angles.alpha, angles.beta, angles.chi);
    return ellipsoid;
  }
  static Values params(const Ellipsoid3d<Real>& e) {
    // The quaternion of the angles, by which the vector is well defined up to a half turn.
    const Real ca = std::cos(e.getAlpha() / 2), sa = std::sin(e.getAlpha() / 2), cb = std::cos(e.getBeta() / 2),
               sb = std::sin(e.getBeta() / 2), cc = std::cos(e.getChi() / 2), sc = std::sin(e.getChi() / 2);
    const Real w = ca * cb * cc + sa * sb * sc, x = ca * cb * sc - sa * sb * cc, y = ca * sb * cc + sa * cb * sc,
               z = sa * cb * cc - ca * sb * sc;
    const Real sine = std::hypot(std::hypot(x, y), z), sign = w < 0 ? -1 : 1;
    const Real factor = sine > 0 ? 2 * std::atan2(sine, sign * w) / sine * sign : 2;
    return {e.centerX(),        e.centerY(), e.centerZ(), e.getMajorRadius(), e.getMediumRadius(),
            e.getMinorRadius(), factor * x,  factor * y,  factor * z};
  }
};

template <>
struct Reported<Torus3d<Real>> {
  static constexpr std::string_view s_name = "Torus3d";
  static constexpr std::size_t s_nb = 8;
  static Torus3d<Real> made(const Values& p) { return {{p[0], p[1], p[2]}, {p[3], p[4], p[5]}, p[6], p[7]}; }
  static Values params(const Torus3d<Real>& t) {
    const auto& axis = t.getAxis();
    return {t.centerX(), t.centerY(), t.centerZ(),        axis.getX(),
            axis.getY(), axis.getZ(), t.getMajorRadius(), t.getMinorRadius()};
  }
};
template <>
struct Reported<Circle3d<Real>> {
  static constexpr std::string_view s_name = "Circle3d";
  static constexpr std::size_t s_nb = 7;
  static Circle3d<Real> made(const Values& p) { return {{p[0], p[1], p[2]}, {p[3], p[4], p[5]}, p[6]}; }
  static Values params(const Circle3d<Real>& c) {
    const auto& normal = c.getNormal();
    return {c.centerX(), c.centerY(), c.centerZ(), normal.getX(), normal.getY(), normal.getZ(), c.getRadius()};
  }
};
/// By the circle: the ends are where the samples end.
template <>
struct Reported<Arc2d<Real>> {
  static constexpr std::string_view s_name = "Arc2d";
  static constexpr std::size_t s_nb = 3;
  static Arc2d<Real> made(const Values& p) { return {{p[0], p[1]}, p[2], 0, s_twoPi}; }
  static Values params(const Arc2d<Real>& arc) { return {arc.centerX(), arc.centerY(), arc.getRadius()}; }
};
template <>
struct Reported<Line3d> {
  static constexpr std::string_view s_name = "Line3d";
  static constexpr std::size_t s_nb = 6;
  static Line3d made(const Values& p) { return {{p[0], p[1], p[2]}, {p[3], p[4], p[5]}}; }
};
template <>
struct Reported<Cylinder3d<Real>> {
  static constexpr std::string_view s_name = "Cylinder3d";
  static constexpr std::size_t s_nb = 7;
};
template <>
struct Reported<Cone3d<Real>> {
  static constexpr std::string_view s_name = "Cone3d";
  static constexpr std::size_t s_nb = 7;
};

/// Transforms have the parameters of their constructors.
template <class Transform, std::size_t NbParams>
struct ReportedTransform {
  static constexpr std::size_t s_nb = NbParams;
  static Transform made(const Values& p) {
    RealVector params(NbParams);
    std::copy(p.begin(), p.end(), params.begin());
    auto map = Transform().getGeometricTransform();
    map.setParams(params);
    return Transform(map);
  }
};
#define ORMIX_REPORTED_TRANSFORM(Name, NbParams)              \
  template <>                                                 \
  struct Reported<Name> : ReportedTransform<Name, NbParams> { \
    static constexpr std::string_view s_name = #Name;         \
  };
ORMIX_REPORTED_TRANSFORM(TranslationTransform2d, 2)
ORMIX_REPORTED_TRANSFORM(RigidTransform2d, 3)
ORMIX_REPORTED_TRANSFORM(SimilarityTransform2d, 4)
ORMIX_REPORTED_TRANSFORM(HomographyTransform2d, 9)
ORMIX_REPORTED_TRANSFORM(TranslationTransform3d, 3)
ORMIX_REPORTED_TRANSFORM(RigidTransform3d, 6)
ORMIX_REPORTED_TRANSFORM(SimilarityTransform3d, 7)
ORMIX_REPORTED_TRANSFORM(HomographyTransform3d, 16)
#undef ORMIX_REPORTED_TRANSFORM

using ReportedEntities =
    ClassList<Point2d<Real>, Line2d, Circle2d<Real>, Ellipse2d<Real>, Plan3d, Sphere3d<Real>, Ellipsoid3d<Real>,
              Cylinder3d<Real>, Cone3d<Real>, Torus3d<Real>, Line3d, Circle3d<Real>, Arc2d<Real>>;
using ReportedTransforms =
    ClassList<TranslationTransform2d, RigidTransform2d, SimilarityTransform2d, HomographyTransform2d,
              TranslationTransform3d, RigidTransform3d, SimilarityTransform3d, HomographyTransform3d>;

/// The space of an entity.
template <class Entity>
constexpr bool s_isPlanar = std::is_base_of_v<BaseGeometryEntity2d, Entity>;
template <class Entity>
using SpaceOf = std::conditional_t<s_isPlanar<Entity>, PlanarTransforms, SpatialTransforms>;

/// Whether the entity ends where the samples do, so that its parameters do not say how large it is.
template <class Entity>
constexpr bool s_hasOpenEnds = isListed<Entity>(ClassList<Cylinder3d<Real>, Cone3d<Real>, Arc2d<Real>>());

/// Calls `use` with the tag of the class of this name with so many parameters, once or, where there is none, never.
template <class... Class, class Use>
void callReported(ClassList<Class...>, const std::string& model, std::size_t nbParams, const Use& use) {
  const auto isOf = [&](auto tag) {
    using Of = Reported<typename decltype(tag)::Type>;
    if (model != Of::s_name || nbParams != Of::s_nb) return false;
    use(tag);
    return true;
  };
  (void)(... || isOf(ClassTag<Class>()));
}

/// The parameters of the image.
template <class Entity, class Transform>
BoolResult imageOf(const Values& params, const Transform& transform, Values& image) {
  Entity entity = Reported<Entity>::made(params);
  const BoolResult result = transform.applyInSitu(entity);
  if (result) image = Reported<Entity>::params(entity);
  return result;
}

/// Of a line, a cylinder or a cone: the images of a point, a direction and, in a sphere, a radius. The point stays the
/// one that is reported and not that nearest to the origin, and the direction does not lose what a far point rounds.
template <class Entity, class Transform>
BoolResult imageOfAxis(const Values& params, const Transform& transform, Values& image) {
  Point3d<Real> point(params[0], params[1], params[2]);
  Line3d axis({0, 0, 0}, {params[3], params[4], params[5]});
  BoolResult result = transform.applyInSitu(point);
  if (result) result = transform.applyInSitu(axis);
  Values found{point.getX(),
               point.getY(),
               point.getZ(),
               axis.getDirection().getX(),
               axis.getDirection().getY(),
               axis.getDirection().getZ()};
  if constexpr (!std::is_same_v<Entity, Line3d>) {
    // What keeps a sphere keeps the half angle of a cone.
    constexpr bool isCone = std::is_same_v<Entity, Cone3d<Real>>;
    Sphere3d<Real> sphere;
    sphere.setCoords({0, 0, 0}, isCone ? 1 : params[6]);
    if (result) result = transform.applyInSitu(sphere);
    found.push_back(isCone ? params[6] : std::abs(sphere.getRadius()));
  }
  if (result) image = std::move(found);
  return result;
}

/// Moves parameters that stand for the same entity to those that are nearest to the reference.
inline void nearestRepresentation(const std::string& model, const Values& reference, Values& values) {
  const auto turn = [&](std::size_t i, Real period) {
    values[i] = reference[i] + std::remainder(values[i] - reference[i], period);
  };
  if (model == Reported<Line2d>::s_name) {
    // (-rho, theta + pi) is the same line.
    if (std::cos(values[1] - reference[1]) < 0) {
      values[0] = -values[0];
      values[1] += s_pi;
    }
    turn(1, 2 * s_pi);
  } else if (model == Reported<Ellipse2d<Real>>::s_name) {
    turn(4, s_pi);
  } else if (model == Reported<Ellipsoid3d<Real>>::s_name) {
    // The same rotation, the other way round.
    const Real length = std::hypot(std::hypot(values[6], values[7]), values[8]);
    const Real along = values[6] * reference[6] + values[7] * reference[7] + values[8] * reference[8];
    if (along < 0 && length > s_pi / 2)
      for (std::size_t i = 6; i < 9; ++i) values[i] *= 1 - 2 * s_pi / length;
  }
}

}  // namespace ormix::geom::detail
