#pragma once

#include <ORMIXMath/Estimation/SampleView.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace ormix::geom {

/// Samples for an estimator in contiguous memory, which is either owned or that of the points from which they were
/// made. In the latter case the points must neither be destroyed nor reallocated as long as the samples are used. See
/// toSamples().
class Samples {
 public:
  /// Owns the values, `dimension` for each sample; `dimension` must not be 0.
  Samples(std::vector<omReal64> values, std::size_t dimension)
      : _values(std::move(values)), _nbSamples(_values.size() / dimension), _dimension(dimension) {}
  /// Refers to values that are owned elsewhere.
  explicit Samples(const SampleView& borrowed)
      : _borrowed(borrowed.data), _nbSamples(borrowed.nbSamples), _dimension(borrowed.dimension) {}

  /// The samples; valid as long as this object, and as the points where it does not own the values.
  /// @{
  SampleView view() const { return {_borrowed ? _borrowed : _values.data(), _nbSamples, _dimension}; }
  operator SampleView() const { return view(); }  // NOLINT(google-explicit-constructor): the same thing
  /// @}
  /// Whether the values are owned elsewhere: by the points themselves.
  bool isBorrowed() const { return _borrowed != nullptr; }

 private:
  std::vector<omReal64> _values;
  const omReal64* _borrowed = nullptr;
  std::size_t _nbSamples = 0;
  std::size_t _dimension = 0;
};

}  // namespace ormix::geom
