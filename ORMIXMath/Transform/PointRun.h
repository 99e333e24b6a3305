#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXMath/Transform/2d/AffineTransform2d.h>
#include <ORMIXMath/Transform/2d/Homography2d.h>
#include <ORMIXMath/Transform/3d/AffineTransform3d.h>
#include <ORMIXMath/Transform/3d/Homography3d.h>

#include <cstddef>
#include <type_traits>

/// \file
/// Transforms on runs of points, the coordinates of each point in turn, with wider vectors where the processor has
/// them; the same bits on every processor as point by point. `Map` is a transform of the plane or of space or its
/// coefficients, T one of the four scalar types. Nothing is allocated.
///
/// A run is mapped in place, or left alone where a point has no image, by firstUndefinedImage() before applyToRun();
/// many short ones by one call of applyToRuns(). Both look and map take the quarters of a long run side by side, the
/// first from their last points to their first, which leaves in the caches what is mapped first. Images that go to
/// another place need no such look: they are checked while they are stored.

namespace ormix {

/// A run of points that may be changed.
template <class T>
struct PointSpan {
  T* points;             ///< the coordinates of each in turn
  std::size_t nbPoints;  ///< their number
};

/// A point of one of several runs.
struct PlaceInRuns {
  std::size_t run;    ///< index of the run
  std::size_t point;  ///< index of the point in it
};

namespace detail {

template <class Map>
const auto& coefficientsOf(const Map& map) {
  if constexpr (std::is_same_v<Map, AffineCoefficients2d> || std::is_same_v<Map, HomographyCoefficients2d> ||
                std::is_same_v<Map, AffineCoefficients3d> || std::is_same_v<Map, HomographyCoefficients3d>)
    return map;
  else
    return map.getCoefficients();
}

/// \name What the functions below do with the coefficients of a map.
/// @{
template <class Coefficients, class T>
ORMIX_MATH_API std::size_t findUndefined(const Coefficients& map, const T* points, std::size_t nbPoints);
template <class Coefficients, class T>
ORMIX_MATH_API void mapQuarters(const Coefficients& map, const T* points, T* images, std::size_t nbPoints);
template <class Coefficients, class T>
ORMIX_MATH_API std::size_t mapChecked(const Coefficients& map, const T* points, T* images, std::size_t nbPoints);
template <class Coefficients, class T>
ORMIX_MATH_API PlaceInRuns mapRunsOrNone(const Coefficients& map, const PointSpan<T>* runs, std::size_t nbRuns);
/// @}

}  // namespace detail

/// Index of the first point that has no image under the map, `nbPoints` when all have one. As a rule one pass over the
/// coordinates that computes no image, and none for integers under a moderate affine map; O(points).
template <class Map, class T>
std::size_t firstUndefinedImage(const Map& map, const T* points, std::size_t nbPoints) {
  return detail::findUndefined(detail::coefficientsOf(map), points, nbPoints);
}

/// Writes the images of the points to `images`, which is either `points` itself or does not overlap it; each point must
/// have an image. O(points).
template <class Map, class T>
void applyToRun(const Map& map, const T* points, T* images, std::size_t nbPoints) {
  detail::mapQuarters(detail::coefficientsOf(map), points, images, nbPoints);
}

/// Maps the points in place; each must have an image. O(points).
template <class Map, class T>
void applyToRun(const Map& map, T* points, std::size_t nbPoints) {
  applyToRun(map, static_cast<const T*>(points), points, nbPoints);
}

/// Maps the points of all runs in place where each of them has an image, else none. O(points).
/// \return the first that has none, in order of the runs; the run `nbRuns` when all are mapped
template <class Map, class T>
PlaceInRuns applyToRuns(const Map& map, const PointSpan<T>* runs, std::size_t nbRuns) {
  return detail::mapRunsOrNone(detail::coefficientsOf(map), runs, nbRuns);
}

/// Maps the points to another place, which must not overlap theirs. Answers as firstUndefinedImage(); the images of
/// that point and of those after it are unspecified. O(points), in one pass; meant for blocks that fit the nearest
/// cache.
template <class Map, class T>
std::size_t mapRun(const Map& map, const T* points, T* images, std::size_t nbPoints) {
  return detail::mapChecked(detail::coefficientsOf(map), points, images, nbPoints);
}

}  // namespace ormix
