#pragma once

#include <ORMIXGeometry/Entity/2d/Skeleton/Skeleton2d.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>

namespace ormix::geom {

/// How a skeleton is drawn.
struct SkeletonStyle {
  omReal64 width = 1;         ///< of lines, in pixels of the picture
  omReal64 circleStep = 0;    ///< distance of the circles that are drawn along all branches; none for 0
  std::size_t nbColors = 12;  ///< from dark blue for the narrowest place to yellow for the widest, at least 1
};

/// Draws a skeleton with colors that show the radius: each edge as a segment or a quadratic Bézier curve, which is
/// exact, in the color of the mean radius of its ends, and circles that touch the boundary. Linear.
/// \return a failure, with nothing drawn, for a style that is not valid; else as SvgWriter::draw()
ORMIX_GEOMETRY_API BoolResult drawSkeleton(SvgWriter& writer, const Skeleton2d& skeleton,
                                           const SkeletonStyle& style = {});

}  // namespace ormix::geom
