#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

namespace ormix::geom {

/// The rectangle centred at `center` that extends halfLength to either side along the direction of the orientation
/// (radians) and halfWidth across it. Sizes are not checked: negative ones are stored and swap the names of the
/// corners.
template <class T>
class ORMIX_GEOMETRY_API Rectangle2d : public Entity2d<Rectangle2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Rectangle2d";
  static constexpr eEntity2dType s_entity2dType = eE2DT_Rectangle;

  /// Sizes 0 at the origin.
  Rectangle2d() = default;
  Rectangle2d(const Point2dData<T>& center, T halfLength, T halfWidth, omReal64 orientation)
      : _centerPt(center), _halfLength(halfLength), _halfWidth(halfWidth), _orientation(orientation) {}

  void setCoords(const Point2dData<T>& center, T halfLength, T halfWidth, omReal64 orientation) {
    *this = Rectangle2d(center, halfLength, halfWidth, orientation);
  }
  void setCenter(const Point2dData<T>& center) { _centerPt = center; }
  void setHalfLength(T halfLength) { _halfLength = halfLength; }
  void setHalfWidth(T halfWidth) { _halfWidth = halfWidth; }
  void setOrientation(omReal64 orientation) { _orientation = orientation; }

  const Point2dData<T>& center() const { return _centerPt; }
  T centerX() const { return _centerPt.getX(); }
  T centerY() const { return _centerPt.getY(); }
  T getHalfLength() const { return _halfLength; }
  T getHalfWidth() const { return _halfWidth; }
  omReal64 getOrientation() const { return _orientation; }

  /// Full sizes, twice the half ones in the coordinate type; integers wrap around.
  T getLength() const;
  T getWidth() const;
  /// (2·halfLength)·(2·halfWidth) in omReal64; no integer wraps.
  omReal64 getArea() const;

  /// \name Corners.
  /// The local corners (∓halfLength, ∓halfWidth) turned by the orientation; "top" is the side of negative local y, as
  /// image rows grow downwards. All at the centre when both half sizes are 0.
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

  /// The corner on the given sides, each -1 or 1, of the local axes.
  Point2dData<omReal64> corner(omReal64 sideX, omReal64 sideY) const;

  Point2dData<T> _centerPt;
  T _halfLength{};
  T _halfWidth{};
  omReal64 _orientation = 0;
};

/// "[center=[0, 0], length=4, width=2, theta=0.5]", the full sizes.
template <class T>
std::ostream& operator<<(std::ostream& stream, const Rectangle2d<T>& rectangle);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, Rectangle2d)
