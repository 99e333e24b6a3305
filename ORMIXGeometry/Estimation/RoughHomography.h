#pragma once

#include <ORMIXMath/Algebra/SmallElimination.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cmath>
#include <cstddef>

/// \file
/// Projective maps for robust loops, which score and improve them; not installed.

namespace ormix::geom::detail {

using ormix::detail::solveSmall;

/// Projective maps of the plane (D = 2) or of space (D = 3) from pairs (p1, p2), row by row in a matrix of D + 1 rows.
template <std::size_t D>
struct RoughHomography {
  static constexpr std::size_t side = D + 1;
  // Pivots below this fraction of the largest coefficient are those of flat sets.
  static constexpr omReal64 s_flat = 1e-9;
  using Matrix = std::array<std::array<omReal64, side>, side>;

  /// Means and the inverses of the largest distances from them along an axis.
  struct Frame {
    std::array<omReal64, D> mean{};
    omReal64 scale = 1;

    Frame(const SampleView& samples, std::size_t offset) {
      for (std::size_t i = 0; i < samples.nbSamples; ++i)
        for (std::size_t d = 0; d < D; ++d) mean[d] += samples[i][offset + d];
      omReal64 largest = 0;
      for (omReal64& value : mean) value /= static_cast<omReal64>(samples.nbSamples);
      for (std::size_t i = 0; i < samples.nbSamples; ++i)
        for (std::size_t d = 0; d < D; ++d) largest = std::max(largest, std::abs(samples[i][offset + d] - mean[d]));
      if (largest > 0) scale = 1 / largest;
    }
  };

  /// From at least D + 2 pairs. False for flat sets and matrices that are not finite.
  static bool estimate(const SampleView& samples, omReal64* h) {
    const Frame source(samples, 0);
    const Frame target(samples, D);
    Matrix inner{};
    const bool found = samples.nbSamples == D + 2 ? throughFrames(samples, source, target, inner)
                                                  : byNormalEquations(samples, source, target, inner);
    return found && withoutFrames(source, target, inner, h);
  }

 private:
  static std::array<omReal64, side> pointOf(const omReal64* point, const Frame& frame) {
    std::array<omReal64, side> p;
    for (std::size_t d = 0; d < D; ++d) p[d] = (point[d] - frame.mean[d]) * frame.scale;
    p[D] = 1;
    return p;
  }

  /// The columns of the first D + 1 points, scaled so that their sum is the last point. False where D + 1 of all are
  /// flat.
  static bool projectiveFrame(const SampleView& samples, std::size_t offset, const Frame& frame, Matrix& columns) {
    std::array<std::array<omReal64, side + 1>, side> system;
    for (std::size_t k = 0; k < D + 2; ++k) {
      const auto p = pointOf(samples[k] + offset, frame);
      for (std::size_t r = 0; r < side; ++r) system[r][k] = p[r];
    }
    for (std::size_t r = 0; r < side; ++r)
      for (std::size_t c = 0; c < side; ++c) columns[r][c] = system[r][c];
    if (!solveSmall<side, 1>(system, s_flat)) return false;
    for (std::size_t c = 0; c < side; ++c) {
      const omReal64 factor = system[c][side];
      if (!(std::abs(factor) > s_flat)) return false;
      for (std::size_t r = 0; r < side; ++r) columns[r][c] *= factor;
    }
    return true;
  }

  static bool throughFrames(const SampleView& samples, const Frame& source, const Frame& target, Matrix& h) {
    Matrix from;
    Matrix to;
    if (!projectiveFrame(samples, 0, source, from) || !projectiveFrame(samples, D, target, to)) return false;
    // h from = to, transposed.
    std::array<std::array<omReal64, 2 * side>, side> system;
    for (std::size_t r = 0; r < side; ++r)
      for (std::size_t c = 0; c < side; ++c) {
        system[r][c] = from[c][r];
        system[r][side + c] = to[c][r];
      }
    if (!solveSmall<side, side>(system, s_flat * s_flat)) return false;
    for (std::size_t r = 0; r < side; ++r)
      for (std::size_t c = 0; c < side; ++c) h[c][r] = system[r][side + c];
    return true;
  }

  /// With the last element 1 the first D rows a_d and the first D elements c of the last one satisfy
  /// a_d p - u_d (c x) = u_d, p = (x, 1). The rows a_d are eliminated first.
  static bool byNormalEquations(const SampleView& samples, const Frame& source, const Frame& target, Matrix& h) {
    // Sums of p p', of u_d p p' for each d, and of u² p p'.
    std::array<Matrix, D + 2> sums{};
    for (std::size_t i = 0; i < samples.nbSamples; ++i) {
      const auto p = pointOf(samples[i], source);
      const auto u = pointOf(samples[i] + D, target);
      omReal64 square = 0;
      for (std::size_t d = 0; d < D; ++d) square += u[d] * u[d];
      for (std::size_t r = 0; r < side; ++r)
        for (std::size_t c = r; c < side; ++c) {
          const omReal64 product = p[r] * p[c];
          sums[0][r][c] += product;
          for (std::size_t d = 0; d < D; ++d) sums[d + 1][r][c] += u[d] * product;
          sums[D + 1][r][c] += square * product;
        }
    }
    for (Matrix& sum : sums)
      for (std::size_t r = 0; r < side; ++r)
        for (std::size_t c = 0; c < r; ++c) sum[r][c] = sum[c][r];
    // P a_d = Q_d (c, 1): the columns of P⁻¹ Q_d for all d.
    std::array<std::array<omReal64, side + D * side>, side> first;
    for (std::size_t r = 0; r < side; ++r)
      for (std::size_t c = 0; c < side; ++c) {
        first[r][c] = sums[0][r][c];
        for (std::size_t d = 0; d < D; ++d) first[r][(d + 1) * side + c] = sums[d + 1][r][c];
      }
    if (!solveSmall<side, D * side>(first, s_flat)) return false;
    // (S - sum of Q_d' P⁻¹ Q_d) (c, 1) = 0 in the first D rows.
    std::array<std::array<omReal64, D + 1>, D> second;
    for (std::size_t r = 0; r < D; ++r)
      for (std::size_t c = 0; c < side; ++c) {
        omReal64 value = sums[D + 1][r][c];
        for (std::size_t d = 0; d < D; ++d)
          for (std::size_t k = 0; k < side; ++k) value -= sums[d + 1][k][r] * first[k][(d + 1) * side + c];
        second[r][c] = c < D ? value : -value;
      }
    if (!solveSmall<D, 1>(second, s_flat * s_flat)) return false;
    for (std::size_t c = 0; c < D; ++c) h[D][c] = second[c][D];
    h[D][D] = 1;
    for (std::size_t d = 0; d < D; ++d)
      for (std::size_t r = 0; r < side; ++r) {
        omReal64 value = 0;
        for (std::size_t c = 0; c < side; ++c) value += first[r][(d + 1) * side + c] * h[D][c];
        h[d][r] = value;
      }
    return true;
  }

  /// target⁻¹ · inner · source. False where an element is not finite.
  static bool withoutFrames(const Frame& source, const Frame& target, const Matrix& inner, omReal64* h) {
    Matrix byCoordinates;
    for (std::size_t r = 0; r < side; ++r) {
      byCoordinates[r][D] = inner[r][D];
      for (std::size_t c = 0; c < D; ++c) {
        byCoordinates[r][c] = inner[r][c] * source.scale;
        byCoordinates[r][D] -= byCoordinates[r][c] * source.mean[c];
      }
    }
    omReal64 sum = 0;
    for (std::size_t r = 0; r < side; ++r)
      for (std::size_t c = 0; c < side; ++c) {
        const omReal64 value =
            r < D ? byCoordinates[r][c] / target.scale + target.mean[r] * byCoordinates[D][c] : byCoordinates[D][c];
        h[r * side + c] = value;
        sum += std::abs(value);
      }
    return std::isfinite(sum);
  }
};

}  // namespace ormix::geom::detail
