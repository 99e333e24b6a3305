#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

namespace ormix::geom {

/// The ellipse with the "major" radius a in the direction theta (radians) and the "minor" radius b perpendicular to it.
/// The major radius may be the smaller one. Radii are not checked; ORMIXMath/Shape/Ellipse.h says what negative and
/// zero radii give. All computations are in omReal64.
template <class T>
class ORMIX_GEOMETRY_API Ellipse2d : public Entity2d<Ellipse2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Ellipse2d";  ///< registered name
  /// The type of another class: intended, callers that switch on the type treat an ellipse as a box.
  static constexpr eEntity2dType s_entity2dType = eE2DT_BoundingBox;

  /// Both radii 0 at the origin.
  Ellipse2d() = default;
  /// \param majorRadius,minorRadius radii along theta and across it; stored unchanged
  /// \param theta angle from the x axis to the axis of the major radius, in radians; stored unchanged
  Ellipse2d(const Point2dData<T>& center, T majorRadius, T minorRadius, omReal64 theta);

  /// Sets the values named; nothing is checked. A new theta (radians) costs a sine and a cosine.
  /// @{
  void setCoords(const Point2dData<T>& center, T majorRadius, T minorRadius, omReal64 theta);
  void setCenter(const Point2dData<T>& center) { _centerPt = center; }
  void setMajorRadius(T radius) { _majorRadius = radius; }
  void setMinorRadius(T radius) { _minorRadius = radius; }
  void setTheta(omReal64 theta);
  /// @}

  /// The stored values; theta in radians, its cosine and sine as computed when it was set.
  /// @{
  const Point2dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T getMajorRadius() const { return _majorRadius; }
  T getMinorRadius() const { return _minorRadius; }
  omReal64 getTheta() const { return _theta; }
  omReal64 getCosTheta() const { return _cosTheta; }
  omReal64 getSinTheta() const { return _sinTheta; }
  /// @}

  /// π·a·b; negative where exactly one radius is negative.
  omReal64 area() const;
  /// Bounds of the perimeter, which has no closed form: see ellipsePerimeterLowerBound(). Both are 0 when both radii
  /// are 0.
  /// @{
  omReal64 perimeterLowerBound() const;
  omReal64 perimeterUpperBound() const;
  /// @}
  /// √(1 − (m/M)²), with m the smaller and M the larger radius: in [0, 1], 0 for a circle and for two zero radii.
  omReal64 excentricity() const;

  /// Distance from the centre to the boundary in the direction at `angle` (radians) from the axis of the major radius;
  /// see ellipseRadius() for radii of 0.
  omReal64 radius(omReal64 angle) const;
  /// The boundary point in the same direction, which is theta + angle in the plane.
  Point2dData<omReal64> boundaryPoint(omReal64 angle) const;

  /// √|a² − b²|, also where b > a; computed without overflow of the squares and without cancellation.
  omReal64 focalLength() const;
  /// center + focalLength·(cos theta, sin theta) and center − focalLength·(cos theta, sin theta). These are the foci
  /// only where a >= b: they lie along theta also where b > a (intended).
  /// @{
  Point2dData<omReal64> focus1() const;
  Point2dData<omReal64> focus2() const;
  /// @}

  /// Reads the fields as every entity does, then computes the cosine and sine of theta.
  BoolResult read(BaseIArchive& archive) override;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_centerPt", self._centerPt) && item("_majorRadius", self._majorRadius) &&
           item("_minorRadius", self._minorRadius) && item("_theta", self._theta);
  }

  /// The point at a signed distance from the centre in the direction theta.
  Point2dData<omReal64> onMajorAxis(omReal64 abscissa) const;

  Point2dData<T> _centerPt;
  T _majorRadius{};
  T _minorRadius{};
  omReal64 _theta = 0;
  // Cosine and sine of _theta; not archived.
  omReal64 _cosTheta = 1;
  omReal64 _sinTheta = 0;
};

/// Prints "[center=[0, 0], a=2, b=1, theta=0.5]".
template <class T>
std::ostream& operator<<(std::ostream& stream, const Ellipse2d<T>& ellipse);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, Ellipse2d)
