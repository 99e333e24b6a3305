#pragma once

#include <ORMIXGeometry/Estimation/HomographyEstimator.h>
#include <ORMIXMath/Estimation/ConditionFit.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXGeometry/Estimation/HomographyEstimator.ipp>

#include <algorithm>
#include <array>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <cstddef>
#include <vector>

/// \file
/// The frames of ConditionReport.h for pairs of points; not installed.

namespace ormix::geom::detail {

/// Sources and targets moved to their means and scaled by powers of two, so that nothing is rounded but differences.
template <std::size_t D>
class PairFrame {
 public:
  using Frame = typename HomographySystem<D>::Frame;

  explicit PairFrame(const SampleView& pairs) {
    const auto sums = centredSums<typename HomographySystem<D>::Spreads>(pairs);
    source = Frame(sums.mean.data(), sums.sums[0], sums.nbRows);
    target = Frame(sums.mean.data() + D, sums.sums[1], sums.nbRows);
  }

  omReal64 unit() const { return target.scale; }
  SampleFrame<2 * D> samples() const {
    SampleFrame<2 * D> frame;
    for (std::size_t d = 0; d < D; ++d) {
      frame.shift[d] = source.center[d];
      frame.shift[D + d] = target.center[d];
      frame.scale[d] = source.scale;
      frame.scale[D + d] = target.scale;
    }
    return frame;
  }

 protected:
  static constexpr std::array<omReal64, D> s_origin{};
  Frame source{s_origin.data(), 0, 1}, target{s_origin.data(), 0, 1};
};

/// Of a translation, a rigid motion or a similarity, whose parameters are the scale, the angles and the shift.
template <class EstimatorOf, std::size_t D, eLinearFreedom freedom>
class LinearFrame : public PairFrame<D> {
 public:
  using Estimator = EstimatorOf;
  using Model = LinearConditions<D, freedom>;
  using Point = std::array<omReal64, D>;

  LinearFrame(const SampleView& pairs, const RealVector& params)
      : PairFrame<D>(pairs), _params(params.begin(), params.begin() + Model::s_nbTangents) {
    // Lengths stay what they are where nothing is scaled.
    if (!Model::s_scales) this->source.scale = this->target.scale = std::min(this->source.scale, this->target.scale);
  }

  /// The means are mapped onto each other by all that are least squares.
  Model start() const {
    Model model;
    if constexpr (Model::s_scales) model.scale = _params[0] / this->source.scale * this->target.scale;
    model.rotation = rotationOf(_params.data() + (Model::s_scales ? 1 : 0));
    return model;
  }

  /// The parameters of the estimator where the model did not move.
  std::vector<omReal64> params(const Model& model, bool isMoved) const {
    if (!isMoved) return _params;
    std::vector<omReal64> result;
    if constexpr (Model::s_scales) result.push_back(scaleOf(model));
    if constexpr (Model::s_turns && D == 2) result.push_back(std::atan2(model.rotation[1][0], model.rotation[0][0]));
    if constexpr (Model::s_turns && D == 3) {
      const EulerAngles angles = matrixToEuler(model.rotation);
      result.insert(result.end(), {angles.alpha, angles.beta, angles.chi});
    }
    const Point image = imageOfCentre(model);
    for (std::size_t d = 0; d < D; ++d)
      result.push_back(this->target.center[d] + model.shift[d] / this->target.scale - image[d]);
    return result;
  }

  /// What the transform is made of.
  std::vector<omReal64> parts(const Model& model, bool isMoved) const { return params(model, isMoved); }

  std::vector<omReal64> byTangent(const Model& model) const {
    constexpr std::size_t n = Model::s_nbTangents;
    std::vector<omReal64> result(n * n, 0);
    const auto at = [&](std::size_t r, std::size_t c) -> omReal64& { return result[r * n + c]; };
    const Point image = imageOfCentre(model);
    constexpr std::size_t angle = Model::s_scales ? 1 : 0;
    if constexpr (Model::s_scales) {
      at(0, 0) = scaleOf(model);
      for (std::size_t d = 0; d < D; ++d) at(Model::s_shift + d, 0) = -image[d];
    }
    if constexpr (Model::s_turns && D == 2) at(angle, angle) = 1;
    if constexpr (Model::s_turns && D == 3) {
      const RotationMatrix by = eulerByRotation(matrixToEuler(model.rotation));
      for (std::size_t r = 0; r < 3; ++r)
        for (std::size_t c = 0; c < 3; ++c) at(angle + r, angle + c) = by[r][c];
    }
    for (std::size_t k = 0; k < Model::s_nbAngles; ++k) {
      const Point turned = Model::turned(k, image);
      for (std::size_t d = 0; d < D; ++d) at(Model::s_shift + d, angle + k) = -turned[d];
    }
    for (std::size_t d = 0; d < D; ++d) at(Model::s_shift + d, Model::s_shift + d) = 1 / this->target.scale;
    return result;
  }

 private:
  static std::array<Point, D> rotationOf(const omReal64* angles) {
    std::array<Point, D> identity{};
    for (std::size_t d = 0; d < D; ++d) identity[d][d] = 1;
    if constexpr (!Model::s_turns) return identity;
    if constexpr (D == 2)
      return {Point{std::cos(angles[0]), -std::sin(angles[0])}, Point{std::sin(angles[0]), std::cos(angles[0])}};
    else
      return eulerToMatrix(angles[0], angles[1], angles[2]);
  }
  omReal64 scaleOf(const Model& model) const { return model.scale * this->source.scale / this->target.scale; }
  /// The centre of the sources, turned and scaled.
  Point imageOfCentre(const Model& model) const {
    Model given = model;
    given.scale = Model::s_scales ? scaleOf(model) : 1;
    return given.turnedAndScaled(this->source.center.data());
  }

  std::vector<omReal64> _params;
};

/// Of a homography, whose parameters are the elements of its matrix, row by row, of length 1.
template <class EstimatorOf, std::size_t D>
class HomographyFrame : public PairFrame<D> {
 public:
  using Estimator = EstimatorOf;
  using Model = HomographyConditions<D>;
  using Elements = typename Model::Elements;
  using System = HomographySystem<D>;

  HomographyFrame(const SampleView& pairs, const RealVector& params) : PairFrame<D>(pairs) {
    std::copy(params.begin(), params.end(), _params.begin());
    _start = intoFrame(_params);
    // Far from the origin the elements have fewer digits than the pairs.
    _isFar = isFar();
    if (!_isFar) return;
    std::vector<omReal64> framed(2 * D * pairs.nbSamples);
    const SampleFrame<2 * D> by = this->samples();
    for (std::size_t i = 0; i < pairs.nbSamples; ++i)
      for (std::size_t m = 0; m < 2 * D; ++m) framed[2 * D * i + m] = (pairs[i][m] - by.shift[m]) * by.scale[m];
    RealVector again;
    if (Estimator().computeEstimation(SampleView{framed.data(), pairs.nbSamples, 2 * D}, again))
      std::copy(again.begin(), again.end(), _start.begin());
  }

  Model start() const { return Model(_start); }

  std::vector<omReal64> params(const Model& model, bool isMoved) const {
    std::vector<omReal64> elements = parts(model, isMoved);
    const omReal64 length = signedLength(elements);
    for (omReal64& element : elements) element /= length;
    return elements;
  }
  /// The matrix, with 1 as its last element where that can be.
  std::vector<omReal64> parts(const Model& model, bool isMoved) const {
    const Elements elements =
        isMoved || _isFar ? System::withoutFrames(this->source, this->target, model.getElements()) : _params;
    return {elements.begin(), elements.end()};
  }

  std::vector<omReal64> byTangent(const Model& model) const {
    constexpr std::size_t n = Model::s_nbTangents, nbElements = Model::s_nbElements;
    const Elements at = outOfFrame(model.getElements());
    const omReal64 length = signedLength(at);
    std::vector<omReal64> result(nbElements * n);
    for (std::size_t k = 0; k < n; ++k) {
      Elements moved;
      for (std::size_t e = 0; e < nbElements; ++e) moved[e] = model.byTangent(e, k);
      moved = outOfFrame(moved);
      omReal64 along = 0;
      for (std::size_t e = 0; e < nbElements; ++e) along += at[e] / length * moved[e];
      for (std::size_t e = 0; e < nbElements; ++e) result[e * n + k] = (moved[e] - along * (at[e] / length)) / length;
    }
    return result;
  }

 private:
  static constexpr std::size_t side = Model::s_side;

  bool isFar() const {
    constexpr omReal64 farthest = 1e3;
    omReal64 largest = 0;
    for (std::size_t d = 0; d < D; ++d)
      largest = std::max({largest, std::abs(this->source.center[d] * this->source.scale),
                          std::abs(this->target.center[d] * this->target.scale)});
    return largest > farthest;
  }

  /// The length, with the sign that makes the last element positive, or the largest where that is 0.
  template <class Values>
  static omReal64 signedLength(const Values& elements) {
    omReal64 square = 0, largest = 0;
    for (const omReal64 element : elements) {
      square += element * element;
      if (std::abs(element) > std::abs(largest)) largest = element;
    }
    const omReal64 length = std::sqrt(square);
    const omReal64 deciding =
        std::abs(elements.back()) > 4 * NumericLimits<omReal64>::s_eps * length ? elements.back() : largest;
    return std::copysign(length, deciding);
  }

  /// target⁻¹ · A · source, as it is.
  Elements outOfFrame(Elements a) const {
    for (std::size_t r = 0; r < side; ++r)
      for (std::size_t c = 0; c < D; ++c) {
        a[r * side + c] *= this->source.scale;
        a[r * side + D] -= a[r * side + c] * this->source.center[c];
      }
    for (std::size_t r = 0; r < D; ++r)
      for (std::size_t c = 0; c < side; ++c)
        a[r * side + c] = a[r * side + c] / this->target.scale + this->target.center[r] * a[D * side + c];
    return a;
  }
  /// target · A · source⁻¹.
  Elements intoFrame(Elements a) const {
    for (std::size_t r = 0; r < D; ++r)
      for (std::size_t c = 0; c < side; ++c)
        a[r * side + c] = (a[r * side + c] - this->target.center[r] * a[D * side + c]) * this->target.scale;
    for (std::size_t r = 0; r < side; ++r)
      for (std::size_t c = 0; c < D; ++c) {
        a[r * side + D] += a[r * side + c] * this->source.center[c];
        a[r * side + c] /= this->source.scale;
      }
    return a;
  }

  Elements _params, _start;
  bool _isFar = false;
};

}  // namespace ormix::geom::detail
