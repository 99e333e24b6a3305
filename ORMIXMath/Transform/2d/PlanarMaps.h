#pragma once

#include <ORMIXMath/Transform/2d/AffineTransform2d.h>
#include <ORMIXMath/Transform/2d/Homography2d.h>
#include <ORMIXMath/Transform/CoordinateVectors.h>
#include <ORMIXMath/Transform/MagnitudeBound.h>

#include <array>
#include <cmath>
#include <utility>

namespace ormix::detail {

template <std::size_t N, std::size_t... I>
[[gnu::always_inline]] inline Reals<N> swapped(const Reals<N>& points, std::index_sequence<I...>) {
  return __builtin_shufflevector(points, points, (I ^ 1)...);
}
/// The points with x and y exchanged.
template <std::size_t N>
[[gnu::always_inline]] inline Reals<N> swapped(const Reals<N>& points) {
  return swapped<N>(points, std::make_index_sequence<N>());
}

/// x and y in turn: both rows at once, as the factors of a coordinate itself and of the other one.
template <std::size_t N>
class VectorMap<AffineCoefficients2d, N> {
 public:
  static constexpr std::size_t s_nbVectors = 1;

  [[gnu::always_inline]] inline explicit VectorMap(const AffineCoefficients2d& c)
      : _same(alternating<N>(c.xx, c.yy)), _other(alternating<N>(c.xy, c.yx)), _shift(alternating<N>(c.tx, c.ty)) {}
  [[gnu::always_inline]] inline void apply(Reals<N>* points) const {
    *points = _same * *points + _other * swapped<N>(*points) + _shift;
  }

 private:
  Reals<N> _same;
  Reals<N> _other;
  Reals<N> _shift;
};

template <std::size_t N>
class VectorMap<HomographyCoefficients2d, N> {
 public:
  static constexpr std::size_t s_nbVectors = 1;

  [[gnu::always_inline]] inline explicit VectorMap(const HomographyCoefficients2d& h)
      : _numerators({h[0], h[1], h[2], h[3], h[4], h[5]}),
        _factors(alternating<N>(h[6], h[7])),
        _shift(alternating<N>(h[8], h[8])) {}
  [[gnu::always_inline]] inline void apply(Reals<N>* points) const {
    const Reals<N> products = _factors * *points;
    const Reals<N> denominators = products + swapped<N>(products) + _shift;
    _numerators.apply(points);
    // Dividing by zero is meant: the search for undefined images looks for what it gives.
    *points /= denominators;
  }

 private:
  VectorMap<AffineCoefficients2d, N> _numerators;
  Reals<N> _factors;
  Reals<N> _shift;
};

/// \name The image of one point in omReal64.
/// @{
[[gnu::always_inline]] inline void mapPoint(const AffineCoefficients2d& c, omReal64* point) {
  const auto [x, y] = std::array<omReal64, 2>{point[0], point[1]};
  point[0] = c.xx * x + c.xy * y + c.tx;
  point[1] = c.yx * x + c.yy * y + c.ty;
}
[[gnu::always_inline]] inline void mapPoint(const HomographyCoefficients2d& h, omReal64* point) {
  const auto [x, y] = std::array<omReal64, 2>{point[0], point[1]};
  const omReal64 w = h[6] * x + h[7] * y + h[8];
  point[0] = (h[0] * x + h[1] * y + h[2]) / w;
  point[1] = (h[3] * x + h[4] * y + h[5]) / w;
}
/// @}

/// A bound on |ax + by + c| for |x|, |y| <= magnitude.
inline omReal64 rowBound(omReal64 a, omReal64 b, omReal64 c, omReal64 magnitude) {
  return (std::abs(a) + std::abs(b)) * magnitude + std::abs(c);
}

/// Whether no image of points of at most this magnitude can leave the finite range of T; false is no proof.
template <class T>
bool imagesStayFinite(const AffineCoefficients2d& c, omReal64 magnitude) {
  return rowBound(c.xx, c.xy, c.tx, magnitude) < s_finiteProof<T> &&
         rowBound(c.yx, c.yy, c.ty, magnitude) < s_finiteProof<T>;
}
template <class T>
bool imagesStayFinite(const HomographyCoefficients2d& h, omReal64 magnitude) {
  return quotientsStayFinite<T>({rowBound(h[0], h[1], h[2], magnitude), rowBound(h[3], h[4], h[5], magnitude)},
                                rowBound(h[6], h[7], 0, magnitude), h[8]);
}

}  // namespace ormix::detail
