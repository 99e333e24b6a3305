#pragma once

#include <ORMIXMath/Transform/MagnitudeBound.h>

#include <algorithm>
#include <type_traits>

// Whether the points of a run have images, in the plane and in space. `Run` has `nbCoordinates`, the kernel
// `mapEach<isWatched>(map, points, images, nbPoints)`, which tells whether all images are finite when it watches them,
// and `imagesStayFinite<T>(map, magnitude)`: whether no image of points of at most this magnitude can leave the finite
// range of T, where false is no proof.

namespace ormix::detail {

/// Index of the first point whose image is not finite, `nbPoints` when all are.
template <class Run, class T>
std::size_t firstUndefined(const T* images, std::size_t nbPoints) {
  return firstNotFinite(images, Run::nbCoordinates * nbPoints) / Run::nbCoordinates;
}

/// Maps copies, block by block, and looks at the images. Integers are left in omReal64, where it shows.
template <class Run, class Map, class T>
std::size_t findUndefinedImage(const Map& map, const T* points, std::size_t nbPoints) {
  constexpr std::size_t nbInBlock = 256;
  constexpr std::size_t n = Run::nbCoordinates;
  using Image = std::conditional_t<std::is_integral_v<T>, omReal64, T>;
  Image images[n * nbInBlock];
  for (std::size_t done = 0; done < nbPoints; done += nbInBlock) {
    const std::size_t count = std::min(nbInBlock, nbPoints - done);
    std::transform(points + n * done, points + n * (done + count), images,
                   [](T value) { return static_cast<Image>(value); });
    if (!Run::template mapEach<true>(map, images, images, count)) return done + firstUndefined<Run>(images, count);
  }
  return nbPoints;
}

/// Index of the first point without an image, `nbPoints` when all have one.
template <class Run, class Map, class T>
std::size_t askRun(const Map& map, const T* points, std::size_t nbPoints) {
  if constexpr (std::is_integral_v<T>) {
    // Often no need to look: the type bounds them.
    if (Run::template imagesStayFinite<T>(map, s_typeMagnitude<T>)) return nbPoints;
  }
  if (Run::template imagesStayFinite<T>(map, magnitudeBound(points, Run::nbCoordinates * nbPoints))) return nbPoints;
  return findUndefinedImage<Run>(map, points, nbPoints);
}

/// Maps in place or to another place that does not overlap. The quarters of a run that the near caches do not hold are
/// mapped side by side, block by block, as the processor fetches several streams faster than one.
template <class Run, class Map, class T>
void mapQuarters(const Map& map, const T* points, T* images, std::size_t nbPoints) {
  constexpr std::size_t nbInBlock = 256;
  constexpr std::size_t n = Run::nbCoordinates;
  constexpr std::size_t nbInNearCaches = 1048576 / (n * sizeof(T));
  const std::size_t quarter = nbPoints > nbInNearCaches ? nbPoints / (4 * nbInBlock) * nbInBlock : 0;
  for (std::size_t done = 0; done < quarter; done += nbInBlock)
    for (std::size_t first = done; first < 4 * quarter; first += quarter)
      Run::mapEach(map, points + n * first, images + n * first, nbInBlock);
  Run::mapEach(map, points + n * 4 * quarter, images + n * 4 * quarter, nbPoints - 4 * quarter);
}

/// Maps to another place and answers as askRun(). Integers are asked first, as images beyond their range are brought
/// into it; images of reals show it themselves.
template <class Run, class Map, class T>
std::size_t mapDefined(const Map& map, const T* points, T* images, std::size_t nbPoints) {
  if constexpr (std::is_integral_v<T>) {
    const std::size_t nbDefined = askRun<Run>(map, points, nbPoints);
    Run::mapEach(map, points, images, nbDefined);
    return nbDefined;
  } else {
    if (Run::template mapEach<true>(map, points, images, nbPoints)) return nbPoints;
    return firstUndefined<Run>(images, nbPoints);
  }
}

}  // namespace ormix::detail
