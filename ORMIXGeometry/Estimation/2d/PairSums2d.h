#pragma once

#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

/// \file
/// What the planar estimators of transforms know of their pairs (x1, y1, x2, y2); not installed.

namespace ormix::geom::detail {

/// Means of the sources and targets, and sums over all pairs of products of their centred coordinates.
struct PairSums2d {
  omReal64 nbPairs;
  omReal64 mx1, my1, mx2, my2;
  omReal64 spread1;  ///< Squared lengths of the sources.
  omReal64 spread2;  ///< Squared lengths of the targets.
  omReal64 s;        ///< dy1 dx2 - dx1 dy2
  omReal64 c;        ///< dx1 dx2 + dy1 dy2

  /// \param samples pairs, at least one
  static PairSums2d of(const SampleView& samples);
  /// \param sources, targets as many points, at least one
  static PairSums2d of(const SampleView& sources, const SampleView& targets);

  /// Whether the sums tell a rotation: false when all are tiny, and when one is NaN or infinite. The threshold is
  /// absolute: intended.
  bool determineRotation() const;
  /// Of the rotation that turns the sources best towards the targets.
  omReal64 rotationAngle() const;
};

/// Distance of p2 to the image (a x + b y + tx, c x + d y + ty) of p1, for a row (x1, y1, x2, y2).
struct LinearMapDistance2d {
  omReal64 a, b, c, d, tx, ty;

  omReal64 operator()(const omReal64* p) const {
    return euclideanNorm(p[2] - (a * p[0] + b * p[1] + tx), p[3] - (c * p[0] + d * p[1] + ty));
  }
};

}  // namespace ormix::geom::detail
