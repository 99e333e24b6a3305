#pragma once

#include <ORMIXMath/Algebra/CallForProcessor.h>
#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Estimation/ConditionFit.h>
#include <ORMIXMath/Estimation/LinearSquares.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

/// \file
/// The conditions of samples as rows of linear least squares; not installed.

namespace ormix::detail {

// Samples that are evaluated side by side.
using SampleLanes [[gnu::vector_size(32)]] = omReal64;
constexpr std::size_t s_nbSampleLanes = 4;

template <class Model>
constexpr bool s_isLinear = false;
template <std::size_t D, eLinearFreedom freedom>
constexpr bool s_isLinear<LinearConditions<D, freedom>> = true;

/// Replaces the lower triangle of s by L with L L' = s; false where s is not positive definite.
template <std::size_t K>
bool choleskyFactor(std::array<std::array<omReal64, K>, K>& s) {
  for (std::size_t c = 0; c < K; ++c)
    for (std::size_t r = c; r < K; ++r) {
      omReal64 value = s[r][c];
      for (std::size_t k = 0; k < c; ++k) value -= s[r][k] * s[c][k];
      if (r == c && !(value > 0)) return false;
      s[r][c] = r == c ? std::sqrt(value) : value / s[c][c];
    }
  return true;
}

/// Samples in their frame, with their covariances if there are any.
template <class Model>
class ConditionRows {
 public:
  static constexpr std::size_t K = Model::s_nbConditions;
  static constexpr std::size_t N = Model::s_nbTangents;
  static constexpr std::size_t M = Model::s_sampleDimension;
  using Sample = Conditions<K, N, M>;
  using Lanes = SampleLanes;

  /// Most samples of a block, and the rows from one condition of these to the next.
  static constexpr std::size_t s_nbMost = TallQr<N + 1>::s_blockRows / K / s_nbSampleLanes * s_nbSampleLanes;
  static constexpr std::size_t strideOf(std::size_t nb) {
    return (nb + s_nbSampleLanes - 1) / s_nbSampleLanes * s_nbSampleLanes;
  }

  ConditionRows(const SampleView& samples, const SampleFrame<M>& frame, const SampleView& covariances)
      : _samples(samples), _frame(frame), _covariances(covariances) {}

  bool hasCovariances() const { return !_covariances.empty(); }

  std::array<omReal64, M> framed(std::size_t i) const {
    std::array<omReal64, M> x;
    for (std::size_t m = 0; m < M; ++m) x[m] = (_samples[i][m] - _frame.shift[m]) * _frame.scale[m];
    return x;
  }

  /// The conditions of a sample; with covariances divided by their standard deviations. False where one is not
  /// positive.
  bool whiten(const Model& model, std::size_t i, Sample& sample) const {
    const std::array<omReal64, M> x = framed(i);
    model.evaluate(x.data(), sample);
    if (!hasCovariances()) return true;
    std::array<omReal64, M * M> covariance;
    for (std::size_t r = 0; r < M; ++r)
      for (std::size_t c = 0; c < M; ++c)
        covariance[r * M + c] = _frame.scale[r] * _covariances[i][r * M + c] * _frame.scale[c];
    return adjust(model, x.data(), covariance.data(), sample);
  }

  /// The length of f, or its value where it is one number.
  static omReal64 lengthOf(const Sample& sample) {
    if constexpr (K == 1) return sample.values[0];
    omReal64 square = 0;
    for (const omReal64 value : sample.values) square += value * value;
    return std::sqrt(square);
  }

  /// Rows of a block, without factors, and lengths of conditions. Row r of sample i is r · stride + i.
  bool fill(const Model& model, std::size_t first, std::size_t nb, omReal64* block, std::size_t stride) const {
    constexpr std::size_t nbRows = TallQr<N + 1>::s_blockRows;
    if (!hasCovariances()) {
      detail::callForProcessor([&]() __attribute__((always_inline)) {
        forFour(first, nb, [&](std::size_t i, const Lanes* x) {
          Conditions<K, N, M, Lanes> found;
          model.evaluate(x, found);
          for (std::size_t r = 0; r < K; ++r) {
            omReal64* row = block + r * stride + i;
            for (std::size_t k = 0; k < N; ++k) std::memcpy(row + k * nbRows, &found.byTangent[r][k], sizeof(Lanes));
            std::memcpy(row + N * nbRows, &found.values[r], sizeof(Lanes));
          }
        });
      });
      return true;
    }
    Sample sample;
    for (std::size_t i = 0; i < nb; ++i) {
      if (!whiten(model, first + i, sample)) return false;
      for (std::size_t r = 0; r < K; ++r) {
        for (std::size_t k = 0; k < N; ++k) block[k * nbRows + r * stride + i] = sample.byTangent[r][k];
        block[N * nbRows + r * stride + i] = sample.values[r];
      }
    }
    return true;
  }

  /// The lengths of the conditions of a block from their column, or their values where each is one number.
  static void fillLengths(const omReal64* values, std::size_t nb, std::size_t stride, omReal64* lengths) {
    if constexpr (K == 1) {
      std::copy_n(values, nb, lengths);
    } else {
      callForProcessor([=]() __attribute__((always_inline)) {
        for (std::size_t i = 0; i < nb; ++i) {
          omReal64 square = 0;
          for (std::size_t r = 0; r < K; ++r) square += values[r * stride + i] * values[r * stride + i];
          lengths[i] = std::sqrt(square);
        }
      });
    }
  }

  /// The same of all samples at a model, with covariances in standard deviations where that is asked for.
  void measure(const Model& model, bool isWhitened, std::vector<omReal64>& lengths) const {
    if (hasCovariances()) {
      Sample sample;
      for (std::size_t i = 0; i < _samples.nbSamples; ++i) {
        if (isWhitened)
          whiten(model, i, sample);
        else
          model.evaluate(framed(i).data(), sample);
        lengths[i] = lengthOf(sample);
      }
      return;
    }
    callForProcessor([&]() __attribute__((always_inline)) {
      forFour(0, _samples.nbSamples, [&](std::size_t i, const Lanes* x) {
        Conditions<K, N, M, Lanes> found;
        model.evaluate(x, found);
        Lanes square{};
        for (const Lanes& value : found.values) square += value * value;
        for (std::size_t l = 0; l < std::min(s_nbSampleLanes, _samples.nbSamples - i); ++l)
          lengths[i + l] = K == 1 ? found.values[0][l] : std::sqrt(square[l]);
      });
    });
  }

  /// The squares of a model of LinearConditions without factors, and the lengths, from sums over the samples: with the
  /// image x of a source and 1 below it, each derivative is a constant matrix times (x, 1). False, and lengths not set,
  /// where the sums lose digits.
  bool reduceBySums(const Model& model, LinearSquares& squares, std::vector<omReal64>& lengths) const {
    constexpr std::size_t D = K, E = D + 1;
    // The upper triangle of the products of (x, 1), then those with f, row by row, and the square of f.
    constexpr std::size_t nbImages = E * (E + 1) / 2, nbSums = nbImages + E * D + 1;
    Lanes sums[nbSums] = {};
    callForProcessor([&]() __attribute__((always_inline)) {
      forFour(0, _samples.nbSamples, [&](std::size_t i, const Lanes* sample) {
        const std::size_t nb = std::min(s_nbSampleLanes, _samples.nbSamples - i);
        const std::array<Lanes, D> image = model.turnedAndScaled(sample);
        Lanes x[D], f[D], square{};
        for (std::size_t r = 0; r < D; ++r) {
          x[r] = image[r];
          f[r] = sample[D + r] - (image[r] + model.shift[r]);
          if (nb < s_nbSampleLanes) {
            const Lanes isThere = {1, nb > 1 ? 1.0 : 0.0, nb > 2 ? 1.0 : 0.0, 0};
            x[r] *= isThere;
            f[r] *= isThere;
          }
          square += f[r] * f[r];
        }
        std::size_t p = 0;
        for (std::size_t j = 0; j < D; ++j) {
          for (std::size_t k = j; k < D; ++k) sums[p++] += x[j] * x[k];
          sums[p++] += x[j];
        }
        ++p;
        for (std::size_t j = 0; j < D; ++j)
          for (std::size_t r = 0; r < D; ++r) sums[p++] += x[j] * f[r];
        for (std::size_t r = 0; r < D; ++r) sums[p++] += f[r];
        sums[p] += square;
        if (nb == s_nbSampleLanes)
          std::memcpy(&lengths[i], &square, sizeof(Lanes));
        else
          for (std::size_t l = 0; l < nb; ++l) lengths[i + l] = square[l];
      });
      for (omReal64& length : lengths) length = std::sqrt(length);
    });
    omReal64 values[nbSums];
    for (std::size_t p = 0; p < nbSums; ++p) values[p] = (sums[p][0] + sums[p][1]) + (sums[p][2] + sums[p][3]);
    values[nbImages - 1] = static_cast<omReal64>(_samples.nbSamples);
    return fromSums(values, values + nbImages, squares);
  }

 private:
  /// \param images the upper triangle of the products of (x, 1)
  /// \param rests  the products of (x, 1) with f, row by row, and the square of f
  static bool fromSums(const omReal64* images, const omReal64* rests, LinearSquares& squares) {
    constexpr std::size_t D = K, E = D + 1;
    using Derivative = std::array<std::array<omReal64, E>, D>;
    std::array<Derivative, N> by{}, summed{};
    for (std::size_t k = 0; k < N; ++k)
      for (std::size_t j = 0; j < D; ++j) {
        std::array<omReal64, D> axis{};
        axis[j] = 1;
        constexpr std::size_t firstAngle = Model::s_scales ? 1 : 0;
        if (k >= Model::s_shift)
          by[k][j][D] = k - Model::s_shift == j ? -1 : 0;
        else if (k >= firstAngle)
          for (std::size_t r = 0; r < D; ++r) by[k][r][j] = -Model::turned(k - firstAngle, axis)[r];
        else
          by[k][j][j] = -1;
      }
    const auto image = [&](std::size_t j, std::size_t k) {
      return images[std::min(j, k) * (2 * E - std::min(j, k) - 1) / 2 + std::max(j, k)];
    };
    squares.n = N;
    squares.cost = rests[E * D];
    for (std::size_t k = 0; k < N; ++k) {
      squares(k, N) = 0;
      for (std::size_t r = 0; r < D; ++r)
        for (std::size_t j = 0; j < E; ++j) {
          for (std::size_t m = 0; m < E; ++m) summed[k][r][j] += by[k][r][m] * image(m, j);
          squares(k, N) += by[k][r][j] * rests[j * D + r];
        }
      for (std::size_t l = 0; l <= k; ++l) {
        squares(l, k) = squares(k, l) = 0;
        for (std::size_t r = 0; r < D; ++r)
          for (std::size_t j = 0; j < E; ++j) squares(l, k) += by[l][r][j] * summed[k][r][j];
      }
    }
    return factorise(squares);
  }

  /// Calls `use(i, values)` for four samples in the frame at a time, i being the first of them. The last one stands for
  /// those that are missing.
  template <class Use>
  [[gnu::always_inline]] void forFour(std::size_t first, std::size_t nb, const Use& use) const {
    std::array<omReal64, s_nbSampleLanes * M> last;
    for (std::size_t i = 0; i < nb; i += s_nbSampleLanes) {
      const omReal64* rows = _samples[first + i];
      if (nb - i < s_nbSampleLanes) {
        for (std::size_t l = 0; l < s_nbSampleLanes; ++l)
          std::copy_n(_samples[first + std::min(i + l, nb - 1)], M, &last[l * M]);
        rows = last.data();
      }
      Lanes sample[M];
      for (std::size_t m = 0; m < M; ++m)
        sample[m] = (Lanes{rows[m], rows[M + m], rows[2 * M + m], rows[3 * M + m]} - _frame.shift[m]) * _frame.scale[m];
      use(i, sample);
    }
  }

  /// Moves the place of the derivatives to the nearest sample that satisfies the conditions, by the covariance, and
  /// whitens the conditions as they are from there on.
  static bool adjust(const Model& model, const omReal64* x, const omReal64* covariance, Sample& sample) {
    // Affine conditions are exact after one step; others gain digits with each, as their errors are small.
    constexpr std::size_t nbSteps = Model::s_isAffine ? 1 : 8;
    constexpr omReal64 tolerance = 1e-12;
    std::array<omReal64, M> adjusted;
    std::copy(x, x + M, adjusted.begin());
    std::array<std::array<omReal64, K>, K> factor;
    for (std::size_t step = 0;; ++step) {
      // C E', then E C E'.
      std::array<std::array<omReal64, K>, M> spread{};
      for (std::size_t m = 0; m < M; ++m)
        for (std::size_t r = 0; r < K; ++r)
          for (std::size_t c = 0; c < M; ++c) spread[m][r] += covariance[m * M + c] * sample.bySample[r][c];
      for (std::size_t r = 0; r < K; ++r) {
        for (std::size_t m = 0; m < M; ++m) sample.values[r] += sample.bySample[r][m] * (x[m] - adjusted[m]);
        for (std::size_t c = 0; c < K; ++c) {
          factor[r][c] = 0;
          for (std::size_t m = 0; m < M; ++m) factor[r][c] += sample.bySample[r][m] * spread[m][c];
        }
      }
      if (!choleskyFactor(factor)) return false;
      if (step == nbSteps) break;
      std::array<omReal64, K> y = sample.values;
      forward(factor, y);
      for (std::size_t r = K; r-- > 0;) {
        for (std::size_t k = r + 1; k < K; ++k) y[r] -= factor[k][r] * y[k];
        y[r] /= factor[r][r];
      }
      omReal64 change = 0;
      for (std::size_t m = 0; m < M; ++m) {
        omReal64 moved = x[m];
        for (std::size_t r = 0; r < K; ++r) moved -= spread[m][r] * y[r];
        change = std::max(change, std::abs(moved - adjusted[m]) / (1 + std::abs(moved)));
        adjusted[m] = moved;
      }
      if (change <= tolerance) break;
      model.evaluate(adjusted.data(), sample);
    }
    forward(factor, sample.values);
    for (std::size_t k = 0; k < N; ++k) {
      std::array<omReal64, K> column;
      for (std::size_t r = 0; r < K; ++r) column[r] = sample.byTangent[r][k];
      forward(factor, column);
      for (std::size_t r = 0; r < K; ++r) sample.byTangent[r][k] = column[r];
    }
    return true;
  }

  static void forward(const std::array<std::array<omReal64, K>, K>& factor, std::array<omReal64, K>& b) {
    for (std::size_t r = 0; r < K; ++r) {
      for (std::size_t k = 0; k < r; ++k) b[r] -= factor[r][k] * b[k];
      b[r] /= factor[r][r];
    }
  }

  const SampleView _samples;
  const SampleFrame<M>& _frame;
  const SampleView _covariances;  ///< empty for none
};

}  // namespace ormix::detail
