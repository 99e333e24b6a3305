#pragma once

#include <ORMIXMath/Estimation/ChanceModel.h>
#include <ORMIXMath/Estimation/ModelScore.h>

/// \file
/// How large the errors of inliers are; not installed.

namespace ormix::detail {

/// Of distances that are lengths of normally distributed vectors with `dimension` coordinates: the number of standard
/// deviations within which all but 0.27 % are (3 for one coordinate), and the mean square of a coordinate of those.
struct InlierBand {
  omReal64 deviations;
  omReal64 variance;
};
InlierBand inlierBand(std::size_t dimension);

/// The share of vectors of `dimension` normal coordinates of variance 1 whose length is at most `length`.
omReal64 chiProbability(std::size_t dimension, omReal64 length);

/// The standard deviation of one coordinate of the errors of samples, from their distances: of those within
/// `threshold`, with what the truncation takes and what outliers add taken into account. `threshold` becomes the
/// distance within which nearly all inliers are, at least `smallest` and at most `largest`. The chance model has
/// evaluated the same model.
omReal64 deviationWithin(const ModelDistances& distances, const ChanceModel& chance, std::size_t minimalDataSize,
                         omReal64 smallest, omReal64 largest, omReal64& threshold);

}  // namespace ormix::detail
