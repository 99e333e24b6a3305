#include <ORMIXMath/Enclosing/SmallestBall.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>
#include <ORMIXMath/Transform/MagnitudeBound.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace ormix {

namespace {

using Wide = long double;

template <std::size_t D>
using Place = std::array<omReal64, D>;

// Points this far outside, relative to the squared radius, count as inside: more than the rounding errors of squared
// distances, less than what the result may be off.
constexpr omReal64 s_outside = 1e-14;

// Steps that do not make the rounded ball larger, after which no more are done. A point outside by a part d of the
// radius moves the centre by about that and makes the radius larger by a part d² only, so such steps are usual.
constexpr int s_mostIdleSteps = 50;

// Magnitudes whose squares neither overflow nor underflow; points of others are scaled.
constexpr int s_largestExponent = 300;
constexpr int s_smallestExponent = -300;

// Squared distances between these have lost no digits to underflow, as in euclideanNorm().
constexpr omReal64 s_smallestSquare = 1e-280;
constexpr omReal64 s_largestSquare = 1e300;

// One point in so many is in the sample.
constexpr std::size_t s_sampleStep = 32;

// Points of a block that is searched for the largest distance, and then for the point that has it.
constexpr std::size_t s_blockSize = 512;

/// The largest squared distance of points from `origin` + `centre`; the lanes make the loop a wide one.
template <std::size_t D, class T>
[[gnu::always_inline]] inline omReal64 largestSquareOf(const T* points, std::size_t nbPoints, const Place<D>& origin,
                                                       const Place<D>& center) {
  constexpr std::size_t nbLanes = 8;
  omReal64 lanes[nbLanes] = {};
  const auto square = [&](std::size_t i) __attribute__((always_inline)) {
    omReal64 sum = 0;
    for (std::size_t d = 0; d < D; ++d) {
      const omReal64 difference = (static_cast<omReal64>(points[D * i + d]) - origin[d]) - center[d];
      sum += difference * difference;
    }
    return sum;
  };
  std::size_t i = 0;
  for (; i + nbLanes <= nbPoints; i += nbLanes)
    for (std::size_t l = 0; l < nbLanes; ++l) {
      const omReal64 value = square(i + l);
      lanes[l] = value > lanes[l] ? value : lanes[l];
    }
  for (; i < nbPoints; ++i) lanes[0] = std::max(lanes[0], square(i));
  return *std::max_element(lanes, lanes + nbLanes);
}

template <std::size_t D, class T>
omReal64 largestSquarePortable(const T* points, std::size_t nbPoints, const Place<D>& origin, const Place<D>& center) {
  return largestSquareOf(points, nbPoints, origin, center);
}

#if defined(__x86_64__)
template <std::size_t D, class T>
[[gnu::target("avx2")]] omReal64 largestSquareAvx2(const T* points, std::size_t nbPoints, const Place<D>& origin,
                                                   const Place<D>& center) {
  return largestSquareOf(points, nbPoints, origin, center);
}
#endif

template <std::size_t D, class T>
omReal64 largestSquare(const T* points, std::size_t nbPoints, const Place<D>& origin, const Place<D>& center) {
#if defined(__x86_64__)
  static const bool s_hasAvx2 = __builtin_cpu_supports("avx2") != 0;
  if (s_hasAvx2) return largestSquareAvx2(points, nbPoints, origin, center);
#endif
  return largestSquarePortable(points, nbPoints, origin, center);
}

struct Farthest {
  std::size_t point = 0;
  omReal64 square = 0;
};

template <std::size_t D, class T>
Farthest farthestFrom(const T* points, std::size_t nbPoints, const Place<D>& origin, const Place<D>& center) {
  std::size_t block = 0;
  omReal64 largest = -1;
  for (std::size_t i = 0; i < nbPoints; i += s_blockSize) {
    const omReal64 square = largestSquare(points + D * i, std::min(s_blockSize, nbPoints - i), origin, center);
    if (square > largest) {
      largest = square;
      block = i;
    }
  }
  std::size_t point = block;
  while (largestSquare(points + D * point, 1, origin, center) != largest) ++point;
  return {point, largest};
}

/// A ball through points of a support, relative to the origin of the computation.
template <std::size_t D>
struct Ball {
  std::array<Wide, D> center{};
  Wide square = 0;  ///< squared radius, of which the ball contains the points that it was made for
  std::array<std::size_t, D + 1> support{};
  std::size_t nbSupport = 0;
};

/// Solves a symmetric positive definite system of up to D equations in place by elimination with diagonal pivots.
/// \return false where a pivot is lost in rounding: the points depend on each other
template <std::size_t D>
bool solve(std::array<std::array<Wide, D>, D>& matrix, std::array<Wide, D>& values, std::size_t size) {
  std::array<std::size_t, D> order{};
  for (std::size_t i = 0; i < size; ++i) order[i] = i;
  Wide largest = 0;
  for (std::size_t i = 0; i < size; ++i) largest = std::max(largest, matrix[i][i]);
  for (std::size_t k = 0; k < size; ++k) {
    std::size_t pivot = k;
    for (std::size_t i = k + 1; i < size; ++i)
      if (matrix[order[i]][order[i]] > matrix[order[pivot]][order[pivot]]) pivot = i;
    std::swap(order[k], order[pivot]);
    const std::size_t p = order[k];
    if (!(matrix[p][p] > 16 * std::numeric_limits<Wide>::epsilon() * largest)) return false;
    for (std::size_t i = k + 1; i < size; ++i) {
      const std::size_t q = order[i];
      const Wide factor = matrix[q][p] / matrix[p][p];
      for (std::size_t j = k; j < size; ++j) matrix[q][order[j]] -= factor * matrix[p][order[j]];
      values[q] -= factor * values[p];
    }
  }
  for (std::size_t k = size; k-- > 0;) {
    const std::size_t p = order[k];
    for (std::size_t j = k + 1; j < size; ++j) values[p] -= matrix[p][order[j]] * values[order[j]];
    values[p] /= matrix[p][p];
  }
  return true;
}

/// Few points, among which the ones that determine the smallest ball are found by trying all.
template <std::size_t D>
class SmallSet {
 public:
  using Vector = std::array<Wide, D>;

  void add(std::size_t index, const Vector& point) {
    _indices[_nbPoints] = index;
    _points[_nbPoints++] = point;
  }

  /// The smallest ball around all, of those with the last point on the boundary.
  Ball<D> ballThroughLast() const {
    Ball<D> best;
    best.square = std::numeric_limits<Wide>::infinity();
    const unsigned nbOthers = static_cast<unsigned>(_nbPoints - 1);
    // Few points first, which are preferred where more do not make the ball smaller.
    for (int size = 0; size <= static_cast<int>(D); ++size)
      for (unsigned subset = 0; subset < (1U << nbOthers); ++subset)
        if (__builtin_popcount(subset) == size) improve(best, subset);
    return best;
  }

 private:
  /// Takes the ball through the last point and a subset of the others, grown to contain all, if it is smaller.
  void improve(Ball<D>& best, unsigned subset) const {
    const Vector& base = _points[_nbPoints - 1];
    std::array<Vector, D> edges;
    Ball<D> ball;
    ball.support[ball.nbSupport++] = _indices[_nbPoints - 1];
    std::size_t nbEdges = 0;
    for (std::size_t i = 0; i + 1 < _nbPoints; ++i)
      if ((subset >> i & 1U) != 0) {
        edges[nbEdges++] = difference(_points[i], base);
        ball.support[ball.nbSupport++] = _indices[i];
      }
    // The centre is base + sum of w[i] edges[i] with (edges[i], centre - base) = |edges[i]|² / 2.
    std::array<std::array<Wide, D>, D> products;
    std::array<Wide, D> weights;
    for (std::size_t i = 0; i < nbEdges; ++i) {
      for (std::size_t j = 0; j < nbEdges; ++j) products[i][j] = dot(edges[i], edges[j]);
      weights[i] = products[i][i] / 2;
    }
    if (!solve<D>(products, weights, nbEdges)) return;
    ball.center = base;
    for (std::size_t i = 0; i < nbEdges; ++i)
      for (std::size_t d = 0; d < D; ++d) ball.center[d] += weights[i] * edges[i][d];
    for (std::size_t i = 0; i < _nbPoints; ++i) {
      const Vector to = difference(_points[i], ball.center);
      ball.square = std::max(ball.square, dot(to, to));
    }
    if (ball.square < best.square) best = ball;
  }

  static Vector difference(const Vector& a, const Vector& b) {
    Vector result;
    for (std::size_t d = 0; d < D; ++d) result[d] = a[d] - b[d];
    return result;
  }
  static Wide dot(const Vector& a, const Vector& b) {
    Wide sum = 0;
    for (std::size_t d = 0; d < D; ++d) sum += a[d] * b[d];
    return sum;
  }

  std::array<Vector, D + 2> _points;
  std::array<std::size_t, D + 2> _indices{};
  std::size_t _nbPoints = 0;
};

/// Grows a ball until no point is outside.
/// \param ball the smallest ball of its support; relative to `origin`, as the result
template <std::size_t D, class T>
void grow(Ball<D>& ball, const T* points, std::size_t nbPoints, const Place<D>& origin) {
  Place<D> center;
  const auto relative = [&](std::size_t i) {
    std::array<Wide, D> place;
    for (std::size_t d = 0; d < D; ++d) place[d] = static_cast<Wide>(points[D * i + d]) - origin[d];
    return place;
  };
  for (int nbIdleSteps = 0; nbIdleSteps < s_mostIdleSteps;) {
    for (std::size_t d = 0; d < D; ++d) center[d] = static_cast<omReal64>(ball.center[d]);
    const Farthest farthest = farthestFrom(points, nbPoints, origin, center);
    if (!(farthest.square > ball.square * (1 + s_outside))) return;
    SmallSet<D> set;
    for (std::size_t i = 0; i < ball.nbSupport; ++i) set.add(ball.support[i], relative(ball.support[i]));
    set.add(farthest.point, relative(farthest.point));
    const Ball<D> next = set.ballThroughLast();
    nbIdleSteps += next.square > ball.square ? 0 : 1;
    ball = next;
  }
}

/// The smallest ball relative to the first point, of coordinates whose squares are safe. That of a sample comes first,
/// from which few steps remain.
template <std::size_t D, class T>
Ball<D> solveRelative(const T* points, std::size_t nbPoints) {
  Place<D> origin;
  for (std::size_t d = 0; d < D; ++d) origin[d] = static_cast<omReal64>(points[d]);
  Ball<D> ball;
  ball.nbSupport = 1;
  if (nbPoints >= s_sampleStep * s_sampleStep) {
    std::vector<T> sample;
    for (std::size_t i = 0; i < nbPoints; i += s_sampleStep)
      sample.insert(sample.end(), points + D * i, points + D * (i + 1));
    grow(ball, sample.data(), sample.size() / D, origin);
    for (std::size_t& index : ball.support) index *= s_sampleStep;
  }
  grow(ball, points, nbPoints, origin);
  return ball;
}

/// The radius with which a ball about a rounded centre contains every point, in the arithmetic of euclideanNorm().
template <std::size_t D, class T>
omReal64 radiusAround(const T* points, std::size_t nbPoints, const Place<D>& center) {
  const omReal64 square = largestSquare(points, nbPoints, Place<D>{}, center);
  if (square >= s_smallestSquare && square <= s_largestSquare) return std::sqrt(square);
  omReal64 radius = 0;
  for (std::size_t i = 0; i < nbPoints; ++i) {
    const auto along = [&](std::size_t d) { return static_cast<omReal64>(points[D * i + d]) - center[d]; };
    if constexpr (D == 2)
      radius = std::max(radius, euclideanNorm(along(0), along(1)));
    else
      radius = std::max(radius, euclideanNorm(along(0), along(1), along(2)));
  }
  return radius;
}

template <class T>
std::size_t firstNotFinite(const T* values, std::size_t nbValues) {
  return static_cast<std::size_t>(
      std::find_if(values, values + nbValues, [](T value) { return !std::isfinite(static_cast<omReal64>(value)); }) -
      values);
}

template <std::size_t D, class T>
BoolResult smallestBall(const char* what, const T* points, std::size_t nbPoints, EnclosingBall<D>& result) {
  if (nbPoints == 0) return failure(std::string(what) + ": at least one point is needed, 0 given");
  const omReal64 largest = detail::magnitudeBound<T>(detail::largestMagnitude(points, D * nbPoints));
  if (!std::isfinite(largest))
    return failure(std::string(what) + ": point " + std::to_string(firstNotFinite(points, D * nbPoints) / D) +
                   " has a coordinate that is not a finite number");
  const int exponent = largest > 0 ? std::ilogb(largest) : 0;
  Ball<D> ball;
  omReal64 scale = 1;
  std::vector<omReal64> scaled;
  if (exponent >= s_smallestExponent && exponent <= s_largestExponent) {
    ball = solveRelative<D>(points, nbPoints);
  } else {
    scale = std::ldexp(1.0, std::min(-exponent, 1023));
    for (std::size_t i = 0; i < D * nbPoints; ++i) scaled.push_back(static_cast<omReal64>(points[i]) * scale);
    ball = solveRelative<D>(scaled.data(), nbPoints);
  }
  EnclosingBall<D> found;
  for (std::size_t d = 0; d < D; ++d)
    found.center[d] = static_cast<omReal64>(static_cast<Wide>(points[d]) + ball.center[d] / scale);
  found.radius = radiusAround(points, nbPoints, found.center);
  if (!std::isfinite(found.radius)) return failure(std::string(what) + ": the radius exceeds every finite number");
  found.support = ball.support;
  found.nbSupport = ball.nbSupport;
  result = found;
  return {};
}

}  // namespace

template <class T>
BoolResult smallestEnclosingCircle(const T* xy, std::size_t nbPoints, EnclosingCircle& ball) {
  return smallestBall("Smallest circle around points", xy, nbPoints, ball);
}

template <class T>
BoolResult smallestEnclosingSphere(const T* xyz, std::size_t nbPoints, EnclosingSphere& ball) {
  return smallestBall("Smallest sphere around points", xyz, nbPoints, ball);
}

template BoolResult smallestEnclosingCircle(const omInt32*, std::size_t, EnclosingCircle&);
template BoolResult smallestEnclosingCircle(const omUInt32*, std::size_t, EnclosingCircle&);
template BoolResult smallestEnclosingCircle(const omReal32*, std::size_t, EnclosingCircle&);
template BoolResult smallestEnclosingCircle(const omReal64*, std::size_t, EnclosingCircle&);
template BoolResult smallestEnclosingSphere(const omInt32*, std::size_t, EnclosingSphere&);
template BoolResult smallestEnclosingSphere(const omUInt32*, std::size_t, EnclosingSphere&);
template BoolResult smallestEnclosingSphere(const omReal32*, std::size_t, EnclosingSphere&);
template BoolResult smallestEnclosingSphere(const omReal64*, std::size_t, EnclosingSphere&);

}  // namespace ormix
