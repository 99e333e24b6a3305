#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <boost/random/mersenne_twister.hpp>
#include <cmath>
#include <cstddef>
#include <vector>

namespace ormix::detail {

/// Draws samples without repetition. The same seed gives the same draws with every compiler and standard library: the
/// output of the generator is standardised, and indices are computed from it here, since std::uniform_int_distribution
/// differs between libraries.
class SampleDraw {
 public:
  /// Seeds the generator.
  explicit SampleDraw(omUInt32 seed) : _generator(seed) {}

  /// Fills `drawn` with distinct indices below `nbSamples`, which must be at least its size and fit into 32 bits.
  void draw(std::size_t nbSamples, std::vector<std::size_t>& drawn) {
    const auto bound = static_cast<omUInt32>(nbSamples);
    for (auto next = drawn.begin(); next != drawn.end(); ++next) {
      do *next = below(bound);
      while (std::find(drawn.begin(), next, *next) != next);
    }
  }

  /// A uniformly distributed integer in [0, bound) by multiplication and rejection (Lemire2019).
  omUInt32 below(omUInt32 bound) {
    const omUInt32 nbRejected = (0U - bound) % bound;
    omUInt64 product = 0;
    do product = static_cast<omUInt64>(_generator()) * bound;
    while (static_cast<omUInt32>(product) < nbRejected);
    return static_cast<omUInt32>(product >> 32U);
  }

 private:
  boost::random::mt19937 _generator;
};

/// Draws among the first samples, the best ones, and ever more of them, as many draws from each number of them as
/// there would be among `nbDraws` from all (PROSAC, ChumMatas2005).
class RankedDraw {
 public:
  RankedDraw(std::size_t nbSamples, std::size_t minimalDataSize, std::size_t nbDraws)
      : _nbSamples(nbSamples), _pool(minimalDataSize), _expected(static_cast<omReal64>(nbDraws)) {
    for (std::size_t k = 0; k < minimalDataSize; ++k)
      _expected *= static_cast<omReal64>(minimalDataSize - k) / static_cast<omReal64>(nbSamples - k);
  }

  /// The number of samples that were drawn from so far.
  std::size_t pool() const { return _pool; }

  /// Fills `drawn` with distinct indices of the pool, of which one is the newest where the pool has just grown.
  void draw(SampleDraw& draw, std::vector<std::size_t>& drawn) {
    const std::size_t m = drawn.size();
    ++_nbDrawn;
    while (_pool<_nbSamples&& static_cast<omReal64>(_nbDrawn)> _last) {
      const omReal64 next = _expected * static_cast<omReal64>(_pool + 1) / static_cast<omReal64>(_pool + 1 - m);
      _last += std::ceil(next - _expected);
      _expected = next;
      ++_pool;
    }
    if (_pool == _nbSamples) return draw.draw(_pool, drawn);
    drawn.pop_back();
    draw.draw(_pool - 1, drawn);
    drawn.push_back(_pool - 1);
  }

 private:
  std::size_t _nbSamples;
  std::size_t _pool;
  omReal64 _expected;  ///< draws from the pool among all
  omReal64 _last = 1;  ///< the last draw from this pool
  std::size_t _nbDrawn = 0;
};

}  // namespace ormix::detail
