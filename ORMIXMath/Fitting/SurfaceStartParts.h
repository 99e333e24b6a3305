#pragma once

#include <ORMIXMath/Algebra/SvdSolve.h>
#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Fitting/SurfaceModels.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

/// \file
/// What the starts of several surfaces are made of; not installed.

namespace ormix::detail {

// Directions from which descents begin, beside the principal ones, and the cosine of the least angle between them.
inline constexpr std::size_t s_nbBestDirections = 4;
inline constexpr omReal64 s_cosineApart = 0.94;

/// Directions spread evenly over the hemisphere, about 9 degrees apart.
std::vector<SpatialPoint> hemisphere();

/// The principal directions of points, from the one across which they are the flattest.
std::array<SpatialPoint, 3> principalDirections(const std::vector<SpatialPoint>& points);

/// The least-squares solution of rows of up to 15 unknowns with their right-hand side behind them; unknowns that the
/// rows do not determine are 0 or small. `fill(i, row)` writes row i.
template <class Fill>
std::array<omReal64, 15> leastSquares(std::size_t nbRows, std::size_t nbUnknowns, const Fill& fill) {
  TallQr<16> qr;
  std::size_t inBlock = 0;
  for (std::size_t i = 0; i < nbRows; ++i) {
    std::array<omReal64, 16> row{};
    fill(i, row.data());
    for (std::size_t k = 0; k < row.size(); ++k) qr.block(k)[inBlock] = row[k];
    if (++inBlock == qr.s_blockRows || i + 1 == nbRows) {
      qr.fold(inBlock);
      inBlock = 0;
    }
  }
  std::array<omReal64, 15 * 15> matrix;
  std::array<omReal64, 15> right;
  std::array<omReal64, 15> solution{};
  for (std::size_t i = 0; i < nbUnknowns; ++i) {
    for (std::size_t k = 0; k < nbUnknowns; ++k) matrix[i * nbUnknowns + k] = qr(i, k);
    right[i] = qr(i, nbUnknowns);
  }
  svdSolveSmall(matrix.data(), nbUnknowns, nbUnknowns, right.data(), solution.data());
  return solution;
}

/// A flat patch by its principal curvatures, from the paraboloid over the plane of the points.
struct Patch {
  SurfaceFrame frame;        ///< on the patch; the axis is the direction of the lesser curvature
  omReal64 curvature;        ///< of greater magnitude, across the axis; positive towards the normal
  omReal64 lesserCurvature;  ///< along the axis
};

Patch patchOf(const std::vector<SpatialPoint>& points, const std::array<SpatialPoint, 3>& principal);

}  // namespace ormix::detail
