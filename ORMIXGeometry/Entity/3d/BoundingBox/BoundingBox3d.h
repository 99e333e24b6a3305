#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>

namespace ormix::geom {

/// The axis-aligned box [xMin, xMax] × [yMin, yMax] × [zMin, zMax]. The minimum should not exceed the maximum on any
/// axis, but this is neither checked nor enforced: constructors and setters store what they are given. A box whose
/// minimum exceeds its maximum on an axis is called inverted.
template <class T>
class ORMIX_GEOMETRY_API BoundingBox3d : public Entity3d<BoundingBox3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::BoundingBox3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_BoundingBox;        ///< family

  /// Both corners at the origin.
  BoundingBox3d() = default;
  /// Both corners as given, in the unit of the coordinates.
  /// @{
  BoundingBox3d(const Point3dData<T>& minCorner, const Point3dData<T>& maxCorner)
      : _minCornerPt(minCorner), _maxCornerPt(maxCorner) {}
  BoundingBox3d(T xMin, T yMin, T zMin, T xMax, T yMax, T zMax)
      : _minCornerPt(xMin, yMin, zMin), _maxCornerPt(xMax, yMax, zMax) {}
  /// @}

  /// Replaces one or both corners, or one of their coordinates; the others stay.
  /// @{
  void setCoords(const Point3dData<T>& minCorner, const Point3dData<T>& maxCorner) {
    _minCornerPt = minCorner;
    _maxCornerPt = maxCorner;
  }
  void setCoords(T xMin, T yMin, T zMin, T xMax, T yMax, T zMax) {
    _minCornerPt.setCoords(xMin, yMin, zMin);
    _maxCornerPt.setCoords(xMax, yMax, zMax);
  }
  void setXMin(T x) { _minCornerPt.setX(x); }
  void setYMin(T y) { _minCornerPt.setY(y); }
  void setZMin(T z) { _minCornerPt.setZ(z); }
  void setXMax(T x) { _maxCornerPt.setX(x); }
  void setYMax(T y) { _maxCornerPt.setY(y); }
  void setZMax(T z) { _maxCornerPt.setZ(z); }
  void setMinCornerPt(const Point3dData<T>& corner) { _minCornerPt = corner; }
  void setMaxCornerPt(const Point3dData<T>& corner) { _maxCornerPt = corner; }
  /// @}

  /// The corners and their coordinates as stored. A corner returned as a reference may be changed in place.
  /// @{
  T getXMin() const { return _minCornerPt.getX(); }
  T getYMin() const { return _minCornerPt.getY(); }
  T getZMin() const { return _minCornerPt.getZ(); }
  T getXMax() const { return _maxCornerPt.getX(); }
  T getYMax() const { return _maxCornerPt.getY(); }
  T getZMax() const { return _maxCornerPt.getZ(); }
  const Point3dData<T>& getMinCornerPt() const { return _minCornerPt; }
  Point3dData<T>& getMinCornerPt() { return _minCornerPt; }
  const Point3dData<T>& getMaxCornerPt() const { return _maxCornerPt; }
  Point3dData<T>& getMaxCornerPt() { return _maxCornerPt; }
  /// @}

  /// Maximum minus minimum on one axis, in the coordinate type: integers wrap around. Signed and real sizes are
  /// negative on an axis on which the box is inverted.
  /// @{
  T sizeX() const { return (_maxCornerPt - _minCornerPt).getX(); }
  T sizeY() const { return (_maxCornerPt - _minCornerPt).getY(); }
  T sizeZ() const { return (_maxCornerPt - _minCornerPt).getZ(); }
  /// @}

  /// The centre, halfway between the corners, in omReal64: neither rounded to the coordinate type nor subject to
  /// overflow, whatever the corners are.
  /// @{
  omReal64 centerX() const { return omReal64(getXMin()) / 2 + omReal64(getXMax()) / 2; }
  omReal64 centerY() const { return omReal64(getYMin()) / 2 + omReal64(getYMax()) / 2; }
  omReal64 centerZ() const { return omReal64(getZMin()) / 2 + omReal64(getZMax()) / 2; }
  Point3dData<omReal64> center() const { return {centerX(), centerY(), centerZ()}; }
  /// @}

  friend bool operator==(const BoundingBox3d& a, const BoundingBox3d& b) {
    return a._minCornerPt == b._minCornerPt && a._maxCornerPt == b._maxCornerPt;
  }
  friend bool operator!=(const BoundingBox3d& a, const BoundingBox3d& b) { return !(a == b); }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_minCornerPt", self._minCornerPt) && item("_maxCornerPt", self._maxCornerPt);
  }

  Point3dData<T> _minCornerPt;
  Point3dData<T> _maxCornerPt;
};

/// "[min=[0, 0, 0], max=[2, 3, 4]]"
template <class T>
std::ostream& operator<<(std::ostream& stream, const BoundingBox3d<T>& box);

/// Whether the minimum corners are at most the tolerance apart, and the maximum corners too, see compare() of points.
template <class T>
bool compare(const BoundingBox3d<T>& a, const BoundingBox3d<T>& b, std::common_type_t<T> tolerance);

/// The intersection of two boxes. Boxes that only touch give a box without extent on an axis. Disjoint boxes give the
/// box with both corners at the origin, which cannot be distinguished from an intersection in that point (intended).
/// \param result may be `a` or `b`
template <class T>
void intersection(const BoundingBox3d<T>& a, const BoundingBox3d<T>& b, BoundingBox3d<T>& result);
/// The same as a new box.
template <class T>
BoundingBox3d<T> intersection(const BoundingBox3d<T>& a, const BoundingBox3d<T>& b) {
  BoundingBox3d<T> result;
  intersection(a, b, result);
  return result;
}

/// The smallest box that contains both: from the smaller of the minima to the larger of the maxima. The corners of an
/// inverted box are not exchanged first.
/// \param result may be `a` or `b`
template <class T>
void merge(const BoundingBox3d<T>& a, const BoundingBox3d<T>& b, BoundingBox3d<T>& result);
/// The same as a new box.
template <class T>
BoundingBox3d<T> merge(const BoundingBox3d<T>& a, const BoundingBox3d<T>& b) {
  BoundingBox3d<T> result;
  merge(a, b, result);
  return result;
}

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, BoundingBox3d)
