#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/ContourRings.h>
#include <ORMIXGeometry/Region/PixelSpacing.h>

// Not installed.
namespace ormix::geom::detail {

/// The perimeter of the disk, or ellipse, inscribed in a pixel: how much longer a closed convex curve is that runs half
/// a pixel outside of another.
omReal64 pixelDiskPerimeter(const PixelSpacing& spacing);

/// The functions of PerimeterEstimators.h for boundaries that are traced already.
/// @{
omReal64 cornerCountPerimeter(const ContourRings& contours, const PixelSpacing& spacing);
omReal64 minimumLengthPerimeter(const ContourRings& contours, const PixelSpacing& spacing);
/// @}

}  // namespace ormix::geom::detail
