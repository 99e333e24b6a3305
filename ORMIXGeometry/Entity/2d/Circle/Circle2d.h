#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

namespace ormix::geom {

/// The circle { p : ‖p − center‖ = radius }, a single point for radius 0. The radius is not checked: a negative one is
/// stored and enters the formulas below with its sign.
template <class T>
class ORMIX_GEOMETRY_API Circle2d : public Entity2d<Circle2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Circle2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_Circle;        ///< returned by getEntity2dType()

  /// Radius 0 at the origin.
  Circle2d() = default;
  /// The circle with this centre and radius, both stored unchanged.
  Circle2d(const Point2dData<T>& center, T radius) : _centerPt(center), _radius(radius) {}

  /// Sets the values named; nothing is checked.
  /// @{
  void setCoords(const Point2dData<T>& center, T radius) {
    _centerPt = center;
    _radius = radius;
  }
  void setCenter(const Point2dData<T>& center) { _centerPt = center; }
  void setRadius(T radius) { _radius = radius; }
  /// @}

  /// The stored values.
  /// @{
  const Point2dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T getRadius() const { return _radius; }
  /// @}

  /// π·r·r, computed in omReal64, so that integers do not wrap around.
  omReal64 area() const;
  /// 2π·r, computed in omReal64; negative for a negative radius.
  omReal64 perimeter() const;

  /// ‖p − center‖ − radius: negative inside, zero on the circle. The norm is that of distance() of points, whose
  /// integer arithmetic wraps around (intended).
  omReal64 signedDistance(const Point2dData<T>& point) const;
  /// Distance from the point to the circle (the curve, not the disk): the absolute value of the signed distance.
  omReal64 distance(const Point2dData<T>& point) const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_centerPt", self._centerPt) && item("_radius", self._radius);
  }

  Point2dData<T> _centerPt;
  T _radius{};
};

/// Prints "[center=[1, 2], radius=3]".
template <class T>
std::ostream& operator<<(std::ostream& stream, const Circle2d<T>& circle);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, Circle2d)
