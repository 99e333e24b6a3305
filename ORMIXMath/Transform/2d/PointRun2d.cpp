#include <ORMIXMath/Transform/2d/PointRun2d.h>
#include <ORMIXMath/Transform/2d/PointRun2dPortable.h>
#if defined(__x86_64__)
#include <ORMIXMath/Transform/2d/PointRun2dAvx2.h>
#include <ORMIXMath/Transform/2d/PointRun2dAvx512.h>
#endif

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

namespace ormix {
namespace {

using detail::PointRun2dPortable;
template <class T>
using Limits = std::numeric_limits<T>;

/// The vectors take what fills them, the portable version the rest.
template <class Map, class T>
void mapRun(const Map& map, T* xy, std::size_t nbPoints) {
  std::size_t nbMapped = 0;
#if defined(__x86_64__)
  // A load and a test: no resolver of the dynamic linker, which sanitizers do not survive.
  if (__builtin_cpu_supports("avx512f"))
    nbMapped = detail::PointRun2dAvx512::apply(map, xy, nbPoints);
  else if (__builtin_cpu_supports("avx2"))
    nbMapped = detail::PointRun2dAvx2::apply(map, xy, nbPoints);
#endif
  PointRun2dPortable::apply(map, xy + 2 * nbMapped, nbPoints - nbMapped);
}

/// A bound on the magnitudes that have this word, infinite when they are not finite.
template <class T>
omReal64 magnitudeOf(omUInt32 word) {
  if constexpr (std::is_integral_v<T>) {
    return static_cast<omReal64>(word);
  } else {
    using Bits = std::conditional_t<sizeof(T) == 4, omUInt32, omUInt64>;
    const Bits bits = sizeof(T) == 4 ? Bits{word} : static_cast<Bits>((omUInt64{word} << 32) | 0xFFFFFFFFu);
    T magnitude;
    std::memcpy(&magnitude, &bits, sizeof bits);
    return magnitude <= Limits<T>::max() ? static_cast<omReal64>(magnitude) : Limits<omReal64>::infinity();
  }
}

/// No value is larger in magnitude, nor NaN when it is finite. At most a millionth too large.
template <class T>
omReal64 magnitudeBound(const T* values, std::size_t nbValues) {
  omUInt32 largest = 0;
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx512f"))
    nbValues = detail::PointRun2dAvx512::raise(values, nbValues, largest);
  else if (__builtin_cpu_supports("avx2"))
    nbValues = detail::PointRun2dAvx2::raise(values, nbValues, largest);
#endif
  return magnitudeOf<T>(std::max(largest, PointRun2dPortable::largestWord(values, nbValues)));
}

/// Bounds below this prove that images are finite in T; half the range leaves room for rounding in the bound itself.
template <class T>
constexpr omReal64 s_proof =
    0.5 * static_cast<omReal64>(Limits<std::conditional_t<std::is_integral_v<T>, omReal64, T>>::max());

/// A bound on |ax + by + c| for |x|, |y| <= magnitude.
omReal64 rowBound(omReal64 a, omReal64 b, omReal64 c, omReal64 magnitude) {
  return (std::abs(a) + std::abs(b)) * magnitude + std::abs(c);
}

/// Whether no image of points of at most this magnitude can leave the finite range of T; false is no proof.
template <class T>
bool imagesStayFinite(const AffineCoefficients2d& c, omReal64 magnitude) {
  return rowBound(c.xx, c.xy, c.tx, magnitude) < s_proof<T> && rowBound(c.yx, c.yy, c.ty, magnitude) < s_proof<T>;
}
template <class T>
bool imagesStayFinite(const HomographyCoefficients2d& h, omReal64 magnitude) {
  // The denominator keeps away from zero by much more than its rounding.
  const omReal64 leastDenominator = std::abs(h[8]) - rowBound(h[6], h[7], 0, magnitude);
  if (!(leastDenominator > 1e-6 * std::abs(h[8])) || !std::isnormal(leastDenominator)) return false;
  const omReal64 bound = 0.5 * leastDenominator;
  const omReal64 u = rowBound(h[0], h[1], h[2], magnitude);
  const omReal64 v = rowBound(h[3], h[4], h[5], magnitude);
  return u < s_proof<omReal64> && v < s_proof<omReal64> && u / bound < s_proof<T> && v / bound < s_proof<T>;
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
    mapRun(map, images, count);
    if (std::isfinite(magnitudeBound(images, 2 * count))) continue;
    const Image* const undefined =
        std::find_if(images, images + 2 * count, [](Image value) { return !std::isfinite(value); });
    return done + static_cast<std::size_t>(undefined - images) / 2;
  }
  return nbPoints;
}

template <class Map, class T>
std::size_t askRun(const Map& map, const T* xy, std::size_t nbPoints) {
  if constexpr (std::is_integral_v<T>) {
    // Often no need to look: the type bounds them.
    constexpr omReal64 magnitude = 1 + static_cast<omReal64>(Limits<T>::max());
    if (imagesStayFinite<T>(map, magnitude)) return nbPoints;
  }
  if (imagesStayFinite<T>(map, magnitudeBound(xy, 2 * nbPoints))) return nbPoints;
  return findUndefinedImage(map, xy, nbPoints);
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
  mapRun(map, xy, nbPoints);
}
template <class T>
void applyToRun(const HomographyCoefficients2d& map, T* xy, std::size_t nbPoints) {
  mapRun(map, xy, nbPoints);
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
// clang-format on

}  // namespace ormix
