#pragma once

#include <ORMIXGeometry/Tools/Svg/SvgShape.h>

#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace ormix::geom::detail {

/// The part of the plane that a picture shows: a closed box with positive extent on both axes.
struct SvgView {
  omReal64 xMin;  ///< smallest x that is shown
  omReal64 yMin;  ///< smallest y that is shown
  omReal64 xMax;  ///< largest x that is shown
  omReal64 yMax;  ///< largest y that is shown
};

/// The ends of the part of a line inside the view; nothing when the line does not meet it.
std::optional<std::pair<SvgPoint, SvgPoint>> clipToView(const SvgLine& line, const SvgView& view);

/// The arcs of a parabola inside the view. Every arc of a parabola is a quadratic Bézier curve, whose control point is
/// the intersection of the tangents at its ends.
std::vector<SvgBezier> clipToView(const SvgParabola& parabola, const SvgView& view);

}  // namespace ormix::geom::detail
