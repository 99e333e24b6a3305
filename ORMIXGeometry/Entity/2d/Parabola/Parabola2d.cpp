#include <ORMIXGeometry/Entity/2d/Parabola/Parabola2d.h>
#include <ORMIXMath/Shape/Parabola.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <algorithm>
#include <cmath>
#include <ostream>

namespace ormix::geom {

namespace {

/// Arc length from the vertex to slope u = t / 2f, in units of the focal length.
omReal64 arcLengthOfSlope(omReal64 slope) { return slope * std::hypot(1.0, slope) + std::asinh(slope); }

/// The inverse of arcLengthOfSlope().
omReal64 slopeOfArcLength(omReal64 length) {
  // Newton's method for a convex increasing function: from a start above the root, as both of these are for lengths
  // >= 0, it decreases to the root without overshooting. Each step squares the error, which starts below 1/2.
  constexpr int s_maxNbSteps = 12;
  const omReal64 target = std::abs(length);
  omReal64 slope = std::min(target / 2, std::sqrt(target));
  for (int step = 0; step < s_maxNbSteps; ++step) {
    const omReal64 next = slope - (arcLengthOfSlope(slope) - target) / (2 * std::hypot(1.0, slope));
    if (!(next < slope)) break;
    slope = next;
  }
  return std::copysign(slope, length);
}

}  // namespace

Point2dData<omReal64> Parabola2d::getVertex() const {
  const omReal64 toDirectrix = _directrix.signedDistance(_focus) / 2;
  return {_focus.getX() - toDirectrix * _directrix.getCosTheta(),
          _focus.getY() - toDirectrix * _directrix.getSinTheta()};
}

Line2d Parabola2d::getSymmetryAxis() const { return {_focus, _directrix.getNormal()}; }

omReal64 Parabola2d::getFocalLength() const { return std::abs(_directrix.signedDistance(_focus)) / 2; }

bool Parabola2d::isDegenerated() const { return getFocalLength() == 0; }

bool Parabola2d::isInside(const Point2dData<omReal64>& point) const {
  return distanceDifference(point) >= -differenceErrorBound(point);
}

bool Parabola2d::isStrictlyInside(const Point2dData<omReal64>& point) const {
  return distanceDifference(point) > differenceErrorBound(point);
}

omReal64 Parabola2d::distanceDifference(const Point2dData<omReal64>& point) const {
  // The point's height above the directrix is that of the focus plus an offset, so that the focus itself has the same
  // height here as in getFocalLength().
  const omReal64 overFocus = (point.getX() - _focus.getX()) * _directrix.getCosTheta() +
                             (point.getY() - _focus.getY()) * _directrix.getSinTheta();
  return std::abs(overFocus + _directrix.signedDistance(_focus)) - distance(point, _focus);
}

omReal64 Parabola2d::differenceErrorBound(const Point2dData<omReal64>& point) const {
  // Each coordinate takes part in at most four rounded operations, one of them the directrix's cosine or sine.
  constexpr omReal64 s_nbRoundings = 4;
  return s_nbRoundings * NumericLimits<omReal64>::s_eps *
         (std::abs(point.getX()) + std::abs(point.getY()) + std::abs(_focus.getX()) + std::abs(_focus.getY()) +
          std::abs(_directrix.getRho()));
}

omReal64 Parabola2d::getAbscissa(const Point2dData<omReal64>& point) const {
  return (point.getY() - _focus.getY()) * _directrix.getCosTheta() -
         (point.getX() - _focus.getX()) * _directrix.getSinTheta();
}

Point2dData<omReal64> Parabola2d::getPoint(omReal64 abscissa) const {
  // Negative where the normal points away from the focus, which makes the formula valid for either normal.
  const omReal64 focusHeight = _directrix.signedDistance(_focus);
  const omReal64 alongNormal = abscissa * (abscissa / (2 * focusHeight)) - focusHeight / 2;
  return {_focus.getX() + alongNormal * _directrix.getCosTheta() - abscissa * _directrix.getSinTheta(),
          _focus.getY() + alongNormal * _directrix.getSinTheta() + abscissa * _directrix.getCosTheta()};
}

omReal64 Parabola2d::computeArcLength(omReal64 fromAbscissa, omReal64 toAbscissa) const {
  return parabolaArcLength(getFocalLength(), fromAbscissa, toAbscissa);
}

std::vector<Point2dData<omReal64>> Parabola2d::sampleArc(omReal64 fromAbscissa, omReal64 toAbscissa,
                                                         omUInt32 nbPoints) const {
  std::vector<Point2dData<omReal64>> points;
  const omReal64 focalLength = getFocalLength();
  const omReal64 length = computeArcLength(fromAbscissa, toAbscissa) / focalLength;
  // Written so that NaN values return too.
  if (nbPoints == 0 || !(focalLength > 0 && std::isfinite(length))) return points;

  points.reserve(nbPoints);
  points.push_back(getPoint(fromAbscissa));
  const omReal64 start = arcLengthOfSlope(fromAbscissa / (2 * focalLength));
  const omReal64 signedLength = std::copysign(length, toAbscissa - fromAbscissa);
  for (omUInt32 i = 1; i + 1 < nbPoints; ++i) {
    const omReal64 reached = start + signedLength * (static_cast<omReal64>(i) / (nbPoints - 1));
    points.push_back(getPoint(2 * focalLength * slopeOfArcLength(reached)));
  }
  if (nbPoints > 1) points.push_back(getPoint(toAbscissa));
  return points;
}

std::ostream& operator<<(std::ostream& stream, const Parabola2d& parabola) {
  return stream << "[focus=" << parabola.getFocus() << ", directrix=" << parabola.getDirectrix() << ']';
}

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_LEVELS(, Parabola2d, BaseGeometryEntity2d)
