#pragma once

#include <ORMIXGeometry/Tools/Svg/SvgElement.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>

#include <optional>

namespace ormix::geom::detail {

/// Appends the element of a shape.
/// \return the position of its label in pixels; nothing when no part of the shape is inside the view
std::optional<SvgPoint> writeShape(SvgElement& element, const SvgShape& shape, const SvgFrame& frame,
                                   const SvgStyle& style);

}  // namespace ormix::geom::detail
