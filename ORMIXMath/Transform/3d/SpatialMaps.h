#pragma once

#include <ORMIXMath/Transform/3d/AffineTransform3d.h>
#include <ORMIXMath/Transform/3d/Homography3d.h>
#include <ORMIXMath/Transform/CoordinateVectors.h>
#include <ORMIXMath/Transform/MagnitudeBound.h>

#include <array>
#include <cmath>
#include <utility>

namespace ormix::detail {

/// What lies in the first two of three vectors, then that and what lies in the third: every third value from number D
/// on.
template <std::size_t D, class Values, std::size_t... I>
[[gnu::always_inline]] inline Values everyThird(const Values* v, std::index_sequence<I...>) {
  constexpr std::size_t N = sizeof...(I);
  const Values ofTwo = __builtin_shufflevector(v[0], v[1], (3 * I + D < 2 * N ? 3 * I + D : I)...);
  return __builtin_shufflevector(ofTwo, v[2], (3 * I + D < 2 * N ? I : 3 * I + D - N)...);
}
/// The N values from number `First` on of x, y and z in turn: x and y first, then those and z.
template <std::size_t First, class Values, std::size_t... I>
[[gnu::always_inline]] inline Values inTurn(const Values* v, std::index_sequence<I...>) {
  constexpr std::size_t N = sizeof...(I);
  const Values xy = __builtin_shufflevector(v[0], v[1], ((First + I) / 3 + ((First + I) % 3 == 1 ? N : 0))...);
  return __builtin_shufflevector(xy, v[2], ((First + I) % 3 == 2 ? N + (First + I) / 3 : I)...);
}

/// Brings N points from three vectors with x, y and z in turn to one vector a coordinate.
template <std::size_t N, class Values>
[[gnu::always_inline]] inline void separateCoordinates(Values* v) {
  if constexpr (N == 4) {  // In steps that are an instruction of AVX2 each.
    const Values xy = __builtin_shufflevector(v[0], v[1], 0, 1, 6, 7);  // x0 y0 x2 y2
    const Values zx = __builtin_shufflevector(v[0], v[2], 2, 3, 4, 5);  // z0 x1 z2 x3
    const Values yz = __builtin_shufflevector(v[1], v[2], 0, 1, 6, 7);  // y1 z1 y3 z3
    v[0] = __builtin_shufflevector(xy, zx, 0, 5, 2, 7);
    v[1] = __builtin_shufflevector(xy, yz, 1, 4, 3, 6);
    v[2] = __builtin_shufflevector(zx, yz, 0, 5, 2, 7);
  } else {
    constexpr auto lanes = std::make_index_sequence<N>();
    const Values x = everyThird<0>(v, lanes);
    const Values y = everyThird<1>(v, lanes);
    v[2] = everyThird<2>(v, lanes);
    v[0] = x;
    v[1] = y;
  }
}
/// The reverse.
template <std::size_t N, class Values>
[[gnu::always_inline]] inline void joinCoordinates(Values* v) {
  if constexpr (N == 4) {
    const Values xy = __builtin_shufflevector(v[0], v[1], 0, 4, 2, 6);
    const Values zx = __builtin_shufflevector(v[2], v[0], 0, 5, 2, 7);
    const Values yz = __builtin_shufflevector(v[1], v[2], 1, 5, 3, 7);
    v[0] = __builtin_shufflevector(xy, zx, 0, 1, 4, 5);
    v[1] = __builtin_shufflevector(yz, xy, 0, 1, 6, 7);
    v[2] = __builtin_shufflevector(zx, yz, 2, 3, 6, 7);
  } else {
    constexpr auto lanes = std::make_index_sequence<N>();
    const Values first = inTurn<0>(v, lanes);
    const Values second = inTurn<N>(v, lanes);
    v[2] = inTurn<2 * N>(v, lanes);
    v[0] = first;
    v[1] = second;
  }
}

/// A row of a map of space in all lanes.
template <std::size_t N>
struct SpatialRow {
  [[gnu::always_inline]] inline SpatialRow(omReal64 x, omReal64 y, omReal64 z, omReal64 shift)
      : ofX(alternating<N>(x, x)),
        ofY(alternating<N>(y, y)),
        ofZ(alternating<N>(z, z)),
        ofOne(alternating<N>(shift, shift)) {}
  [[gnu::always_inline]] inline Reals<N> operator()(const Reals<N>* points) const {
    return ofX * points[0] + ofY * points[1] + ofZ * points[2] + ofOne;
  }

  Reals<N> ofX;
  Reals<N> ofY;
  Reals<N> ofZ;
  Reals<N> ofOne;
};

/// A vector a coordinate.
template <std::size_t N>
class VectorMap<AffineCoefficients3d, N> {
 public:
  static constexpr std::size_t s_nbVectors = 3;

  [[gnu::always_inline]] inline explicit VectorMap(const AffineCoefficients3d& c)
      : _x(c.xx, c.xy, c.xz, c.tx), _y(c.yx, c.yy, c.yz, c.ty), _z(c.zx, c.zy, c.zz, c.tz) {}
  [[gnu::always_inline]] inline void apply(Reals<N>* vectors) const {
    const Reals<N> x = _x(vectors);
    const Reals<N> y = _y(vectors);
    vectors[2] = _z(vectors);
    vectors[0] = x;
    vectors[1] = y;
  }

 private:
  SpatialRow<N> _x;
  SpatialRow<N> _y;
  SpatialRow<N> _z;
};

template <std::size_t N>
class VectorMap<HomographyCoefficients3d, N> {
 public:
  static constexpr std::size_t s_nbVectors = 3;

  [[gnu::always_inline]] inline explicit VectorMap(const HomographyCoefficients3d& h)
      : _numerators({h[0], h[1], h[2], h[3], h[4], h[5], h[6], h[7], h[8], h[9], h[10], h[11]}),
        _denominator(h[12], h[13], h[14], h[15]) {}
  [[gnu::always_inline]] inline void apply(Reals<N>* vectors) const {
    // Dividing by zero is meant: the search for undefined images looks for what it gives.
    const Reals<N> denominators = _denominator(vectors);
    _numerators.apply(vectors);
    for (std::size_t v = 0; v < s_nbVectors; ++v) vectors[v] /= denominators;
  }

 private:
  VectorMap<AffineCoefficients3d, N> _numerators;
  SpatialRow<N> _denominator;
};

/// \name The image of one point in omReal64.
/// @{
[[gnu::always_inline]] inline void mapPoint(const AffineCoefficients3d& c, omReal64* point) {
  const auto [x, y, z] = std::array<omReal64, 3>{point[0], point[1], point[2]};
  point[0] = c.xx * x + c.xy * y + c.xz * z + c.tx;
  point[1] = c.yx * x + c.yy * y + c.yz * z + c.ty;
  point[2] = c.zx * x + c.zy * y + c.zz * z + c.tz;
}
[[gnu::always_inline]] inline void mapPoint(const HomographyCoefficients3d& h, omReal64* point) {
  const auto [x, y, z] = std::array<omReal64, 3>{point[0], point[1], point[2]};
  const omReal64 w = h[12] * x + h[13] * y + h[14] * z + h[15];
  point[0] = (h[0] * x + h[1] * y + h[2] * z + h[3]) / w;
  point[1] = (h[4] * x + h[5] * y + h[6] * z + h[7]) / w;
  point[2] = (h[8] * x + h[9] * y + h[10] * z + h[11]) / w;
}
/// @}

/// A bound on |ax + by + cz + d| for |x|, |y|, |z| <= magnitude.
inline omReal64 rowBound(omReal64 a, omReal64 b, omReal64 c, omReal64 d, omReal64 magnitude) {
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
  return quotientsStayFinite<T>(
      {rowBound(h[0], h[1], h[2], h[3], magnitude), rowBound(h[4], h[5], h[6], h[7], magnitude),
       rowBound(h[8], h[9], h[10], h[11], magnitude)},
      rowBound(h[12], h[13], h[14], 0, magnitude), h[15]);
}

}  // namespace ormix::detail
