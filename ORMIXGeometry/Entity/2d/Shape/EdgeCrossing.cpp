#include <ORMIXGeometry/Entity/2d/Shape/EdgeCrossing.h>
#include <ORMIXMath/Distance/Orientation.h>

#include <boost/multiprecision/cpp_int.hpp>
#include <limits>

namespace ormix::geom::detail {

namespace {

using boost::multiprecision::cpp_int;

// Every omReal64 is a whole multiple of 2^-1074.
constexpr int s_scaleExponent = 1074;

cpp_int scaled(omReal64 value) {
  int exponent = 0;
  const auto mantissa = static_cast<omInt64>(std::ldexp(std::frexp(value, &exponent), 53));
  const int shift = exponent - 53 + s_scaleExponent;
  // A shift to the right drops zeros only: a subnormal number has fewer bits.
  return shift >= 0 ? cpp_int(mantissa) << shift : cpp_int(mantissa / (omInt64{1} << -shift));
}

/// By division of whole numbers, for coordinates of any size.
ColumnPosition dividedCrossing(const DownEdge& edge, omReal64 y, omReal64 offset) {
  const cpp_int y0 = scaled(edge.y0);
  const cpp_int x0 = scaled(edge.x0);
  const cpp_int height = scaled(edge.y1) - y0;
  const cpp_int numerator = (x0 - scaled(offset)) * height + (scaled(y) - y0) * (scaled(edge.x1) - x0);
  cpp_int quotient;
  cpp_int remainder;
  divide_qr(numerator, cpp_int(height << s_scaleExponent), quotient, remainder);
  if (remainder < 0) --quotient;
  if (quotient >= s_largestColumn) return {s_largestColumn, 0};
  if (quotient < -s_largestColumn) return {-s_largestColumn, 0};
  return {static_cast<omInt64>(quotient), remainder == 0 ? 0 : 1};
}

bool isSmallInteger(omReal64 value) {
  return std::abs(value) <= 0x1p52 && static_cast<omReal64>(static_cast<omInt64>(value)) == value;
}

/// On which side of the point (x, y) the edge crosses its line: -1 left, 1 right. All coordinates are multiples of 1/2
/// of at most 2^52 + 1/2, so that doubled ones have 54 bits and the products fit.
int sideOfIntegers(const DownEdge& edge, omReal64 x, omReal64 y) {
  __extension__ using Wide = __int128;
  const auto doubled = [](omReal64 value) { return static_cast<omInt64>(2 * value); };
  const Wide left = static_cast<Wide>(doubled(edge.x1) - doubled(edge.x0)) * (doubled(y) - doubled(edge.y0));
  const Wide right = static_cast<Wide>(doubled(edge.y1) - doubled(edge.y0)) * (doubled(x) - doubled(edge.x0));
  return (left > right) - (left < right);
}

bool suitsOrientation(omReal64 value) {
  return value == 0 || (std::abs(value) >= 0x1p-400 && std::abs(value) <= 0x1p500);
}

}  // namespace

ColumnPosition exactCrossing(const DownEdge& edge, omReal64 y, omReal64 offset) {
  const omReal64 x = edge.x0 + (y - edge.y0) * edge.slope - offset;
  if (std::abs(x) <= std::numeric_limits<omReal64>::max() && std::abs(x) > edge.bound + 0x1p54)
    return {x > 0 ? s_largestColumn : -s_largestColumn, 0};
  if (!(edge.bound < 0.25) || !(std::abs(x) < 0x1p50)) return dividedCrossing(edge, y, offset);
  const omReal64 nearest = std::nearbyint(x);
  const omReal64 place = nearest + offset;
  const auto column = static_cast<omInt64>(nearest);
  if (isSmallInteger(edge.x0) && isSmallInteger(edge.y0) && isSmallInteger(edge.x1) && isSmallInteger(edge.y1))
    return {column, sideOfIntegers(edge, place, y)};
  if (suitsOrientation(edge.x0) && suitsOrientation(edge.y0) && suitsOrientation(edge.x1) && suitsOrientation(edge.y1))
    return {column, orientation({edge.x0, edge.y0}, {edge.x1, edge.y1}, {place, y})};
  return dividedCrossing(edge, y, offset);
}

}  // namespace ormix::geom::detail
