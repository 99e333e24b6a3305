#include <ORMIXGeometry/Entity/3d/Vector/SphericalAngle.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <cmath>
#include <ostream>

namespace ormix::geom {

void Vector3d::setCoords(omReal64 rho, omReal64 theta, omReal64 phi) {
  omReal64 polar = detail::positiveAngle(theta);
  omReal64 azimuth = detail::positiveAngle(phi);
  // The same direction would have the polar angle 2 pi - polar; this changes the sign of z (intended).
  if (polar >= s_pi) {
    polar -= s_pi;
    azimuth -= s_pi;
  }
  _rho = rho;
  setAngles(detail::signedAngle(polar), detail::signedAngle(azimuth));
}

void Vector3d::setAngles(omReal64 theta, omReal64 phi) {
  _theta = theta;
  _phi = phi;
  _cosTheta = std::cos(theta);
  _sinTheta = std::sin(theta);
  _cosPhi = std::cos(phi);
  _sinPhi = std::sin(phi);
}

template <class T>
void Vector3d::setCoords(const Point3dData<T>& point) {
  const auto x = static_cast<omReal64>(point.getX());
  const auto y = static_cast<omReal64>(point.getY());
  const auto z = static_cast<omReal64>(point.getZ());
  const omReal64 rho = euclideanNorm(x, y, z);
  // Not the arc cosine of z / rho, which loses half of the digits near the poles.
  const omReal64 theta = rho == 0 ? 0 : std::atan2(euclideanNorm(x, y), z);
  // Adding 0 makes -0 a 0, so that the zero vector has the angle 0.
  setCoords(rho, theta, std::atan2(y + 0.0, x + 0.0));
}

template <class T>
void Vector3d::setCoords(const Point3dData<T>& from, const Point3dData<T>& to) {
  setCoords(Point3dData<omReal64>(omReal64(to.getX()) - omReal64(from.getX()),
                                  omReal64(to.getY()) - omReal64(from.getY()),
                                  omReal64(to.getZ()) - omReal64(from.getZ())));
}

Vector3d& Vector3d::operator+=(const Vector3d& other) {
  setCoords(convert<omReal64>(*this) + convert<omReal64>(other));
  return *this;
}

Vector3d& Vector3d::operator-=(const Vector3d& other) {
  setCoords(convert<omReal64>(*this) - convert<omReal64>(other));
  return *this;
}

Vector3d& Vector3d::operator*=(omReal64 scalar) {
  _rho *= scalar;
  return *this;
}

Vector3d& Vector3d::operator/=(omReal64 scalar) {
  _rho /= scalar;
  return *this;
}

BoolResult Vector3d::read(BaseIArchive& archive) {
  BoolResult result = Entity3d::read(archive);
  if (result) setAngles(_theta, _phi);
  return result;
}

std::ostream& operator<<(std::ostream& stream, const Vector3d& vector) { return stream << convert<omReal64>(vector); }

omReal64 scalarProduct(const Vector3d& a, const Vector3d& b) {
  return a.getX() * b.getX() + a.getY() * b.getY() + a.getZ() * b.getZ();
}

Vector3d crossProduct(const Vector3d& a, const Vector3d& b) {
  return convert(crossProduct(convert<omReal64>(a), convert<omReal64>(b)));
}

bool compare(const Vector3d& a, const Vector3d& b, omReal64 tolerance) {
  return tolerance > distance(convert<omReal64>(a), convert<omReal64>(b));
}

#define ORMIX_GEOMETRY_INSTANTIATE_VECTOR(T)                                   \
  template ORMIX_GEOMETRY_API void Vector3d::setCoords(const Point3dData<T>&); \
  template ORMIX_GEOMETRY_API void Vector3d::setCoords(const Point3dData<T>&, const Point3dData<T>&);
ORMIX_GEOMETRY_INSTANTIATE_VECTOR(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_VECTOR(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_VECTOR(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_VECTOR(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_VECTOR

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_LEVELS(, Vector3d, BaseGeometryEntity3d)
