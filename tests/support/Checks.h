#pragma once

// What tests of all folders ask for. A test that includes this has GoogleTest and the standard headers below by it.

#include <ORMIXUtil/ScalarTypes.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace support {

using Scalars = ::testing::Types<ormix::omInt32, ormix::omUInt32, ormix::omReal32, ormix::omReal64>;

constexpr ormix::omReal64 s_nan = std::numeric_limits<ormix::omReal64>::quiet_NaN();
constexpr ormix::omReal64 s_infinity = std::numeric_limits<ormix::omReal64>::infinity();

template <class X>
std::string printed(const X& object) {
  std::ostringstream stream;
  stream << object;
  return stream.str();
}

inline std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

/// The message of the exception of this class that the function throws.
template <class Exception, class F>
std::string thrownBy(F function) {
  try {
    function();
  } catch (const Exception& exception) {
    return exception.what();
  }
  ADD_FAILURE() << "nothing was thrown";
  return {};
}

template <class T>
T fromBits(std::conditional_t<sizeof(T) == 4, ormix::omUInt32, ormix::omUInt64> bits) {
  T value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}
template <class T>
auto bitsOf(T value) {
  std::conditional_t<sizeof(T) == 4, ormix::omUInt32, ormix::omUInt64> bits;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

/// Numbers as some countries write them, set for the whole process while this lives.
class CommaLocale {
 public:
  CommaLocale() : _before(std::locale::global(std::locale(std::locale::classic(), new Numbers))) {}
  ~CommaLocale() { std::locale::global(_before); }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

 private:
  struct Numbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_truename() const override { return "vrai"; }
  };
  std::locale _before;
};

}  // namespace support
