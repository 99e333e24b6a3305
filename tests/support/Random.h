#pragma once

// The one rule for seeds: fixed, and printed with every failure of a test that draws.

#include <ORMIXUtil/ScalarTypes.h>
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

namespace support {

/// Numbers that are the same everywhere, unlike those of the standard library's distributions.
class Random {
 public:
  explicit Random(unsigned seed) : _trace(__FILE__, __LINE__, "seed " + std::to_string(seed)), _engine(seed) {}

  std::mt19937& engine() { return _engine; }
  ormix::omUInt32 operator()() { return static_cast<ormix::omUInt32>(_engine()); }
  /// From 0, below `bound`.
  ormix::omUInt32 below(ormix::omUInt32 bound) { return (*this)() % bound; }
  ormix::omReal64 uniform(ormix::omReal64 from = -1, ormix::omReal64 to = 1) {
    return from + (to - from) * (static_cast<ormix::omReal64>((*this)()) / 4294967296.0);
  }
  /// Nearly normal, of standard deviation 1.
  ormix::omReal64 noise() {
    ormix::omReal64 sum = -6;
    for (int k = 0; k < 12; ++k) sum += uniform(0, 1);
    return sum;
  }
  /// Any bits of a type of four or eight bytes.
  template <class T>
  T bits() {
    const ormix::omUInt32 words[2] = {(*this)(), (*this)()};
    T value;
    std::memcpy(&value, words, sizeof value);
    return value;
  }

 private:
  ::testing::ScopedTrace _trace;
  std::mt19937 _engine;
};

}  // namespace support
