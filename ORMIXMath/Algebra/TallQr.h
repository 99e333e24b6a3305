#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>

namespace ormix {

/// The triangle R of the decomposition Q R of a matrix of few columns and any number of rows, by Householder
/// reflections.
///
/// Rows are folded in by blocks that fit into the first-level cache. R has the singular values and the null space of
/// the matrix and, with a right-hand side as its last column, determines the least-squares solution.
///
/// The last `NbRight` columns are right-hand sides only: of these, just the rows beside the triangle of the other
/// columns are computed, the rows below stay zero. That saves work where the norm of the residual is not needed.
///
/// Write up to s_blockRows rows, column by column, to block() and fold() them in; repeat for further rows:
///
/// \code
/// TallQr<3> qr;
/// for (std::size_t column = 0; column < 3; ++column) {
///   qr.block(column)[0] = firstRow[column];
///   qr.block(column)[1] = secondRow[column];
/// }
/// qr.fold(2);
/// \endcode
///
/// Nothing is allocated, and the result has the same bits on every processor. Squares are summed unscaled: values
/// beyond about 1e150 in magnitude overflow. Exists for 3 to 10 and 16 columns, with no or one right-hand side (16
/// columns: none). O(columns²) for each row.
template <std::size_t NbColumns, std::size_t NbRight = 0>
class ORMIX_MATH_API TallQr {
 public:
  /// Columns of the matrix, right-hand sides included.
  static constexpr std::size_t s_nbColumns = NbColumns;
  /// Most rows of a block; a multiple of the length of the processor's vectors.
  static constexpr std::size_t s_blockRows = 128;

  /// The triangle of no rows: zeros. The block is not initialised.
  TallQr();

  /// The s_blockRows values of a column of the block, to be written before fold(). The column is not checked.
  omReal64* block(std::size_t column) { return _block.data() + column * s_blockRows; }
  /// Folds the first `nbRows` rows of the block, at most s_blockRows (asserted), into the triangle and overwrites the
  /// block.
  void fold(std::size_t nbRows);
  /// fold() without vector instructions chosen at run time, as processors without these execute it. Public so that
  /// tests can compare both on one processor.
  void foldPortable(std::size_t nbRows);

  /// R, row-major, with zeros below its diagonal. Its diagonal elements may have either sign.
  const std::array<omReal64, NbColumns * NbColumns>& triangle() const { return _triangle; }
  /// The element of R in a row and a column, which are not checked.
  omReal64 operator()(std::size_t row, std::size_t column) const { return _triangle[row * NbColumns + column]; }

 private:
  /// Fills the last vector of each column with zeros and returns the number of vectors.
  std::size_t fillVectors(std::size_t nbRows);

  alignas(64) std::array<omReal64, NbColumns * s_blockRows> _block;
  std::array<omReal64, NbColumns * NbColumns> _triangle{};
};

// The sizes that exist: declared here, with `extern` for the keyword, and instantiated in the source.
#define ORMIX_MATH_TALL_QR_SIZES(keyword) \
  keyword template class TallQr<3>;       \
  keyword template class TallQr<3, 1>;    \
  keyword template class TallQr<4>;       \
  keyword template class TallQr<4, 1>;    \
  keyword template class TallQr<5>;       \
  keyword template class TallQr<5, 1>;    \
  keyword template class TallQr<6>;       \
  keyword template class TallQr<6, 1>;    \
  keyword template class TallQr<7>;       \
  keyword template class TallQr<7, 1>;    \
  keyword template class TallQr<8>;       \
  keyword template class TallQr<8, 1>;    \
  keyword template class TallQr<9>;       \
  keyword template class TallQr<9, 1>;    \
  keyword template class TallQr<10>;      \
  keyword template class TallQr<10, 1>;   \
  keyword template class TallQr<16>;

ORMIX_MATH_TALL_QR_SIZES(extern)

}  // namespace ormix
