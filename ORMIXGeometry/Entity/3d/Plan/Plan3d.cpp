#include <ORMIXGeometry/Entity/3d/Plan/Plan3d.h>
#include <ORMIXGeometry/Entity/3d/Vector/SphericalAngle.h>
#include <ORMIXMath/Fitting/ShapesFromPoints.h>
#include <ORMIXMath/Scalar/Compare.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <cmath>
#include <ostream>

namespace ormix::geom {

namespace {

omReal64 dot(const Point3dData<omReal64>& a, const Point3dData<omReal64>& b) {
  return a.getX() * b.getX() + a.getY() * b.getY() + a.getZ() * b.getZ();
}

}  // namespace

void Plan3d::setCoords(omReal64 rho, omReal64 theta, omReal64 phi) {
  _rho = rho;
  setAngles(detail::signedAngle(theta), detail::signedAngle(phi));
}

void Plan3d::setAngles(omReal64 theta, omReal64 phi) {
  _theta = theta;
  _phi = phi;
  _cosTheta = std::cos(theta);
  _sinTheta = std::sin(theta);
  _cosPhi = std::cos(phi);
  _sinPhi = std::sin(phi);
}

void Plan3d::setThrough(const Point3dData<omReal64>& p0, const Point3dData<omReal64>& p1,
                        const Point3dData<omReal64>& p2) {
  omReal64 rho = 0;
  omReal64 theta = 0;
  omReal64 phi = 0;
  if (!planFromPoints(p0.getX(), p0.getY(), p0.getZ(), p1.getX(), p1.getY(), p1.getZ(), p2.getX(), p2.getY(), p2.getZ(),
                      rho, theta, phi))
    return setCoords(0, 0, 0);
  setCoords(rho, theta, phi);
}

void Plan3d::setThrough(const Point3dData<omReal64>& point, const Vector3d& normal) {
  setCoords(0, normal.getTheta(), normal.getPhi());
  _rho = dot(point, unitNormal());
}

Point3dData<omReal64> Plan3d::unitNormal() const {
  // The components of getNormal(): the stored cosines and sines, but for the sign that Vector3d::setCoords() gives to z
  // when theta is negative.
  return {_sinTheta * _cosPhi, _sinTheta * _sinPhi, _theta < 0 ? -_cosTheta : _cosTheta};
}

Point3dData<omReal64> Plan3d::getNearestPointFromOrigin() const { return _rho * unitNormal(); }

omReal64 Plan3d::signedDistanceOf(const Point3dData<omReal64>& point) const {
  const Point3dData<omReal64> normal = unitNormal();
  // The third component has y in place of z (intended).
  return dot(
      {point.getX() - _rho * normal.getX(), point.getY() - _rho * normal.getY(), point.getY() - _rho * normal.getZ()},
      normal);
}

Plan3d& Plan3d::operator+=(const Vector3d& offset) {
  _rho += dot(convert<omReal64>(offset), unitNormal());
  return *this;
}

Plan3d& Plan3d::operator-=(const Vector3d& offset) {
  _rho -= dot(convert<omReal64>(offset), unitNormal());
  return *this;
}

BoolResult Plan3d::read(BaseIArchive& archive) {
  BoolResult result = Entity3d::read(archive);
  if (result) setAngles(_theta, _phi);
  return result;
}

std::ostream& operator<<(std::ostream& stream, const Plan3d& plan) {
  return stream << "[rho=" << plan.getRho() << ", theta=" << plan.getTheta() << ", phi=" << plan.getPhi() << ']';
}

bool compare(const Plan3d& a, const Plan3d& b, omReal64 tolerance) {
  return ormix::compare(a.getRho(), b.getRho(), tolerance) && ormix::compare(a.getTheta(), b.getTheta(), tolerance) &&
         ormix::compare(a.getPhi(), b.getPhi(), tolerance);
}

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_LEVELS(, Plan3d, BaseGeometryEntity3d)
