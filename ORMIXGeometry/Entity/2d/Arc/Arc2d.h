#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

namespace ormix::geom {

/// The circular arc { center + radius·(cos t, sin t) } for t from the start angle through the sweep, which is positive
/// counter-clockwise (x to the right, y up) and at most a full turn. Angles are in radians. Sweep 0 or radius 0 makes
/// it a point. Everything is computed in omReal64, and the sign of the radius, which is stored as given, is ignored.
template <class T>
class ORMIX_GEOMETRY_API Arc2d : public Entity2d<Arc2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Arc2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_Arc;        ///< returned by getEntity2dType()

  /// Radius and angles 0 at the origin.
  Arc2d() = default;
  /// Centre, radius and start angle as given; a sweep beyond a full turn is a full turn in its direction.
  /// \throw ORMIXGeometryException, logged first, for an angle that is not finite
  /// @{
  Arc2d(const Point2dData<T>& center, T radius, omReal64 startAngle, omReal64 sweep) {
    setCoords(center, radius, startAngle, sweep);
  }
  void setCoords(const Point2dData<T>& center, T radius, omReal64 startAngle, omReal64 sweep) {
    setAngles(startAngle, sweep);
    _centerPt = center;
    _radius = radius;
  }
  void setAngles(omReal64 startAngle, omReal64 sweep);
  /// @}
  /// One of the other values.
  /// @{
  void setCenter(const Point2dData<T>& center) { _centerPt = center; }
  void setRadius(T radius) { _radius = radius; }
  /// @}

  /// The values as stored.
  /// @{
  const Point2dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T getRadius() const { return _radius; }
  omReal64 getStartAngle() const { return _startAngle; }
  omReal64 getSweep() const { return _sweep; }
  /// @}

  /// Whether the sweep is a full turn, so that the arc is a circle.
  bool isFull() const;
  /// |r|·|sweep|
  omReal64 length() const;
  /// The point at a share of the way, 0 being the start and 1 the end.
  Point2dData<omReal64> pointAt(omReal64 share) const;

  /// A point of the arc that is nearest to a point, and its distance. Of the centre it is the start.
  /// @{
  Point2dData<omReal64> nearestPoint(const Point2dData<omReal64>& point) const;
  omReal64 distance(const Point2dData<omReal64>& point) const;
  /// @}

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_centerPt", self._centerPt) && item("_radius", self._radius) &&
           item("_startAngle", self._startAngle) && item("_sweep", self._sweep);
  }
  static BoolResult validate(const Arc2d& self);

  Point2dData<T> _centerPt;
  T _radius{};
  omReal64 _startAngle = 0;
  omReal64 _sweep = 0;
};

/// Prints "[center=[1, 2], radius=3, start=0.25, sweep=1.5]".
template <class T>
std::ostream& operator<<(std::ostream& stream, const Arc2d<T>& arc);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, Arc2d)
