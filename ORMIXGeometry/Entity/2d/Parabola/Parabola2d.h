#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

#include <vector>

ORMIX_GEOMETRY_ENTITY2D_LEVELS(extern, Parabola2d, BaseGeometryEntity2d)

namespace ormix::geom {

/// The parabola { p : ‖p − focus‖ = distance(p, directrix) }.
///
/// Its points are vertex + t·d + t² / (4f)·a, with f > 0 the focal length, d the unit vector along the directrix
/// (Line2d::getDirection()) and a the unit vector from the directrix to the focus. The abscissa t is the signed
/// distance of a point from the symmetry axis. A parabola whose focus lies on its directrix is degenerated: it is its
/// symmetry axis, whose points are not a function of t.
class ORMIX_GEOMETRY_API Parabola2d : public Entity2d<Parabola2d, BaseGeometryEntity2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::Parabola2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_Parabola;        ///< returned by getEntity2dType()

  /// The focus at the origin and the y axis as directrix: degenerated.
  Parabola2d() = default;
  /// \param focus a Point2d or Point2dData of any coordinate type, converted to omReal64
  /// \param directrix stored unchanged
  template <class Point>
  Parabola2d(const Point& focus, const Line2d& directrix) {
    setCoords(focus, directrix);
  }

  /// Sets focus and directrix, as the constructor.
  template <class Point>
  void setCoords(const Point& focus, const Line2d& directrix) {
    setFocus(focus);
    _directrix = directrix;
  }
  /// Sets the focus, converted to omReal64.
  /// @{
  template <class T>
  void setFocus(const Point2dData<T>& focus) {
    _focus = cast<omReal64>(focus);
  }
  template <class T>
  void setFocus(const Point2d<T>& focus) {
    setFocus(focus.getCoords());
  }
  /// @}
  /// Stores the directrix unchanged; its normal may point to either side.
  void setDirectrix(const Line2d& directrix) { _directrix = directrix; }

  const Point2dData<omReal64>& getFocus() const { return _focus; }  ///< the stored focus
  const Line2d& getDirectrix() const { return _directrix; }         ///< the stored directrix

  /// The midpoint between the focus and its projection on the directrix; the focus when degenerated.
  Point2dData<omReal64> getVertex() const;
  /// The line through the focus perpendicular to the directrix, normalised as Line2d::setCoords() does.
  Line2d getSymmetryAxis() const;
  /// Distance from the focus to the vertex, half of that to the directrix.
  omReal64 getFocalLength() const;
  /// Whether the focal length is exactly 0; false when it is NaN.
  bool isDegenerated() const;

  /// Whether the point is at most as far from the focus as from the directrix: inside the parabola or on it. A point
  /// counts as on the parabola when its two distances differ by no more than their rounding errors: 4 epsilon times the
  /// sum of the magnitudes of the coordinates of point and focus and of the directrix's rho. For a degenerated parabola
  /// true for the points of its axis.
  bool isInside(const Point2dData<omReal64>& point) const;
  /// Whether the point is inside and not on the parabola in the sense of isInside(); always false when degenerated.
  bool isStrictlyInside(const Point2dData<omReal64>& point) const;

  /// The abscissa t of any point: its signed distance from the symmetry axis, also when degenerated.
  omReal64 getAbscissa(const Point2dData<omReal64>& point) const;
  /// The point of the parabola at an abscissa; its coordinates are not finite when degenerated.
  Point2dData<omReal64> getPoint(omReal64 abscissa) const;

  /// Length of the arc between two abscissas, in either order, see parabolaArcLength(). Constant time.
  omReal64 computeArcLength(omReal64 fromAbscissa, omReal64 toAbscissa) const;

  /// Points that divide the arc between two abscissas into parts of equal length, in order from the first abscissa; the
  /// first and the last point are the ends of the arc. Only the first end for nbPoints 1; empty for nbPoints 0, when
  /// degenerated, or when the length of the arc is not finite. A few steps of Newton's method for each point.
  std::vector<Point2dData<omReal64>> sampleArc(omReal64 fromAbscissa, omReal64 toAbscissa, omUInt32 nbPoints) const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_focus", self._focus) && item("_directrix", self._directrix);
  }

  /// Distance from the directrix minus distance from the focus: positive inside.
  omReal64 distanceDifference(const Point2dData<omReal64>& point) const;
  /// Bound of the rounding error of distanceDifference().
  omReal64 differenceErrorBound(const Point2dData<omReal64>& point) const;

  Point2dData<omReal64> _focus;
  Line2d _directrix;
};

/// Prints "[focus=[0, 1], directrix=[rho=1, theta=-1.5708]]".
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Parabola2d& parabola);

}  // namespace ormix::geom
