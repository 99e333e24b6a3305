#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

namespace ormix::geom {

/// The square centred at `center` whose sides are at the distance halfLength from it, rotated by the orientation
/// (radians). The size is not checked: a negative one is stored and swaps the names of the corners.
template <class T>
class ORMIX_GEOMETRY_API Square2d : public Entity2d<Square2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Square2d";  ///< registered name
  /// The type of another class: intended, callers that switch on the type treat a square as a circle.
  static constexpr eEntity2dType s_entity2dType = eE2DT_Circle;

  /// Size 0 at the origin.
  Square2d() = default;
  /// \param halfLength half the side; stored unchanged
  /// \param orientation angle from the x axis to a side, in radians; stored unchanged
  Square2d(const Point2dData<T>& center, T halfLength, omReal64 orientation)
      : _centerPt(center), _halfLength(halfLength), _orientation(orientation) {}

  /// Sets the values named; nothing is checked. The orientation is in radians.
  /// @{
  void setCoords(const Point2dData<T>& center, T halfLength, omReal64 orientation) {
    *this = Square2d(center, halfLength, orientation);
  }
  void setCenter(const Point2dData<T>& center) { _centerPt = center; }
  void setHalfLength(T halfLength) { _halfLength = halfLength; }
  void setOrientation(omReal64 orientation) { _orientation = orientation; }
  /// @}

  /// The stored values; the orientation in radians.
  /// @{
  const Point2dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T getHalfLength() const { return _halfLength; }
  omReal64 getOrientation() const { return _orientation; }
  /// @}

  /// The side: twice the half length, computed in the coordinate type; integers wrap around.
  T getLength() const;

  /// The local points (±halfLength, ±halfLength), rotated by the orientation about the centre and computed in omReal64.
  /// "Top" is the side of negative local y, as the y axis of images points down. All are the centre when the half
  /// length is 0.
  /// @{
  Point2dData<omReal64> topLeftCorner() const { return corner(-1, -1); }
  Point2dData<omReal64> topRightCorner() const { return corner(1, -1); }
  Point2dData<omReal64> bottomLeftCorner() const { return corner(-1, 1); }
  Point2dData<omReal64> bottomRightCorner() const { return corner(1, 1); }
  /// @}

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_centerPt", self._centerPt) && item("_halfLength", self._halfLength) &&
           item("_orientation", self._orientation);
  }

  /// The corner whose local coordinates have the given signs, each -1 or 1.
  Point2dData<omReal64> corner(omReal64 sideX, omReal64 sideY) const;

  Point2dData<T> _centerPt;
  T _halfLength{};
  omReal64 _orientation = 0;
};

/// Prints "[center=[0, 0], l=4, theta=0.5]", with the full side.
template <class T>
std::ostream& operator<<(std::ostream& stream, const Square2d<T>& square);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, Square2d)
