#pragma once

#include <ORMIXGeometry/Transform/2d/BaseGeometryTransform2d.h>
#include <ORMIXMath/Transform/2d/BaseGeometricTransform2d.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

namespace ormix {
class ORMIX_MATH_API AnisotropicScale2d;
class ORMIX_MATH_API Homography2d;
class ORMIX_MATH_API Rigid2d;
class ORMIX_MATH_API Rotation2d;
class ORMIX_MATH_API Scale2d;
class ORMIX_MATH_API Similarity2d;
class ORMIX_MATH_API Translation2d;
}  // namespace ormix

namespace ormix::geom {

/// What a linear map preserves, and so which entities have an image of their own class under it.
template <class Math>
struct Preserves2d;
// clang-format off
template <> struct Preserves2d<Translation2d>      { static constexpr bool axes = true,  angles = true,  lengths = true,  directions = true; };
template <> struct Preserves2d<Rotation2d>         { static constexpr bool axes = false, angles = true,  lengths = true,  directions = false; };
template <> struct Preserves2d<Rigid2d>            { static constexpr bool axes = false, angles = true,  lengths = true,  directions = false; };
template <> struct Preserves2d<Scale2d>            { static constexpr bool axes = true,  angles = true,  lengths = false, directions = true; };
template <> struct Preserves2d<Similarity2d>       { static constexpr bool axes = false, angles = true,  lengths = false, directions = false; };
template <> struct Preserves2d<AnisotropicScale2d> { static constexpr bool axes = true,  angles = false, lengths = false, directions = false; };
template <> struct Preserves2d<Homography2d>       { static constexpr bool axes = false, angles = false, lengths = false, directions = false; };
// clang-format on

/// The uniform part of a linear transform of planar entities: it owns one transform of the plane and does no arithmetic
/// of its own beyond what an entity's fields need. `Self` states `s_className` and `s_transform2dType`. The bodies and
/// the rule for each entity are in LinearTransform2d.ipp.
template <class Self, class Math>
class ORMIX_GEOMETRY_API LinearTransform2d : public RegisteredObject<Self, BaseGeometryTransform2d> {
 public:
  using BaseGeometryTransform2d::apply;
  using BaseGeometryTransform2d::applyInSitu;

  eTransform2dType getTransform2dType() const final;
  BoolResult applyInSitu(BaseGeometryEntity2d& entity) const final;
  GeometryEntity2dPtr apply(const BaseGeometryEntity2d& entity) const final;

  /// The owned transform of the plane.
  const Math& getGeometricTransform() const { return _transform; }

  /// \name The rule of each entity, reached through the entity's visits.
  /// False, logged, the entity untouched, where an image is not defined.
  /// @{
  template <class T>
  bool processInSitu(Point2d<T>& point) const;
  bool processInSitu(Vector2d& vector) const;
  template <class T>
  bool processInSitu(Segment2d<T>& segment) const;
  template <class T>
  bool processInSitu(Polygon2d<T>& polygon) const;
  template <class T>
  bool processInSitu(PolygonWithHoles2d<T>& polygon) const;
  template <class T>
  bool processInSitu(PointCloud2d<T>& cloud) const;
  template <class T, class M = Math, std::enable_if_t<Preserves2d<M>::axes, int> = 0>
  bool processInSitu(BoundingBox2d<T>& box) const;
  template <class T, class M = Math, std::enable_if_t<Preserves2d<M>::angles, int> = 0>
  bool processInSitu(Circle2d<T>& circle) const;
  template <class T, class M = Math, std::enable_if_t<Preserves2d<M>::angles, int> = 0>
  bool processInSitu(Ellipse2d<T>& ellipse) const;
  template <class T, class M = Math, std::enable_if_t<Preserves2d<M>::angles, int> = 0>
  bool processInSitu(Square2d<T>& square) const;
  template <class T, class M = Math, std::enable_if_t<Preserves2d<M>::angles, int> = 0>
  bool processInSitu(Rectangle2d<T>& rectangle) const;
  template <class M = Math, std::enable_if_t<Preserves2d<M>::lengths, int> = 0>
  bool processInSitu(Line2d& line) const;
  template <class M = Math, std::enable_if_t<Preserves2d<M>::lengths, int> = 0>
  bool processInSitu(Parabola2d& parabola) const;
  /// @}

 protected:
  LinearTransform2d() = default;
  explicit LinearTransform2d(const Math& transform) : _transform(transform) {}
  LinearTransform2d(const LinearTransform2d&) = default;
  LinearTransform2d(LinearTransform2d&&) = default;
  LinearTransform2d& operator=(const LinearTransform2d&) = default;
  LinearTransform2d& operator=(LinearTransform2d&&) = default;
  ~LinearTransform2d() override = default;

  Math _transform;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item);
};

}  // namespace ormix::geom
