#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <cmath>
#include <ostream>

namespace ormix::geom {

namespace {
/// The angle plus the multiple of 2 pi that brings it into (-pi, pi].
omReal64 normalizedAngle(omReal64 angle) {
  const omReal64 reduced = std::remainder(angle, 2 * s_pi);
  return reduced <= -s_pi ? s_pi : reduced;
}
}  // namespace

Vector2d::Vector2d(omReal64 rho, omReal64 theta) { setCoords(rho, theta); }

void Vector2d::setCoords(omReal64 rho, omReal64 theta) {
  _rho = rho;
  setTheta(theta);
}

void Vector2d::setTheta(omReal64 theta) {
  _theta = theta;
  _cosTheta = std::cos(theta);
  _sinTheta = std::sin(theta);
}

template <class T>
void Vector2d::setCoords(const Point2dData<T>& point) {
  setCartesian(static_cast<omReal64>(point.getX()), static_cast<omReal64>(point.getY()));
}

template <class T>
void Vector2d::setCoords(const Point2dData<T>& first, const Point2dData<T>& second) {
  setCartesian(omReal64(first.getX()) - omReal64(second.getX()), omReal64(first.getY()) - omReal64(second.getY()));
}

void Vector2d::setCartesian(omReal64 x, omReal64 y) {
  // Adding 0 changes -0 to 0, so that the negative x axis has the angle pi and the zero vector the angle 0.
  setCoords(std::hypot(x, y), std::atan2(y + 0.0, x + 0.0));
}

void Vector2d::setNormalized(omReal64 rho) {
  if (rho < 0)
    setCoords(-rho, normalizedAngle(_theta + s_pi));
  else
    setCoords(rho, normalizedAngle(_theta));
}

Vector2d& Vector2d::operator+=(const Vector2d& other) {
  setCartesian(getX() + other.getX(), getY() + other.getY());
  return *this;
}

Vector2d& Vector2d::operator-=(const Vector2d& other) {
  setCartesian(getX() - other.getX(), getY() - other.getY());
  return *this;
}

Vector2d& Vector2d::operator*=(omReal64 scalar) {
  setNormalized(_rho * scalar);
  return *this;
}

Vector2d& Vector2d::operator/=(omReal64 scalar) {
  setNormalized(_rho / scalar);
  return *this;
}

BoolResult Vector2d::read(BaseIArchive& archive) {
  BoolResult result = Entity2d::read(archive);
  if (result) setTheta(_theta);
  return result;
}

std::ostream& operator<<(std::ostream& stream, const Vector2d& vector) {
  return stream << '[' << vector.getX() << ", " << vector.getY() << ']';
}

bool compare(const Vector2d& u, const Vector2d& v, omReal64 tolerance) {
  return tolerance > std::abs((u - v).getRho());
}

#define ORMIX_GEOMETRY_INSTANTIATE_VECTOR(T)                                   \
  template ORMIX_GEOMETRY_API void Vector2d::setCoords(const Point2dData<T>&); \
  template ORMIX_GEOMETRY_API void Vector2d::setCoords(const Point2dData<T>&, const Point2dData<T>&);
ORMIX_GEOMETRY_INSTANTIATE_VECTOR(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_VECTOR(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_VECTOR(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_VECTOR(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_VECTOR

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_LEVELS(, Vector2d, BaseGeometryEntity2d)
