#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>

namespace ormix {

/// The triangle R of the decomposition Q R of a matrix of few columns and any number of rows, which pass through in
/// blocks that stay in the first cache. R has the singular values and the null space of the matrix, and with a
/// right-hand side as last column also its least-squares solution, at the accuracy of Householder's reflections.
///
/// With `NbRight` the last so many columns are right-hand sides only: what of them lies outside the space of the others
/// is not kept, their rows below the others' triangle stay zero, which saves a part of the work.
///
/// Write up to s_blockRows rows with block(), then fold() them; repeat. Nothing is allocated, and the bits are the same
/// on every processor. Values beyond about 1e150 in magnitude overflow: scale first. Exists for 3 to 10 and 16 columns.
/// O(columns²) a row. \code TallQr<4> qr; omReal64* x = qr.block(0);  // s_blockRows values of the first column x[0] =
/// ...; x[1] = ...; qr.fold(2); \endcode
template <std::size_t NbColumns, std::size_t NbRight = 0>
class ORMIX_MATH_API TallQr {
 public:
  static constexpr std::size_t s_nbColumns = NbColumns;
  /// Rows of a block, a multiple of the vectors' length.
  static constexpr std::size_t s_blockRows = 128;

  TallQr();

  /// Where the values of a column of the next rows are written.
  omReal64* block(std::size_t column) { return _block.data() + column * s_blockRows; }
  /// Takes the first `nbRows` rows of the block, at most s_blockRows, into the triangle. The block's contents are lost.
  void fold(std::size_t nbRows);
  /// The same without the vector instructions chosen at run time: what processors that lack them execute, here so that
  /// the agreement of both can be checked where both run.
  void foldPortable(std::size_t nbRows);

  /// R row by row, zeros below its diagonal.
  const std::array<omReal64, NbColumns * NbColumns>& triangle() const { return _triangle; }
  omReal64 operator()(std::size_t row, std::size_t column) const { return _triangle[row * NbColumns + column]; }

 private:
  void clearRowsFrom(std::size_t row);

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
