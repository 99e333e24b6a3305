#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

namespace ormix {

/// Samples for an estimator in contiguous memory that is not owned: `nbSamples` rows of `dimension` values, one row
/// after the other. Valid as long as the memory.
///
/// \code
/// const std::vector<omReal64> xy{0, 0, 4, 0, 4, 3};  // three points of the plane
/// const SampleView samples{xy.data(), 3, 2};
/// \endcode
struct SampleView {
  const omReal64* data = nullptr;  ///< First value of the first row; may be null where there are no samples.
  std::size_t nbSamples = 0;       ///< Number of rows.
  std::size_t dimension = 0;       ///< Values of one row.

  /// The row of sample i, which is not checked to exist.
  const omReal64* operator[](std::size_t i) const { return data + i * dimension; }
  /// Whether there are no samples.
  bool empty() const { return nbSamples == 0; }
};

}  // namespace ormix
