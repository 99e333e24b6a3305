#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <cstring>
#include <vector>

/// \file
/// Edges in order of their costs, roughly; not installed.

namespace ormix::detail {

/// Edges by the bucket of their cost, sixteen buckets for each doubling of it. Within a bucket they come as they were
/// put there, mostly in order of memory, which is why this is several times faster than a heap. What is pushed with
/// less than the cost reached comes as if it had that.
class CollapseQueue {
 public:
  static constexpr int s_bitsOfOctave = 4;
  /// Buckets of one doubling.
  static constexpr std::size_t s_octave = std::size_t{1} << s_bitsOfOctave;
  static constexpr std::size_t s_nbBuckets = std::size_t{2048} << s_bitsOfOctave;

  CollapseQueue() : _buckets(s_nbBuckets) {}

  /// The bucket of a cost: sign, exponent and the first bits of its mantissa. Not positive and NaN have the first.
  static std::size_t bucketOf(omReal64 cost) {
    if (!(cost > 0)) return 0;
    omUInt64 bits;
    std::memcpy(&bits, &cost, sizeof bits);
    return static_cast<std::size_t>(bits >> (52 - s_bitsOfOctave));
  }

  std::size_t currentBucket() const { return _current; }

  void push(omUInt32 edge, std::size_t bucket) {
    _buckets[std::min(std::max(bucket, _current), s_nbBuckets - 1)].push_back(edge);
  }

  /// Takes an edge of the lowest bucket; false when there is none.
  bool pop(omUInt32& edge) {
    while (_next == _buckets[_current].size()) {
      std::vector<omUInt32>().swap(_buckets[_current]);
      _next = 0;
      if (_current + 1 == s_nbBuckets) return false;
      ++_current;
    }
    edge = _buckets[_current][_next++];
    return true;
  }

  /// An edge that will be popped soon, if nothing is pushed: so many after the next one, or any other edge at the end
  /// of a bucket. The queue is not empty.
  omUInt32 ahead(std::size_t nb) const {
    const std::vector<omUInt32>& bucket = _buckets[_current];
    return bucket[std::min(_next + nb, bucket.size()) - 1];
  }

  /// Begins again with the cheapest. The queue is empty.
  void restart() { _current = 0; }

 private:
  std::vector<std::vector<omUInt32>> _buckets;
  std::size_t _current = 0;
  std::size_t _next = 0;  ///< of the current bucket
};

}  // namespace ormix::detail
