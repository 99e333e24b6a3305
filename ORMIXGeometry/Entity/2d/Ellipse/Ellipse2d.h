#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

namespace ormix::geom {

/// The ellipse with radius a along the direction theta (radians) and radius b across it. Nothing asks for a >= b: the
/// "major" radius is the one along theta. Radii are not checked either; where signs matter, the helpers of
/// ORMIXMath/Shape/Ellipse.h say so. All helpers compute in omReal64.
template <class T>
class ORMIX_GEOMETRY_API Ellipse2d : public Entity2d<Ellipse2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Ellipse2d";
  /// Not the ellipse's own type: intended, callers that switch on the type treat an ellipse as a box.
  static constexpr eEntity2dType s_entity2dType = eE2DT_BoundingBox;

  /// Both radii 0 at the origin.
  Ellipse2d() = default;
  Ellipse2d(const Point2dData<T>& center, T majorRadius, T minorRadius, omReal64 theta);

  void setCoords(const Point2dData<T>& center, T majorRadius, T minorRadius, omReal64 theta);
  void setCenter(const Point2dData<T>& center) { _centerPt = center; }
  void setMajorRadius(T radius) { _majorRadius = radius; }
  void setMinorRadius(T radius) { _minorRadius = radius; }
  void setTheta(omReal64 theta);

  const Point2dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T getMajorRadius() const { return _majorRadius; }
  T getMinorRadius() const { return _minorRadius; }
  omReal64 getTheta() const { return _theta; }
  omReal64 getCosTheta() const { return _cosTheta; }
  omReal64 getSinTheta() const { return _sinTheta; }

  /// π·a·b.
  omReal64 area() const;
  /// Bounds of the perimeter, which has no closed form; 0 when both radii are.
  omReal64 perimeterLowerBound() const;
  omReal64 perimeterUpperBound() const;
  /// In [0, 1] whichever radius is larger: 0 for a circle.
  omReal64 excentricity() const;

  /// Distance from the centre to the boundary in the direction that makes the angle (radians) with the major axis.
  omReal64 radius(omReal64 angle) const;
  /// The boundary point in that direction, which is theta + angle in the plane.
  Point2dData<omReal64> boundaryPoint(omReal64 angle) const;

  /// √|a² − b²|, also where b exceeds a; neither squares nor differences of them overflow or cancel.
  omReal64 focalLength() const;
  /// center ± focalLength·(cos theta, sin theta): the foci where a >= b; along the major axis even where b exceeds a.
  Point2dData<omReal64> focus1() const;
  Point2dData<omReal64> focus2() const;

  BoolResult read(BaseIArchive& archive) override;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_centerPt", self._centerPt) && item("_majorRadius", self._majorRadius) &&
           item("_minorRadius", self._minorRadius) && item("_theta", self._theta);
  }

  Point2dData<omReal64> onMajorAxis(omReal64 abscissa) const;

  Point2dData<T> _centerPt;
  T _majorRadius{};
  T _minorRadius{};
  omReal64 _theta = 0;
  // Follow _theta; not archived.
  omReal64 _cosTheta = 1;
  omReal64 _sinTheta = 0;
};

/// "[center=[0, 0], a=2, b=1, theta=0.5]"
template <class T>
std::ostream& operator<<(std::ostream& stream, const Ellipse2d<T>& ellipse);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, Ellipse2d)
