#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#if defined(__x86_64__)
#define ORMIX_HAS_AVX2_VERSION 1
#endif

/// \file
/// Means and sums of products of centred coordinates, the whole of what the closed-form estimators need to know of
/// their samples, in one pass over memory. It is taken about the mean of a part of the rows, so that the step to the
/// mean of all costs no digits; sums of blocks are added two by two, so that rounding grows with the logarithm of the
/// number of rows.

namespace ormix::geom::detail {

/// Mean of the rows and sums over them of products of their centred values.
template <std::size_t Dimension, std::size_t NbProducts>
struct CentredSums {
  omReal64 nbRows = 0;
  std::array<omReal64, Dimension> mean{};
  std::array<omReal64, NbProducts> sums{};
};

// Four lanes, in one register or two; they fix the order of sums and so the bits, on every processor the same.
using SumLanes [[gnu::vector_size(32)]] = omReal64;
constexpr std::size_t nbSumLanes = 4;
// Rows of a block.
constexpr std::size_t nbSumRows = 512;

/// `Products` states `dimension` (2 or 4), `nbProducts`, how many `nbAccumulators` of lanes it needs, `add(centred,
/// accumulators)` for one vector of whole rows, `take(accumulators, sums)`, which makes the sums of them, and
/// `isSmall(step, sums)`: whether the products of a step to another centre are small against the sums.
template <class Products>
class CentredSummation {
 public:
  using Sums = CentredSums<Products::dimension, Products::nbProducts>;

  /// Sums of `nbRows` rows, at least one, one after the other. O(nbRows), nothing is allocated.
  static Sums of(const omReal64* rows, std::size_t nbRows) {
    Centre centre = roughCentre(rows, nbRows);
    Sums sums = about(centre, rows, nbRows);
    std::array<omReal64, P> step = productsOf(sums.mean, sums.nbRows);
    if (!Products::isSmall(step.data(), sums.sums.data())) {
      // The part was not like the whole: once more, about the mean.
      for (std::size_t d = 0; d < D; ++d) centre[d] += sums.mean[d];
      sums = about(centre, rows, nbRows);
      step = productsOf(sums.mean, sums.nbRows);
    }
    for (std::size_t d = 0; d < D; ++d) sums.mean[d] += centre[d];
    for (std::size_t p = 0; p < P; ++p) sums.sums[p] -= step[p];
    return sums;
  }

 private:
  static constexpr std::size_t D = Products::dimension;
  static constexpr std::size_t P = Products::nbProducts;
  static constexpr std::size_t A = Products::nbAccumulators;
  static constexpr std::size_t s_rowsPerVector = nbSumLanes / D;
  static_assert(s_rowsPerVector * D == nbSumLanes);
  using Centre = std::array<omReal64, D>;

  /// Mean of rows spread evenly over all, of all where they are few.
  static Centre roughCentre(const omReal64* rows, std::size_t nbRows) {
    constexpr std::size_t nbMost = 256;
    const std::size_t stride = (nbRows + nbMost - 1) / nbMost;
    Centre centre{};
    omReal64 nbUsed = 0;
    for (std::size_t i = 0; i < nbRows; i += stride, ++nbUsed)
      for (std::size_t d = 0; d < D; ++d) centre[d] += rows[D * i + d] - rows[d];
    for (std::size_t d = 0; d < D; ++d) centre[d] = rows[d] + centre[d] / nbUsed;
    return centre;
  }

  /// What the sums change by when the centre does by `step`.
  static std::array<omReal64, P> productsOf(const Centre& step, omReal64 nbRows) {
    SumLanes lanes{};
    for (std::size_t d = 0; d < D; ++d) lanes[d] = step[d];
    SumLanes accumulators[A] = {};
    Products::add(lanes, accumulators);
    std::array<omReal64, P> products;
    Products::take(accumulators, products.data());
    for (omReal64& product : products) product *= nbRows;
    return products;
  }

  /// Mean relative to the centre, and sums about the centre.
  static Sums about(const Centre& centre, const omReal64* rows, std::size_t nbRows) {
    Sums sums = ofRange(rows, nbRows, centre);
    sums.nbRows = static_cast<omReal64>(nbRows);
    for (omReal64& mean : sums.mean) mean /= sums.nbRows;
    return sums;
  }

  /// The same with sums in place of the means.
  static Sums ofRange(const omReal64* rows, std::size_t nbRows, const Centre& centre) {
    if (nbRows <= nbSumRows) return ofBlock(rows, nbRows, centre);
    const std::size_t nbBlocks = (nbRows + nbSumRows - 1) / nbSumRows;
    const std::size_t nbFirst = nbBlocks / 2 * nbSumRows;
    Sums sums = ofRange(rows, nbFirst, centre);
    const Sums rest = ofRange(rows + D * nbFirst, nbRows - nbFirst, centre);
    for (std::size_t d = 0; d < D; ++d) sums.mean[d] += rest.mean[d];
    for (std::size_t p = 0; p < P; ++p) sums.sums[p] += rest.sums[p];
    return sums;
  }

  static Sums ofBlock(const omReal64* rows, std::size_t nbRows, const Centre& centre) {
#if defined(ORMIX_HAS_AVX2_VERSION)
    if (__builtin_cpu_supports("avx2")) return ofBlockAvx2(rows, nbRows, centre);
#endif
    return ofBlockInline(rows, nbRows, centre);
  }

#if defined(ORMIX_HAS_AVX2_VERSION)
  /// The same operations on the same lanes, four to a register.
  [[gnu::target("avx2")]] static Sums ofBlockAvx2(const omReal64* rows, std::size_t nbRows, const Centre& centre) {
    return ofBlockInline(rows, nbRows, centre);
  }
#endif

  /// Sums of the centred rows and their products.
  struct Chain {
    SumLanes sum{};
    SumLanes products[A] = {};

    /// The next `s_rowsPerVector` rows.
    [[gnu::always_inline]] inline void add(const omReal64* values, const SumLanes& centre) {
      SumLanes lanes;
      std::memcpy(&lanes, values, sizeof(lanes));
      lanes -= centre;
      sum += lanes;
      Products::add(lanes, products);
    }
  };

  [[gnu::always_inline]] static inline Sums ofBlockInline(const omReal64* rows, std::size_t nbRows,
                                                          const Centre& centre) {
    // Never more than a block; said so that compilers do not fear an overflow.
    const std::size_t nbVectors = std::min(nbRows, nbSumRows) / s_rowsPerVector;
    SumLanes shift;
    for (std::size_t l = 0; l < nbSumLanes; ++l) shift[l] = centre[l % D];
    Chain even;
    Chain odd;
    std::size_t r = 0;
    for (; r + 2 <= nbVectors; r += 2) {
      even.add(rows + r * nbSumLanes, shift);
      odd.add(rows + (r + 1) * nbSumLanes, shift);
    }
    if (r < nbVectors) even.add(rows + r * nbSumLanes, shift);
    if (nbVectors * s_rowsPerVector < nbRows) {
      // One row is left; the centre beside it adds nothing.
      omReal64 last[nbSumLanes];
      for (std::size_t l = 0; l < nbSumLanes; ++l) last[l] = l < D ? rows[nbVectors * nbSumLanes + l] : centre[l % D];
      odd.add(last, shift);
    }
    even.sum += odd.sum;
    for (std::size_t a = 0; a < A; ++a) even.products[a] += odd.products[a];
    return taken(even);
  }

  [[gnu::always_inline]] static inline Sums taken(const Chain& chain) {
    Sums sums;
    for (std::size_t l = 0; l < nbSumLanes; ++l) sums.mean[l % D] += chain.sum[l];
    Products::take(chain.products, sums.sums.data());
    return sums;
  }
};

}  // namespace ormix::geom::detail
