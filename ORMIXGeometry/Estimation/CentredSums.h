#pragma once

#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <array>
#include <cstddef>

#if defined(__x86_64__)
#define ORMIX_HAS_AVX2_VERSION 1
#endif

/// \file
/// Means and sums of products of centred coordinates, the whole of what the closed-form estimators need to know of
/// their samples, in one pass over memory. It is taken about the mean of a part of the rows, so that the step to the
/// mean of all costs no digits; sums of blocks are added two by two, so that rounding grows with the logarithm of the
/// number of rows.

namespace ormix::geom::detail {

/// Rows of D values each: value d of row i is columns[d][Stride * i]. So the halves of pairs may stand side by side or
/// in two runs of points.
template <std::size_t D, std::size_t Stride = D>
struct RowView {
  static constexpr std::size_t dimension = D;
  static constexpr std::size_t stride = Stride;

  std::array<const omReal64*, D> columns;
  std::size_t nbRows;

  /// The rows of samples of dimension D, as they stand.
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
  omReal64 operator()(std::size_t row, std::size_t d) const { return columns[d][Stride * row]; }
};

/// Mean of the rows and sums over them of products of their centred values.
template <std::size_t Dimension, std::size_t NbProducts>
struct CentredSums {
  omReal64 nbRows = 0;
  std::array<omReal64, Dimension> mean{};
  std::array<omReal64, NbProducts> sums{};
};

// Four rows, in one register or two; they fix the order of sums and so the bits, on every processor the same.
using SumLanes [[gnu::vector_size(32)]] = omReal64;
constexpr std::size_t nbSumLanes = 4;
// Rows of a block.
constexpr std::size_t nbSumRows = 512;

/// `Products` states `nbProducts`, `add(centred, products)`, which adds to each product that of the centred values of
/// four rows, one vector for each value, and `isSmall(step, sums)`: whether the products of a step to another centre
/// are small against the sums.
template <class Products, class Rows>
class CentredSummation {
 public:
  using Sums = CentredSums<Rows::dimension, Products::nbProducts>;

  /// Sums of the rows, at least one. O(rows), nothing is allocated.
  static Sums of(const Rows& rows) {
    Centre centre = roughCentre(rows);
    Sums sums = about(centre, rows);
    std::array<omReal64, P> step = productsOf(sums.mean, sums.nbRows);
    if (!Products::isSmall(step.data(), sums.sums.data())) {
      // The part was not like the whole: once more, about the mean.
      for (std::size_t d = 0; d < D; ++d) centre[d] += sums.mean[d];
      sums = about(centre, rows);
      step = productsOf(sums.mean, sums.nbRows);
    }
    for (std::size_t d = 0; d < D; ++d) sums.mean[d] += centre[d];
    for (std::size_t p = 0; p < P; ++p) sums.sums[p] -= step[p];
    return sums;
  }

 private:
  static constexpr std::size_t D = Rows::dimension;
  static constexpr std::size_t P = Products::nbProducts;
  using Centre = std::array<omReal64, D>;

  /// Mean of rows spread evenly over all, of all where they are few.
  static Centre roughCentre(const Rows& rows) {
    constexpr std::size_t nbMost = 256;
    const std::size_t every = (rows.nbRows + nbMost - 1) / nbMost;
    Centre centre{};
    omReal64 nbUsed = 0;
    for (std::size_t i = 0; i < rows.nbRows; i += every, ++nbUsed)
      for (std::size_t d = 0; d < D; ++d) centre[d] += rows(i, d) - rows(0, d);
    for (std::size_t d = 0; d < D; ++d) centre[d] = rows(0, d) + centre[d] / nbUsed;
    return centre;
  }

  /// What the sums change by when the centre does by `step`.
  static std::array<omReal64, P> productsOf(const Centre& step, omReal64 nbRows) {
    SumLanes lanes[D];
    for (std::size_t d = 0; d < D; ++d) lanes[d] = SumLanes{step[d]};
    SumLanes products[P] = {};
    Products::add(lanes, products);
    std::array<omReal64, P> result;
    for (std::size_t p = 0; p < P; ++p) result[p] = products[p][0] * nbRows;
    return result;
  }

  /// Mean relative to the centre, and sums about the centre.
  static Sums about(const Centre& centre, const Rows& rows) {
    Sums sums = ofRange(rows, centre);
    sums.nbRows = static_cast<omReal64>(rows.nbRows);
    for (omReal64& mean : sums.mean) mean /= sums.nbRows;
    return sums;
  }

  /// The same with sums in place of the means.
  static Sums ofRange(const Rows& rows, const Centre& centre) {
    if (rows.nbRows <= nbSumRows) return ofBlock(rows, centre);
    const std::size_t nbBlocks = (rows.nbRows + nbSumRows - 1) / nbSumRows;
    const std::size_t nbFirst = nbBlocks / 2 * nbSumRows;
    Sums sums = ofRange(rows.part(0, nbFirst), centre);
    const Sums rest = ofRange(rows.part(nbFirst, rows.nbRows - nbFirst), centre);
    for (std::size_t d = 0; d < D; ++d) sums.mean[d] += rest.mean[d];
    for (std::size_t p = 0; p < P; ++p) sums.sums[p] += rest.sums[p];
    return sums;
  }

  static Sums ofBlock(const Rows& rows, const Centre& centre) {
#if defined(ORMIX_HAS_AVX2_VERSION)
    if (__builtin_cpu_supports("avx2")) return ofBlockAvx2(rows, centre);
#endif
    return ofBlockInline(rows, centre);
  }

#if defined(ORMIX_HAS_AVX2_VERSION)
  /// The same operations on the same lanes, four to a register.
  [[gnu::target("avx2")]] static Sums ofBlockAvx2(const Rows& rows, const Centre& centre) {
    return ofBlockInline(rows, centre);
  }
#endif

  [[gnu::always_inline]] static inline Sums ofBlockInline(const Rows& rows, const Centre& centre) {
    // Never more than a block; said so that compilers do not fear an overflow.
    const std::size_t nbRows = std::min(rows.nbRows, nbSumRows);
    constexpr std::size_t step = Rows::stride;
    SumLanes shift[D];
    SumLanes sum[D] = {};
    SumLanes products[P] = {};
    SumLanes lanes[D];
    for (std::size_t d = 0; d < D; ++d) shift[d] = centre[d] - SumLanes{};
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
      // The lanes that have no row stand at the centre and add nothing.
      for (std::size_t d = 0; d < D; ++d) {
        lanes[d] = SumLanes{};
        for (std::size_t l = 0; row + l < nbRows; ++l) lanes[d][l] = rows.columns[d][step * (row + l)] - centre[d];
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

/// The sums of samples whose dimension is that of the products.
template <class Products>
auto centredSums(const SampleView& samples) {
  using Rows = RowView<Products::dimension>;
  return CentredSummation<Products, Rows>::of(Rows::of(samples));
}

}  // namespace ormix::geom::detail
