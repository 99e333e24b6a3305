#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>

#include <type_traits>

ORMIX_GEOMETRY_ENTITY2D_LEVELS(extern, Line2d, BaseGeometryEntity2d)

namespace ormix::geom {

/// The line { (x, y) : x·cos theta + y·sin theta = rho }: theta is the angle of the normal in radians, rho the signed
/// distance of the line from the origin along the normal.
///
/// (rho, theta) and (−rho, theta ± pi) are the same line with opposite normals. Line2d(rho, theta), setRho() and
/// setTheta() store their arguments unchanged, a negative rho too. `setCoords` and translations normalise: rho >= 0 and
/// theta in (-pi, pi], so that the normal points away from the origin; theta in [0, pi) for a line through the origin
/// (rho = 0). Coordinates that are not finite give a rho that is NaN or infinite.
class ORMIX_GEOMETRY_API Line2d : public Entity2d<Line2d, BaseGeometryEntity2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::Line2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_Line;        ///< returned by getEntity2dType()
  /// Returned by getCoordinateSystem2dType().
  static constexpr eCoordinateSystem2dType s_coordinateSystem2dType = eCS2DT_Polar;

  /// The y axis, with rho and theta 0.
  Line2d() = default;
  /// Stores rho and theta (radians) unchanged.
  Line2d(omReal64 rho, omReal64 theta) : _rho(rho) { setTheta(theta); }
  /// The line through two points, or through a point in a direction, as `setCoords` of the same arguments.
  template <class Point, class Other, class = std::enable_if_t<std::is_class_v<Point>>>
  Line2d(const Point& point, const Other& other) {
    setCoords(point, other);
  }

  /// The same line as Line2d(rho, theta), normalised.
  void setCoords(omReal64 rho, omReal64 theta);
  /// The line through two points. Rho and theta have errors of a few units in the last place wherever the points are,
  /// and rho is 0 exactly when the points are collinear with the origin. Equal points give the horizontal line through
  /// them.
  /// @{
  template <class T>
  void setCoords(const Point2dData<T>& first, const Point2dData<T>& second) {
    setThrough(cast<omReal64>(first), cast<omReal64>(second));
  }
  template <class T>
  void setCoords(const Point2d<T>& first, const Point2d<T>& second) {
    setCoords(first.getCoords(), second.getCoords());
  }
  /// @}
  /// The line through the point parallel to the vector. Only the vector's angle is used, also that of a zero vector,
  /// which is 0 unless set otherwise. A rho smaller than its own rounding error is set to 0.
  /// @{
  template <class T>
  void setCoords(const Point2dData<T>& point, const Vector2d& direction) {
    setThrough(cast<omReal64>(point), direction);
  }
  template <class T>
  void setCoords(const Point2d<T>& point, const Vector2d& direction) {
    setCoords(point.getCoords(), direction);
  }
  /// @}
  /// Sets one of both values and keeps the other; not normalised. Theta is in radians.
  /// @{
  void setRho(omReal64 rho) { _rho = rho; }
  void setTheta(omReal64 theta);
  /// @}

  /// The stored values; theta in radians, its cosine and sine as computed when it was set.
  /// @{
  omReal64 getRho() const { return _rho; }
  omReal64 getTheta() const { return _theta; }
  omReal64 getCosTheta() const { return _cosTheta; }
  omReal64 getSinTheta() const { return _sinTheta; }
  /// @}

  /// The point of the line nearest to the origin: (rho·cos theta, rho·sin theta).
  Point2dData<omReal64> getNearestPointFromOrigin() const;
  /// The unit normal (cos theta, sin theta), with theta as stored.
  Vector2d getNormal() const;
  /// The unit vector along the line: the normal rotated by +pi/2, its angle in (-pi, pi].
  Vector2d getDirection() const;

  /// x·cos theta + y·sin theta − rho: positive on the side the normal points to.
  /// @{
  template <class T>
  omReal64 signedDistance(const Point2dData<T>& point) const {
    return omReal64(point.getX()) * _cosTheta + omReal64(point.getY()) * _sinTheta - _rho;
  }
  template <class T>
  omReal64 signedDistance(const Point2d<T>& point) const {
    return signedDistance(point.getCoords());
  }
  /// @}

  /// Translates the line by the vector or its opposite, and normalises it; a rho smaller than its own rounding error is
  /// set to 0.
  /// @{
  Line2d& operator+=(const Vector2d& offset);
  Line2d& operator-=(const Vector2d& offset);
  friend Line2d operator+(Line2d line, const Vector2d& offset) { return line += offset; }
  friend Line2d operator-(Line2d line, const Vector2d& offset) { return line -= offset; }
  /// @}

  /// Reads the fields as every entity does, then computes the cosine and sine of theta.
  BoolResult read(BaseIArchive& archive) override;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_rho", self._rho) && item("_theta", self._theta);
  }
  void setThrough(const Point2dData<omReal64>& first, const Point2dData<omReal64>& second);
  void setThrough(const Point2dData<omReal64>& point, const Vector2d& direction);
  void translate(omReal64 x, omReal64 y);

  omReal64 _rho = 0;
  omReal64 _theta = 0;
  // Cosine and sine of _theta; not archived.
  omReal64 _cosTheta = 1;
  omReal64 _sinTheta = 0;
};

/// Prints "[rho=1, theta=0.5]".
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Line2d& line);

}  // namespace ormix::geom
