#pragma once

#include <ORMIXGeometry/Transform/2d/BaseGeometryTransform2d.h>
#include <ORMIXGeometry/Transform/LinearTransform.h>
#include <ORMIXMath/Transform/2d/BaseGeometricTransform2d.h>

namespace ormix::geom {

// clang-format off
template <class T> inline constexpr bool Preserved::*s_neededBy<Point2d<T>>            = &Preserved::lines;
template <>        inline constexpr bool Preserved::*s_neededBy<Vector2d>              = &Preserved::lines;
template <class T> inline constexpr bool Preserved::*s_neededBy<BoundingBox2d<T>>      = &Preserved::axes;
template <class T> inline constexpr bool Preserved::*s_neededBy<Segment2d<T>>          = &Preserved::lines;
template <>        inline constexpr bool Preserved::*s_neededBy<Line2d>                = &Preserved::lengths;
template <class T> inline constexpr bool Preserved::*s_neededBy<Circle2d<T>>           = &Preserved::angles;
template <class T> inline constexpr bool Preserved::*s_neededBy<Ellipse2d<T>>          = &Preserved::angles;
template <class T> inline constexpr bool Preserved::*s_neededBy<Square2d<T>>           = &Preserved::angles;
template <class T> inline constexpr bool Preserved::*s_neededBy<Rectangle2d<T>>        = &Preserved::angles;
template <>        inline constexpr bool Preserved::*s_neededBy<Parabola2d>            = &Preserved::lengths;
template <class T> inline constexpr bool Preserved::*s_neededBy<Polygon2d<T>>          = &Preserved::lines;
template <class T> inline constexpr bool Preserved::*s_neededBy<PolygonWithHoles2d<T>> = &Preserved::lines;
template <class T> inline constexpr bool Preserved::*s_neededBy<PointCloud2d<T>>       = &Preserved::lines;
// clang-format on

/// The bases of the transforms of planar entities.
struct ORMIX_GEOMETRY_API PlanarTransforms {
  using Transform = BaseGeometryTransform2d;
  using Type = eTransform2dType;
  using AnisotropicScale = AnisotropicScale2d;
  using Entity = BaseGeometryEntity2d;
  using EntityPtr = GeometryEntity2dPtr;
  using EntityPtrColl = GeometryEntity2dPtrColl;

  static eEntity2dType typeOf(const Entity& entity) { return entity.getEntity2dType(); }

  /// Calls `visit` with an entity that is made of runs of points as what it is; false for any other, also one of a
  /// class derived from these.
  template <class Visit>
  static bool visitRuns(const Entity& entity, const Visit& visit);
};

/// A linear transform of planar entities; `Self` states `s_transform2dType`. Which entities it takes follows from the
/// table above and from what its map preserves; the others answer failure.
///
/// Points, ends, corners and vertices are mapped one by one; a vector as the position it leads to from the origin, so
/// that offsets shift it and the directions of lines (intended). Where an entity has a centre it is mapped, lengths are
/// multiplied by the scale with its sign and the orientation is turned; where the map keeps directions angles stay to
/// the bit.
template <class Self, class Math>
class ORMIX_GEOMETRY_API LinearTransform2d : public LinearTransform<Self, Math, PlanarTransforms> {
 public:
  eTransform2dType getTransform2dType() const final;
  static constexpr eTransform2dType type() { return Self::s_transform2dType; }

 protected:
  using LinearTransform<Self, Math, PlanarTransforms>::LinearTransform;
};

}  // namespace ormix::geom

#define ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(keyword, Class, Math) \
  ORMIX_GEOMETRY_LINEAR_TRANSFORM_LEVELS(keyword, LinearTransform2d, PlanarTransforms, Class, Math)
