#pragma once

#include <ORMIXGeometry/Estimation/PairVerdict.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

/// \file
/// The sums over pairs (x1, y1, x2, y2) from which the planar estimators of transforms compute; not installed.

namespace ormix::geom::detail {

/// Means of the sources and targets, and sums over all pairs of products of their centred coordinates.
struct PairSums2d {
  omReal64 nbPairs;             ///< number of pairs
  omReal64 mx1, my1, mx2, my2;  ///< means of the sources and targets
  omReal64 spread1;             ///< sum of the squared lengths of the centred sources
  omReal64 spread2;             ///< sum of the squared lengths of the centred targets
  omReal64 s;                   ///< sum of dy1 dx2 - dx1 dy2
  omReal64 c;                   ///< sum of dx1 dx2 + dy1 dy2

  /// The sums of samples, of which there must be at least one.
  static PairSums2d of(const SampleView& samples);
  /// The same for sources and targets in separate arrays, equally many and at least one.
  static PairSums2d of(const SampleView& sources, const SampleView& targets);

  /// Whether the sums determine a rotation: false when s and c are both below an absolute threshold (intended), when
  /// the sources or the targets coincide to rounding of their coordinates, when every rotation fits as well to half the
  /// digits (mirror images of regular polygons), and when a sum is NaN or infinite.
  bool determineRotation() const;
  /// Why they do not.
  PairVerdict whyNoRotation() const;
  /// The angle of the rotation about the means that maps the sources to the targets with least squared distances.
  omReal64 rotationAngle() const;
};

/// The distance of p2 from the image (a x + b y + tx, c x + d y + ty) of p1.
struct LinearMapDistance2d {
  omReal64 a, b, c, d, tx, ty;  ///< matrix, row by row, and translation

  /// \param p a row (x1, y1, x2, y2)
  omReal64 operator()(const omReal64* p) const {
    return euclideanNorm(p[2] - (a * p[0] + b * p[1] + tx), p[3] - (c * p[0] + d * p[1] + ty));
  }
};

}  // namespace ormix::geom::detail
