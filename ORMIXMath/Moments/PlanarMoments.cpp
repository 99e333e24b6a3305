#include <ORMIXMath/Moments/PlanarMoments.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Scalar/Twofold.h>

#include <algorithm>
#include <cmath>

namespace ormix {
namespace {

using detail::Twofold;
using Sums = std::array<omReal64, PlanarMoments::s_nbMoments>;

constexpr std::size_t index(omUInt32 p, omUInt32 q) { return PlanarMoments::index(p, q); }

/// Moments about a point that is (dx, dy) away from their origin: polynomials of x and y expanded about another point,
/// by Horner's scheme, first in x and then in y.
Sums shifted(Sums sums, omReal64 dx, omReal64 dy) {
  for (omUInt32 fixed = 0; fixed < 3; ++fixed)
    for (omUInt32 step = 1; step <= 3 - fixed; ++step)
      for (omUInt32 p = 3 - fixed; p >= step; --p) sums[index(p, fixed)] -= dx * sums[index(p - 1, fixed)];
  for (omUInt32 fixed = 0; fixed < 3; ++fixed)
    for (omUInt32 step = 1; step <= 3 - fixed; ++step)
      for (omUInt32 q = 3 - fixed; q >= step; --q) sums[index(fixed, q)] -= dy * sums[index(fixed, q - 1)];
  return sums;
}

bool isEmpty(const Sums& sums) {
  return std::all_of(sums.begin(), sums.end(), [](omReal64 value) { return value == 0; });
}

/// Whether a centroid at the distance d from the origin along one axis may be that of a distribution of mass of one
/// sign: d² m00 is then at most the second moment. The factor 2 leaves room for rounding.
bool isWithin(omReal64 d, omReal64 first, omReal64 second) { return std::abs(d * first) <= 2 * std::abs(second); }

/// The sum with the sums of both about the same origin, that of the larger mass.
PlanarMoments together(const PlanarMoments& base, const PlanarMoments& other) {
  const Twofold dx = difference(Twofold{base.originX, base.originXRest}, Twofold{other.originX, other.originXRest});
  const Twofold dy = difference(Twofold{base.originY, base.originYRest}, Twofold{other.originY, other.originYRest});
  const Sums moved = shifted(other.about, dx.high, dy.high);
  PlanarMoments result = base;
  for (std::size_t k = 0; k < moved.size(); ++k) result.about[k] += moved[k];
  return centredMoments(result);
}

/// A distribution that is symmetric about (x, y), from its mass and its second moments along and across a direction.
PlanarMoments symmetricMoments(omReal64 x, omReal64 y, omReal64 mass, omReal64 along, omReal64 across,
                               omReal64 cosTheta, omReal64 sinTheta) {
  const omReal64 cosSquare = cosTheta * cosTheta;
  const omReal64 sinSquare = sinTheta * sinTheta;
  PlanarMoments result{x, y};
  result.about[index(0, 0)] = mass;
  result.about[index(2, 0)] = cosSquare * along + sinSquare * across;
  result.about[index(1, 1)] = cosTheta * sinTheta * (along - across);
  result.about[index(0, 2)] = sinSquare * along + cosSquare * across;
  return result;
}

}  // namespace

PlanarMoments centredMoments(const PlanarMoments& moments) {
  const Sums& m = moments.about;
  const omReal64 mass = m[0];
  if (mass == 0) return moments;
  const Twofold dx = detail::quotient({m[index(1, 0)], 0}, {mass, 0});
  const Twofold dy = detail::quotient({m[index(0, 1)], 0}, {mass, 0});
  if (!isWithin(dx.high, m[index(1, 0)], m[index(2, 0)]) || !isWithin(dy.high, m[index(0, 1)], m[index(0, 2)]))
    return moments;
  const Twofold x = sum(Twofold{moments.originX, moments.originXRest}, dx);
  const Twofold y = sum(Twofold{moments.originY, moments.originYRest}, dy);
  PlanarMoments result{x.high, y.high, x.low, y.low, shifted(m, dx.high, dy.high)};
  result.about[index(1, 0)] = 0;
  result.about[index(0, 1)] = 0;
  return result;
}

PlanarMoments operator+(const PlanarMoments& a, const PlanarMoments& b) {
  if (isEmpty(a.about)) return b;
  if (isEmpty(b.about)) return a;
  return std::abs(a.about[0]) < std::abs(b.about[0]) ? together(b, a) : together(a, b);
}

PlanarMoments operator-(const PlanarMoments& a, const PlanarMoments& b) { return a + -b; }

PlanarMoments operator-(PlanarMoments moments) {
  for (omReal64& value : moments.about) value = 0 - value;  // not -0
  return moments;
}

omReal64 rawMoment(const PlanarMoments& moments, omUInt32 p, omUInt32 q) {
  // Of (x + X)^p (y + Y)^q with the origin (X, Y), the binomial expansion, by Horner's scheme in X of that in Y.
  constexpr omReal64 binomial[4][4] = {{1, 0, 0, 0}, {1, 1, 0, 0}, {1, 2, 1, 0}, {1, 3, 3, 1}};
  const Twofold x{moments.originX, moments.originXRest};
  const Twofold y{moments.originY, moments.originYRest};
  Twofold total{0, 0};
  for (omUInt32 i = 0; i <= p; ++i) {
    Twofold inY{0, 0};
    for (omUInt32 j = 0; j <= q; ++j)
      inY = sum(product(inY, y), times(binomial[q][j], Twofold{moments.about[index(i, j)], 0}));
    total = sum(product(total, x), times(binomial[p][i], inY));
  }
  return total.high;
}

Sums centralMoments(const PlanarMoments& moments) {
  const Sums& m = moments.about;
  Sums central = shifted(m, m[index(1, 0)] / m[0], m[index(0, 1)] / m[0]);
  central[index(1, 0)] = 0;
  central[index(0, 1)] = 0;
  return central;
}

bool isFinite(const PlanarMoments& moments) {
  return std::isfinite(moments.originX) && std::isfinite(moments.originY) && std::isfinite(moments.originXRest) &&
         std::isfinite(moments.originYRest) &&
         std::all_of(moments.about.begin(), moments.about.end(), [](omReal64 value) { return std::isfinite(value); });
}

PlanarMoments ellipseMoments(omReal64 x, omReal64 y, omReal64 a, omReal64 b, omReal64 cosTheta, omReal64 sinTheta) {
  const omReal64 mass = s_pi * a * b;
  return symmetricMoments(x, y, mass, mass * (a * a) / 4, mass * (b * b) / 4, cosTheta, sinTheta);
}

PlanarMoments rectangleMoments(omReal64 x, omReal64 y, omReal64 a, omReal64 b, omReal64 cosTheta, omReal64 sinTheta) {
  const omReal64 mass = (2 * a) * (2 * b);
  return symmetricMoments(x, y, mass, mass * (a * a) / 3, mass * (b * b) / 3, cosTheta, sinTheta);
}

PlanarMoments boxMoments(omReal64 xMin, omReal64 yMin, omReal64 xMax, omReal64 yMax) {
  const omReal64 width = xMax - xMin;
  const omReal64 height = yMax - yMin;
  const Twofold x = times(0.5, detail::difference(xMin, -xMax));
  const Twofold y = times(0.5, detail::difference(yMin, -yMax));
  PlanarMoments result = rectangleMoments(x.high, y.high, width / 2, height / 2, 1, 0);
  result.originXRest = x.low;
  result.originYRest = y.low;
  return result;
}

std::array<omReal64, 7> huInvariants(const Sums& n) {
  const omReal64 difference20 = n[index(2, 0)] - n[index(0, 2)];
  const omReal64 n11 = n[index(1, 1)];
  const omReal64 p = n[index(3, 0)] - 3 * n[index(1, 2)];
  const omReal64 q = 3 * n[index(2, 1)] - n[index(0, 3)];
  const omReal64 r = n[index(3, 0)] + n[index(1, 2)];
  const omReal64 s = n[index(2, 1)] + n[index(0, 3)];
  const omReal64 f = r * (r * r - 3 * s * s);
  const omReal64 g = s * (3 * r * r - s * s);
  return {n[index(2, 0)] + n[index(0, 2)],
          difference20 * difference20 + 4 * n11 * n11,
          p * p + q * q,
          r * r + s * s,
          p * f + q * g,
          difference20 * (r * r - s * s) + 4 * n11 * r * s,
          q * f - p * g};
}

}  // namespace ormix
