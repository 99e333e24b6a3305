#include <ORMIXMath/Transform/3d/PointRun3d.h>
#include <ORMIXMath/Transform/3d/PointRun3dPortable.h>
#if defined(__x86_64__)
#include <ORMIXMath/Transform/3d/PointRun3dAvx2.h>
#include <ORMIXMath/Transform/3d/PointRun3dAvx512.h>
#endif
#include <ORMIXMath/Transform/PointRun.ipp>

#include <cmath>

namespace ormix {
namespace {

using detail::s_finiteProof;

/// A bound on |ax + by + cz + d| for |x|, |y|, |z| <= magnitude.
omReal64 rowBound(omReal64 a, omReal64 b, omReal64 c, omReal64 d, omReal64 magnitude) {
  return (std::abs(a) + std::abs(b) + std::abs(c)) * magnitude + std::abs(d);
}

struct PointRun3d {
  static constexpr std::size_t nbCoordinates = 3;

  /// The vectors take what fills them, the portable version the rest. Answers whether all images are finite, if they
  /// are watched.
  template <bool isWatched = false, class Map, class T>
  static bool mapEach(const Map& map, const T* xyz, T* images, std::size_t nbPoints) {
    detail::MappedPoints mapped{0, true};
#if defined(__x86_64__)
    // A load and a test: no resolver of the dynamic linker, which sanitizers do not survive.
    if (__builtin_cpu_supports("avx512vl"))
      mapped = detail::PointRun3dAvx512::apply<isWatched>(map, xyz, images, nbPoints);
    else if (__builtin_cpu_supports("avx2"))
      mapped = detail::PointRun3dAvx2::apply<isWatched>(map, xyz, images, nbPoints);
#endif
    const std::size_t nbLeft = nbPoints - mapped.nbPoints;
    if (nbLeft == 0) return mapped.areFinite;
    T* const imagesLeft = images + 3 * mapped.nbPoints;
    detail::PointRun3dPortable::apply(map, xyz + 3 * mapped.nbPoints, imagesLeft, nbLeft);
    return mapped.areFinite && (!isWatched || detail::firstNotFinite(imagesLeft, 3 * nbLeft) == 3 * nbLeft);
  }

  template <class T>
  static bool imagesStayFinite(const AffineCoefficients3d& c, omReal64 magnitude) {
    return rowBound(c.xx, c.xy, c.xz, c.tx, magnitude) < s_finiteProof<T> &&
           rowBound(c.yx, c.yy, c.yz, c.ty, magnitude) < s_finiteProof<T> &&
           rowBound(c.zx, c.zy, c.zz, c.tz, magnitude) < s_finiteProof<T>;
  }
  template <class T>
  static bool imagesStayFinite(const HomographyCoefficients3d& h, omReal64 magnitude) {
    // The denominator keeps away from zero by much more than its rounding.
    const omReal64 leastDenominator = std::abs(h[15]) - rowBound(h[12], h[13], h[14], 0, magnitude);
    if (!(leastDenominator > 1e-6 * std::abs(h[15])) || !std::isnormal(leastDenominator)) return false;
    const auto staysFinite = [&](std::size_t first) {
      const omReal64 numerator = rowBound(h[first], h[first + 1], h[first + 2], h[first + 3], magnitude);
      return numerator < s_finiteProof<omReal64> && numerator / (0.5 * leastDenominator) < s_finiteProof<T>;
    };
    return staysFinite(0) && staysFinite(4) && staysFinite(8);
  }
};

}  // namespace

template <class T>
std::size_t firstUndefinedImage(const AffineCoefficients3d& map, const T* xyz, std::size_t nbPoints) {
  return detail::askRun<PointRun3d>(map, xyz, nbPoints);
}
template <class T>
std::size_t firstUndefinedImage(const HomographyCoefficients3d& map, const T* xyz, std::size_t nbPoints) {
  return detail::askRun<PointRun3d>(map, xyz, nbPoints);
}
template <class T>
void applyToRun(const AffineCoefficients3d& map, const T* xyz, T* out, std::size_t nbPoints) {
  detail::mapQuarters<PointRun3d>(map, xyz, out, nbPoints);
}
template <class T>
void applyToRun(const HomographyCoefficients3d& map, const T* xyz, T* out, std::size_t nbPoints) {
  detail::mapQuarters<PointRun3d>(map, xyz, out, nbPoints);
}
template <class T>
std::size_t mapRun(const AffineCoefficients3d& map, const T* xyz, T* images, std::size_t nbPoints) {
  return detail::mapDefined<PointRun3d>(map, xyz, images, nbPoints);
}
template <class T>
std::size_t mapRun(const HomographyCoefficients3d& map, const T* xyz, T* images, std::size_t nbPoints) {
  return detail::mapDefined<PointRun3d>(map, xyz, images, nbPoints);
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
