#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <vector>

namespace ormix {

/// Samples of an estimator in contiguous memory, not owned: `nbSamples` rows of `dimension` values each, one after the
/// other. A collection of packed points of omReal64 is one without a copy:
/// \code
/// const SampleView samples{&points.front().x, points.size(), 2};
/// \endcode
struct SampleView {
  const omReal64* data = nullptr;
  std::size_t nbSamples = 0;
  std::size_t dimension = 0;

  /// The row of sample i, not checked.
  const omReal64* operator[](std::size_t i) const { return data + i * dimension; }
  bool empty() const { return nbSamples == 0; }
};

/// The samples of a DataSet, copied one after the other. Reusing one object reuses its memory.
class ORMIX_MATH_API FlatSamples {
 public:
  /// Copies the samples, in one allocation at most. An empty set gives an empty view. Samples of unequal dimensions are
  /// refused with a message that names the first one that differs; the contents are then what they were. O(values).
  BoolResult assign(const DataSet& dataSet);

  /// Valid until the next assign() or the end of this object.
  SampleView view() const { return {_values.data(), _nbSamples, _dimension}; }

 private:
  std::vector<omReal64> _values;
  std::size_t _nbSamples = 0;
  std::size_t _dimension = 0;
};

}  // namespace ormix
