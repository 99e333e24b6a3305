#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

namespace ormix::geom {

/// The axis-aligned box [xMin, xMax] × [yMin, yMax]. Callers are expected to keep minimum <= maximum on each axis; this
/// is neither checked nor enforced: constructors and setters store their arguments unchanged.
template <class T>
class ORMIX_GEOMETRY_API BoundingBox2d : public Entity2d<BoundingBox2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::BoundingBox2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_BoundingBox;        ///< returned by getEntity2dType()

  /// The corners are unspecified: set them before use.
  BoundingBox2d() = default;
  /// The box with the given minima and maxima of x and y.
  /// @{
  BoundingBox2d(const Point2dData<T>& minCorner, const Point2dData<T>& maxCorner)
      : _minCornerPt(minCorner), _maxCornerPt(maxCorner) {}
  BoundingBox2d(T xMin, T yMin, T xMax, T yMax) : _minCornerPt(xMin, yMin), _maxCornerPt(xMax, yMax) {}
  /// @}

  /// Sets the bounds named, without checking them against each other.
  /// @{
  void setCoords(const Point2dData<T>& minCorner, const Point2dData<T>& maxCorner) {
    _minCornerPt = minCorner;
    _maxCornerPt = maxCorner;
  }
  void setCoords(T xMin, T yMin, T xMax, T yMax) {
    _minCornerPt.setCoords(xMin, yMin);
    _maxCornerPt.setCoords(xMax, yMax);
  }
  void setXMin(T x) { _minCornerPt.setX(x); }
  void setYMin(T y) { _minCornerPt.setY(y); }
  void setXMax(T x) { _maxCornerPt.setX(x); }
  void setYMax(T y) { _maxCornerPt.setY(y); }
  void setMinCornerPt(const Point2dData<T>& corner) { _minCornerPt = corner; }
  void setMaxCornerPt(const Point2dData<T>& corner) { _maxCornerPt = corner; }
  /// @}

  /// The stored bounds; a non-const corner may be changed through the reference.
  /// @{
  T getXMin() const { return _minCornerPt.getX(); }
  T getYMin() const { return _minCornerPt.getY(); }
  T getXMax() const { return _maxCornerPt.getX(); }
  T getYMax() const { return _maxCornerPt.getY(); }
  const Point2dData<T>& getMinCornerPt() const { return _minCornerPt; }
  Point2dData<T>& getMinCornerPt() { return _minCornerPt; }
  const Point2dData<T>& getMaxCornerPt() const { return _maxCornerPt; }
  Point2dData<T>& getMaxCornerPt() { return _maxCornerPt; }
  /// @}

  /// (xMax - xMin)·(yMax - yMin) computed in the coordinate type: integers wrap around; the area is negative where the
  /// box is inverted on one axis. AreaMsr2d computes in omReal64 instead.
  T getArea() const;

  friend bool operator==(const BoundingBox2d& a, const BoundingBox2d& b) {
    return a._minCornerPt == b._minCornerPt && a._maxCornerPt == b._maxCornerPt;
  }
  friend bool operator!=(const BoundingBox2d& a, const BoundingBox2d& b) { return !(a == b); }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_minCornerPt", self._minCornerPt) && item("_maxCornerPt", self._maxCornerPt);
  }

  Point2dData<T> _minCornerPt;
  Point2dData<T> _maxCornerPt;
};

/// Prints "[min=[0, 0], max=[2, 3]]".
template <class T>
std::ostream& operator<<(std::ostream& stream, const BoundingBox2d<T>& box);

/// Whether the minimum corners and the maximum corners are each at most `tolerance` apart, see compare() of points.
template <class T>
bool compare(const BoundingBox2d<T>& a, const BoundingBox2d<T>& b, std::common_type_t<T> tolerance);

/// Whether the interiors intersect: false for boxes that share only an edge or a corner.
template <class T>
bool intersect(const BoundingBox2d<T>& a, const BoundingBox2d<T>& b) {
  return a.getXMin() < b.getXMax() && b.getXMin() < a.getXMax() && a.getYMin() < b.getYMax() &&
         b.getYMin() < a.getYMax();
}

/// Whether the closed boxes intersect: true also for boxes that share only an edge or a corner.
template <class T>
bool intersectOrTouch(const BoundingBox2d<T>& a, const BoundingBox2d<T>& b) {
  return a.getXMin() <= b.getXMax() && b.getXMin() <= a.getXMax() && a.getYMin() <= b.getYMax() &&
         b.getYMin() <= a.getYMax();
}

/// Whether a lies strictly inside b; false for equal boxes.
template <class T>
bool isContained(const BoundingBox2d<T>& a, const BoundingBox2d<T>& b) {
  return a.getXMin() > b.getXMin() && a.getXMax() < b.getXMax() && a.getYMin() > b.getYMin() &&
         a.getYMax() < b.getYMax();
}

/// Whether a lies inside b or touches its boundary from inside; true for equal boxes.
template <class T>
bool isContainedOrTouch(const BoundingBox2d<T>& a, const BoundingBox2d<T>& b) {
  return a.getXMin() >= b.getXMin() && a.getXMax() <= b.getXMax() && a.getYMin() >= b.getYMin() &&
         a.getYMax() <= b.getYMax();
}

/// The intersection. Boxes that only touch give a box of zero width or height. Disjoint boxes give the box with both
/// corners at the origin, which cannot be distinguished from an intersection at the origin: call intersectOrTouch()
/// first. With a NaN coordinate the box computed from minima and maxima is returned as it is.
/// \param result may be a or b
template <class T>
void intersection(const BoundingBox2d<T>& a, const BoundingBox2d<T>& b, BoundingBox2d<T>& result);

/// The smaller minima and the larger maxima: the smallest box that contains both. The bounds of an inverted or
/// uninitialised operand are used as they are stored.
/// \param result may be a or b
template <class T>
void merge(const BoundingBox2d<T>& a, const BoundingBox2d<T>& b, BoundingBox2d<T>& result);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, BoundingBox2d)
