#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <boost/random/mersenne_twister.hpp>
#include <cstddef>
#include <vector>

namespace ormix::detail {

/// Draws samples without repetition, the same ones for the same seed with every compiler and library: the generator's
/// output is fixed by its definition, and so is ours of it, which that of std::uniform_int_distribution is not.
class SampleDraw {
 public:
  explicit SampleDraw(omUInt32 seed) : _generator(seed) {}

  /// Fills `drawn` with different indices below `nbSamples`, which is at least its size and fits 32 bits.
  void draw(std::size_t nbSamples, std::vector<std::size_t>& drawn) {
    const auto bound = static_cast<omUInt32>(nbSamples);
    for (auto next = drawn.begin(); next != drawn.end(); ++next) {
      do *next = below(bound);
      while (std::find(drawn.begin(), next, *next) != next);
    }
  }

 private:
  /// Even over [0, bound) by multiplication, the few products that would favour a value drawn again (Lemire 2019).
  omUInt32 below(omUInt32 bound) {
    const omUInt32 unfair = (0U - bound) % bound;
    omUInt64 product = 0;
    do product = static_cast<omUInt64>(_generator()) * bound;
    while (static_cast<omUInt32>(product) < unfair);
    return static_cast<omUInt32>(product >> 32U);
  }

  boost::random::mt19937 _generator;
};

}  // namespace ormix::detail
