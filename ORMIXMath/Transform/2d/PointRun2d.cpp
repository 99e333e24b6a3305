#include <ORMIXMath/Transform/2d/PointRun2d.h>
#include <ORMIXMath/Transform/2d/PointRun2dPortable.h>
#if defined(__x86_64__)
#include <ORMIXMath/Transform/2d/PointRun2dAvx2.h>
#include <ORMIXMath/Transform/2d/PointRun2dAvx512.h>
#endif
#include <ORMIXMath/Transform/PointRun.ipp>

#include <cmath>

namespace ormix {
namespace {

using detail::s_finiteProof;

/// A bound on |ax + by + c| for |x|, |y| <= magnitude.
omReal64 rowBound(omReal64 a, omReal64 b, omReal64 c, omReal64 magnitude) {
  return (std::abs(a) + std::abs(b)) * magnitude + std::abs(c);
}

struct PointRun2d {
  static constexpr std::size_t nbCoordinates = 2;

  /// The vectors take what fills them, the portable version the rest. Answers whether all images are finite, if they
  /// are watched.
  template <bool isWatched = false, class Map, class T>
  static bool mapEach(const Map& map, const T* xy, T* images, std::size_t nbPoints) {
    detail::MappedPoints mapped{0, true};
#if defined(__x86_64__)
    // A load and a test: no resolver of the dynamic linker, which sanitizers do not survive.
    if (__builtin_cpu_supports("avx512f"))
      mapped = detail::PointRun2dAvx512::apply<isWatched>(map, xy, images, nbPoints);
    else if (__builtin_cpu_supports("avx2"))
      mapped = detail::PointRun2dAvx2::apply<isWatched>(map, xy, images, nbPoints);
#endif
    const std::size_t nbLeft = nbPoints - mapped.nbPoints;
    if (nbLeft == 0) return mapped.areFinite;
    T* const imagesLeft = images + 2 * mapped.nbPoints;
    detail::PointRun2dPortable::apply(map, xy + 2 * mapped.nbPoints, imagesLeft, nbLeft);
    return mapped.areFinite && (!isWatched || detail::firstNotFinite(imagesLeft, 2 * nbLeft) == 2 * nbLeft);
  }

  template <class T>
  static bool imagesStayFinite(const AffineCoefficients2d& c, omReal64 magnitude) {
    return rowBound(c.xx, c.xy, c.tx, magnitude) < s_finiteProof<T> &&
           rowBound(c.yx, c.yy, c.ty, magnitude) < s_finiteProof<T>;
  }
  template <class T>
  static bool imagesStayFinite(const HomographyCoefficients2d& h, omReal64 magnitude) {
    // The denominator keeps away from zero by much more than its rounding.
    const omReal64 leastDenominator = std::abs(h[8]) - rowBound(h[6], h[7], 0, magnitude);
    if (!(leastDenominator > 1e-6 * std::abs(h[8])) || !std::isnormal(leastDenominator)) return false;
    const omReal64 bound = 0.5 * leastDenominator;
    const omReal64 u = rowBound(h[0], h[1], h[2], magnitude);
    const omReal64 v = rowBound(h[3], h[4], h[5], magnitude);
    return u < s_finiteProof<omReal64> && v < s_finiteProof<omReal64> && u / bound < s_finiteProof<T> &&
           v / bound < s_finiteProof<T>;
  }
};

}  // namespace

template <class T>
std::size_t firstUndefinedImage(const AffineCoefficients2d& map, const T* xy, std::size_t nbPoints) {
  return detail::askRun<PointRun2d>(map, xy, nbPoints);
}
template <class T>
std::size_t firstUndefinedImage(const HomographyCoefficients2d& map, const T* xy, std::size_t nbPoints) {
  return detail::askRun<PointRun2d>(map, xy, nbPoints);
}
template <class T>
void applyToRun(const AffineCoefficients2d& map, T* xy, std::size_t nbPoints) {
  detail::mapQuarters<PointRun2d>(map, xy, xy, nbPoints);
}
template <class T>
void applyToRun(const HomographyCoefficients2d& map, T* xy, std::size_t nbPoints) {
  detail::mapQuarters<PointRun2d>(map, xy, xy, nbPoints);
}
template <class T>
std::size_t mapRun(const AffineCoefficients2d& map, const T* xy, T* images, std::size_t nbPoints) {
  return detail::mapDefined<PointRun2d>(map, xy, images, nbPoints);
}
template <class T>
std::size_t mapRun(const HomographyCoefficients2d& map, const T* xy, T* images, std::size_t nbPoints) {
  return detail::mapDefined<PointRun2d>(map, xy, images, nbPoints);
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
