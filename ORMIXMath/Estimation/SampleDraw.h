#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <boost/random/mersenne_twister.hpp>
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

 private:
  /// A uniformly distributed integer in [0, bound) by multiplication and rejection (Lemire2019).
  omUInt32 below(omUInt32 bound) {
    const omUInt32 nbRejected = (0U - bound) % bound;
    omUInt64 product = 0;
    do product = static_cast<omUInt64>(_generator()) * bound;
    while (static_cast<omUInt32>(product) < nbRejected);
    return static_cast<omUInt32>(product >> 32U);
  }

  boost::random::mt19937 _generator;
};

}  // namespace ormix::detail
