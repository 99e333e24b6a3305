#pragma once

#include <ORMIXGeometry/Estimation/2d/CentredSums.h>
#include <ORMIXMath/Estimation/SampleView.h>

/// \file
/// What the estimators of transforms know of their pairs (x1, y1, x2, y2); not installed.

namespace ormix::geom::detail {

/// Products of a centred pair: spreads of sources and targets, S and C of PairSums2d.
struct PairProducts2d {
  static constexpr std::size_t dimension = 4;
  static constexpr std::size_t nbProducts = 4;
  static constexpr std::size_t nbAccumulators = 3;

  [[gnu::always_inline]] static inline void add(const SumLanes& c, SumLanes* sums) {
    sums[0] += c * c;
    sums[1] += c * __builtin_shufflevector(c, c, 3, 2, 1, 0);
    sums[2] += c * __builtin_shufflevector(c, c, 2, 3, 0, 1);
  }

  static void take(const SumLanes* lanes, omReal64* sums) {
    sums[0] = lanes[0][0] + lanes[0][1];
    sums[1] = lanes[0][2] + lanes[0][3];
    sums[2] = lanes[1][1] - lanes[1][0];
    sums[3] = lanes[2][0] + lanes[2][1];
  }

  static bool isSmall(const omReal64* step, const omReal64* sums) {
    return 2 * step[0] <= sums[0] && 2 * step[1] <= sums[1];
  }
};

/// Means of the sources and targets, and sums over all pairs of products of their centred coordinates.
struct PairSums2d {
  omReal64 nbPairs;
  omReal64 mx1, my1, mx2, my2;
  omReal64 spread1;  ///< Squared lengths of the sources.
  omReal64 spread2;  ///< Squared lengths of the targets.
  omReal64 s;        ///< dy1 dx2 - dx1 dy2
  omReal64 c;        ///< dx1 dx2 + dy1 dy2

  /// Whether the sums tell a rotation: false when all are tiny, and when one is NaN or infinite. The threshold is
  /// absolute: intended.
  bool determineRotation() const;
  /// Of the rotation that turns the sources best towards the targets.
  omReal64 rotationAngle() const;
};

/// \param samples at least one
PairSums2d pairSums(const SampleView& samples);

}  // namespace ormix::geom::detail
