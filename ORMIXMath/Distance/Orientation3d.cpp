#include <ORMIXMath/Distance/CommonGrid.h>
#include <ORMIXMath/Distance/Orientation3d.h>
#include <ORMIXMath/Scalar/Twofold.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ormix {

namespace {

// Half a unit in the last place of 1, the largest relative error of one rounded operation.
constexpr omReal64 s_roundoff = 0x1p-53;

// Bound of the rounded determinant's error relative to the sum of its products' magnitudes, as long as nothing
// underflows (Shewchuk1997, section 4.3: 7 + 56 roundoffs).
constexpr omReal64 s_signBound = (7.0 + 64.0 * s_roundoff) * s_roundoff;

// Bound of the error added by underflow, to be multiplied by the third factors of the products: a product that
// underflows has an error of at most 2^-1075, and fewer than 2^10 products are added, also with twice the precision.
constexpr omReal64 s_underflowBound = 0x1p-1065;

// s_signBound for numbers of twice the precision: their sums and products are right to 2^-104 of their largest operand,
// three operations follow each other, and the magnitudes are computed from rounded differences.
constexpr omReal64 s_twofoldBound = 0x1p-98;

// Most bits of integer coordinates whose determinant fits into a type: differences have one bit more, products of three
// have three times that, and the sum of six of these three bits more and the sign.
constexpr int fittingBits(int typeBits) { return (typeBits - 4) / 3 - 1; }

// Enough for every finite omReal64: magnitudes are between 2^-1074 and 2^1024.
constexpr int s_largestBits = 6400;
static_assert(fittingBits(s_largestBits) >= 1024 + 1074);

using Coordinates = std::array<omReal64, 12>;

/// The sign of the determinant in integers wide enough to be exact.
template <class Integer>
int signOfDeterminant(const detail::CommonGrid& grid, const Coordinates& p) {
  const auto difference = [&](std::size_t i, std::size_t axis) -> Integer {
    return grid.toInteger<Integer>(p[3 * i + axis]) - grid.toInteger<Integer>(p[axis]);
  };
  const Integer ux = difference(1, 0), uy = difference(1, 1), uz = difference(1, 2);
  const Integer vx = difference(2, 0), vy = difference(2, 1), vz = difference(2, 2);
  const Integer wx = difference(3, 0), wy = difference(3, 1), wz = difference(3, 2);
  const Integer determinant = wx * (uy * vz - uz * vy) + wy * (uz * vx - ux * vz) + wz * (ux * vy - uy * vx);
  return (determinant > 0) - (determinant < 0);
}

/// The determinant with twice the precision, which decides most cases of points that lie in a plane except for the
/// rounding of their coordinates.
omReal64 twofoldDeterminant(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c,
                            const SpatialPoint& d) {
  using namespace detail;
  const Twofold ux = difference(b.x, a.x), uy = difference(b.y, a.y), uz = difference(b.z, a.z);
  const Twofold vx = difference(c.x, a.x), vy = difference(c.y, a.y), vz = difference(c.z, a.z);
  const Twofold wx = difference(d.x, a.x), wy = difference(d.y, a.y), wz = difference(d.z, a.z);
  const Twofold x = product(wx, difference(product(uy, vz), product(uz, vy)));
  const Twofold y = product(wy, difference(product(uz, vx), product(ux, vz)));
  const Twofold z = product(wz, difference(product(ux, vy), product(uy, vx)));
  return sum(sum(x, y), z).high;
}

// Not inlined: this rare case would take registers from the usual one.
__attribute__((noinline)) int exactOrientation(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c,
                                               const SpatialPoint& d) {
  const Coordinates coordinates{a.x, a.y, a.z, b.x, b.y, b.z, c.x, c.y, c.z, d.x, d.y, d.z};
  if (!std::all_of(coordinates.begin(), coordinates.end(), [](omReal64 value) { return std::isfinite(value); }))
    return 0;
  using detail::Integer128;
  using detail::WideInteger;
  const detail::CommonGrid grid(coordinates);
  if (grid.onlyZeros()) return 0;
  if (grid.bits() <= fittingBits(128)) return signOfDeterminant<Integer128>(grid, coordinates);
  if (grid.bits() <= fittingBits(512)) return signOfDeterminant<WideInteger<512>>(grid, coordinates);
  return signOfDeterminant<WideInteger<s_largestBits>>(grid, coordinates);
}

}  // namespace

int orientation3d(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c, const SpatialPoint& d) {
  const omReal64 ux = b.x - a.x, uy = b.y - a.y, uz = b.z - a.z;
  const omReal64 vx = c.x - a.x, vy = c.y - a.y, vz = c.z - a.z;
  const omReal64 wx = d.x - a.x, wy = d.y - a.y, wz = d.z - a.z;
  const omReal64 yz = uy * vz, zy = uz * vy;
  const omReal64 zx = uz * vx, xz = ux * vz;
  const omReal64 xy = ux * vy, yx = uy * vx;
  const omReal64 determinant = wx * (yz - zy) + wy * (zx - xz) + wz * (xy - yx);
  const omReal64 magnitudes = std::abs(wx) * (std::abs(yz) + std::abs(zy)) +
                              std::abs(wy) * (std::abs(zx) + std::abs(xz)) +
                              std::abs(wz) * (std::abs(xy) + std::abs(yx));
  const omReal64 underflow = s_underflowBound * (1 + std::abs(wx) + std::abs(wy) + std::abs(wz));
  // False where something has overflowed, since the magnitudes are then infinite or NaN.
  if (std::abs(determinant) > s_signBound * magnitudes + underflow) return determinant > 0 ? 1 : -1;
  // Four points in a plane perpendicular to an axis are common and decided exactly: a rounded difference is zero for
  // equal numbers only.
  if ((ux == 0 && vx == 0 && wx == 0) || (uy == 0 && vy == 0 && wy == 0) || (uz == 0 && vz == 0 && wz == 0)) return 0;
  const omReal64 closer = twofoldDeterminant(a, b, c, d);
  if (std::abs(closer) > s_twofoldBound * magnitudes + underflow) return closer > 0 ? 1 : -1;
  return exactOrientation(a, b, c, d);
}

}  // namespace ormix
