#include <ORMIXMath/Transform/2d/PointRun2d.h>
#include <ORMIXMath/Transform/2d/PointRun2dPortable.h>
#include <ORMIXMath/Transform/MagnitudeBound.h>
#if defined(__x86_64__)
#include <ORMIXMath/Transform/2d/PointRun2dAvx2.h>
#include <ORMIXMath/Transform/2d/PointRun2dAvx512.h>
#endif

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace ormix {
namespace {

using detail::PointRun2dPortable;

/// The vectors take what fills them, the portable version the rest.
template <class Map, class T>
void mapEach(const Map& map, const T* xy, T* images, std::size_t nbPoints) {
  std::size_t nbMapped = 0;
#if defined(__x86_64__)
  // A load and a test: no resolver of the dynamic linker, which sanitizers do not survive.
  if (__builtin_cpu_supports("avx512f"))
    nbMapped = detail::PointRun2dAvx512::apply(map, xy, images, nbPoints);
  else if (__builtin_cpu_supports("avx2"))
    nbMapped = detail::PointRun2dAvx2::apply(map, xy, images, nbPoints);
#endif
  PointRun2dPortable::apply(map, xy + 2 * nbMapped, images + 2 * nbMapped, nbPoints - nbMapped);
}

/// A bound on |ax + by + c| for |x|, |y| <= magnitude.
omReal64 rowBound(omReal64 a, omReal64 b, omReal64 c, omReal64 magnitude) {
  return (std::abs(a) + std::abs(b)) * magnitude + std::abs(c);
}

/// Whether no image of points of at most this magnitude can leave the finite range of T; false is no proof.
template <class T>
bool imagesStayFinite(const AffineCoefficients2d& c, omReal64 magnitude) {
  return rowBound(c.xx, c.xy, c.tx, magnitude) < detail::s_finiteProof<T> &&
         rowBound(c.yx, c.yy, c.ty, magnitude) < detail::s_finiteProof<T>;
}
template <class T>
bool imagesStayFinite(const HomographyCoefficients2d& h, omReal64 magnitude) {
  // The denominator keeps away from zero by much more than its rounding.
  const omReal64 leastDenominator = std::abs(h[8]) - rowBound(h[6], h[7], 0, magnitude);
  if (!(leastDenominator > 1e-6 * std::abs(h[8])) || !std::isnormal(leastDenominator)) return false;
  const omReal64 bound = 0.5 * leastDenominator;
  const omReal64 u = rowBound(h[0], h[1], h[2], magnitude);
  const omReal64 v = rowBound(h[3], h[4], h[5], magnitude);
  return u < detail::s_finiteProof<omReal64> && v < detail::s_finiteProof<omReal64> &&
         u / bound < detail::s_finiteProof<T> && v / bound < detail::s_finiteProof<T>;
}

/// Index of the first point whose image is not finite, `nbPoints` when all are.
template <class T>
std::size_t firstUndefined(const T* images, std::size_t nbPoints) {
  return detail::firstNotFinite(images, 2 * nbPoints) / 2;
}

/// Maps copies, block by block, and looks at the images. Integers are left in omReal64, where it shows.
template <class Map, class T>
std::size_t findUndefinedImage(const Map& map, const T* xy, std::size_t nbPoints) {
  constexpr std::size_t nbInBlock = 256;
  using Image = std::conditional_t<std::is_integral_v<T>, omReal64, T>;
  Image images[2 * nbInBlock];
  for (std::size_t done = 0; done < nbPoints; done += nbInBlock) {
    const std::size_t count = std::min(nbInBlock, nbPoints - done);
    std::transform(xy + 2 * done, xy + 2 * (done + count), images, [](T value) { return static_cast<Image>(value); });
    mapEach(map, images, images, count);
    const std::size_t undefined = firstUndefined(images, count);
    if (undefined != count) return done + undefined;
  }
  return nbPoints;
}

template <class Map, class T>
std::size_t askRun(const Map& map, const T* xy, std::size_t nbPoints) {
  if constexpr (std::is_integral_v<T>) {
    // Often no need to look: the type bounds them.
    if (imagesStayFinite<T>(map, detail::s_typeMagnitude<T>)) return nbPoints;
  }
  if (imagesStayFinite<T>(map, detail::magnitudeBound(xy, 2 * nbPoints))) return nbPoints;
  return findUndefinedImage(map, xy, nbPoints);
}

/// Integers are asked first, as images beyond their range are brought into it; images of reals show it themselves.
template <class Map, class T>
std::size_t mapDefined(const Map& map, const T* xy, T* images, std::size_t nbPoints) {
  if constexpr (std::is_integral_v<T>) {
    const std::size_t nbDefined = askRun(map, xy, nbPoints);
    mapEach(map, xy, images, nbDefined);
    return nbDefined;
  } else {
    mapEach(map, xy, images, nbPoints);
    return firstUndefined(images, nbPoints);
  }
}

}  // namespace

template <class T>
std::size_t firstUndefinedImage(const AffineCoefficients2d& map, const T* xy, std::size_t nbPoints) {
  return askRun(map, xy, nbPoints);
}
template <class T>
std::size_t firstUndefinedImage(const HomographyCoefficients2d& map, const T* xy, std::size_t nbPoints) {
  return askRun(map, xy, nbPoints);
}
template <class T>
void applyToRun(const AffineCoefficients2d& map, T* xy, std::size_t nbPoints) {
  mapEach(map, xy, xy, nbPoints);
}
template <class T>
void applyToRun(const HomographyCoefficients2d& map, T* xy, std::size_t nbPoints) {
  mapEach(map, xy, xy, nbPoints);
}
template <class T>
std::size_t mapRun(const AffineCoefficients2d& map, const T* xy, T* images, std::size_t nbPoints) {
  return mapDefined(map, xy, images, nbPoints);
}
template <class T>
std::size_t mapRun(const HomographyCoefficients2d& map, const T* xy, T* images, std::size_t nbPoints) {
  return mapDefined(map, xy, images, nbPoints);
}

// clang-format off
template std::size_t firstUndefinedImage(const AffineCoefficients2d&, const omInt32*, std::size_t);
template std::size_t firstUndefinedImage(const AffineCoefficients2d&, const omUInt32*, std::size_t);
template std::size_t firstUndefinedImage(const AffineCoefficients2d&, const omReal32*, std::size_t);
template std::size_t firstUndefinedImage(const AffineCoefficients2d&, const omReal64*, std::size_t);
template std::size_t firstUndefinedImage(const HomographyCoefficients2d&, const omInt32*, std::size_t);
template std::size_t firstUndefinedImage(const HomographyCoefficients2d&, const omUInt32*, std::size_t);
template std::size_t firstUndefinedImage(const HomographyCoefficients2d&, const omReal32*, std::size_t);
template std::size_t firstUndefinedImage(const HomographyCoefficients2d&, const omReal64*, std::size_t);
template void applyToRun(const AffineCoefficients2d&, omInt32*, std::size_t);
template void applyToRun(const AffineCoefficients2d&, omUInt32*, std::size_t);
template void applyToRun(const AffineCoefficients2d&, omReal32*, std::size_t);
template void applyToRun(const AffineCoefficients2d&, omReal64*, std::size_t);
template void applyToRun(const HomographyCoefficients2d&, omInt32*, std::size_t);
template void applyToRun(const HomographyCoefficients2d&, omUInt32*, std::size_t);
template void applyToRun(const HomographyCoefficients2d&, omReal32*, std::size_t);
template void applyToRun(const HomographyCoefficients2d&, omReal64*, std::size_t);
template std::size_t mapRun(const AffineCoefficients2d&, const omInt32*, omInt32*, std::size_t);
template std::size_t mapRun(const AffineCoefficients2d&, const omUInt32*, omUInt32*, std::size_t);
template std::size_t mapRun(const AffineCoefficients2d&, const omReal32*, omReal32*, std::size_t);
template std::size_t mapRun(const AffineCoefficients2d&, const omReal64*, omReal64*, std::size_t);
template std::size_t mapRun(const HomographyCoefficients2d&, const omInt32*, omInt32*, std::size_t);
template std::size_t mapRun(const HomographyCoefficients2d&, const omUInt32*, omUInt32*, std::size_t);
template std::size_t mapRun(const HomographyCoefficients2d&, const omReal32*, omReal32*, std::size_t);
template std::size_t mapRun(const HomographyCoefficients2d&, const omReal64*, omReal64*, std::size_t);
// clang-format on

}  // namespace ormix
