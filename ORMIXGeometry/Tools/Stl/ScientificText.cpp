#include <ORMIXGeometry/Tools/Stl/ScientificText.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace ormix::geom {

namespace {

/// The largest decimal exponent of two digits; numbers beyond it are formatted by `writeExactly`.
constexpr int s_largestFastExponent = 99;

/// Powers of ten that scale a number with a decimal exponent from -99 to 99 to seven digits before the point, and the
/// digits of the numbers from 0 to 99. The powers are computed in extended precision, in which the accumulated error of
/// the products is far below the rounding error of a double.
struct ScientificTables {
  static constexpr int largestPower = s_largestFastExponent + 8;
  std::array<omReal64, 2 * largestPower + 1> powers{};
  std::array<char, 200> pairs{};

  constexpr ScientificTables() {
    long double size = 1;
    for (int exponent = 0; exponent <= largestPower; ++exponent, size *= 10) {
      powers[index(exponent)] = static_cast<omReal64>(size);
      powers[index(-exponent)] = static_cast<omReal64>(1 / size);
    }
    for (std::size_t number = 0; number < 100; ++number) {
      pairs[2 * number] = static_cast<char>('0' + number / 10);
      pairs[2 * number + 1] = static_cast<char>('0' + number % 10);
    }
  }
  omReal64 power(int exponent) const { return powers[index(exponent)]; }
  void writePair(char* out, omUInt32 number) const { std::memcpy(out, &pairs[2 * number], 2); }

 private:
  static constexpr std::size_t index(int power) { return static_cast<std::size_t>(power + largestPower); }
};
constexpr ScientificTables g_tables;

/// Formats a number with correct rounding, by the standard library.
char* writeExactly(char* out, omReal64 value, int precision) {
  return std::to_chars(out, out + scientificLength(precision), value, std::chars_format::scientific, precision).ptr;
}

/// Writes an integer of seven digits as d.dddddd, and the exponent.
char* writeSeven(char* out, omUInt32 digits, int exponent) {
  const omUInt32 decimals = digits % 1000000;
  out[0] = static_cast<char>('0' + digits / 1000000);
  out[1] = '.';
  g_tables.writePair(out + 2, decimals / 10000);
  g_tables.writePair(out + 4, decimals / 100 % 100);
  g_tables.writePair(out + 6, decimals % 100);
  out[8] = 'e';
  out[9] = exponent < 0 ? '-' : '+';
  g_tables.writePair(out + 10, static_cast<omUInt32>(exponent < 0 ? -exponent : exponent));
  return out + 12;
}

/// Formats a number with six decimals. The scaled value is below 1e7 and has the error of at most three roundings,
/// 4e-9. Where its fraction differs from one half by more than the margin, it rounds to the same integer as the exact
/// value; otherwise `writeExactly` is used. (If the exact value is close to a power of ten, both possible exponents
/// result in the same digits after rounding.)
char* writeSixDecimals(char* out, omReal64 value) {
  constexpr omReal64 margin = 1e-6;
  omReal64 size = std::fabs(value);
  if (size == 0) {
    out[0] = '-';
    out += std::signbit(value) ? 1 : 0;
    std::memcpy(out, "0.000000e+00", 12);
    return out + 12;
  }
  omUInt64 bits = 0;
  std::memcpy(&bits, &size, sizeof bits);
  const int binaryExponent = static_cast<int>(bits >> 52) - 1023;
  // 1233/4096 approximates log10(2) with an error below 5e-6: the estimate is exact or off by one. For NaN and infinity
  // it is outside the range tested next.
  int exponent = (binaryExponent * 1233) >> 12;
  if (exponent < -s_largestFastExponent + 1 || exponent > s_largestFastExponent - 2) return writeExactly(out, value, 6);
  omReal64 scaled = size * g_tables.power(6 - exponent);
  if (scaled < 1e6)
    scaled = size * g_tables.power(6 - --exponent);
  else if (scaled >= 1e7)
    scaled = size * g_tables.power(6 - ++exponent);
  auto digits = static_cast<omUInt32>(scaled);
  const omReal64 fraction = scaled - digits;
  if (!(std::fabs(fraction - 0.5) > margin)) return writeExactly(out, value, 6);
  digits += fraction > 0.5 ? 1 : 0;
  if (digits == 10000000) {
    digits = 1000000;
    ++exponent;
  }
  *out = '-';
  return writeSeven(out + (std::signbit(value) ? 1 : 0), digits, exponent);
}

}  // namespace

char* writeScientific(char* out, omReal64 value, int precision) {
  return precision == 6 ? writeSixDecimals(out, value) : writeExactly(out, value, precision);
}

char* writeShortest(char* out, omReal32 value) { return std::to_chars(out, out + 24, value).ptr; }
char* writeShortest(char* out, omReal64 value) { return std::to_chars(out, out + 24, value).ptr; }

}  // namespace ormix::geom
