#pragma once

#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

/// \file
/// Least squares of the distances to a model of SurfaceModels.h; not installed.

namespace ormix::detail {

/// How a descent ended.
struct Descent {
  omReal64 cost = std::numeric_limits<omReal64>::infinity();  ///< sum of squared residuals
  std::size_t nbIterations = 0;                               ///< steps tried
  bool hasConverged = false;                                  ///< whether further steps would change nothing of note
  omReal64 condition = 0;                                     ///< of the Jacobian, see reciprocalCondition()
};

template <class Model>
omReal64 costOf(const Model& model, const std::vector<SpatialPoint>& points) {
  std::array<omReal64, Model::s_nbRows> residuals;
  std::array<omReal64, Model::s_nbRows * Model::s_nbParameters> gradients;
  omReal64 cost = 0;
  for (const SpatialPoint& point : points) {
    model.rows(point, residuals.data(), gradients.data());
    for (const omReal64 residual : residuals) cost += residual * residual;
  }
  return cost;
}

/// Folds the rows of the Jacobian with the residuals as its last column.
template <class Model>
void foldJacobian(const Model& model, const std::vector<SpatialPoint>& points, TallQr<Model::s_nbParameters + 1>& qr) {
  constexpr std::size_t n = Model::s_nbParameters;
  std::array<omReal64, Model::s_nbRows> residuals;
  std::array<omReal64, Model::s_nbRows * n> gradients;
  std::size_t row = 0;
  for (const SpatialPoint& point : points) {
    model.rows(point, residuals.data(), gradients.data());
    for (std::size_t r = 0; r < Model::s_nbRows; ++r, ++row) {
      for (std::size_t k = 0; k < n; ++k) qr.block(k)[row] = gradients[r * n + k];
      qr.block(n)[row] = residuals[r];
    }
    if (row + Model::s_nbRows > qr.s_blockRows) {
      qr.fold(row);
      row = 0;
    }
  }
  if (row > 0) qr.fold(row);
}

/// The solution of the leading N columns of a triangle for its last column; 0 for columns that are lost in rounding.
template <std::size_t N>
std::array<omReal64, N> solveTriangle(const TallQr<N + 1>& qr) {
  std::array<omReal64, N> x{};
  for (std::size_t k = N; k-- > 0;) {
    omReal64 value = qr(k, N);
    for (std::size_t j = k + 1; j < N; ++j) value -= qr(k, j) * x[j];
    x[k] = qr(k, k) != 0 ? value / qr(k, k) : 0;
  }
  return x;
}

/// The lengths of the leading N columns of a triangle.
template <std::size_t N>
std::array<omReal64, N> columnLengths(const TallQr<N + 1>& qr) {
  std::array<omReal64, N> lengths{};
  for (std::size_t k = 0; k < N; ++k) {
    omReal64 square = 0;
    for (std::size_t i = 0; i <= k; ++i) square += qr(i, k) * qr(i, k);
    lengths[k] = std::sqrt(square);
  }
  return lengths;
}

/// A lower bound of the smallest over the largest singular value of the leading columns, each scaled to length 1, at
/// most N times too low: by the lengths of all and of their inverse.
template <std::size_t N>
omReal64 reciprocalCondition(const TallQr<N + 1>& qr) {
  const std::array<omReal64, N> lengths = columnLengths<N>(qr);
  omReal64 inverseSquare = 0;
  for (std::size_t column = 0; column < N; ++column) {
    std::array<omReal64, N> x{};
    for (std::size_t k = column + 1; k-- > 0;) {
      omReal64 value = k == column ? 1 : 0;
      for (std::size_t j = k + 1; j <= column; ++j) value -= qr(k, j) / lengths[j] * x[j];
      x[k] = value / (qr(k, k) / lengths[k]);
      inverseSquare += x[k] * x[k];
    }
  }
  const omReal64 bound = 1 / std::sqrt(static_cast<omReal64>(N) * inverseSquare);
  return std::isfinite(bound) ? bound : 0;
}

/// Levenberg's and Marquardt's damped steps (Marquardt1963, damping of Nielsen1999), each on the orthogonal
/// decomposition of the Jacobian, whose condition is not squared. Points are about 1 in size and nearly centred.
/// O(points) an iteration, nothing allocated.
template <class Model>
Descent descend(const std::vector<SpatialPoint>& points, Model& model, std::size_t nbMaxIterations) {
  constexpr std::size_t n = Model::s_nbParameters;
  constexpr omReal64 epsilon = std::numeric_limits<omReal64>::epsilon();
  // What a step may still promise of the length of the residuals when it ends, and the rounding error of each of them.
  constexpr omReal64 negligible = 1e-12;
  constexpr omReal64 firstDamping = 1e-3;
  const omReal64 rounding = 4 * epsilon * std::sqrt(static_cast<omReal64>(points.size()));
  Descent descent;
  descent.cost = costOf(model, points);
  std::array<omReal64, n> scales{};
  omReal64 damping = firstDamping;
  omReal64 growth = 2;
  TallQr<n + 1> jacobian;
  foldJacobian(model, points, jacobian);
  while (std::isfinite(descent.cost) && descent.nbIterations < nbMaxIterations) {
    // The rows of the damping are folded below the triangle.
    const std::array<omReal64, n> lengths = columnLengths<n>(jacobian);
    TallQr<n + 1> damped = jacobian;
    for (std::size_t k = 0; k < n; ++k) {
      scales[k] = std::max(scales[k], lengths[k]);
      for (std::size_t i = 0; i <= n; ++i) damped.block(i)[k] = 0;
      // A column of zeros keeps its parameter.
      damped.block(k)[k] = std::sqrt(damping) * (scales[k] > 0 ? scales[k] : 1);
    }
    damped.fold(n);
    std::array<omReal64, n> step = solveTriangle<n>(damped);
    omReal64 promisedSquare = 0;
    for (std::size_t i = 0; i < n; ++i) {
      omReal64 change = 0;
      for (std::size_t k = i; k < n; ++k) change += jacobian(i, k) * step[k];
      promisedSquare += change * change + 2 * damping * std::pow(scales[i] * step[i], 2);
    }
    for (omReal64& value : step) value = -value;
    const omReal64 promised = std::sqrt(promisedSquare);
    const omReal64 residual = std::sqrt(descent.cost);
    if (!std::isfinite(promised)) break;
    if (promised <= std::max(negligible * residual, rounding) && damping <= firstDamping) descent.hasConverged = true;
    if (descent.hasConverged && promised <= rounding) break;
    ++descent.nbIterations;
    const Model next = model.moved(step.data());
    const omReal64 cost = costOf(next, points);
    if (cost < descent.cost) {
      const omReal64 bend = 2 * std::min((descent.cost - cost) / promisedSquare, 1.0) - 1;
      model = next;
      descent.cost = cost;
      damping = std::max(damping * std::max(1.0 / 3, 1 - bend * bend * bend), 1e-20);
      growth = 2;
      jacobian = {};
      foldJacobian(model, points, jacobian);
    } else {
      // Where nothing more can be gained than rounding changes, the end is reached.
      if (promised <= 1e-7 * residual || promised <= 64 * rounding) descent.hasConverged = true;
      damping *= growth;
      growth *= 2;
    }
    if (descent.hasConverged) break;
  }
  if (std::isfinite(descent.cost)) descent.condition = reciprocalCondition<n>(jacobian);
  return descent;
}

}  // namespace ormix::detail
