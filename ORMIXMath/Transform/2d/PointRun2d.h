#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXMath/Transform/2d/AffineTransform2d.h>
#include <ORMIXMath/Transform/2d/Homography2d.h>

#include <cstddef>

/// \file
/// Planar transforms on runs of points, x and y in turn, with wider vectors where the processor has them; the same bits
/// on every processor as point by point. T is one of the four scalar types.
///
/// To map a run or leave it alone, all of its points are asked first: a look at the largest magnitude. Both take the
/// quarters of a long run side by side, the look from their last points to their first, which leaves in the caches what
/// is mapped first. Images that go to another place need no such look: they are watched while they are stored.

namespace ormix {

/// Index of the first point that has no image under the map, `nbPoints` when all have one. As a rule one pass over the
/// coordinates that computes no image, and none for integers under a moderate affine map; O(points).
template <class T>
ORMIX_MATH_API std::size_t firstUndefinedImage(const AffineCoefficients2d& map, const T* xy, std::size_t nbPoints);
template <class T>
ORMIX_MATH_API std::size_t firstUndefinedImage(const HomographyCoefficients2d& map, const T* xy, std::size_t nbPoints);

/// Maps the points in place; each must have an image. O(points).
template <class T>
ORMIX_MATH_API void applyToRun(const AffineCoefficients2d& map, T* xy, std::size_t nbPoints);
template <class T>
ORMIX_MATH_API void applyToRun(const HomographyCoefficients2d& map, T* xy, std::size_t nbPoints);

/// Maps the points to another place, which must not overlap theirs. Answers as firstUndefinedImage(); the images of
/// that point and of those after it are unspecified. O(points), in one pass; meant for blocks that fit the nearest
/// cache.
template <class T>
ORMIX_MATH_API std::size_t mapRun(const AffineCoefficients2d& map, const T* xy, T* images, std::size_t nbPoints);
template <class T>
ORMIX_MATH_API std::size_t mapRun(const HomographyCoefficients2d& map, const T* xy, T* images, std::size_t nbPoints);

/// \name The same for a transform of the plane.
/// @{
template <class Self, std::size_t NbParams, class T>
std::size_t firstUndefinedImage(const AffineTransform2d<Self, NbParams>& map, const T* xy, std::size_t nbPoints) {
  return firstUndefinedImage(map.getCoefficients(), xy, nbPoints);
}
template <class T>
std::size_t firstUndefinedImage(const Homography2d& map, const T* xy, std::size_t nbPoints) {
  return firstUndefinedImage(map.getCoefficients(), xy, nbPoints);
}
template <class Self, std::size_t NbParams, class T>
void applyToRun(const AffineTransform2d<Self, NbParams>& map, T* xy, std::size_t nbPoints) {
  applyToRun(map.getCoefficients(), xy, nbPoints);
}
template <class T>
void applyToRun(const Homography2d& map, T* xy, std::size_t nbPoints) {
  applyToRun(map.getCoefficients(), xy, nbPoints);
}
template <class Self, std::size_t NbParams, class T>
std::size_t mapRun(const AffineTransform2d<Self, NbParams>& map, const T* xy, T* images, std::size_t nbPoints) {
  return mapRun(map.getCoefficients(), xy, images, nbPoints);
}
template <class T>
std::size_t mapRun(const Homography2d& map, const T* xy, T* images, std::size_t nbPoints) {
  return mapRun(map.getCoefficients(), xy, images, nbPoints);
}
/// @}

}  // namespace ormix
