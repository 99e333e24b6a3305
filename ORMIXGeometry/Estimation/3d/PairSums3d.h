#pragma once

#include <ORMIXGeometry/Estimation/PairVerdict.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Fitting/RotationFromSums.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

#include <array>

/// \file
/// The sums over pairs (x1, y1, z1, x2, y2, z2) from which the spatial estimators of transforms compute; not installed.

namespace ormix::geom::detail {

/// Means of the sources and targets, and sums over all pairs of products of their centred coordinates.
struct PairSums3d {
  omReal64 nbPairs;                      ///< number of pairs
  std::array<omReal64, 3> mean1, mean2;  ///< means of the sources and targets
  omReal64 spread1;                      ///< sum of the squared lengths of the centred sources
  omReal64 spread2;                      ///< sum of the squared lengths of the centred targets
  std::array<omReal64, 9> products;      ///< sums of x1 x2, x1 y2, x1 z2, y1 x2, ..., z1 z2, centred

  /// The sums of samples, of which there must be at least one.
  static PairSums3d of(const SampleView& samples);
  /// The same for sources and targets in separate arrays, equally many and at least one.
  static PairSums3d of(const SampleView& sources, const SampleView& targets);

  /// Whether a translation is estimated: false when all products are below an absolute threshold (intended), as
  /// PairSums2d::determineRotation() requires in the plane, and when one is NaN or infinite.
  bool determineTranslation() const;
  /// The rotation about the means that maps the sources to the targets with least squared distances. False when it is
  /// not unique: when the sources or the targets coincide to rounding of their coordinates, when another rotation is as
  /// good to half of the digits (collinear points, mirror images of symmetric sets), and when a sum is NaN or infinite.
  /// The thresholds are relative, so that the result does not depend on the scale.
  /// \param sumOfTurned set to the sum of the products of centred targets and rotated centred sources
  bool bestRotation(EulerAngles& angles, omReal64& sumOfTurned) const;
  /// Why there is no translation, or no rotation.
  /// @{
  PairVerdict whyNoTranslation() const;
  PairVerdict whyNoRotation() const;
  /// @}
};

/// The distance of p2 from the image scale · R p1 + t of p1.
struct SimilarityDistance3d {
  omReal64 scale;                       ///< scale
  RotationMatrix rotation;              ///< R
  std::array<omReal64, 3> translation;  ///< t

  /// With the translation that maps the mean of the sources, rotated and scaled, to that of the targets.
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
