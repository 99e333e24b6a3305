#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

namespace ormix::geom {

/// The rectangle centred at `center` that extends by halfLength to both sides in the direction of the orientation
/// (radians) and by halfWidth perpendicular to it. Sizes are not checked: negative ones are stored and swap the names
/// of the corners.
template <class T>
class ORMIX_GEOMETRY_API Rectangle2d : public Entity2d<Rectangle2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Rectangle2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_Rectangle;        ///< returned by getEntity2dType()

  /// Sizes 0 at the origin.
  Rectangle2d() = default;
  /// \param halfLength,halfWidth half the sizes along the orientation and across it; stored unchanged
  /// \param orientation angle from the x axis to the length, in radians; stored unchanged
  Rectangle2d(const Point2dData<T>& center, T halfLength, T halfWidth, omReal64 orientation)
      : _centerPt(center), _halfLength(halfLength), _halfWidth(halfWidth), _orientation(orientation) {}

  /// Sets the values named; nothing is checked. The orientation is in radians.
  /// @{
  void setCoords(const Point2dData<T>& center, T halfLength, T halfWidth, omReal64 orientation) {
    *this = Rectangle2d(center, halfLength, halfWidth, orientation);
  }
  void setCenter(const Point2dData<T>& center) { _centerPt = center; }
  void setHalfLength(T halfLength) { _halfLength = halfLength; }
  void setHalfWidth(T halfWidth) { _halfWidth = halfWidth; }
  void setOrientation(omReal64 orientation) { _orientation = orientation; }
  /// @}

  /// The stored values; the orientation in radians.
  /// @{
  const Point2dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T getHalfLength() const { return _halfLength; }
  T getHalfWidth() const { return _halfWidth; }
  omReal64 getOrientation() const { return _orientation; }
  /// @}

  /// Twice the half length, or the half width, computed in the coordinate type; integers wrap around.
  /// @{
  T getLength() const;
  T getWidth() const;
  /// @}
  /// (2·halfLength)·(2·halfWidth), computed in omReal64, so that integers do not wrap around.
  omReal64 getArea() const;

  /// The local points (±halfLength, ±halfWidth), rotated by the orientation about the centre and computed in omReal64.
  /// "Top" is the side of negative local y, as the y axis of images points down. All are the centre when both half
  /// sizes are 0.
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
           item("_halfWidth", self._halfWidth) && item("_orientation", self._orientation);
  }

  /// The corner whose local coordinates have the given signs, each -1 or 1.
  Point2dData<omReal64> corner(omReal64 sideX, omReal64 sideY) const;

  Point2dData<T> _centerPt;
  T _halfLength{};
  T _halfWidth{};
  omReal64 _orientation = 0;
};

/// Prints "[center=[0, 0], length=4, width=2, theta=0.5]", with the full sizes.
template <class T>
std::ostream& operator<<(std::ostream& stream, const Rectangle2d<T>& rectangle);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, Rectangle2d)
