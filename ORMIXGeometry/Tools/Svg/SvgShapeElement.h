#pragma once

#include <ORMIXGeometry/Tools/Svg/SvgElement.h>
#include <ORMIXGeometry/Tools/SvgWriter.h>

#include <optional>

namespace ormix::geom {

/// Appends a shape's element. Answers where its label goes, in pixels; nothing when no part of it is seen.
std::optional<SvgPoint> writeShape(SvgElement& element, const SvgShape& shape, const SvgFrame& frame,
                                   const SvgStyle& style);

}  // namespace ormix::geom
