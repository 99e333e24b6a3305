#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <ios>

namespace ormix::geom {

/// No omReal64 has more decimals than this in scientific notation: beyond it there are only zeros.
inline constexpr int s_maxScientificPrecision = 1100;

/// What a stream of this precision prints in scientific notation: 6 for a negative precision, and at most
/// `s_maxScientificPrecision` (intended: a caller's precision shall not size a buffer).
constexpr int scientificPrecision(std::streamsize precision) {
  if (precision < 0) return 6;
  return precision > s_maxScientificPrecision ? s_maxScientificPrecision : static_cast<int>(precision);
}

/// Characters that `writeScientific` may write: sign, digit, point, decimals, "e+308".
constexpr std::size_t scientificLength(int precision) { return static_cast<std::size_t>(precision) + 8; }

/// Writes the value in scientific notation as a stream under the classic locale does, byte for byte: "-1.500000e+00",
/// "nan", "-inf". Six decimals take one multiplication by a power of ten; a value so near to the middle of two results
/// that its rounding error might decide goes the exact way.
/// \param out room for `scientificLength(precision)` characters
/// \param precision decimals, 0 to `s_maxScientificPrecision`
/// \return behind the last character written
ORMIX_GEOMETRY_API char* writeScientific(char* out, omReal64 value, int precision);

/// Writes the shortest decimal text that reads back as the same value; at most 24 characters.
ORMIX_GEOMETRY_API char* writeShortest(char* out, omReal32 value);
ORMIX_GEOMETRY_API char* writeShortest(char* out, omReal64 value);

}  // namespace ormix::geom
