#include <ORMIXMath/Algebra/TallQr.h>

#include <algorithm>
#include <cassert>
#include <cmath>

#if defined(__x86_64__)
#define ORMIX_HAS_AVX2_VERSION 1
#endif

namespace ormix {
namespace {

// Four lanes, in one register or two; part of the result's definition, as they fix the order of sums and so its bits.
using Lanes [[gnu::vector_size(32), gnu::may_alias]] = omReal64;
constexpr std::size_t nbLanes = 4;

/// A matrix of the stacked rows: the triangle so far above one block of fresh rows, column by column.
template <std::size_t C>
struct Stack {
  static constexpr std::size_t nbVectors = TallQr<C>::s_blockRows / nbLanes;
  omReal64* triangle;
  Lanes* block;
};

/// Products of column K of the block with itself and the columns after it.
template <std::size_t C>
struct Products {
  omReal64 with[C];
};

/// One pass over the block: takes `factor[c]` times column K - 1 from each column c >= K, and with the new columns
/// forms the products that the next reflection needs. Every value is loaded once a reflection.
template <std::size_t C, std::size_t K>
[[gnu::always_inline]] inline void updateAndMultiply(const Stack<C>& stack, const omReal64* factor,
                                                     Products<C>& products) {
  constexpr std::size_t n = Stack<C>::nbVectors;
  Lanes sum[C] = {};
  for (std::size_t r = 0; r < n; ++r) {
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

/// The reflection that clears column K of the block into the triangle's diagonal. Its vector is (v, block column): the
/// triangle's other rows have nothing in that column. Leaves the triangle's row K final and the factors for the block.
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

/// Clears the columns from K on, up to the right-hand sides: what the last reflection makes of those is not looked at.
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
/// The same operations on the same lanes, four to a register; no fused multiplications, which would change the bits.
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
void TallQr<NbColumns, NbRight>::clearRowsFrom(std::size_t row) {
  assert(row <= s_blockRows);
  for (std::size_t c = 0; c < NbColumns; ++c) std::fill(block(c) + row, block(c) + s_blockRows, 0.0);
}

template <std::size_t NbColumns, std::size_t NbRight>
void TallQr<NbColumns, NbRight>::foldPortable(std::size_t nbRows) {
  clearRowsFrom(nbRows);
  foldBlock<NbColumns, NbRight>(Stack<NbColumns>{_triangle.data(), reinterpret_cast<Lanes*>(_block.data())});
}

template <std::size_t NbColumns, std::size_t NbRight>
void TallQr<NbColumns, NbRight>::fold(std::size_t nbRows) {
#if defined(ORMIX_HAS_AVX2_VERSION)
  // A load and a test: no resolver of the dynamic linker, which sanitizers do not survive.
  if (__builtin_cpu_supports("avx2")) {
    clearRowsFrom(nbRows);
    foldBlockAvx2<NbColumns, NbRight>(Stack<NbColumns>{_triangle.data(), reinterpret_cast<Lanes*>(_block.data())});
    return;
  }
#endif
  foldPortable(nbRows);
}

ORMIX_MATH_TALL_QR_SIZES()

}  // namespace ormix
