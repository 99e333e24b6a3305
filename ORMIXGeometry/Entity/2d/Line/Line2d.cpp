#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <algorithm>
#include <cmath>
#include <ostream>

namespace ormix::geom {

namespace {

/// The value, or 0 where its magnitude is below the bound of its rounding error; both may be infinite.
omReal64 zeroBelowError(omReal64 value, omReal64 errorBound) { return std::abs(value) < errorBound ? 0 : value; }

/// The least exponent of a power of two above the magnitudes of all coordinates.
int commonExponent(const Point2dData<omReal64>& a, const Point2dData<omReal64>& b) {
  int exponent = 0;
  std::frexp(std::max({std::abs(a.getX()), std::abs(a.getY()), std::abs(b.getX()), std::abs(b.getY())}), &exponent);
  return exponent;
}

/// The point times 2^exponent.
PlanarPoint scaled(const Point2dData<omReal64>& point, int exponent) {
  return {std::ldexp(point.getX(), exponent), std::ldexp(point.getY(), exponent)};
}

}  // namespace

void Line2d::setTheta(omReal64 theta) {
  _theta = theta;
  _cosTheta = std::cos(theta);
  _sinTheta = std::sin(theta);
}

void Line2d::setCoords(omReal64 rho, omReal64 theta) {
  omReal64 angle = std::remainder(theta, s_twoPi);
  if (rho < 0) angle += angle > 0 ? -s_pi : s_pi;
  if (rho == 0) {
    if (angle < 0) angle += s_pi;
    if (angle >= s_pi) angle = 0;
  } else if (angle <= -s_pi) {
    angle = s_pi;
  }
  _rho = std::abs(rho);
  // Adding 0 changes -0 to 0.
  setTheta(angle + 0.0);
}

void Line2d::setThrough(const Point2dData<omReal64>& first, const Point2dData<omReal64>& second) {
  // Scaled so that no product overflows; scaling by a power of two is exact.
  const int exponent = commonExponent(first, second);
  const PlanarPoint a = scaled(first, -exponent);
  const PlanarPoint b = scaled(second, -exponent);
  const PlanarPoint direction{b.x - a.x, b.y - a.y};
  const omReal64 length = std::hypot(direction.x, direction.y);
  if (length == 0) return setThrough(first, Vector2d());

  // Twice the signed area of the triangle of the origin and the points, without cancellation. Its sign selects the
  // normal that points away from the origin, which is more precise than adding pi to an angle afterwards.
  const omReal64 area = orientationDeterminant({0, 0}, a, b);
  const omReal64 side = area < 0 ? -1 : 1;
  setCoords(std::ldexp(std::abs(area) / length, exponent), std::atan2(-side * direction.x, side * direction.y));
}

void Line2d::setThrough(const Point2dData<omReal64>& point, const Vector2d& direction) {
  const omReal64 cosine = direction.getCosTheta();
  const omReal64 sine = direction.getSinTheta();
  const omReal64 rho = point.getX() * sine - point.getY() * cosine;
  // Bound of the rounding errors of the two products and of the direction's angle.
  const omReal64 errorX = NumericLimits<omReal64>::s_eps * point.getX();
  const omReal64 errorY = NumericLimits<omReal64>::s_eps * point.getY();
  const omReal64 angleError = (errorX * cosine + errorY * sine) * direction.getTheta();
  const omReal64 errorBound = std::abs(errorX * sine) + std::abs(errorY * cosine) + std::abs(angleError);
  setCoords(zeroBelowError(rho, errorBound), direction.getTheta() - s_pi / 2);
}

Point2dData<omReal64> Line2d::getNearestPointFromOrigin() const { return {_rho * _cosTheta, _rho * _sinTheta}; }

Vector2d Line2d::getNormal() const { return {1, _theta}; }

Vector2d Line2d::getDirection() const {
  const omReal64 angle = std::remainder(_theta + s_pi / 2, s_twoPi);
  return {1, angle <= -s_pi ? s_pi : angle};
}

Line2d& Line2d::operator+=(const Vector2d& offset) {
  translate(offset.getX(), offset.getY());
  return *this;
}

Line2d& Line2d::operator-=(const Vector2d& offset) {
  translate(-offset.getX(), -offset.getY());
  return *this;
}

void Line2d::translate(omReal64 x, omReal64 y) {
  const omReal64 alongX = x * _cosTheta;
  const omReal64 alongY = y * _sinTheta;
  const omReal64 eps = NumericLimits<omReal64>::s_eps;
  const omReal64 errorBound = eps * std::abs(_rho) + eps * std::abs(alongX) + eps * std::abs(alongY);
  setCoords(zeroBelowError(_rho + (alongX + alongY), errorBound), _theta);
}

BoolResult Line2d::read(BaseIArchive& archive) {
  BoolResult result = Entity2d::read(archive);
  if (result) setTheta(_theta);
  return result;
}

std::ostream& operator<<(std::ostream& stream, const Line2d& line) {
  return stream << "[rho=" << line.getRho() << ", theta=" << line.getTheta() << ']';
}

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_LEVELS(, Line2d, BaseGeometryEntity2d)
