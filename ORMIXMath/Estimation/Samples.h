#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace ormix {

/// Samples for an estimator in contiguous memory: values of their own, or borrowed ones that must outlive the samples
/// and keep their place.
class ORMIX_MATH_API Samples {
 public:
  /// No samples.
  Samples() = default;
  /// Takes over the values, row after row: `dimension` for each sample. Values left over after the last full row are
  /// not used; a dimension of 0 gives no samples.
  Samples(std::vector<omReal64> values, std::size_t dimension)
      : _values(std::move(values)),
        _nbSamples(dimension == 0 ? 0 : _values.size() / dimension),
        _dimension(dimension) {}
  /// Borrows the values of the view without a copy.
  explicit Samples(const SampleView& borrowed)
      : _borrowed(borrowed.data), _nbSamples(borrowed.nbSamples), _dimension(borrowed.dimension) {}

  /// Replaces the samples by a copy of those of the data set; assigning again reuses the memory. An empty set gives no
  /// samples. Fails, the samples unchanged, when the vectors have different lengths; the message names the first that
  /// differs. O(values).
  BoolResult assign(const DataSet& dataSet);

  /// All samples. Valid until the next assign() and as long as this object and, if borrowed, the values.
  SampleView view() const { return {_borrowed ? _borrowed : _values.data(), _nbSamples, _dimension}; }
  /// The same as view(), so that samples can be given where a view is needed.
  operator SampleView() const { return view(); }  // NOLINT(google-explicit-constructor): the same thing
  /// Whether the values belong to another object, such as the points that the samples were made from.
  bool isBorrowed() const { return _borrowed != nullptr; }

 private:
  std::vector<omReal64> _values;
  const omReal64* _borrowed = nullptr;
  std::size_t _nbSamples = 0;
  std::size_t _dimension = 0;
};

}  // namespace ormix
