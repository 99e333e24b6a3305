#pragma once

#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Fitting/RotationFromSums.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

#include <array>

/// \file
/// What the spatial estimators of transforms know of their pairs (x1, y1, z1, x2, y2, z2); not installed.

namespace ormix::geom::detail {

/// Means of the sources and targets, and sums over all pairs of products of their centred coordinates.
struct PairSums3d {
  omReal64 nbPairs;
  std::array<omReal64, 3> mean1, mean2;
  omReal64 spread1;                  ///< Squared lengths of the sources.
  omReal64 spread2;                  ///< Squared lengths of the targets.
  std::array<omReal64, 9> products;  ///< x1 x2, x1 y2, x1 z2, y1 x2, ..., z1 z2

  /// \param samples pairs, at least one
  static PairSums3d of(const SampleView& samples);
  /// \param sources, targets as many points, at least one
  static PairSums3d of(const SampleView& sources, const SampleView& targets);

  /// Whether one of the products is not tiny, as the planar estimators ask. The threshold is absolute: intended.
  bool tellTranslation() const;
  /// The rotation that turns the sources best towards the targets; false when they tell none: when the sources or the
  /// targets coincide to rounding of their coordinates, when another rotation is as good to half the digits (collinear
  /// points, mirror images of symmetric sets), and when something is NaN or infinite. Relative, so the same at any
  /// scale.
  bool bestRotation(EulerAngles& angles, omReal64& sumOfTurned) const;
};

/// Distance of p2 to the image scale · R p1 + t of p1, for a row (x1, y1, z1, x2, y2, z2).
struct SimilarityDistance3d {
  omReal64 scale;
  RotationMatrix rotation;
  std::array<omReal64, 3> translation;

  /// With the translation that takes the turned and scaled mean of the sources to that of the targets.
  static SimilarityDistance3d ofMeans(omReal64 factor, const EulerAngles& angles, const PairSums3d& sums);
  SimilarityDistance3d(omReal64 factor, const EulerAngles& angles, const std::array<omReal64, 3>& shift)
      : scale(factor), rotation(eulerToMatrix(angles)), translation(shift) {}

  omReal64 operator()(const omReal64* p) const {
    const auto off = [&](std::size_t k) {
      const auto& row = rotation[k];
      return p[3 + k] - (scale * (row[0] * p[0] + row[1] * p[1] + row[2] * p[2]) + translation[k]);
    };
    return euclideanNorm(off(0), off(1), off(2));
  }
};

}  // namespace ormix::geom::detail
