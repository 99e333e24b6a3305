#pragma once

#include <ORMIXMath/Skeleton/MedialAxis.h>

namespace ormix {

/// An edge of a medial axis as a curve, with the parameter s in [0, 1] from its first vertex to its last: a segment, or
/// the arc of a parabola with the points p0 + s·(p1 − p0) − s(1 − s)·sag, so that s runs evenly along the directrix.
class ORMIX_MATH_API AxisCurve {
 public:
  /// \param start, end the vertices
  /// \param left, right the parts of the boundary on both sides of the way from start to end
  AxisCurve(const AxisVertex& start, const AxisVertex& end, const AxisPart& left, const AxisPart& right);

  /// Whether it is the arc of a parabola; its focus is the vertex of both parts, its directrix the line of the edge.
  bool isArc() const { return _parts[0].isVertex != _parts[1].isVertex; }

  /// A point of it. The ends are those of the vertices exactly.
  PlanarPoint point(omReal64 s) const;
  /// The distance of that point to the boundary: linear between two edges, quadratic along an arc, and the square root
  /// of a quadratic function between two vertices.
  omReal64 radius(omReal64 s) const;
  /// The least distance of one of its points to the boundary; the greatest is at an end.
  omReal64 leastRadius() const;
  /// The control point of the quadratic Bézier curve with the same points and ends.
  PlanarPoint control() const;
  omReal64 length() const { return length(0, 1); }  ///< of all of it
  /// The length between two parameters, in either order.
  omReal64 length(omReal64 from, omReal64 to) const;
  /// The derivative of the length by s.
  omReal64 speed(omReal64 s) const;
  /// The parameter up to which it has this length, in [0, 1].
  omReal64 parameterAt(omReal64 length) const;

  /// The point of the part to the left, or to the right, that is nearest to an end of the curve: where the circle
  /// around the end touches the boundary.
  /// \param side 0 for left, 1 for right
  /// \param end 0 for the first vertex, 1 for the last
  PlanarPoint contact(int side, int end) const;

 private:
  std::array<AxisVertex, 2> _ends;
  std::array<AxisPart, 2> _parts;
  PlanarPoint _sag{};    // along the axis of the parabola, towards its focus
  omReal64 _along = 0;   // of the chord along the directrix
  omReal64 _across = 0;  // of the chord along the axis
};

}  // namespace ormix
