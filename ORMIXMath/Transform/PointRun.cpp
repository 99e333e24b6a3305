#include <ORMIXMath/Shape/PrefetchBehind.h>
#include <ORMIXMath/Transform/PointBlocks.h>
#include <ORMIXMath/Transform/PointRun.h>

#include <algorithm>
#include <cstdint>

namespace ormix::detail {
namespace {

/// Calls with the version of the loops for this processor. A load and a test: no resolver of the dynamic linker, which
/// sanitizers do not survive.
template <class Call>
auto onThisProcessor(const Call& call) {
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx512vl")) return call(Avx512Blocks());
  if (__builtin_cpu_supports("avx2")) return call(Avx2Blocks());
#endif
  return call(PortableBlocks());
}

/// Maps in place or to a place that does not overlap; answers whether all images are finite, if that is checked.
template <bool isChecked, class Map, class T>
bool mapBlock(const Map& map, const T* points, T* images, std::size_t nbPoints) {
  return onThisProcessor(
      [&](auto blocks) { return decltype(blocks)::template map<isChecked>(map, points, images, nbPoints); });
}

/// No value is larger in magnitude, nor NaN when it is finite.
template <class T>
omReal64 maxMagnitude(const T* values, std::size_t nbValues) {
  return magnitudeBound<T>(
      onThisProcessor([&](auto blocks) { return decltype(blocks)::largestMagnitude(values, nbValues); }));
}

/// Index of the first point with a coordinate that is not finite, `nbPoints` when all are.
template <std::size_t nbCoordinates, class T>
std::size_t firstNotFinite(const T* points, std::size_t nbPoints) {
  const T* const end = points + nbCoordinates * nbPoints;
  const T* const found = std::find_if(points, end, [](T value) { return !std::isfinite(value); });
  return static_cast<std::size_t>(found - points) / nbCoordinates;
}

/// Whether there is no need to look at points, as with integers often: their type bounds them.
template <class T, class Map>
bool hasImagesByType(const Map& map) {
  if constexpr (std::is_integral_v<T>)
    return imagesStayFinite<T>(map, 1 + static_cast<omReal64>(std::numeric_limits<T>::max()));
  return false;
}

constexpr std::size_t nbInBlock = 256;

/// Maps copies, block by block, and looks at the images. Integers are left in omReal64, where it shows.
template <class Map, class T>
std::size_t findUndefinedByImages(const Map& map, const T* points, std::size_t nbPoints) {
  constexpr std::size_t n = s_nbCoordinates<Map>;
  using Image = std::conditional_t<std::is_integral_v<T>, omReal64, T>;
  Image images[n * nbInBlock];
  for (std::size_t done = 0; done < nbPoints; done += nbInBlock) {
    const std::size_t count = std::min(nbInBlock, nbPoints - done);
    std::transform(points + n * done, points + n * (done + count), images,
                   [](T value) { return static_cast<Image>(value); });
    if (!mapBlock<true>(map, images, images, count)) return done + firstNotFinite<n>(images, count);
  }
  return nbPoints;
}

}  // namespace

template <class Map, class T>
std::size_t findUndefined(const Map& map, const T* points, std::size_t nbPoints) {
  if (hasImagesByType<T>(map)) return nbPoints;
  if (imagesStayFinite<T>(map, maxMagnitude(points, s_nbCoordinates<Map> * nbPoints))) return nbPoints;
  return findUndefinedByImages(map, points, nbPoints);
}

/// The number of points before the first one at a cache line, none where there is no such point: the widest stores
/// take twice as long across two lines.
template <std::size_t nbCoordinates, class T>
std::size_t nbToCacheLine(const T* points, std::size_t nbPoints) {
  constexpr std::uintptr_t cacheLine = 64;
  for (std::size_t nb = 0; nb < std::min<std::size_t>(nbPoints, cacheLine / sizeof(T)); ++nb)
    if (reinterpret_cast<std::uintptr_t>(points + nbCoordinates * nb) % cacheLine == 0) return nb;
  return 0;
}

/// The quarters of a run that the near caches do not hold are mapped side by side, block by block, as processors fetch
/// several streams faster than one. Of homographies the divisions take longer than any stores.
template <class Map, class T>
void mapQuarters(const Map& map, const T* points, T* images, std::size_t nbPoints) {
  constexpr std::size_t n = s_nbCoordinates<Map>;
  if constexpr (std::is_same_v<Map, AffineCoefficients2d> || std::is_same_v<Map, AffineCoefficients3d>) {
    if (const std::size_t nbAhead = nbToCacheLine<n>(images, nbPoints); nbAhead > 0) {
      mapBlock<false>(map, points, images, nbAhead);
      points += n * nbAhead;
      images += n * nbAhead;
      nbPoints -= nbAhead;
    }
  }
  constexpr std::size_t nbInNearCaches = 1048576 / (n * sizeof(T));
  const std::size_t quarter = nbPoints > nbInNearCaches ? nbPoints / (4 * nbInBlock) * nbInBlock : 0;
  for (std::size_t done = 0; done < quarter; done += nbInBlock)
    for (std::size_t first = done; first < 4 * quarter; first += quarter)
      mapBlock<false>(map, points + n * first, images + n * first, nbInBlock);
  mapBlock<false>(map, points + n * 4 * quarter, images + n * 4 * quarter, nbPoints - 4 * quarter);
}

/// Integers are asked first, as images beyond their range are brought into it; images of reals show it themselves.
template <class Map, class T>
std::size_t mapChecked(const Map& map, const T* points, T* images, std::size_t nbPoints) {
  if constexpr (std::is_integral_v<T>) {
    const std::size_t nbDefined = findUndefined(map, points, nbPoints);
    mapBlock<false>(map, points, images, nbDefined);
    return nbDefined;
  } else {
    if (mapBlock<true>(map, points, images, nbPoints)) return nbPoints;
    return firstNotFinite<s_nbCoordinates<Map>>(images, nbPoints);
  }
}

/// Runs up to this are read once; longer ones gain more from wider registers than from that.
constexpr std::size_t nbAtOnce = 64;

/// Maps a short run of reals in place and looks at the images while they are computed; where one is not finite, the
/// points are put back. Registers of AVX2, as filling wider ones with the map takes longer than mapping such a run.
template <class Map, class T>
bool mapShortOrNot(const Map& map, const PointSpan<T>& run) {
  constexpr std::size_t n = s_nbCoordinates<Map>;
  T saved[n * nbAtOnce];
#if defined(__x86_64__)
  const bool areFinite = __builtin_cpu_supports("avx2")
                             ? Avx2Blocks::mapSaved(map, run.points, saved, run.nbPoints)
                             : PortableBlocks::mapSaved(map, run.points, saved, run.nbPoints);
#else
  const bool areFinite = PortableBlocks::mapSaved(map, run.points, saved, run.nbPoints);
#endif
  if (!areFinite) std::copy(saved, saved + n * run.nbPoints, run.points);
  return areFinite;
}

template <class Map, class T>
PlaceInRuns mapRunsOrNone(const Map& map, const PointSpan<T>* runs, std::size_t nbRuns) {
  if (nbRuns == 1) prefetchBehind(runs[0].points, s_nbCoordinates<Map> * runs[0].nbPoints);
  if constexpr (std::is_floating_point_v<T>)
    if (nbRuns == 1 && runs[0].nbPoints <= nbAtOnce && mapShortOrNot(map, runs[0])) return {nbRuns, 0};
  bool areDefined = hasImagesByType<T>(map);
  if (!areDefined) {
    const MagnitudeWord<T> largest = onThisProcessor(
        [&](auto blocks) { return decltype(blocks)::template largestOfRuns<s_nbCoordinates<Map>>(runs, nbRuns); });
    areDefined = imagesStayFinite<T>(map, magnitudeBound<T>(largest));
  }
  for (std::size_t run = 0; run < nbRuns && !areDefined; ++run) {
    const auto& [points, nbPoints] = runs[run];
    const std::size_t nbDefined =
        nbRuns == 1 ? findUndefinedByImages(map, points, nbPoints) : findUndefined(map, points, nbPoints);
    if (nbDefined != nbPoints) return {run, nbDefined};
  }
  onThisProcessor([&](auto blocks) { decltype(blocks)::mapShort(map, runs, nbRuns); });
  for (std::size_t run = 0; run < nbRuns; ++run)
    if (!isShort(runs[run])) mapQuarters(map, runs[run].points, runs[run].points, runs[run].nbPoints);
  return {nbRuns, 0};
}

#define ORMIX_MATH_INSTANTIATE_RUNS_OF(Map, T)                            \
  template std::size_t findUndefined(const Map&, const T*, std::size_t);  \
  template void mapQuarters(const Map&, const T*, T*, std::size_t);       \
  template std::size_t mapChecked(const Map&, const T*, T*, std::size_t); \
  template PlaceInRuns mapRunsOrNone(const Map&, const PointSpan<T>*, std::size_t);
#define ORMIX_MATH_INSTANTIATE_RUNS(Map)        \
  ORMIX_MATH_INSTANTIATE_RUNS_OF(Map, omInt32)  \
  ORMIX_MATH_INSTANTIATE_RUNS_OF(Map, omUInt32) \
  ORMIX_MATH_INSTANTIATE_RUNS_OF(Map, omReal32) \
  ORMIX_MATH_INSTANTIATE_RUNS_OF(Map, omReal64)
ORMIX_MATH_INSTANTIATE_RUNS(AffineCoefficients2d)
ORMIX_MATH_INSTANTIATE_RUNS(HomographyCoefficients2d)
ORMIX_MATH_INSTANTIATE_RUNS(AffineCoefficients3d)
ORMIX_MATH_INSTANTIATE_RUNS(HomographyCoefficients3d)
#undef ORMIX_MATH_INSTANTIATE_RUNS
#undef ORMIX_MATH_INSTANTIATE_RUNS_OF

}  // namespace ormix::detail
