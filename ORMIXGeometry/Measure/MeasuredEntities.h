#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>

namespace ormix::geom {

/// Whether an entity encloses or covers anything: the table of what area, perimeter and volume support, the same for
/// all measures of a space.
template <class Entity>
inline constexpr bool isMeasured = true;
template <>
inline constexpr bool isMeasured<Line2d> = false;
template <>
inline constexpr bool isMeasured<Parabola2d> = false;
template <>
inline constexpr bool isMeasured<Plan3d> = false;
template <class T>
inline constexpr bool isMeasured<Segment2d<T>> = false;
template <class T>
inline constexpr bool isMeasured<PointCloud2d<T>> = false;
template <class T>
inline constexpr bool isMeasured<Segment3d<T>> = false;
template <class T>
inline constexpr bool isMeasured<PointCloud3d<T>> = false;

}  // namespace ormix::geom
