#pragma once

#include <ORMIXGeometry/Entity/3d/Circle/Circle3d.h>
#include <ORMIXGeometry/Entity/3d/Cone/Cone3d.h>
#include <ORMIXGeometry/Entity/3d/Cylinder/Cylinder3d.h>
#include <ORMIXGeometry/Entity/3d/Torus/Torus3d.h>
#include <ORMIXGeometry/Entity/3d/UnitDirection.h>

/// \file
/// Cylinders, cones, tori and circles of space as what they are to computations; not installed.

namespace ormix::geom::detail {

/// The same set of points; a circle is a torus with a tube of radius 0.
/// @{
template <class T>
RoundSolid roundSolidOf(const Cylinder3d<T>& c) {
  const auto radius = static_cast<omReal64>(c.getRadius());
  return frustumBetween(toSpatial(c.getPoint0()), toSpatial(c.getPoint1()), radius, radius);
}
template <class T>
RoundSolid roundSolidOf(const Cone3d<T>& c) {
  return frustumBetween(toSpatial(c.getPoint0()), toSpatial(c.getPoint1()), static_cast<omReal64>(c.getRadius0()),
                        static_cast<omReal64>(c.getRadius1()));
}
template <class T>
RoundSolid roundSolidOf(const Torus3d<T>& t) {
  return torusAround(toSpatial(t.center()), toSpatial(t.getAxis()), static_cast<omReal64>(t.getMajorRadius()),
                     static_cast<omReal64>(t.getMinorRadius()));
}
template <class T>
RoundSolid roundSolidOf(const Circle3d<T>& c) {
  return torusAround(toSpatial(c.center()), toSpatial(c.getNormal()), static_cast<omReal64>(c.getRadius()), 0);
}
/// @}

/// Whether an entity is one of these.
template <class Entity>
inline constexpr bool s_isRoundSolid = isListed<Entity>(ScalarClassList<Cylinder3d, Cone3d, Torus3d, Circle3d>());

}  // namespace ormix::geom::detail
