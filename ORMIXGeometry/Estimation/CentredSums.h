#pragma once

#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#if defined(__x86_64__)
#define ORMIX_HAS_AVX2_VERSION 1
#endif

/// \file
/// Means of coordinates and sums of products of centred coordinates, from which the closed-form estimators compute
/// their models, in one pass over the samples. The pass is centred at the mean of a part of the rows, so that the
/// correction to the mean of all loses no digits. Sums of blocks are added pairwise, so that rounding errors grow with
/// the logarithm of the number of rows.

namespace ormix::geom::detail {

/// Rows of D values each, not owned: value d of row i is columns[d][Stride * i]. Sources and targets of pairs may
/// therefore be in one array or in two.
template <std::size_t D, std::size_t Stride = D>
struct RowView {
  static constexpr std::size_t dimension = D;    ///< values of a row
  static constexpr std::size_t stride = Stride;  ///< step from one row to the next

  std::array<const omReal64*, D> columns;  ///< the first row's values
  std::size_t nbRows;                      ///< number of rows

  /// The rows of samples of dimension D, not copied.
  static RowView of(const SampleView& samples) {
    RowView rows{{}, samples.nbSamples};
    for (std::size_t d = 0; d < D; ++d) rows.columns[d] = samples.data + d;
    return rows;
  }
  /// `nb` rows from row `start` on.
  RowView part(std::size_t start, std::size_t nb) const {
    RowView rows{columns, nb};
    for (const omReal64*& column : rows.columns) column += Stride * start;
    return rows;
  }
  /// One value, not checked.
  omReal64 operator()(std::size_t row, std::size_t d) const { return columns[d][Stride * row]; }
};

/// Mean of the rows and sums over them of products of their centred values.
template <std::size_t Dimension, std::size_t NbProducts>
struct CentredSums {
  omReal64 nbRows = 0;                      ///< number of rows, as a factor
  std::array<omReal64, Dimension> mean{};   ///< mean of each value
  std::array<omReal64, NbProducts> sums{};  ///< sum of each product, about the mean
};

// The values of four rows, in one register or two. They determine the order of sums, so that all processors compute the
// same bits.
using SumLanes [[gnu::vector_size(32)]] = omReal64;
constexpr std::size_t nbSumLanes = 4;
// Number of rows of a block.
constexpr std::size_t nbSumRows = 512;

/// The computation of CentredSums. `Products` defines the products: their number `nbProducts`; `add(centred,
/// products)`, which adds to each product that of the centred values of four rows, given as one vector for each value;
/// and `isSmall(step, sums)`, whether the products of a change of the centre are small compared with the sums.
template <class Products, class Rows>
class CentredSummation {
 public:
  using Sums = CentredSums<Rows::dimension, Products::nbProducts>;  ///< the result

  /// The sums of the rows, of which there must be at least one. O(rows); nothing is allocated.
  static Sums of(const Rows& rows) {
    Center center = roughCenter(rows);
    Sums sums = about(center, rows);
    std::array<omReal64, P> step = productsOf(sums.mean, sums.nbRows);
    if (!Products::isSmall(step.data(), sums.sums.data())) {
      // The mean of the part was too far from that of all rows: a second pass about the latter.
      for (std::size_t d = 0; d < D; ++d) center[d] += sums.mean[d];
      sums = about(center, rows);
      step = productsOf(sums.mean, sums.nbRows);
    }
    for (std::size_t d = 0; d < D; ++d) sums.mean[d] += center[d];
    for (std::size_t p = 0; p < P; ++p) sums.sums[p] -= step[p];
    return sums;
  }

 private:
  static constexpr std::size_t D = Rows::dimension;
  static constexpr std::size_t P = Products::nbProducts;
  using Center = std::array<omReal64, D>;

  /// The mean of up to 256 rows at equal intervals.
  static Center roughCenter(const Rows& rows) {
    constexpr std::size_t nbMost = 256;
    const std::size_t every = (rows.nbRows + nbMost - 1) / nbMost;
    Center center{};
    omReal64 nbUsed = 0;
    for (std::size_t i = 0; i < rows.nbRows; i += every, ++nbUsed)
      for (std::size_t d = 0; d < D; ++d) center[d] += rows(i, d) - rows(0, d);
    for (std::size_t d = 0; d < D; ++d) center[d] = rows(0, d) + center[d] / nbUsed;
    return center;
  }

  /// The change of the sums when the centre is changed by `step`.
  static std::array<omReal64, P> productsOf(const Center& step, omReal64 nbRows) {
    SumLanes lanes[D];
    for (std::size_t d = 0; d < D; ++d) lanes[d] = SumLanes{step[d]};
    SumLanes products[P] = {};
    Products::add(lanes, products);
    std::array<omReal64, P> result;
    for (std::size_t p = 0; p < P; ++p) result[p] = products[p][0] * nbRows;
    return result;
  }

  /// The mean relative to the centre, and the sums about the centre.
  static Sums about(const Center& center, const Rows& rows) {
    Sums sums = ofRange(rows, center);
    sums.nbRows = static_cast<omReal64>(rows.nbRows);
    for (omReal64& mean : sums.mean) mean /= sums.nbRows;
    return sums;
  }

  /// The same, with the sums of the values in place of the means.
  static Sums ofRange(const Rows& rows, const Center& center) {
    if (rows.nbRows <= nbSumRows) return ofBlock(rows, center);
    const std::size_t nbBlocks = (rows.nbRows + nbSumRows - 1) / nbSumRows;
    const std::size_t nbFirst = nbBlocks / 2 * nbSumRows;
    Sums sums = ofRange(rows.part(0, nbFirst), center);
    const Sums rest = ofRange(rows.part(nbFirst, rows.nbRows - nbFirst), center);
    for (std::size_t d = 0; d < D; ++d) sums.mean[d] += rest.mean[d];
    for (std::size_t p = 0; p < P; ++p) sums.sums[p] += rest.sums[p];
    return sums;
  }

  static Sums ofBlock(const Rows& rows, const Center& center) {
#if defined(ORMIX_HAS_AVX2_VERSION)
    if (__builtin_cpu_supports("avx2")) return ofBlockAvx2(rows, center);
#endif
    return ofBlockInline(rows, center);
  }

#if defined(ORMIX_HAS_AVX2_VERSION)
  /// The same function compiled for AVX2: the same operations in the same order, with four lanes in one register.
  [[gnu::target("avx2")]] static Sums ofBlockAvx2(const Rows& rows, const Center& center) {
    return ofBlockInline(rows, center);
  }
#endif

  [[gnu::always_inline]] static inline Sums ofBlockInline(const Rows& rows, const Center& center) {
    // nbRows is at most nbSumRows; std::min lets compilers exclude an overflow of indices.
    const std::size_t nbRows = std::min(rows.nbRows, nbSumRows);
    constexpr std::size_t step = Rows::stride;
    SumLanes shift[D];
    SumLanes sum[D] = {};
    SumLanes products[P] = {};
    SumLanes lanes[D];
    for (std::size_t d = 0; d < D; ++d) shift[d] = center[d] - SumLanes{};
    std::size_t row = 0;
    for (; row + nbSumLanes <= nbRows; row += nbSumLanes) {
      for (std::size_t d = 0; d < D; ++d) {
        const omReal64* values = rows.columns[d] + step * row;
        lanes[d] = SumLanes{values[0], values[step], values[2 * step], values[3 * step]} - shift[d];
        sum[d] += lanes[d];
      }
      Products::add(lanes, products);
    }
    if (row < nbRows) {
      // Lanes without a row are 0 after centring and add nothing.
      for (std::size_t d = 0; d < D; ++d) {
        lanes[d] = SumLanes{};
        for (std::size_t l = 0; row + l < nbRows; ++l) lanes[d][l] = rows.columns[d][step * (row + l)] - center[d];
        sum[d] += lanes[d];
      }
      Products::add(lanes, products);
    }
    Sums sums;
    for (std::size_t d = 0; d < D; ++d) sums.mean[d] = total(sum[d]);
    for (std::size_t p = 0; p < P; ++p) sums.sums[p] = total(products[p]);
    return sums;
  }

  [[gnu::always_inline]] static inline omReal64 total(const SumLanes& lanes) {
    return (lanes[0] + lanes[1]) + (lanes[2] + lanes[3]);
  }
};

/// Whether points of that mean and sum of squared distances from it are more than one point that rounding of its
/// coordinates spread; false for NaN.
template <std::size_t D>
bool areSeveralPoints(omReal64 sumOfSquares, const std::array<omReal64, D>& mean, omReal64 nbPoints) {
  omReal64 largest = 0;
  for (const omReal64 coordinate : mean) largest = std::max(largest, std::abs(coordinate));
  return std::sqrt(sumOfSquares / nbPoints) > 4 * NumericLimits<omReal64>::s_eps * largest;
}

/// The sums of samples whose dimension is that of the products.
template <class Products>
auto centredSums(const SampleView& samples) {
  using Rows = RowView<Products::dimension>;
  return CentredSummation<Products, Rows>::of(Rows::of(samples));
}

}  // namespace ormix::geom::detail
