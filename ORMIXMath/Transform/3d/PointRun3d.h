#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXMath/Transform/3d/AffineTransform3d.h>
#include <ORMIXMath/Transform/3d/Homography3d.h>

#include <cstddef>

/// \file
/// Spatial transforms on runs of points, x, y and z in turn, with wider vectors where the processor has them; the same
/// bits on every processor as point by point. T is one of the four scalar types.
///
/// To map a run or leave it alone, all of its points are asked first: a look at the largest magnitude. Both take the
/// quarters of a long run side by side, the look from their last points to their first, which leaves in the caches what
/// is mapped first. Images that go to another place need no such look: they are watched while they are stored.

namespace ormix {

/// Index of the first point that has no image under the map, `nbPoints` when all have one. As a rule one pass over the
/// coordinates that computes no image, and none for integers under a moderate affine map; O(points).
template <class T>
ORMIX_MATH_API std::size_t firstUndefinedImage(const AffineCoefficients3d& map, const T* xyz, std::size_t nbPoints);
template <class T>
ORMIX_MATH_API std::size_t firstUndefinedImage(const HomographyCoefficients3d& map, const T* xyz, std::size_t nbPoints);

/// Writes the images of the points at `xyz` to `out`, which is either `xyz` itself or does not overlap it; each point
/// must have an image. O(points).
template <class T>
ORMIX_MATH_API void applyToRun(const AffineCoefficients3d& map, const T* xyz, T* out, std::size_t nbPoints);
template <class T>
ORMIX_MATH_API void applyToRun(const HomographyCoefficients3d& map, const T* xyz, T* out, std::size_t nbPoints);

/// Maps the points in place; each must have an image.
template <class T>
void applyToRun(const AffineCoefficients3d& map, T* xyz, std::size_t nbPoints) {
  applyToRun(map, static_cast<const T*>(xyz), xyz, nbPoints);
}
template <class T>
void applyToRun(const HomographyCoefficients3d& map, T* xyz, std::size_t nbPoints) {
  applyToRun(map, static_cast<const T*>(xyz), xyz, nbPoints);
}

/// Maps the points to another place, which must not overlap theirs. Answers as firstUndefinedImage(); the images of
/// that point and of those after it are unspecified. O(points), in one pass; meant for blocks that fit the nearest
/// cache.
template <class T>
ORMIX_MATH_API std::size_t mapRun(const AffineCoefficients3d& map, const T* xyz, T* images, std::size_t nbPoints);
template <class T>
ORMIX_MATH_API std::size_t mapRun(const HomographyCoefficients3d& map, const T* xyz, T* images, std::size_t nbPoints);

/// \name The same for a transform of space.
/// @{
template <class Self, std::size_t NbParams, class T>
std::size_t firstUndefinedImage(const AffineTransform3d<Self, NbParams>& map, const T* xyz, std::size_t nbPoints) {
  return firstUndefinedImage(map.getCoefficients(), xyz, nbPoints);
}
template <class T>
std::size_t firstUndefinedImage(const Homography3d& map, const T* xyz, std::size_t nbPoints) {
  return firstUndefinedImage(map.getCoefficients(), xyz, nbPoints);
}
template <class Self, std::size_t NbParams, class T>
void applyToRun(const AffineTransform3d<Self, NbParams>& map, T* xyz, std::size_t nbPoints) {
  applyToRun(map.getCoefficients(), xyz, nbPoints);
}
template <class T>
void applyToRun(const Homography3d& map, T* xyz, std::size_t nbPoints) {
  applyToRun(map.getCoefficients(), xyz, nbPoints);
}
template <class Self, std::size_t NbParams, class T>
std::size_t mapRun(const AffineTransform3d<Self, NbParams>& map, const T* xyz, T* images, std::size_t nbPoints) {
  return mapRun(map.getCoefficients(), xyz, images, nbPoints);
}
template <class T>
std::size_t mapRun(const Homography3d& map, const T* xyz, T* images, std::size_t nbPoints) {
  return mapRun(map.getCoefficients(), xyz, images, nbPoints);
}
/// @}

}  // namespace ormix
