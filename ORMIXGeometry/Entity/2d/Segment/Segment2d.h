#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>

#include <type_traits>

namespace ormix::geom {

/// The closed segment { p0 + t (p1 − p0) : 0 <= t <= 1 }, a single point when both ends are equal. Only the length
/// takes differences in the coordinate type; everything else computes in omReal64.
template <class T>
class ORMIX_GEOMETRY_API Segment2d : public Entity2d<Segment2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Segment2d";
  static constexpr eEntity2dType s_entity2dType = eE2DT_Segment;

  /// Both ends at the origin.
  Segment2d() = default;
  Segment2d(const Point2dData<T>& pt0, const Point2dData<T>& pt1) : _pt0(pt0), _pt1(pt1) {}
  Segment2d(T x0, T y0, T x1, T y1) : _pt0(x0, y0), _pt1(x1, y1) {}
  /// As `setCoords(pt0, vector)`.
  template <class Vector, class = std::enable_if_t<std::is_same_v<Vector, Vector2d>>>
  Segment2d(const Point2dData<T>& pt0, const Vector& vector) {
    setCoords(pt0, vector);
  }

  void setCoords(const Point2dData<T>& pt0, const Point2dData<T>& pt1) {
    _pt0 = pt0;
    _pt1 = pt1;
  }
  void setCoords(T x0, T y0, T x1, T y1) {
    _pt0.setCoords(x0, y0);
    _pt1.setCoords(x1, y1);
  }
  /// The second end is the first one moved by the vector as `Point2d` is: for integer coordinates the components are
  /// rounded first. A template, so that coordinates in braces are a point.
  template <class Vector, class = std::enable_if_t<std::is_same_v<Vector, Vector2d>>>
  void setCoords(const Point2dData<T>& pt0, const Vector& vector) {
    setCoords(pt0, (Point2d<T>(pt0) + vector).getCoords());
  }
  void setPoint0(const Point2dData<T>& point) { _pt0 = point; }
  void setPoint1(const Point2dData<T>& point) { _pt1 = point; }

  const Point2dData<T>& getPoint0() const { return _pt0; }
  const Point2dData<T>& getPoint1() const { return _pt1; }

  /// The points' distance(): integer differences and squares wrap around (intended).
  omReal64 getLength() const;

  /// The middle is not rounded to the coordinate type and overflows for no ends.
  omReal64 getMiddleX() const { return omReal64(_pt0.getX()) / 2 + omReal64(_pt1.getX()) / 2; }
  omReal64 getMiddleY() const { return omReal64(_pt0.getY()) / 2 + omReal64(_pt1.getY()) / 2; }
  Point2dData<omReal64> getMiddlePoint() const { return {getMiddleX(), getMiddleY()}; }

  /// The vector from p0 to p1, theta in (-pi, pi]; the zero vector for equal ends.
  Vector2d getDirection() const;
  /// The direction at length 1; (1, 0) for equal ends.
  Vector2d getUnitDirection() const;
  /// The unit direction turned by -90°, that is at the angle atan2(−(x1 − x0), y1 − y0) in (-pi, pi]; (1, 0) for equal
  /// ends.
  Vector2d getUnitNormal() const;

  /// \name Distance to a point or a segment, and where it is taken.
  /// As pointSegmentDistance() and segmentsDistance(): zero exactly when there is a point in common, NaN when a
  /// coordinate is not finite. No integer wraps.
  /// @{
  omReal64 distance(const Point2dData<T>& point) const;
  omReal64 distance(const Point2dData<T>& point, Point2dData<omReal64>& nearest) const;
  omReal64 distance(const Segment2d& other) const;
  omReal64 distance(const Segment2d& other, Point2dData<omReal64>& nearestOnThis,
                    Point2dData<omReal64>& nearestOnOther) const;
  /// @}

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_pt0", self._pt0) && item("_pt1", self._pt1);
  }

  Point2dData<T> _pt0;
  Point2dData<T> _pt1;
};

/// "[p0=[0, 0], p1=[3, 4]]"
template <class T>
std::ostream& operator<<(std::ostream& stream, const Segment2d<T>& segment);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, Segment2d)
