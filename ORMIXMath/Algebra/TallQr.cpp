#include <ORMIXMath/Algebra/TallQr.h>

#include <algorithm>
#include <cassert>
#include <cmath>

#if defined(__x86_64__)
#define ORMIX_HAS_AVX2_VERSION 1
#endif

namespace ormix {
namespace {

// Sums run in four lanes, held in one register or in two. Their number is part of the result's definition: it fixes the
// order of the additions and so the bits.
using Lanes [[gnu::vector_size(32), gnu::may_alias]] = omReal64;
constexpr std::size_t nbLanes = 4;

/// The triangle so far (row-major) stacked upon a block of new rows (column by column).
template <std::size_t C>
struct Stack {
  static constexpr std::size_t nbVectors = TallQr<C>::s_blockRows / nbLanes;
  omReal64* triangle;
  Lanes* block;
  std::size_t nbUsed;  // vectors of a column that have rows; the others would add zeros
};

/// Inner products of one column of the block with itself and with the columns after it, by their column.
template <std::size_t C>
struct Products {
  omReal64 with[C];
};

/// One pass over the block, which loads every value once for each reflection: subtracts `factor[c]` times column K - 1
/// from each column c >= K and forms the inner products of the new columns that the next reflection needs.
template <std::size_t C, std::size_t K>
[[gnu::always_inline]] inline void updateAndMultiply(const Stack<C>& stack, const omReal64* factor,
                                                     Products<C>& products) {
  constexpr std::size_t n = Stack<C>::nbVectors;
  Lanes sum[C] = {};
  for (std::size_t r = 0; r < stack.nbUsed; ++r) {
    Lanes first = stack.block[K * n + r];
    if constexpr (K > 0) {
      const Lanes reflected = stack.block[(K - 1) * n + r];
      first -= factor[K] * reflected;
      stack.block[K * n + r] = first;
      for (std::size_t c = K + 1; c < C; ++c) {
        const Lanes value = stack.block[c * n + r] - factor[c] * reflected;
        stack.block[c * n + r] = value;
        sum[c] += first * value;
      }
    } else {
      for (std::size_t c = K + 1; c < C; ++c) sum[c] += first * stack.block[c * n + r];
    }
    sum[K] += first * first;
  }
  for (std::size_t c = K; c < C; ++c) products.with[c] = (sum[c][0] + sum[c][1]) + (sum[c][2] + sum[c][3]);
}

/// The reflection that makes column K of the block zero. Its vector is v in row K of the triangle and the column in the
/// block; the triangle's rows above K are final, those below have zeros in that column. Computes row K of the triangle
/// and the factors by which updateAndMultiply() updates the block.
template <std::size_t C, std::size_t K>
[[gnu::always_inline]] inline void reflect(omReal64* triangle, const Products<C>& products, omReal64* factor) {
  omReal64* row = triangle + K * C;
  const omReal64 square = products.with[K];
  if (square == 0) {
    for (std::size_t c = K + 1; c < C; ++c) factor[c] = 0;
    return;
  }
  const omReal64 length = std::sqrt(row[K] * row[K] + square);
  const omReal64 diagonal = row[K] > 0 ? -length : length;
  const omReal64 v = row[K] - diagonal;
  const omReal64 beta = 2 / (v * v + square);
  for (std::size_t c = K + 1; c < C; ++c) {
    factor[c] = beta * (v * row[c] + products.with[c]);
    row[c] -= factor[c] * v;
  }
  row[K] = diagonal;
}

/// Reflects the columns from K on, up to the right-hand sides. The block is not updated after the last reflection,
/// since what that leaves of the right-hand sides is not used.
template <std::size_t C, std::size_t Right, std::size_t K = 0>
[[gnu::always_inline]] inline void reflectFrom(const Stack<C>& stack, omReal64* factor) {
  if constexpr (K + Right < C) {
    Products<C> products;
    updateAndMultiply<C, K>(stack, factor, products);
    reflect<C, K>(stack.triangle, products, factor);
    reflectFrom<C, Right, K + 1>(stack, factor);
  }
}

template <std::size_t C, std::size_t Right>
void foldBlock(const Stack<C>& stack) {
  omReal64 factor[C];
  reflectFrom<C, Right>(stack, factor);
}

#if defined(ORMIX_HAS_AVX2_VERSION)
/// foldBlock() compiled for registers of four lanes: the same operations in the same order, without fused
/// multiplications, which would change the bits.
template <std::size_t C, std::size_t Right>
[[gnu::target("avx2")]] void foldBlockAvx2(const Stack<C>& stack) {
  omReal64 factor[C];
  reflectFrom<C, Right>(stack, factor);
}
#endif

}  // namespace

template <std::size_t NbColumns, std::size_t NbRight>
TallQr<NbColumns, NbRight>::TallQr() = default;

template <std::size_t NbColumns, std::size_t NbRight>
std::size_t TallQr<NbColumns, NbRight>::fillVectors(std::size_t nbRows) {
  assert(nbRows <= s_blockRows);
  const std::size_t nbVectors = (nbRows + nbLanes - 1) / nbLanes;
  for (std::size_t c = 0; c < NbColumns; ++c) std::fill(block(c) + nbRows, block(c) + nbLanes * nbVectors, 0.0);
  return nbVectors;
}

template <std::size_t NbColumns, std::size_t NbRight>
void TallQr<NbColumns, NbRight>::foldPortable(std::size_t nbRows) {
  const std::size_t nbVectors = fillVectors(nbRows);
  foldBlock<NbColumns, NbRight>({_triangle.data(), reinterpret_cast<Lanes*>(_block.data()), nbVectors});
}

template <std::size_t NbColumns, std::size_t NbRight>
void TallQr<NbColumns, NbRight>::fold(std::size_t nbRows) {
#if defined(ORMIX_HAS_AVX2_VERSION)
  // Tested on each call, which costs a load. A function resolved when the library is loaded (ifunc) would run before
  // the sanitizers are initialised and crash them.
  if (__builtin_cpu_supports("avx2")) {
    const std::size_t nbVectors = fillVectors(nbRows);
    foldBlockAvx2<NbColumns, NbRight>({_triangle.data(), reinterpret_cast<Lanes*>(_block.data()), nbVectors});
    return;
  }
#endif
  foldPortable(nbRows);
}

ORMIX_MATH_TALL_QR_SIZES()

}  // namespace ormix
