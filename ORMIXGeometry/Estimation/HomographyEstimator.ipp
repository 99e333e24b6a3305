#pragma once

#include <ORMIXGeometry/Estimation/CentredSums.h>
#include <ORMIXGeometry/Estimation/HomographyEstimator.h>
#include <ORMIXGeometry/Estimation/PairVerdict.h>
#include <ORMIXGeometry/Estimation/RoughHomography.h>
#include <ORMIXMath/Algebra/SvdSolve.h>
#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Scalar/Twofold.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

#include <algorithm>
#include <array>
#include <boost/numeric/ublas/matrix.hpp>
#include <numeric>

namespace ormix::geom {
namespace detail {

/// The system of a projective map of dimension D. `side` is the matrix' number of rows.
template <std::size_t D>
struct HomographySystem {
  static constexpr std::size_t side = D + 1;
  static constexpr std::size_t nbElements = side * side;
  // Most unknown elements that may stay open are two, of which one is the matrix' factor.
  static constexpr std::size_t smallestRank = nbElements - 2;
  using Elements = std::array<omReal64, nbElements>;
  using Columns = TallQr<nbElements>;
  using Twofold = ormix::detail::Twofold;

  /// Squared lengths of sources and of targets about their means.
  struct Spreads {
    static constexpr std::size_t dimension = 2 * D;
    static constexpr std::size_t nbProducts = 2;

    [[gnu::always_inline]] static inline void add(const SumLanes* c, SumLanes* sums) {
      for (std::size_t d = 0; d < D; ++d) sums[0] += c[d] * c[d];
      for (std::size_t d = D; d < 2 * D; ++d) sums[1] += c[d] * c[d];
    }
    static bool isSmall(const omReal64* step, const omReal64* sums) {
      return 2 * step[0] <= sums[0] && 2 * step[1] <= sums[1];
    }
  };

  /// Points moved to their mean and scaled near 1 (Hartley 1997, In Defense of the Eight-Point Algorithm, IEEE PAMI
  /// 19), by a power of two so that nothing is rounded.
  struct Frame {
    std::array<omReal64, D> center;
    omReal64 scale;

    Frame(const omReal64* mean, omReal64 spread, omReal64 nbPoints) : scale(1) {
      std::copy(mean, mean + D, center.begin());
      const omReal64 radius = std::sqrt(spread / nbPoints);
      // Points that coincide, and those with a NaN or infinity, are left to the rank.
      if (radius > 0 && std::isfinite(radius)) scale = std::ldexp(1.0, std::clamp(-std::ilogb(radius), -1000, 1000));
    }
    omReal64 operator()(omReal64 value, std::size_t d) const { return (value - center[d]) * scale; }
    /// What rounding of the coordinates is at most here.
    omReal64 rounding() const {
      omReal64 largest = 0;
      for (const omReal64 value : center) largest = std::max(largest, std::abs(value));
      return 4 * NumericLimits<omReal64>::s_eps * (largest * scale + 1);
    }
  };

  /// The columns (p | u p | v p ...) of the sources p = (x, y, ..., 1) and targets (u, v, ...) in their frames, as a
  /// triangle.
  static void reduce(const SampleView& samples, const Frame& source, const Frame& target, Columns& qr) {
    for (std::size_t start = 0; start < samples.nbSamples; start += Columns::s_blockRows) {
      const std::size_t nbRows = std::min(Columns::s_blockRows, samples.nbSamples - start);
      for (std::size_t i = 0; i < nbRows; ++i) {
        const omReal64* pair = samples[start + i];
        std::array<omReal64, side> p;
        for (std::size_t d = 0; d < D; ++d) p[d] = source(pair[d], d);
        p[D] = 1;
        for (std::size_t c = 0; c < side; ++c) qr.block(c)[i] = p[c];
        for (std::size_t d = 0; d < D; ++d) {
          const omReal64 u = target(pair[D + d], d);
          for (std::size_t c = 0; c < side; ++c) qr.block((d + 1) * side + c)[i] = u * p[c];
        }
      }
      qr.fold(nbRows);
    }
  }

  /// The null vector of the direct linear system, whose rows are (p 0 ... -u p), (0 p ... -v p), ...; returns its rank.
  ///
  /// With the triangle (R P Q ...; 0 S T ...; 0 0 W ...) of the columns the orthogonal factor of p turns that system of
  /// D rows a pair into (R 0 ... -P; 0 R ... -Q; ...) and rows of which only the last block, S, T, W, ..., is not zero
  /// and which a triangle replaces: less work, and the same singular values.
  static std::size_t solve(const Columns& qr, Elements& h) {
    std::array<omReal64, nbElements * nbElements> a{};
    const auto row = [&a](std::size_t r) { return a.data() + r * nbElements; };
    TallQr<side> last;
    std::size_t nbLast = 0;
    for (std::size_t d = 0; d < D; ++d)
      for (std::size_t r = 0; r < (d + 2) * side; ++r) {
        const std::size_t column = (d + 1) * side;
        if (r >= side) {
          for (std::size_t c = 0; c < side; ++c) last.block(c)[nbLast] = qr(r, column + c);
          ++nbLast;
          continue;
        }
        for (std::size_t c = 0; c < side; ++c) {
          row(d * side + r)[d * side + c] = qr(r, c);
          row(d * side + r)[D * side + c] = -qr(r, column + c);
        }
      }
    last.fold(nbLast);
    for (std::size_t r = 0; r < side; ++r)
      for (std::size_t c = 0; c < side; ++c) row(D * side + r)[D * side + c] = last(r, c);
    return svdNullVectorSmall(a.data(), nbElements, nbElements, h.data());
  }

  /// Whether the smallest singular value of the triangle's corner of `size` columns, which the length of its inverse
  /// tells, is no larger than `rounding`.
  template <class Triangle>
  static bool isSingular(const Triangle& triangle, std::size_t size, omReal64 rounding) {
    omReal64 squareOfInverse = 0;
    for (std::size_t c = 0; c < size; ++c) {
      std::array<omReal64, side> x{};
      for (std::size_t r = c + 1; r-- > 0;) {
        omReal64 value = r == c;
        for (std::size_t k = r + 1; k <= c; ++k) value -= triangle(r, k) * x[k];
        x[r] = value / triangle(r, r);
        squareOfInverse += x[r] * x[r];
      }
    }
    return !(1 > rounding * std::sqrt(squareOfInverse));
  }

  /// Whether the sources or the targets lie on one line of the plane, one plane of space, to rounding of their
  /// coordinates, which far from the origin hides behind a full rank: then the equations are not enough, or only a
  /// singular matrix satisfies them.
  static bool areFlat(const Columns& qr, const Frame& source, const Frame& target, omReal64 nbPoints) {
    // The first D columns are the centred sources: the singular values of their corner are the cloud's half axes.
    if (isSingular(qr, D, source.rounding() * std::sqrt(nbPoints))) return true;
    // The last column of each block after them is a coordinate of the targets.
    TallQr<side> targets;
    for (std::size_t r = 0; r < nbElements; ++r) {
      for (std::size_t d = 0; d < D; ++d) targets.block(d)[r] = qr(r, (d + 2) * side - 1);
      targets.block(D)[r] = 0;
    }
    targets.fold(nbElements);
    return isSingular(targets, D, target.rounding() * std::sqrt(nbPoints));
  }

  /// Why there is no map, by the spreads about the means, the reduced columns and the rank that is left.
  template <class Sums>
  static PairVerdict whyNot(const Sums& sums, const Columns& qr, const Frame& source, const Frame& target,
                            std::size_t rank) {
    std::array<omReal64, D> sourceMean, targetMean;
    std::copy_n(sums.mean.begin(), D, sourceMean.begin());
    std::copy_n(sums.mean.begin() + D, D, targetMean.begin());
    const PairVerdict coincident = whichCoincide(sums.sums[0], sourceMean, sums.sums[1], targetMean, sums.nbRows);
    if (coincident.code != eEC_Success) return coincident;
    const auto value = static_cast<omReal64>(rank);
    const bool isFlat = areFlat(qr, source, target, sums.nbRows);
    return {isFlat ? (D == 2 ? eEC_Collinear : eEC_Coplanar) : eEC_RankDeficient, "rank of the linear system", value,
            smallestRank};
  }

  /// Whether the matrix maps the plane or space onto less, to rounding of the coordinates that led to it.
  static bool isSingular(const Elements& h, const Frame& source, const Frame& target) {
    // By how much its smallest singular value may exceed the rounding where a minimal sample has flat sources.
    constexpr omReal64 s_amplification = 1024;
    TallQr<side> rows;
    for (std::size_t r = 0; r < side; ++r)
      for (std::size_t c = 0; c < side; ++c) rows.block(c)[r] = h[r * side + c];
    rows.fold(side);
    return isSingular(rows, side, s_amplification * (source.rounding() + target.rounding()));
  }

  /// Whether all sources have an image, and that is their target to half the digits of the targets' spread. Equations
  /// multiplied by the denominator are also satisfied where a source has no image at all.
  static bool maps(const Elements& h, const SampleView& samples, const Frame& source, const Frame& target) {
    for (std::size_t i = 0; i < samples.nbSamples; ++i) {
      const omReal64* pair = samples[i];
      const auto mapped = [&](std::size_t r) {
        omReal64 value = h[r * side + D];
        for (std::size_t d = 0; d < D; ++d) value += h[r * side + d] * source(pair[d], d);
        return value;
      };
      const omReal64 w = mapped(D);
      for (std::size_t d = 0; d < D; ++d) {
        const omReal64 off = mapped(d) - w * target(pair[D + d], d);
        if (w == 0 || !(std::abs(off) <= NumericLimits<omReal64>::s_sqrt_eps * std::abs(w))) return false;
      }
    }
    return true;
  }

  /// From the frames back to the coordinates: target⁻¹ · h · source, divided by its last element, or by its length
  /// where that element is 0 to rounding.
  static Elements withoutFrames(const Frame& source, const Frame& target, const Elements& h) {
    std::array<omReal64, side> denominators;
    for (std::size_t c = 0; c < D; ++c) denominators[c] = h[D * side + c] * source.scale;
    denominators[D] = difference({h[D * side + D], 0}, atCentre(source, denominators.data())).high;
    const omReal64 divisor = normalisation(withDenominators(source, target, h, 1, denominators));
    for (omReal64& denominator : denominators) denominator /= divisor;
    return withDenominators(source, target, h, divisor, denominators);
  }

  /// The same divided by `divisor`, its last row given. Each other row is a multiple of that one, by the targets'
  /// centre, and what the frame adds. The last column makes that true at the centre of the sources for the rows as they
  /// are rounded, and is itself rounded once: what rounding takes from a pair grows with its distance from the centres,
  /// but for half an ulp of that column.
  static Elements withDenominators(const Frame& source, const Frame& target, const Elements& h, omReal64 divisor,
                                   const std::array<omReal64, side>& denominators) {
    Elements result;
    std::copy(denominators.begin(), denominators.end(), result.end() - side);
    const Twofold denominator = sum({denominators[D], 0}, atCentre(source, denominators.data()));
    for (std::size_t r = 0; r < D; ++r) {
      const auto added = [&](std::size_t c) { return h[r * side + c] / target.scale / divisor; };
      omReal64* row = result.data() + side * r;
      for (std::size_t c = 0; c < D; ++c) row[c] = std::fma(target.center[r], denominators[c], added(c) * source.scale);
      const Twofold numerator = sum(times(target.center[r], denominator), {added(D), 0});
      row[D] = difference(numerator, atCentre(source, row)).high;
    }
    return result;
  }

  /// A row times the centre of the sources, without its last element.
  static Twofold atCentre(const Frame& source, const omReal64* row) {
    Twofold value{};
    for (std::size_t d = 0; d < D; ++d) value = sum(value, times(row[d], Twofold{source.center[d], 0}));
    return value;
  }

  /// What the matrix is divided by: its last element or, where that is 0 to rounding, its length.
  static omReal64 normalisation(const Elements& h) {
    const auto lengthOf = [](auto first, auto last) {
      return std::sqrt(std::inner_product(first, last, first, omReal64{0}));
    };
    const omReal64 length = lengthOf(h.begin(), h.end());
    // Only the last row decides: those above have the targets' unit.
    const bool isLastNull =
        !(std::abs(h.back()) > NumericLimits<omReal64>::s_eps * lengthOf(h.end() - side, h.end())) ||
        !std::isfinite(length / h.back());
    return isLastNull ? length : h.back();
  }

  /// Distance of p2 to the image of p1.
  static omReal64 transferDistance(const Elements& h, const omReal64* pair) {
    const auto mapped = [&](std::size_t r) {
      omReal64 sum = h[r * side] * pair[0];
      for (std::size_t d = 1; d < D; ++d) sum += h[r * side + d] * pair[d];
      return sum + h[r * side + D];
    };
    const omReal64 w = mapped(D);
    const auto off = [&](std::size_t d) { return pair[D + d] - mapped(d) / w; };
    if constexpr (D == 2)
      return euclideanNorm(off(0), off(1));
    else
      return euclideanNorm(off(0), off(1), off(2));
  }
};

template <class Matrix>
Matrix matrixOf(const RealVector& params, std::size_t side) {
  Matrix matrix(side, side);
  for (std::size_t k = 0; k < params.size(); ++k) matrix(k / side, k % side) = params(k);
  return matrix;
}

template <class Matrix>
RealVector paramsOf(const Matrix& matrix) {
  RealVector params(matrix.size1() * matrix.size2());
  for (std::size_t k = 0; k < params.size(); ++k) params(k) = matrix(k / matrix.size2(), k % matrix.size2());
  return params;
}

}  // namespace detail

template <class Self, std::size_t D>
BoolResult HomographyEstimator<Self, D>::processViewEstimation(const SampleView& samples, RealVector& params) {
  using System = detail::HomographySystem<D>;
  const auto sums = detail::centredSums<typename System::Spreads>(samples);
  const typename System::Frame source(sums.mean.data(), sums.sums[0], sums.nbRows);
  const typename System::Frame target(sums.mean.data() + D, sums.sums[1], sums.nbRows);
  typename System::Columns qr;
  System::reduce(samples, source, target, qr);
  typename System::Elements h{};
  std::size_t rank = System::solve(qr, h);
  const bool isMap = !System::areFlat(qr, source, target, sums.nbRows) && !System::isSingular(h, source, target) &&
                     (samples.nbSamples > Self::s_minimalDataSize || System::maps(h, samples, source, target));
  if (!isMap) rank = std::min(rank, System::smallestRank - 1);
  if (rank < System::smallestRank) {
    const detail::PairVerdict why = System::whyNot(sums, qr, source, target, rank);
    return this->fail(why.code, why.quantity, why.value, why.threshold,
                      detail::estimationFailure(Self::s_rankMessage, rank, System::smallestRank));
  }
  h = System::withoutFrames(source, target, h);
  if (!std::all_of(h.begin(), h.end(), [](omReal64 element) { return std::isfinite(element); }))
    return this->fail(eEC_NotFinite, {}, 0, 0,
                      failure(this->getClassName() + ": the matrix is beyond the range of numbers"));
  std::copy(h.begin(), h.end(), params.begin());
  return {};
}

template <class Self, std::size_t D>
bool HomographyEstimator<Self, D>::estimateRoughly(const SampleView& samples, RealVector& params) const {
  return detail::RoughHomography<D>::estimate(samples, params.data().begin());
}

template <class Self, std::size_t D>
BoolResult HomographyEstimator<Self, D>::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                              RealVector& residuals) const {
  using System = detail::HomographySystem<D>;
  typename System::Elements h;
  std::copy(params.begin(), params.end(), h.begin());
  return detail::fillResiduals<2 * D>(samples, residuals,
                                      [&h](const omReal64* pair) { return System::transferDistance(h, pair); });
}

template <class Self, std::size_t D>
BoolResult HomographyEstimator<Self, D>::computeEstimation(const DataSet& dataSet, Matrix& matrix) {
  RealVector params;
  BoolResult result = computeEstimation(dataSet, params);
  if (result) matrix = detail::matrixOf<Matrix>(params, D + 1);
  return result;
}

template <class Self, std::size_t D>
BoolResult HomographyEstimator<Self, D>::computeEstimation(const SampleView& samples, Matrix& matrix) {
  RealVector params;
  BoolResult result = computeEstimation(samples, params);
  if (result) matrix = detail::matrixOf<Matrix>(params, D + 1);
  return result;
}

template <class Self, std::size_t D>
BoolResult HomographyEstimator<Self, D>::computeResiduals(const DataSet& dataSet, const Matrix& matrix,
                                                          RealVector& residuals) const {
  return computeResiduals(dataSet, detail::paramsOf(matrix), residuals);
}

template <class Self, std::size_t D>
BoolResult HomographyEstimator<Self, D>::computeResiduals(const SampleView& samples, const Matrix& matrix,
                                                          RealVector& residuals) const {
  return computeResiduals(samples, detail::paramsOf(matrix), residuals);
}

}  // namespace ormix::geom
