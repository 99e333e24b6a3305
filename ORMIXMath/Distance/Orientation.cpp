#include <ORMIXMath/Distance/CommonGrid.h>
#include <ORMIXMath/Distance/Orientation.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace ormix {

namespace {

// Half a unit in the last place of 1, the largest relative error of one rounded operation.
constexpr omReal64 s_roundoff = 0x1p-53;

// Bound of the rounded determinant's error relative to the sum of its products' magnitudes (Shewchuk1997, section 4.3).
constexpr omReal64 s_signBound = (3.0 + 16.0 * s_roundoff) * s_roundoff;

// Bound of the error added by underflow: two products, each off by at most 2^-1075, and the bound itself rounded.
constexpr omReal64 s_underflowBound = 0x1p-1073;

// Nonzero magnitudes in this range have products and split products that neither overflow nor lose a digit.
constexpr omReal64 s_smallestMagnitude = 0x1p-400;
constexpr omReal64 s_largestMagnitude = 0x1p500;

// Enough for every finite omReal64, whose magnitudes are between 2^-1074 and 2^1024: a difference has one bit more, a
// product twice as many, and the difference of two products one more.
constexpr unsigned s_largestBits = 4224;

// A rounded determinant larger than this part of that sum has a relative error below 2^-48.
constexpr omReal64 s_valueBound = 0.125;

/// A rounded value and the rounding error: the exact value is their sum.
struct Rounded {
  omReal64 value;
  omReal64 error;
};

/// a + b (Knuth1969).
Rounded exactSum(omReal64 a, omReal64 b) {
  const omReal64 sum = a + b;
  const omReal64 fromB = sum - a;
  const omReal64 fromA = sum - fromB;
  return {sum, (a - fromA) + (b - fromB)};
}

/// Splits a value into two of at most 26 bits each, whose products are exact (Dekker1971).
Rounded split(omReal64 a) {
  constexpr omReal64 splitter = 134217729.0;  // 2^27 + 1
  const omReal64 scaled = splitter * a;
  const omReal64 high = scaled - (scaled - a);
  return {high, a - high};
}

/// a b (Dekker1971). Not by fused multiply-add, which the baseline processor lacks: a library call is slower than this.
Rounded exactProduct(omReal64 a, omReal64 b) {
  const omReal64 product = a * b;
  const Rounded splitA = split(a);
  const Rounded splitB = split(b);
  const omReal64 rest =
      ((product - splitA.value * splitB.value) - splitA.error * splitB.value) - splitA.value * splitB.error;
  return {product, splitA.error * splitB.error - rest};
}

/// A sum without rounding, stored as nonzero terms that do not overlap in their bits, smallest first (Shewchuk1997,
/// theorem 10). Has room for the sixteen terms of the determinant.
class ExactSum {
 public:
  void add(omReal64 value) {
    std::size_t kept = 0;
    omReal64 carry = value;
    for (std::size_t i = 0; i < _count; ++i) {
      const Rounded partial = exactSum(carry, _terms[i]);
      if (partial.error != 0) _terms[kept++] = partial.error;
      carry = partial.value;
    }
    if (carry != 0) _terms[kept++] = carry;
    _count = kept;
  }

  void addProduct(omReal64 a, omReal64 b) {
    if (a == 0 || b == 0) return;
    const Rounded product = exactProduct(a, b);
    add(product.error);
    add(product.value);
  }

  /// The sum rounded, with its exact sign, as the last term is larger than the sum of all others.
  omReal64 rounded() const {
    omReal64 sum = 0;
    for (std::size_t i = 0; i < _count; ++i) sum += _terms[i];
    return sum;
  }

 private:
  std::array<omReal64, 16> _terms;
  std::size_t _count = 0;
};

/// Adds (a.value + a.error) (b.value + b.error).
void addProductOfSums(ExactSum& sum, const Rounded& a, const Rounded& b) {
  sum.addProduct(a.error, b.error);
  sum.addProduct(a.error, b.value);
  sum.addProduct(a.value, b.error);
  sum.addProduct(a.value, b.value);
}

// Not inlined: this rare case would take registers from the usual one.
__attribute__((noinline)) omReal64 exactDeterminant(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c) {
  const Rounded ux = exactSum(b.x, -a.x);
  const Rounded uy = exactSum(b.y, -a.y);
  const Rounded wx = exactSum(c.x, -a.x);
  const Rounded wy = exactSum(c.y, -a.y);
  ExactSum sum;
  addProductOfSums(sum, ux, wy);
  addProductOfSums(sum, {-uy.value, -uy.error}, wx);
  return sum.rounded();
}

bool hasExactProducts(const std::array<omReal64, 6>& coordinates) {
  return std::all_of(coordinates.begin(), coordinates.end(), [](omReal64 value) {
    const omReal64 magnitude = std::abs(value);
    return magnitude == 0 || (magnitude >= s_smallestMagnitude && magnitude <= s_largestMagnitude);
  });
}

/// The sign in integers, of coordinates of any magnitude.
int signInIntegers(const std::array<omReal64, 6>& coordinates) {
  using Integer = detail::WideInteger<s_largestBits>;
  const detail::CommonGrid grid(coordinates);
  if (grid.onlyZeros()) return 0;
  const auto difference = [&](std::size_t point, std::size_t axis) -> Integer {
    return grid.toInteger<Integer>(coordinates[2 * point + axis]) - grid.toInteger<Integer>(coordinates[axis]);
  };
  const Integer left = difference(1, 0) * difference(2, 1);
  const Integer right = difference(1, 1) * difference(2, 0);
  return (left > right) - (left < right);
}

// Not inlined, as above.
__attribute__((noinline)) int exactOrientation(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c) {
  const std::array<omReal64, 6> coordinates{a.x, a.y, b.x, b.y, c.x, c.y};
  if (hasExactProducts(coordinates)) {
    const omReal64 value = exactDeterminant(a, b, c);
    return (value > 0) - (value < 0);
  }
  if (!std::all_of(coordinates.begin(), coordinates.end(), [](omReal64 value) { return std::isfinite(value); }))
    return 0;
  return signInIntegers(coordinates);
}

}  // namespace

int orientation(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c) {
  const omReal64 left = (b.x - a.x) * (c.y - a.y);
  const omReal64 right = (b.y - a.y) * (c.x - a.x);
  const omReal64 difference = left - right;
  // False where something has overflowed, since the bound is then infinite or NaN.
  if (std::abs(difference) > s_signBound * (std::abs(left) + std::abs(right)) + s_underflowBound)
    return difference > 0 ? 1 : -1;
  return exactOrientation(a, b, c);
}

omReal64 orientationDeterminant(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c) {
  const omReal64 left = (b.x - a.x) * (c.y - a.y);
  const omReal64 right = (b.y - a.y) * (c.x - a.x);
  const omReal64 difference = left - right;
  if (std::abs(difference) > s_valueBound * (std::abs(left) + std::abs(right))) return difference;
  return exactDeterminant(a, b, c);
}

}  // namespace ormix
