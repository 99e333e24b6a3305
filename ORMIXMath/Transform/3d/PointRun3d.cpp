#include <ORMIXMath/Transform/3d/PointRun3d.h>
#include <ORMIXMath/Transform/3d/PointRun3dPortable.h>
#include <ORMIXMath/Transform/MagnitudeBound.h>
#if defined(__x86_64__)
#include <ORMIXMath/Transform/3d/PointRun3dAvx2.h>
#include <ORMIXMath/Transform/3d/PointRun3dAvx512.h>
#endif

#include <algorithm>
#include <cmath>

namespace ormix {
namespace {

using detail::magnitudeBound;
using detail::PointRun3dPortable;
using detail::s_finiteProof;

/// The vectors take what fills them, the portable version the rest.
template <class Map, class T, class TOut>
void mapEach(const Map& map, const T* xyz, TOut* out, std::size_t nbPoints) {
  std::size_t nbMapped = 0;
#if defined(__x86_64__)
  // A load and a test: no resolver of the dynamic linker, which sanitizers do not survive.
  if (__builtin_cpu_supports("avx512f"))
    nbMapped = detail::PointRun3dAvx512::apply(map, xyz, out, nbPoints);
  else if (__builtin_cpu_supports("avx2"))
    nbMapped = detail::PointRun3dAvx2::apply(map, xyz, out, nbPoints);
#endif
  PointRun3dPortable::apply(map, xyz + 3 * nbMapped, out + 3 * nbMapped, nbPoints - nbMapped);
}

/// A bound on |ax + by + cz + d| for |x|, |y|, |z| <= magnitude.
omReal64 rowBound(omReal64 a, omReal64 b, omReal64 c, omReal64 d, omReal64 magnitude) {
  return (std::abs(a) + std::abs(b) + std::abs(c)) * magnitude + std::abs(d);
}

/// Whether no image of points of at most this magnitude can leave the finite range of T; false is no proof.
template <class T>
bool imagesStayFinite(const AffineCoefficients3d& c, omReal64 magnitude) {
  return rowBound(c.xx, c.xy, c.xz, c.tx, magnitude) < s_finiteProof<T> &&
         rowBound(c.yx, c.yy, c.yz, c.ty, magnitude) < s_finiteProof<T> &&
         rowBound(c.zx, c.zy, c.zz, c.tz, magnitude) < s_finiteProof<T>;
}
template <class T>
bool imagesStayFinite(const HomographyCoefficients3d& h, omReal64 magnitude) {
  // The denominator keeps away from zero by much more than its rounding.
  const omReal64 leastDenominator = std::abs(h[15]) - rowBound(h[12], h[13], h[14], 0, magnitude);
  if (!(leastDenominator > 1e-6 * std::abs(h[15])) || !std::isnormal(leastDenominator)) return false;
  const auto staysFinite = [&](std::size_t first) {
    const omReal64 numerator = rowBound(h[first], h[first + 1], h[first + 2], h[first + 3], magnitude);
    return numerator < s_finiteProof<omReal64> && numerator / (0.5 * leastDenominator) < s_finiteProof<T>;
  };
  return staysFinite(0) && staysFinite(4) && staysFinite(8);
}

/// Computes the images, block by block, and looks at them. Those of integers are left in omReal64, where it shows.
template <class Map, class T>
std::size_t findUndefinedImage(const Map& map, const T* xyz, std::size_t nbPoints) {
  constexpr std::size_t nbInBlock = 256;
  using Image = std::conditional_t<std::is_integral_v<T>, omReal64, T>;
  Image images[3 * nbInBlock];
  for (std::size_t done = 0; done < nbPoints; done += nbInBlock) {
    const std::size_t count = std::min(nbInBlock, nbPoints - done);
    mapEach(map, xyz + 3 * done, images, count);
    const std::size_t undefined = detail::firstNotFinite(images, 3 * count);
    if (undefined != 3 * count) return done + undefined / 3;
  }
  return nbPoints;
}

template <class Map, class T>
std::size_t askRun(const Map& map, const T* xyz, std::size_t nbPoints) {
  if constexpr (std::is_integral_v<T>) {
    // Often no need to look: the type bounds them.
    if (imagesStayFinite<T>(map, detail::s_typeMagnitude<T>)) return nbPoints;
  }
  if (imagesStayFinite<T>(map, magnitudeBound(xyz, 3 * nbPoints))) return nbPoints;
  return findUndefinedImage(map, xyz, nbPoints);
}

/// Integers are asked first, as images beyond their range are brought into it; images of reals show it themselves.
template <class Map, class T>
std::size_t mapDefined(const Map& map, const T* xyz, T* images, std::size_t nbPoints) {
  if constexpr (std::is_integral_v<T>) {
    const std::size_t nbDefined = askRun(map, xyz, nbPoints);
    mapEach(map, xyz, images, nbDefined);
    return nbDefined;
  } else {
    mapEach(map, xyz, images, nbPoints);
    return detail::firstNotFinite(images, 3 * nbPoints) / 3;
  }
}

}  // namespace

template <class T>
std::size_t firstUndefinedImage(const AffineCoefficients3d& map, const T* xyz, std::size_t nbPoints) {
  return askRun(map, xyz, nbPoints);
}
template <class T>
std::size_t firstUndefinedImage(const HomographyCoefficients3d& map, const T* xyz, std::size_t nbPoints) {
  return askRun(map, xyz, nbPoints);
}
template <class T>
void applyToRun(const AffineCoefficients3d& map, const T* xyz, T* out, std::size_t nbPoints) {
  mapEach(map, xyz, out, nbPoints);
}
template <class T>
void applyToRun(const HomographyCoefficients3d& map, const T* xyz, T* out, std::size_t nbPoints) {
  mapEach(map, xyz, out, nbPoints);
}
template <class T>
std::size_t mapRun(const AffineCoefficients3d& map, const T* xyz, T* images, std::size_t nbPoints) {
  return mapDefined(map, xyz, images, nbPoints);
}
template <class T>
std::size_t mapRun(const HomographyCoefficients3d& map, const T* xyz, T* images, std::size_t nbPoints) {
  return mapDefined(map, xyz, images, nbPoints);
}

// clang-format off
template std::size_t firstUndefinedImage(const AffineCoefficients3d&, const omInt32*, std::size_t);
template std::size_t firstUndefinedImage(const AffineCoefficients3d&, const omUInt32*, std::size_t);
template std::size_t firstUndefinedImage(const AffineCoefficients3d&, const omReal32*, std::size_t);
template std::size_t firstUndefinedImage(const AffineCoefficients3d&, const omReal64*, std::size_t);
template std::size_t firstUndefinedImage(const HomographyCoefficients3d&, const omInt32*, std::size_t);
template std::size_t firstUndefinedImage(const HomographyCoefficients3d&, const omUInt32*, std::size_t);
template std::size_t firstUndefinedImage(const HomographyCoefficients3d&, const omReal32*, std::size_t);
template std::size_t firstUndefinedImage(const HomographyCoefficients3d&, const omReal64*, std::size_t);
template void applyToRun(const AffineCoefficients3d&, const omInt32*, omInt32*, std::size_t);
template void applyToRun(const AffineCoefficients3d&, const omUInt32*, omUInt32*, std::size_t);
template void applyToRun(const AffineCoefficients3d&, const omReal32*, omReal32*, std::size_t);
template void applyToRun(const AffineCoefficients3d&, const omReal64*, omReal64*, std::size_t);
template void applyToRun(const HomographyCoefficients3d&, const omInt32*, omInt32*, std::size_t);
template void applyToRun(const HomographyCoefficients3d&, const omUInt32*, omUInt32*, std::size_t);
template void applyToRun(const HomographyCoefficients3d&, const omReal32*, omReal32*, std::size_t);
template void applyToRun(const HomographyCoefficients3d&, const omReal64*, omReal64*, std::size_t);
template std::size_t mapRun(const AffineCoefficients3d&, const omInt32*, omInt32*, std::size_t);
template std::size_t mapRun(const AffineCoefficients3d&, const omUInt32*, omUInt32*, std::size_t);
template std::size_t mapRun(const AffineCoefficients3d&, const omReal32*, omReal32*, std::size_t);
template std::size_t mapRun(const AffineCoefficients3d&, const omReal64*, omReal64*, std::size_t);
template std::size_t mapRun(const HomographyCoefficients3d&, const omInt32*, omInt32*, std::size_t);
template std::size_t mapRun(const HomographyCoefficients3d&, const omUInt32*, omUInt32*, std::size_t);
template std::size_t mapRun(const HomographyCoefficients3d&, const omReal32*, omReal32*, std::size_t);
template std::size_t mapRun(const HomographyCoefficients3d&, const omReal64*, omReal64*, std::size_t);
// clang-format on

}  // namespace ormix
