#include <ORMIXMath/Distance/TrianglesDistance.h>
#include <ORMIXMath/Distance/TrianglesMeet.h>

#include <algorithm>
#include <array>
#include <boost/rational.hpp>
#include <cmath>
#include <string>
#include <vector>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

using Corners = std::vector<SpatialPoint>;
using Fraction = boost::rational<omInt64>;

SpatialTriangle triangle(const Corners& t) { return {t[0], t[1], t[2]}; }

SpatialPoint operator+(const SpatialPoint& p, const SpatialPoint& q) { return {p.x + q.x, p.y + q.y, p.z + q.z}; }
SpatialPoint operator*(omReal64 factor, const SpatialPoint& p) { return {factor * p.x, factor * p.y, factor * p.z}; }
omReal64 distance(const SpatialPoint& p, const SpatialPoint& q) { return std::hypot(p.x - q.x, p.y - q.y, p.z - q.z); }

/// The oracle computes squares of distances in fractions: of small integers they are exact.
struct Exact {
  Fraction x, y, z;
  Exact(Fraction px, Fraction py, Fraction pz) : x(px), y(py), z(pz) {}
  Exact(const SpatialPoint& p) : x(omInt64(p.x)), y(omInt64(p.y)), z(omInt64(p.z)) {}  // NOLINT: on the lattice
};
Exact operator-(const Exact& p, const Exact& q) { return {p.x - q.x, p.y - q.y, p.z - q.z}; }
Exact operator+(const Exact& p, const Exact& q) { return {p.x + q.x, p.y + q.y, p.z + q.z}; }
Exact operator*(const Fraction& t, const Exact& p) { return {t * p.x, t * p.y, t * p.z}; }
Fraction dot(const Exact& p, const Exact& q) { return p.x * q.x + p.y * q.y + p.z * q.z; }
Exact cross(const Exact& p, const Exact& q) {
  return {p.y * q.z - p.z * q.y, p.z * q.x - p.x * q.z, p.x * q.y - p.y * q.x};
}

Fraction squareToSegment(const Exact& p, const Exact& from, const Exact& to) {
  const Exact u = to - from;
  const Fraction along = dot(p - from, u), square = dot(u, u);
  const Fraction t = square == 0 ? square : std::clamp(Fraction(along / square), Fraction(0), Fraction(1));
  const Exact rest = p - (from + t * u);
  return dot(rest, rest);
}

Fraction squareOfSegments(const Exact& a0, const Exact& a1, const Exact& b0, const Exact& b1) {
  Fraction best = std::min(std::min(squareToSegment(a0, b0, b1), squareToSegment(a1, b0, b1)),
                           std::min(squareToSegment(b0, a0, a1), squareToSegment(b1, a0, a1)));
  const Exact u = a1 - a0, v = b1 - b0, w = b0 - a0, n = cross(u, v);
  const Fraction square = dot(n, n), s = dot(cross(w, v), n), t = dot(cross(w, u), n);
  if (square > 0 && s >= 0 && s <= square && t >= 0 && t <= square)
    best = std::min(best, Fraction(dot(w, n) * dot(w, n) / square));
  return best;
}

/// The least square of the distance of a point, segment or triangle and a triangle: of corners and faces, of edges, and
/// 0 where an edge of the first goes through the face of the second.
Fraction squareOneWay(const Corners& a, const Corners& b) {
  Fraction best = 1000;
  const Exact b0 = b[0], normal = cross(Exact(b[1]) - b0, Exact(b[2]) - b0);
  const Fraction square = dot(normal, normal);
  const auto isInside = [&](const Exact& p) {
    for (std::size_t i = 0; i < 3; ++i)
      if (dot(cross(Exact(b[(i + 1) % 3]) - b[i], p - b[i]), normal) < 0) return false;
    return true;
  };
  for (std::size_t i = 0; i < a.size(); ++i) {
    const Exact from = a[i], to = a[(i + 1) % a.size()];
    for (std::size_t k = 0; k < 3; ++k) best = std::min(best, squareOfSegments(from, to, b[k], b[(k + 1) % 3]));
    if (square == 0) continue;
    const Fraction height = dot(from - b0, normal), rise = dot(to - from, normal);
    if (isInside(from - (height / square) * normal)) best = std::min(best, Fraction(height * height / square));
    if (rise == 0 || -height / rise < 0 || -height / rise > 1) continue;
    if (isInside(from + (-height / rise) * (to - from))) best = 0;
  }
  return best;
}
omReal64 exactDistance(const Corners& a, const Corners& b) {
  Fraction square = squareOneWay(a, b);
  if (a.size() == 3) square = std::min(square, squareOneWay(b, a));
  return std::sqrt(boost::rational_cast<omReal64>(square));
}

/// Small integer corners: half of the pairs touch, cross, are coplanar or degenerate.
class Lattice {
 public:
  explicit Lattice(unsigned seed) : random(seed) {}
  Corners corners() {
    _flat = random.below(5) == 0;
    return {point(), point(), point()};
  }
  support::Random random;

 private:
  omReal64 coordinate() { return random.below(4); }
  SpatialPoint point() { return {coordinate(), coordinate(), _flat ? 0 : coordinate()}; }
  bool _flat = false;
};

/// What every answer holds: the exact distance in units, 0 exactly where it is, at points of both.
void expectRight(const SpatialNearestPair& pair, const Corners& a, const Corners& b, omReal64 unit, omReal64 exact) {
  ASSERT_EQ(pair.distance == 0, exact == 0) << pair.distance;
  ASSERT_NEAR(pair.distance / unit, exact, 1e-12);
  const SpatialPoint onA = (1 / unit) * pair.onA, onB = (1 / unit) * pair.onB;
  ASSERT_NEAR(distance(onA, onB), exact, 1e-12);
  const auto isOn = [](const SpatialPoint& p, const Corners& t) {
    if (t.size() == 1) return distance(p, t[0]) < 1e-13;
    const SpatialTriangle all{t[0], t[1], t.back()};
    return pointTriangleNearestPair(p, all).distance < 1e-13;
  };
  ASSERT_TRUE(isOn(onA, a) && isOn(onB, b));
}

TEST(TrianglesDistance, IsThatOfFractionsOnALattice) {
  Lattice lattice(77);
  int nbMeeting = 0;
  for (int i = 0; i < 5000; ++i) {
    const Corners a = lattice.corners(), b = lattice.corners();
    const Corners point{a[2]}, edge{a[0], a[1]};
    SCOPED_TRACE("pair " + std::to_string(i));
    const omReal64 exact = exactDistance(a, b), ofEdge = exactDistance(edge, b), ofPoint = exactDistance(point, b);
    nbMeeting += exact == 0;
    ASSERT_EQ(trianglesMeet(triangle(a), triangle(b)), exact == 0);
    ASSERT_EQ(segmentMeetsTriangle({a[0], a[1]}, triangle(b)), ofEdge == 0);
    ASSERT_EQ(pointMeetsTriangle(a[2], triangle(b)), ofPoint == 0);
    ASSERT_EQ(segmentsMeet({a[0], a[1]}, {b[0], b[1]}), squareOfSegments(a[0], a[1], b[0], b[1]) == 0);
    ASSERT_EQ(pointMeetsSegment(a[2], {b[0], b[1]}), squareToSegment(a[2], b[0], b[1]) == 0);

    // At sizes whose products overflow or underflow, too.
    const omReal64 unit = std::array{1.0, 0x1p1000, 0x1p-1000, 0x1p60}[std::size_t(i % 4)];
    Corners ua = a, ub = b;
    for (std::size_t k = 0; k < 3; ++k) ua[k] = unit * a[k], ub[k] = unit * b[k];
    ASSERT_NO_FATAL_FAILURE(expectRight(trianglesNearestPair(triangle(ua), triangle(ub)), a, b, unit, exact));
    ASSERT_NO_FATAL_FAILURE(
        expectRight(segmentTriangleNearestPair({ua[0], ua[1]}, triangle(ub)), edge, b, unit, ofEdge));
    ASSERT_NO_FATAL_FAILURE(expectRight(pointTriangleNearestPair(ua[2], triangle(ub)), point, b, unit, ofPoint));
    // A bound beyond the distance changes nothing; one before it answers nothing, or the same.
    if (i % 4 != 0 || exact == 0) continue;
    ASSERT_NEAR(trianglesNearestPair(triangle(a), triangle(b), exact * exact * 1.001).distance, exact, 1e-12);
    ASSERT_GE(trianglesNearestPair(triangle(a), triangle(b), exact * exact * 0.999).distance, exact - 1e-12);
  }
  EXPECT_GT(nbMeeting, 1000);
  EXPECT_LT(nbMeeting, 4000);
}

TEST(TrianglesDistance, IsRightBesideThinAndDistantTriangles) {
  support::Random random(5);
  for (int i = 0; i < 2000; ++i) {
    // A triangle in z = 0 with a corner beside the middle of the long edge, and another that hangs above its middle.
    const omReal64 width = std::pow(10.0, random.uniform(-14, 0)), height = std::pow(10.0, random.uniform(-13, 1));
    const omReal64 away = random.below(2) * 4096.0, x = random.uniform(-0.4, 0.4), top = away + height;
    const SpatialTriangle thin{{away - 1, 0, away}, {away + 1, 0, away}, {away, width, away}};
    const SpatialTriangle above{{away + x, width / 4, top}, {away + x + 3, 1, top + 2}, {away + x - 5, -2, top + 9}};
    const SpatialNearestPair pair = trianglesNearestPair(thin, above);
    ASSERT_NEAR(pair.distance, above.p0.z - away, 1e-11) << width << ' ' << height << ' ' << x << ' ' << away;
    ASSERT_EQ(pair.distance == 0, above.p0.z == away);
  }
}

TEST(TrianglesDistance, AnswersNaNForWhatIsNotFinite) {
  for (const omReal64 bad : {support::s_nan, support::s_infinity, -support::s_infinity})
    for (std::size_t place = 0; place < 18; ++place) {
      std::array<omReal64, 18> v{1, 2, 3, 4, 5, 6, 7, 9, 8, 11, 12, 14, 3, 2, 1, 0, 4, 2};
      v[place] = bad;
      const SpatialTriangle a{{v[0], v[1], v[2]}, {v[3], v[4], v[5]}, {v[6], v[7], v[8]}};
      const SpatialTriangle b{{v[9], v[10], v[11]}, {v[12], v[13], v[14]}, {v[15], v[16], v[17]}};
      const SpatialNearestPair pair = trianglesNearestPair(a, b);
      EXPECT_TRUE(std::isnan(pair.distance) && std::isnan(pair.onA.x) && std::isnan(pair.onB.z)) << bad << place;
      EXPECT_FALSE(trianglesMeet(a, b));
    }
}

/// Whether what is left of a triangle, when a part beside the shared corners is cut off, meets another. The corners
/// are shared from the first on.
bool meetsWithout(const Corners& a, std::size_t nbShared, const Corners& b) {
  constexpr omReal64 share = 1.0 / 64;
  const auto towards = [](const SpatialPoint& from, const SpatialPoint& to) { return (1 - share) * from + share * to; };
  if (nbShared == 2) return trianglesMeet({towards(a[0], a[2]), towards(a[1], a[2]), a[2]}, triangle(b));
  const SpatialPoint near1 = towards(a[0], a[1]), near2 = towards(a[0], a[2]);
  if (!isDegenerate(triangle(a)))
    return trianglesMeet({near1, near2, a[1]}, triangle(b)) || trianglesMeet({near2, a[1], a[2]}, triangle(b));
  const auto isAway = [&](const SpatialPoint& p) { return distance(p, a[0]) > 0; };
  return (isAway(a[1]) && segmentMeetsTriangle({near1, a[1]}, triangle(b))) ||
         (isAway(a[2]) && segmentMeetsTriangle({near2, a[2]}, triangle(b)));
}

TEST(TrianglesMeet, CrossBeyondWhatTheyShareWhereCutTrianglesMeet) {
  Lattice lattice(78);
  std::array<std::array<int, 2>, 3> counts{};
  for (int i = 0; i < 20000; ++i) {
    Corners a = lattice.corners(), b = lattice.corners();
    const std::size_t nbShared = 1 + lattice.random.below(2);
    for (std::size_t k = 0; k < nbShared; ++k) b[k] = a[k];
    if (nbShared == 2 && (isDegenerate(triangle(a)) || isDegenerate(triangle(b)))) continue;
    const bool cross = meetsWithout(a, nbShared, b) || meetsWithout(b, nbShared, a);
    // The corners may be named in any order.
    TriangleCorners cornersOfA{0, 1, 2}, cornersOfB{nbShared > 0 ? 0U : 3U, nbShared > 1 ? 1U : 4U, 5};
    const std::size_t turn = lattice.random.below(3);
    std::rotate(b.begin(), b.begin() + std::ptrdiff_t(turn), b.end());
    std::rotate(cornersOfB.begin(), cornersOfB.begin() + turn, cornersOfB.end());
    ASSERT_EQ(trianglesCrossBeyondShared(triangle(a), cornersOfA, triangle(b), cornersOfB), cross) << i;
    ASSERT_EQ(trianglesCrossBeyondShared(triangle(b), cornersOfB, triangle(a), cornersOfA), cross) << i;
    ++counts[nbShared][cross];
  }
  for (std::size_t n : {1U, 2U}) EXPECT_GT(std::min(counts[n][0], counts[n][1]), 300) << n;
  const SpatialTriangle t{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
  EXPECT_TRUE(trianglesCrossBeyondShared(t, {0, 1, 2}, t, {2, 1, 0}));
  // On one line beyond the same end of a common edge, or not.
  const SpatialPoint p{0, 0, 0}, q{1, 1, 1}, r{2, 2, 2}, s{3, 3, 3};
  EXPECT_TRUE(trianglesCrossBeyondShared({p, q, r}, {0, 1, 2}, {p, q, s}, {0, 1, 3}));
  EXPECT_FALSE(trianglesCrossBeyondShared({q, r, p}, {0, 1, 2}, {q, r, s}, {0, 1, 3}));
  EXPECT_FALSE(trianglesCrossBeyondShared({p, p, r}, {5, 5, 2}, {p, {0, 1, 0}, {1, 1, 0}}, {5, 3, 4}));
}

}  // namespace
}  // namespace ormix
