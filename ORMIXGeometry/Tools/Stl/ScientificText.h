#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <ios>

namespace ormix::geom {

/// The largest precision that is used: no omReal64 has more nonzero decimals in scientific notation.
inline constexpr int s_maxScientificPrecision = 1100;

/// The number of decimals that a stream of this precision prints in scientific notation: 6 for a negative precision. At
/// most `s_maxScientificPrecision` (intended), so that the size of buffers is bounded whatever a caller sets.
constexpr int scientificPrecision(std::streamsize precision) {
  if (precision < 0) return 6;
  return precision > s_maxScientificPrecision ? s_maxScientificPrecision : static_cast<int>(precision);
}

/// The most characters that `writeScientific` writes: sign, digit, point, decimals, "e+308".
constexpr std::size_t scientificLength(int precision) { return static_cast<std::size_t>(precision) + 8; }

/// Writes the value in scientific notation as a stream under the classic locale does, byte for byte: "-1.500000e+00",
/// "nan", "-inf". Six decimals are computed by one multiplication with a power of ten; a value so close to the middle
/// between two results that the error of the product could matter is formatted exactly instead.
/// \param out memory for `scientificLength(precision)` characters
/// \param precision decimals, 0 to `s_maxScientificPrecision`
/// \return the address after the last character written
ORMIX_GEOMETRY_API char* writeScientific(char* out, omReal64 value, int precision);

/// Writes the shortest decimal text that reads back as the same value, at most 24 characters, and returns the address
/// after the last one.
/// @{
ORMIX_GEOMETRY_API char* writeShortest(char* out, omReal32 value);
ORMIX_GEOMETRY_API char* writeShortest(char* out, omReal64 value);
/// @}

}  // namespace ormix::geom
