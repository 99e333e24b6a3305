#pragma once

#include <ORMIXMath/Scalar/DifferenceOfProducts.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cmath>
#include <cstddef>

/// \file
/// Square matrices of few columns, most of them upper triangles as TallQr makes them: solutions and singular vectors
/// without a decomposition, where bounds show that these are as exact as those of one; not installed.

namespace ormix::detail {

/// A vector of few values.
template <std::size_t N>
using SmallVector = std::array<omReal64, N>;

/// A square matrix, row-major. Of an upper triangle the values below the diagonal are 0.
template <std::size_t N>
struct SmallMatrix {
  static constexpr std::size_t size = N;  ///< Rows, and columns.

  std::array<omReal64, N * N> values{};  ///< Row by row.

  omReal64& operator()(std::size_t row, std::size_t column) { return values[N * row + column]; }
  omReal64 operator()(std::size_t row, std::size_t column) const { return values[N * row + column]; }
};

/// The part of M columns that begins at a place of the diagonal.
template <std::size_t M, std::size_t N>
SmallMatrix<M> partOf(const SmallMatrix<N>& a, std::size_t first) {
  SmallMatrix<M> part;
  for (std::size_t i = 0; i < M; ++i)
    for (std::size_t j = 0; j < M; ++j) part(i, j) = a(first + i, first + j);
  return part;
}

/// a x.
template <std::size_t N>
SmallVector<N> product(const SmallMatrix<N>& a, const SmallVector<N>& x) {
  SmallVector<N> result{};
  for (std::size_t i = 0; i < N; ++i)
    for (std::size_t j = 0; j < N; ++j) result[i] += a(i, j) * x[j];
  return result;
}

/// x a, the product with the transposed matrix.
template <std::size_t N>
SmallVector<N> product(const SmallVector<N>& x, const SmallMatrix<N>& a) {
  SmallVector<N> result{};
  for (std::size_t i = 0; i < N; ++i)
    for (std::size_t j = 0; j < N; ++j) result[j] += a(i, j) * x[i];
  return result;
}

/// a b.
template <std::size_t N>
SmallMatrix<N> product(const SmallMatrix<N>& a, const SmallMatrix<N>& b) {
  SmallMatrix<N> result;
  for (std::size_t i = 0; i < N; ++i)
    for (std::size_t k = 0; k < N; ++k)
      for (std::size_t j = 0; j < N; ++j) result(i, j) += a(i, k) * b(k, j);
  return result;
}

/// Euclidean length.
template <std::size_t N>
omReal64 lengthOf(const SmallVector<N>& x) {
  omReal64 square = 0;
  for (const omReal64 value : x) square += value * value;
  return std::sqrt(square);
}

/// The sum of the squares of a triangle's values, which is that of its singular values.
template <std::size_t N>
omReal64 sumOfSquares(const SmallMatrix<N>& triangle) {
  omReal64 sum = 0;
  for (std::size_t i = 0; i < N; ++i)
    for (std::size_t j = i; j < N; ++j) sum += triangle(i, j) * triangle(i, j);
  return sum;
}

/// The inverse of an upper triangle, also one; not finite where a value of the diagonal is 0.
template <std::size_t N>
SmallMatrix<N> inverseOf(const SmallMatrix<N>& triangle) {
  SmallMatrix<N> inverse;
  for (std::size_t i = 0; i < N; ++i) inverse(i, i) = 1 / triangle(i, i);
  for (std::size_t j = 1; j < N; ++j)
    for (std::size_t i = j; i-- > 0;) {
      omReal64 sum = 0;
      for (std::size_t k = i + 1; k <= j; ++k) sum += triangle(i, k) * inverse(k, j);
      inverse(i, j) = -sum * inverse(i, i);
    }
  return inverse;
}

/// The sum of the values of the inverse of the triangle with the same magnitudes whose values beside the diagonal are
/// negative. No sum of magnitudes of the inverse of `triangle` itself is greater (Higham2002, chapter 8), and one
/// substitution gives it. Not finite where a value of the diagonal is 0.
template <std::size_t N>
omReal64 boundOfInverse(const SmallMatrix<N>& triangle) {
  SmallVector<N> inverses, sums;
  for (std::size_t i = 0; i < N; ++i) inverses[i] = 1 / std::abs(triangle(i, i));
  omReal64 bound = 0;
  for (std::size_t i = N; i-- > 0;) {
    sums[i] = 1;
    for (std::size_t k = N; --k > i;) sums[i] += std::abs(triangle(i, k)) * sums[k];
    sums[i] *= inverses[i];
    bound += sums[i];
  }
  return bound;
}

/// Whether each singular value of an upper triangle surely exceeds the given part of the largest one, also as it would
/// be computed: the sums of squares of the triangle and of its inverse bound the ratio. Where false, including NaN, the
/// singular values have to be computed, which takes far longer.
template <std::size_t N>
bool isSurelyRegular(const SmallMatrix<N>& triangle, omReal64 part) {
  // Beyond what rounding changes in the bounds and in computed singular values.
  constexpr omReal64 margin = 4;
  const omReal64 limit = margin * part;
  const omReal64 squares = limit * limit * sumOfSquares(triangle);
  // Mostly a coarse bound does; where rounding might make it less than the other one, that is asked.
  const omReal64 bound = boundOfInverse(triangle);
  if (0.5 > squares * (bound * bound)) return true;
  return 1 > limit * limit * sumOfSquares(triangle) * sumOfSquares(inverseOf(triangle));
}

/// The x with triangle · x = b, by substitution, which is exact for a triangle whose values each differ by few
/// roundings (Higham2002, chapter 8). No value of the diagonal may be 0.
template <std::size_t N>
SmallVector<N> solve(const SmallMatrix<N>& triangle, const SmallVector<N>& b) {
  SmallVector<N> x = b;
  for (std::size_t i = N; i-- > 0;) {
    for (std::size_t k = N; --k > i;) x[i] -= triangle(i, k) * x[k];
    x[i] /= triangle(i, i);
  }
  return x;
}

/// The adjugate of an upper triangle, which is its inverse times its determinant. Each value is right to a few
/// roundings, also where the triangle has no inverse.
inline SmallMatrix<3> adjugateOf(const SmallMatrix<3>& t) {
  SmallMatrix<3> adjugate;
  adjugate(0, 0) = t(1, 1) * t(2, 2);
  adjugate(0, 1) = -t(0, 1) * t(2, 2);
  adjugate(0, 2) = differenceOfProducts(t(0, 1), t(1, 2), t(0, 2), t(1, 1));
  adjugate(1, 1) = t(0, 0) * t(2, 2);
  adjugate(1, 2) = -t(0, 0) * t(1, 2);
  adjugate(2, 2) = t(0, 0) * t(1, 1);
  return adjugate;
}

/// The left singular vector of the largest singular value of a matrix, of length 1; false, and nothing changed, where
/// the second singular value is more than seven tenths of the largest one, and for what is zero or not finite.
///
/// The product with the transposed matrix is squared until the ratio of its eigenvalues is negligible; the vector is
/// then any of its columns. Rounding matters by the ratio of the two largest values only, and not by the smallest one.
inline bool dominantLeftVector(const SmallMatrix<3>& a, SmallVector<3>& vector) {
  // Sums of products of two eigenvalues, in parts of the squared sum of all, of which squaring once more makes less
  // than rounding.
  constexpr omReal64 negligible = 1e-9;
  constexpr int nbMostSquarings = 6;
  // The symmetric matrix, scaled by its trace: (xx, yy, zz), (xy, xz, yz). The trace of a square is at least a third of
  // the squared trace, so that nothing underflows.
  const auto row = [&a](std::size_t i, std::size_t j) {
    return a(i, 0) * a(j, 0) + a(i, 1) * a(j, 1) + a(i, 2) * a(j, 2);
  };
  omReal64 xx = row(0, 0), yy = row(1, 1), zz = row(2, 2);
  const omReal64 scale = 1 / (xx + yy + zz);
  if (!(scale > 0) || !std::isfinite(scale)) return false;
  omReal64 xy = row(0, 1) * scale, xz = row(0, 2) * scale, yz = row(1, 2) * scale;
  xx *= scale;
  yy *= scale;
  zz *= scale;
  bool isSettled = false;
  for (int k = 0; k < nbMostSquarings && !isSettled; ++k) {
    const omReal64 trace = xx + yy + zz;
    const omReal64 minors = (xx * yy - xy * xy) + (yy * zz - yz * yz) + (zz * xx - xz * xz);
    isSettled = minors < negligible * trace * trace;
    const omReal64 xxNext = xx * xx + xy * xy + xz * xz;
    const omReal64 yyNext = xy * xy + yy * yy + yz * yz;
    const omReal64 zzNext = xz * xz + yz * yz + zz * zz;
    const omReal64 xyNext = xx * xy + xy * yy + xz * yz;
    const omReal64 xzNext = xx * xz + xy * yz + xz * zz;
    const omReal64 yzNext = xy * xz + yy * yz + yz * zz;
    xx = xxNext, yy = yyNext, zz = zzNext;
    xy = xyNext, xz = xzNext, yz = yzNext;
  }
  if (!isSettled) return false;
  SmallVector<3> found{xx, xy, xz};
  if (yy > xx && yy >= zz) found = {xy, yy, yz};
  if (zz > xx && zz > yy) found = {xz, yz, zz};
  // Once more by the matrix itself, so that none of the roundings of the squares remain.
  found = product(a, product(found, a));
  const omReal64 length = lengthOf(found);
  if (!(length > 0) || !std::isfinite(length)) return false;
  for (std::size_t i = 0; i < 3; ++i) vector[i] = found[i] / length;
  return true;
}

}  // namespace ormix::detail
