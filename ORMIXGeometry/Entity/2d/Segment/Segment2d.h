#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>

#include <type_traits>

namespace ormix::geom {

/// The closed segment { p0 + t (p1 − p0) : 0 <= t <= 1 }, a single point when both ends are equal. Only the length is
/// computed in the coordinate type; everything else in omReal64.
template <class T>
class ORMIX_GEOMETRY_API Segment2d : public Entity2d<Segment2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Segment2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_Segment;        ///< returned by getEntity2dType()

  /// Both ends at the origin.
  Segment2d() = default;
  /// The segment from p0 to p1.
  /// @{
  Segment2d(const Point2dData<T>& pt0, const Point2dData<T>& pt1) : _pt0(pt0), _pt1(pt1) {}
  Segment2d(T x0, T y0, T x1, T y1) : _pt0(x0, y0), _pt1(x1, y1) {}
  /// @}
  /// As `setCoords(pt0, vector)`.
  template <class Vector, class = std::enable_if_t<std::is_same_v<Vector, Vector2d>>>
  Segment2d(const Point2dData<T>& pt0, const Vector& vector) {
    setCoords(pt0, vector);
  }

  /// Sets both ends.
  /// @{
  void setCoords(const Point2dData<T>& pt0, const Point2dData<T>& pt1) {
    _pt0 = pt0;
    _pt1 = pt1;
  }
  void setCoords(T x0, T y0, T x1, T y1) {
    _pt0.setCoords(x0, y0);
    _pt1.setCoords(x1, y1);
  }
  /// @}
  /// Sets p0, and p1 to p0 plus the vector as computed by Point2d::operator+=(): for integer coordinates the components
  /// of the vector are rounded first. A template, so that an argument in braces is always a point.
  template <class Vector, class = std::enable_if_t<std::is_same_v<Vector, Vector2d>>>
  void setCoords(const Point2dData<T>& pt0, const Vector& vector) {
    setCoords(pt0, (Point2d<T>(pt0) + vector).getCoords());
  }
  void setPoint0(const Point2dData<T>& point) { _pt0 = point; }  ///< sets the first end only
  void setPoint1(const Point2dData<T>& point) { _pt1 = point; }  ///< sets the second end only

  const Point2dData<T>& getPoint0() const { return _pt0; }  ///< the first end
  const Point2dData<T>& getPoint1() const { return _pt1; }  ///< the second end

  /// distance() of the ends: integer differences and squares wrap around (intended).
  omReal64 getLength() const;

  /// The midpoint, in omReal64 and not rounded to the coordinate type; it does not overflow for any finite ends.
  /// @{
  omReal64 getMiddleX() const { return omReal64(_pt0.getX()) / 2 + omReal64(_pt1.getX()) / 2; }
  omReal64 getMiddleY() const { return omReal64(_pt0.getY()) / 2 + omReal64(_pt1.getY()) / 2; }
  Point2dData<omReal64> getMiddlePoint() const { return {getMiddleX(), getMiddleY()}; }
  /// @}

  /// The vector from p0 to p1, theta in (-pi, pi]; the zero vector for equal ends.
  Vector2d getDirection() const;
  /// The vector of length 1 in the direction from p0 to p1; (1, 0) for equal ends.
  Vector2d getUnitDirection() const;
  /// The unit direction rotated by -pi/2: its angle is atan2(−(x1 − x0), y1 − y0), in (-pi, pi]; (1, 0) for equal ends.
  Vector2d getUnitNormal() const;

  /// Distance to a point or another segment, and optionally the nearest points on both, by pointSegmentDistance() and
  /// segmentsDistance(): zero exactly when they have a point in common, NaN when a coordinate is not finite. Computed
  /// in omReal64, so that integers do not wrap around.
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

/// Prints "[p0=[0, 0], p1=[3, 4]]".
template <class T>
std::ostream& operator<<(std::ostream& stream, const Segment2d<T>& segment);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, Segment2d)
