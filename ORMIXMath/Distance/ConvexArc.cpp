#include <ORMIXMath/Distance/ConvexArc.h>
#include <ORMIXMath/Distance/NearestOnEllipse.h>
#include <ORMIXMath/Distance/PolynomialRoots.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>

namespace ormix::detail {

namespace {

PlanarPoint nearestOnCircle(const ConvexArc& circle, const PlanarPoint& point) {
  const omReal64 dx = point.x - circle.origin.x;
  const omReal64 dy = point.y - circle.origin.y;
  const omReal64 distance = std::hypot(dx, dy);
  if (distance == 0) return {circle.origin.x + circle.a, circle.origin.y};
  return {circle.origin.x + dx / distance * circle.a, circle.origin.y + dy / distance * circle.a};
}

/// In the frame. With x = 2 f u the distance is stationary where u^3 + (2 - y / f) u - x / f = 0.
PlanarPoint nearestOnParabola(const ConvexArc& arc, const PlanarPoint& p) {
  PlanarPoint best = parabolaPoint(arc, arc.from);
  const auto take = [&](omReal64 abscissa) {
    const PlanarPoint candidate = parabolaPoint(arc, abscissa);
    if (std::hypot(candidate.x - p.x, candidate.y - p.y) < std::hypot(best.x - p.x, best.y - p.y)) best = candidate;
  };
  take(arc.to);
  const omReal64 twoFocal = 2 * arc.a;
  const PolynomialRoots roots({-p.x / arc.a, 2 - p.y / arc.a, 0, 1, 0}, arc.from / twoFocal, arc.to / twoFocal);
  for (const omReal64 u : roots) take(std::clamp(twoFocal * u, arc.from, arc.to));
  return best;
}

/// The abscissa at which a parabola has a normal, clamped to the arc.
omReal64 abscissaWithNormal(const ConvexArc& arc, const PlanarPoint& normal) {
  if (!(normal.y < 0)) return normal.x < 0 ? arc.from : arc.to;
  return std::clamp(2 * arc.a * (normal.x / -normal.y), arc.from, arc.to);
}

}  // namespace

PlanarPoint vectorToFrame(const ConvexArc& arc, const PlanarPoint& v) {
  return {v.x * arc.axis.x + v.y * arc.axis.y, v.y * arc.axis.x - v.x * arc.axis.y};
}

PlanarPoint toFrame(const ConvexArc& arc, const PlanarPoint& point) {
  return vectorToFrame(arc, {point.x - arc.origin.x, point.y - arc.origin.y});
}

PlanarPoint fromFrame(const ConvexArc& arc, const PlanarPoint& local) {
  return {arc.origin.x + (local.x * arc.axis.x - local.y * arc.axis.y),
          arc.origin.y + (local.x * arc.axis.y + local.y * arc.axis.x)};
}

PlanarPoint parabolaPoint(const ConvexArc& arc, omReal64 abscissa) {
  return {abscissa, abscissa * (abscissa / (4 * arc.a))};
}

PlanarPoint pointWithNormal(const ConvexArc& arc, const PlanarPoint& normal) {
  const PlanarPoint local = vectorToFrame(arc, normal);
  if (arc.isParabola) return fromFrame(arc, parabolaPoint(arc, abscissaWithNormal(arc, local)));
  const omReal64 height = std::hypot(arc.a * local.x, arc.b * local.y);
  return fromFrame(arc, {arc.a * (arc.a * local.x / height), arc.b * (arc.b * local.y / height)});
}

Interval normalAngles(const ConvexArc& arc) {
  const omReal64 turn = std::atan2(arc.axis.y, arc.axis.x);
  if (!arc.isParabola) return {turn, turn + s_twoPi};
  return {turn - s_pi / 2 + std::atan(arc.from / (2 * arc.a)), turn - s_pi / 2 + std::atan(arc.to / (2 * arc.a))};
}

Interval curvatureRadii(const ConvexArc& arc, const PlanarPoint& low, const PlanarPoint& high) {
  // Wider than the rounding errors of a unit vector and of some products.
  constexpr omReal64 s_slack = 1e-13;
  const PlanarPoint atLow = vectorToFrame(arc, low);
  const PlanarPoint atHigh = vectorToFrame(arc, high);
  const bool passesY = atLow.x * atHigh.x <= 0;
  Interval radii{0, 0};
  if (arc.isParabola) {
    // 2 f (1 + (x / 2 f)^2)^(3/2), least at the vertex.
    const auto radius = [&](omReal64 abscissa) {
      const omReal64 secant = std::hypot(1.0, abscissa / (2 * arc.a));
      return 2 * arc.a * secant * secant * secant;
    };
    const auto [least, largest] =
        std::minmax({radius(abscissaWithNormal(arc, atLow)), radius(abscissaWithNormal(arc, atHigh))});
    radii = {passesY ? 2 * arc.a : least, largest};
  } else {
    // (a b)^2 / h^3 with the height h of the tangent over the centre, extreme on the axes.
    const auto radius = [&](const PlanarPoint& normal) {
      const omReal64 height = std::hypot(arc.a * normal.x, arc.b * normal.y);
      return arc.a / height * arc.b / height * (arc.a / height) * arc.b;
    };
    const auto [least, largest] = std::minmax({radius(atLow), radius(atHigh)});
    radii = {least, largest};
    const auto add = [&](omReal64 value) { radii = {std::min(radii.low, value), std::max(radii.high, value)}; };
    if (passesY) add(radius({0, 1}));
    if (atLow.y * atHigh.y <= 0) add(radius({1, 0}));
  }
  return {radii.low * (1 - s_slack), radii.high * (1 + s_slack)};
}

PlanarPoint nearestOnArc(const ConvexArc& arc, const PlanarPoint& point) {
  if (arc.isCircle()) return nearestOnCircle(arc, point);
  const PlanarPoint local = toFrame(arc, point);
  return fromFrame(arc, arc.isParabola ? nearestOnParabola(arc, local) : nearestOnEllipse(local, arc.a, arc.b));
}

bool isInEllipse(const ConvexArc& arc, const PlanarPoint& point) {
  if (arc.isParabola) return false;
  if (arc.isCircle()) return std::hypot(point.x - arc.origin.x, point.y - arc.origin.y) <= arc.a;
  const PlanarPoint local = toFrame(arc, point);
  return std::hypot(local.x / arc.a, local.y / arc.b) <= 1;
}

omReal64 leastDistance(const ConvexArc& arc, const PlanarPoint& point) {
  // More than the rounding errors of the frame.
  constexpr omReal64 s_slack = 1e-14;
  const PlanarPoint p = toFrame(arc, point);
  const omReal64 error =
      s_slack * (std::abs(p.x) + std::abs(p.y) + arc.a + arc.b + std::abs(arc.from) + std::abs(arc.to));
  if (arc.isParabola) {
    const omReal64 top = parabolaPoint(arc, std::max(-arc.from, arc.to)).y;
    // On the way to the arc y - x^2 / (4 f) changes by at most this slope times the way.
    const omReal64 slope = std::hypot(1.0, std::max({std::abs(p.x), -arc.from, arc.to}) / (2 * arc.a));
    const omReal64 byLevel = std::abs(p.y - parabolaPoint(arc, p.x).y) / slope * (1 - s_slack);
    return std::max({byLevel, arc.from - p.x, p.x - arc.to, -p.y, p.y - top}) - error;
  }
  // A step of length d changes the root of (x / a)^2 + (y / b)^2 by at most d over the smaller radius.
  const omReal64 byLevel = std::abs(std::hypot(p.x / arc.a, p.y / arc.b) - 1) * std::min(arc.a, arc.b);
  return std::max({byLevel, std::abs(p.x) - arc.a, std::abs(p.y) - arc.b}) - error;
}

}  // namespace ormix::detail
