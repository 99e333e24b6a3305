#include <ORMIXMath/Distance/EllipsoidFrame.h>
#include <ORMIXMath/Distance/TrianglesDistance.h>
#include <ORMIXMath/Rotation/EulerAngles.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace ormix {

namespace {

using namespace detail;

using Triple = std::array<omReal64, 3>;

// A radius below this part of the largest one counts as that.
constexpr omReal64 s_flattest = 1e-12;

// Newton's steps double the number of digits: a dozen are the most seen.
constexpr int s_maxNbSteps = 100;

omReal64 square(omReal64 value) { return value * value; }

/// A point in the frame of an ellipsoid whose first axis of the order is the longest (or the shortest), its coordinates
/// with signs removed.
struct SortedFrame {
  std::array<std::size_t, 3> order{0, 1, 2};
  Triple radii{};
  Triple x{};
  Triple signs{};

  SortedFrame(const SpatialEllipsoid& e, const SpatialPoint& p, bool isShortestFirst) {
    std::sort(order.begin(), order.end(), [&](std::size_t i, std::size_t k) {
      return isShortestFirst ? e.radii[i] < e.radii[k] : e.radii[i] > e.radii[k];
    });
    const SpatialPoint d = p - e.center;
    for (std::size_t i = 0; i < 3; ++i) {
      const omReal64 along = dot(e.axes[order[i]], d);
      radii[i] = e.radii[order[i]];
      x[i] = std::abs(along);
      signs[i] = along < 0 ? -1 : 1;
    }
  }

  /// The differences of the squares of the first radius and the others.
  Triple gaps() const {
    return {0, std::abs(radii[1] - radii[0]) * (radii[1] + radii[0]),
            std::abs(radii[2] - radii[0]) * (radii[2] + radii[0])};
  }

  SpatialPoint placed(const SpatialEllipsoid& e, const Triple& foot, omReal64 sense) const {
    SpatialPoint result = e.center;
    for (std::size_t i = 3; i-- > 0;) result = result + e.axes[order[i]] * (sense * signs[i] * foot[i]);
    return result;
  }
};

/// The coordinates r² x / (s + gap) of the foot, where s >= 0 makes them a point of the surface; if there is no such s,
/// as the point is on the plane across the first axis near the centre, the first coordinate is what is missing. The sum
/// of squares falls and is convex over s, and every single one is at most 1 at the root.
Triple footOf(const SortedFrame& f) {
  const Triple gaps = f.gaps();
  omReal64 s = 0;
  for (std::size_t i = 0; i < 3; ++i) s = std::max(s, f.radii[i] * f.x[i] - gaps[i]);
  Triple foot{};
  const auto placeFoot = [&] {
    for (std::size_t i = 0; i < 3; ++i) foot[i] = f.x[i] == 0 ? 0 : f.radii[i] * (f.radii[i] * f.x[i] / (s + gaps[i]));
  };
  if (s == 0) {
    placeFoot();
    const omReal64 rest = 1 - square(foot[1] / f.radii[1]) - square(foot[2] / f.radii[2]);
    if (rest >= 0) return {f.radii[0] * std::sqrt(rest), foot[1], foot[2]};
  }
  for (int step = 0; step < s_maxNbSteps; ++step) {
    omReal64 excess = -1;
    omReal64 slope = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      if (f.x[i] == 0) continue;
      const omReal64 part = f.radii[i] * f.x[i] / (s + gaps[i]);
      excess += part * part;
      slope += part * part / (s + gaps[i]);
    }
    const omReal64 next = s + excess / (2 * slope);
    if (!(next > s)) break;
    s = next;
  }
  placeFoot();
  return foot;
}

/// The point of the segment from a to b that is nearest to an ellipsoid which it does not meet: where the way to the
/// ellipsoid is perpendicular, by regula falsi with halved weights, as the slope grows along the segment.
SpatialPoint nearestOfEdge(const SpatialPoint& a, const SpatialPoint& b, const SpatialEllipsoid& e) {
  const SpatialPoint along = b - a;
  const auto at = [&](omReal64 s) { return a + along * s; };
  const auto slopeAt = [&](omReal64 s) { return dot(at(s) - nearestOnEllipsoid(e, at(s)), along); };
  omReal64 low = 0, high = 1;
  omReal64 slopeLow = slopeAt(low), slopeHigh = slopeAt(high);
  if (!(slopeLow < 0)) return a;
  if (!(slopeHigh > 0)) return b;
  int side = 0;
  for (int step = 0; step < s_maxNbSteps && high - low > std::numeric_limits<omReal64>::epsilon(); ++step) {
    omReal64 middle = low + (high - low) * (slopeLow / (slopeLow - slopeHigh));
    // Halving now and then bounds the number of steps.
    if (step % 8 == 7 || !(middle > low && middle < high)) middle = 0.5 * (low + high);
    const omReal64 slope = slopeAt(middle);
    if (slope == 0) return at(middle);
    if (slope < 0) {
      low = middle;
      slopeLow = slope;
      if (side < 0) slopeHigh *= 0.5;
      side = -1;
    } else {
      high = middle;
      slopeHigh = slope;
      if (side > 0) slopeLow *= 0.5;
      side = 1;
    }
  }
  return at(0.5 * (low + high));
}

/// The point of the triangle's plane nearest to the ellipsoid if it is in the triangle and the two do not meet.
bool nearestOfFace(const std::array<SpatialPoint, 3>& t, const SpatialEllipsoid& e, SpatialPoint& nearest) {
  SpatialPoint normal = cross(t[1] - t[0], t[2] - t[0]);
  const omReal64 length = normOf(normal);
  if (!(length > 0)) return false;
  normal = normal / length;
  if (dot(normal, t[0] - e.center) < 0) normal = normal * -1;
  const SpatialPoint support = supportPoint(e, normal);
  const omReal64 height = dot(normal, t[0] - support);
  if (!(height > 0)) return false;
  nearest = support + normal * height;
  const omReal64 turn = dot(normal, cross(t[1] - t[0], t[2] - t[0])) < 0 ? -1 : 1;
  for (std::size_t i = 0; i < 3; ++i)
    if (dot(cross(t[(i + 1) % 3] - t[i], nearest - t[i]), normal) * turn < 0) return false;
  return true;
}

/// The point of the unit sphere on the segment from a point inside to one outside.
SpatialPoint crossing(const SpatialPoint& inside, const SpatialPoint& outside) {
  const SpatialPoint along = outside - inside;
  const omReal64 a = dot(along, along), b = dot(inside, along), c = std::min(0.0, dot(inside, inside) - 1);
  if (a == 0) return inside;
  const omReal64 root = std::sqrt(b * b - a * c);
  const omReal64 t = b > 0 ? -c / (b + root) : (root - b) / a;
  return inside + along * std::clamp(t, 0.0, 1.0);
}

}  // namespace

SpatialEllipsoid toSpatialEllipsoid(const SpatialPoint& center, omReal64 a, omReal64 b, omReal64 c, omReal64 alpha,
                                    omReal64 beta, omReal64 chi) {
  const RotationMatrix rows = eulerToMatrix(alpha, beta, chi);
  SpatialEllipsoid result{center, {}, {std::abs(a), std::abs(b), std::abs(c)}};
  for (std::size_t k = 0; k < 3; ++k) result.axes[k] = {rows[0][k], rows[1][k], rows[2][k]};
  const omReal64 least = s_flattest * std::max({result.radii[0], result.radii[1], result.radii[2]});
  for (omReal64& radius : result.radii) radius = std::max(radius, least);
  return result;
}

omReal64 ellipsoidLevel(const SpatialEllipsoid& e, const SpatialPoint& point) {
  const SpatialPoint u = toUnitSphere(e, point);
  return dot(u, u);
}

SpatialPoint supportPoint(const SpatialEllipsoid& e, const SpatialPoint& direction) {
  SpatialPoint u{e.radii[0] * dot(e.axes[0], direction), e.radii[1] * dot(e.axes[1], direction),
                 e.radii[2] * dot(e.axes[2], direction)};
  return fromUnitSphere(e, u / normOf(u));
}

SpatialPoint nearestOnEllipsoid(const SpatialEllipsoid& e, const SpatialPoint& point) {
  const SortedFrame frame(e, point, true);
  return frame.placed(e, footOf(frame), 1);
}

SpatialPoint farthestOnEllipsoid(const SpatialEllipsoid& e, const SpatialPoint& point) {
  const SortedFrame frame(e, point, false);
  return frame.placed(e, footOf(frame), -1);
}

SpatialNearestPair triangleEllipsoidNearestPair(const SpatialTriangle& triangle, const SpatialEllipsoid& e,
                                                bool isFilled) {
  const std::array<SpatialPoint, 3> t{triangle.p0, triangle.p1, triangle.p2};
  const SpatialPoint u[] = {toUnitSphere(e, t[0]), toUnitSphere(e, t[1]), toUnitSphere(e, t[2])};
  const SpatialPoint nearest = pointTriangleNearestPair({0, 0, 0}, {u[0], u[1], u[2]}).onB;
  const auto pairAt = [](const SpatialPoint& p, const SpatialPoint& q) {
    return SpatialNearestPair{normOf(q - p), p, q};
  };
  if (dot(nearest, nearest) <= 1) {
    const SpatialPoint& farthest = *std::max_element(
        std::begin(u), std::end(u), [](const SpatialPoint& p, const SpatialPoint& q) { return dot(p, p) < dot(q, q); });
    if (isFilled || dot(farthest, farthest) >= 1) {
      const SpatialPoint common = fromUnitSphere(e, isFilled ? nearest : crossing(nearest, farthest));
      return {0, common, common};
    }
    SpatialNearestPair best = pairAt(t[0], nearestOnEllipsoid(e, t[0]));
    for (std::size_t i = 1; i < 3; ++i) {
      const SpatialNearestPair pair = pairAt(t[i], nearestOnEllipsoid(e, t[i]));
      if (pair.distance < best.distance) best = pair;
    }
    return best;
  }
  SpatialPoint onFace;
  if (nearestOfFace(t, e, onFace)) return pairAt(onFace, nearestOnEllipsoid(e, onFace));
  SpatialNearestPair best{std::numeric_limits<omReal64>::infinity(), t[0], t[0]};
  for (std::size_t i = 0; i < 3; ++i) {
    const SpatialPoint onEdge = nearestOfEdge(t[i], t[(i + 1) % 3], e);
    const SpatialNearestPair pair = pairAt(onEdge, nearestOnEllipsoid(e, onEdge));
    if (pair.distance < best.distance) best = pair;
  }
  return best;
}

}  // namespace ormix
