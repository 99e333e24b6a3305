#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>

#include <vector>

ORMIX_GEOMETRY_ENTITY2D_LEVELS(extern, Parabola2d, BaseGeometryEntity2d)

namespace ormix::geom {

/// The parabola { p : ‖p − focus‖ = distance(p, directrix) }.
///
/// Its points are also vertex + t·d + t² / (4f)·a, with f > 0 the focal length, d the direction of the directrix and a
/// the unit vector from the directrix to the focus: the abscissa t is the coordinate of a point along the directrix,
/// counted from the vertex. A parabola whose focus lies on its directrix is degenerated: it is its symmetry axis, and
/// no longer a function of t.
class ORMIX_GEOMETRY_API Parabola2d : public Entity2d<Parabola2d, BaseGeometryEntity2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::Parabola2d";
  static constexpr eEntity2dType s_entity2dType = eE2DT_Parabola;

  /// The focus at the origin and the y axis for directrix: degenerated.
  Parabola2d() = default;
  template <class Point>
  Parabola2d(const Point& focus, const Line2d& directrix) {
    setCoords(focus, directrix);
  }

  template <class Point>
  void setCoords(const Point& focus, const Line2d& directrix) {
    setFocus(focus);
    _directrix = directrix;
  }
  template <class T>
  void setFocus(const Point2dData<T>& focus) {
    _focus = cast<omReal64>(focus);
  }
  template <class T>
  void setFocus(const Point2d<T>& focus) {
    setFocus(focus.getCoords());
  }
  /// Kept as given, with either normal.
  void setDirectrix(const Line2d& directrix) { _directrix = directrix; }

  const Point2dData<omReal64>& getFocus() const { return _focus; }
  const Line2d& getDirectrix() const { return _directrix; }

  /// The midpoint between the focus and its projection on the directrix; the focus when degenerated.
  Point2dData<omReal64> getVertex() const;
  /// The line through the focus perpendicular to the directrix, normalised as Line2d::setCoords() does.
  Line2d getSymmetryAxis() const;
  /// Distance from the focus to the vertex, half of that to the directrix.
  omReal64 getFocalLength() const;
  /// Whether the focal length is exactly 0; NaN is not.
  bool isDegenerated() const;

  /// Whether the point lies on the focus' side of the parabola, or on it: not farther from the focus than from the
  /// directrix. Points that rounding cannot tell from those of the parabola are on it: those whose two distances differ
  /// by at most 4 epsilon times the sum of the magnitudes that enter them. Inside a degenerated parabola are the points
  /// of its axis.
  bool isInside(const Point2dData<omReal64>& point) const;
  /// The same without the parabola itself; always false when degenerated.
  bool isStrictlyInside(const Point2dData<omReal64>& point) const;

  /// The abscissa t of a point's projection on the parabola along the axis; meaningful when degenerated too.
  omReal64 getAbscissa(const Point2dData<omReal64>& point) const;
  /// The point of the parabola at an abscissa; the coordinates are not finite when degenerated.
  Point2dData<omReal64> getPoint(omReal64 abscissa) const;

  /// Length of the arc between two abscissas, in whichever order: the difference of t/2·√(1 + (t/2f)²) + f·asinh(t/2f),
  /// formed without cancellation. Infinite when degenerated, but 0 between equal abscissas. Constant time.
  omReal64 computeArcLength(omReal64 fromAbscissa, omReal64 toAbscissa) const;

  /// Points that divide the arc between two abscissas into parts of equal length, in order, the first and the last
  /// being its ends; only the first for nbPoints 1. Empty for nbPoints 0, when degenerated or when the arc has no
  /// finite length. A few steps of Newton's iteration a point.
  std::vector<Point2dData<omReal64>> sampleArc(omReal64 fromAbscissa, omReal64 toAbscissa, omUInt32 nbPoints) const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_focus", self._focus) && item("_directrix", self._directrix);
  }

  /// By how much the point is farther from the directrix than from the focus: positive inside.
  omReal64 distanceDifference(const Point2dData<omReal64>& point) const;
  /// What rounding may add to or take from that difference.
  omReal64 differenceErrorBound(const Point2dData<omReal64>& point) const;

  Point2dData<omReal64> _focus;
  Line2d _directrix;
};

/// "[focus=[0, 1], directrix=[rho=1, theta=-1.5708]]"
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Parabola2d& parabola);

}  // namespace ormix::geom
