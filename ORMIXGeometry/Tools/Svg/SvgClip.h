#pragma once

#include <ORMIXGeometry/Tools/Svg/SvgShape.h>

#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace ormix::geom {

/// The closed box that is looked at.
struct SvgView {
  omReal64 xMin;
  omReal64 yMin;
  omReal64 xMax;
  omReal64 yMax;
};

/// The part of a line inside the view, from end to end; nothing when it passes by.
std::optional<std::pair<SvgPoint, SvgPoint>> clipToView(const SvgLine& line, const SvgView& view);

/// Start, control and end point of a quadratic Bézier.
using SvgBezier = std::array<SvgPoint, 3>;

/// The arcs of a parabola inside the view. Every piece of a parabola is a quadratic Bézier, its control point the
/// crossing of the tangents at the ends.
std::vector<SvgBezier> clipToView(const SvgParabola& parabola, const SvgView& view);

}  // namespace ormix::geom
