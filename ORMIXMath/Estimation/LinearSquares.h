#pragma once

#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <array>
#include <cstddef>

/// \file
/// Linear least squares of few unknowns, as they arise in each step of a fit: a triangle of many rows, steps, and what
/// the rows determine; not installed.

namespace ormix::detail {

/// A value for each unknown.
constexpr std::size_t s_nbMostUnknowns = 15;
using UnknownValues = std::array<omReal64, s_nbMostUnknowns>;

/// The sum of squares |r x + q|² of n unknowns x, and a constant: an upper triangle r, beside it the column q.
struct LinearSquares {
  std::size_t n = 0;  ///< Unknowns.
  /// Row by row, n + 1 values each, of which the last one is that of q.
  std::array<omReal64, s_nbMostUnknowns*(s_nbMostUnknowns + 1)> values;
  omReal64 cost = 0;  ///< What is minimised, at x = 0.

  omReal64& operator()(std::size_t row, std::size_t column) { return values[row * (n + 1) + column]; }
  omReal64 operator()(std::size_t row, std::size_t column) const { return values[row * (n + 1) + column]; }
  /// q.
  omReal64 right(std::size_t row) const { return (*this)(row, n); }
};

/// A square matrix with a row for each unknown.
struct UnknownMatrix {
  std::size_t n = 0;  ///< Rows, and columns.
  std::array<omReal64, s_nbMostUnknowns * s_nbMostUnknowns> values;

  /// Zeros.
  explicit UnknownMatrix(std::size_t size = 0) : n(size) { std::fill_n(values.begin(), n * n, 0.0); }
  omReal64& operator()(std::size_t row, std::size_t column) { return values[row * n + column]; }
  omReal64 operator()(std::size_t row, std::size_t column) const { return values[row * n + column]; }
};

/// Whether the triangle, the column beside it and the cost are finite.
bool isFinite(const LinearSquares& squares);
/// The lengths of the columns of r.
UnknownValues columnLengths(const LinearSquares& squares);
/// The smallest over the largest singular value of r with its columns scaled to length 1, or up to n times less: by
/// the squares of all values and of those of the inverse. 0 where it has none.
omReal64 leastReciprocalCondition(const LinearSquares& squares);

/// The x of least |r x + q|² + damping |lengths · x|²; not finite where r is singular and nothing is damped. Columns
/// much shorter than the longest one are damped by a little of that. O(n³).
UnknownValues dampedStep(const LinearSquares& squares, const UnknownValues& lengths, omReal64 damping);
/// Turns products of the columns of a matrix, on and above the diagonal, and with a column beside them, into r and q.
/// False where these keep fewer digits than the matrix has: products square the ratio of singular values. O(n³).
bool factorise(LinearSquares& squares);
/// Whether no column of r is nearly a combination of those before it.
bool hasPivots(const LinearSquares& squares, const UnknownValues& lengths);
/// |r x|².
omReal64 squaredChange(const LinearSquares& squares, const UnknownValues& x);

/// What a triangle determines.
struct TriangleInverse {
  UnknownMatrix left;          ///< L with L Lᵀ = (rᵀr)⁻¹ over what is determined
  UnknownMatrix undetermined;  ///< Directions, as columns, in which nothing is determined.
  UnknownValues lengths;       ///< Those of the columns, 1 instead of 0.
  std::size_t rank = 0;        ///< Singular values above the threshold, of columns scaled to length 1.
  omReal64 ratio = 0;          ///< The smallest over the largest of them.
};

/// Singular values count as zero up to `threshold` times the largest one. r must be finite. O(n³).
TriangleInverse inverseOf(const LinearSquares& squares, omReal64 threshold);
/// Turns L into S with S Sᵀ = L Lᵀ (mᵀm) L Lᵀ for another triangle m: the sandwich of White1980.
void spreadBy(const LinearSquares& meat, UnknownMatrix& left);

/// The products of columns with each other, summed over rows that come block by block. The result has the same bits on
/// every processor. Exists for 3 to 10 and for 16 columns.
template <std::size_t NbColumns>
class ColumnProducts {
 public:
  /// Adds the first rows of a block whose columns follow each other as those of TallQr; fills up the last four.
  void add(omReal64* block, std::size_t nbRows);
  /// The squares of the last column plus the others; false where factorise() refuses.
  bool toSquares(LinearSquares& squares) const;

 private:
  // Sums run in four lanes: their number fixes the order of additions and so the bits.
  static constexpr std::size_t s_nbLanes = 4;
  alignas(64) std::array<omReal64, NbColumns*(NbColumns + 1) / 2 * s_nbLanes> _sums{};
};

/// The squares of N unknowns: `forEachBlock(qr, fold)` writes rows into the blocks of qr, the last column plus the
/// others, and calls `fold(nbRows)` after each. It is called a second time where the sums of products lose digits.
template <std::size_t N, class ForEachBlock>
void reduceRows(const ForEachBlock& forEachBlock, LinearSquares& squares) {
  TallQr<N + 1> qr;
  ColumnProducts<N + 1> products;
  squares.n = N;
  forEachBlock(qr, [&](std::size_t nbRows) { products.add(qr.block(0), nbRows); });
  if (products.toSquares(squares)) return;
  forEachBlock(qr, [&](std::size_t nbRows) { qr.fold(nbRows); });
  std::copy_n(qr.triangle().begin(), N * (N + 1), squares.values.begin());
  squares.cost = 0;
  for (std::size_t k = 0; k <= N; ++k) squares.cost += qr(k, N) * qr(k, N);
}

}  // namespace ormix::detail
