#pragma once

#include <ORMIXMath/Estimation/SampleView.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace ormix::geom {

/// Samples for an estimator in one run of memory, either their own or that of the points they were made from, which
/// then have to live and stay where they are as long as the samples. See toSamples().
class Samples {
 public:
  /// Values of its own, `dimension` for each sample.
  Samples(std::vector<omReal64> values, std::size_t dimension)
      : _values(std::move(values)), _nbSamples(_values.size() / dimension), _dimension(dimension) {}
  /// Somebody else's values.
  explicit Samples(const SampleView& borrowed)
      : _borrowed(borrowed.data), _nbSamples(borrowed.nbSamples), _dimension(borrowed.dimension) {}

  /// Valid as long as this object.
  SampleView view() const { return {_borrowed ? _borrowed : _values.data(), _nbSamples, _dimension}; }
  operator SampleView() const { return view(); }  // NOLINT(google-explicit-constructor): the same thing
  /// Whether the values are those of the points themselves.
  bool isBorrowed() const { return _borrowed != nullptr; }

 private:
  std::vector<omReal64> _values;
  const omReal64* _borrowed = nullptr;
  std::size_t _nbSamples = 0;
  std::size_t _dimension = 0;
};

}  // namespace ormix::geom
