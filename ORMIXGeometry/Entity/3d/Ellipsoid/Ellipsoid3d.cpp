#include <ORMIXGeometry/Entity/3d/Ellipsoid/Ellipsoid3d.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/Compare.h>
#include <ORMIXMath/Shape/Ellipsoid.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <ostream>

namespace ormix::geom {

template <class T>
void Ellipsoid3d<T>::setCoords(const Point3dData<T>& center, T majorRadius, T mediumRadius, T minorRadius,
                               omReal64 alpha, omReal64 beta, omReal64 chi) {
  _centerPt = center;
  _majorRadius = majorRadius;
  _mediumRadius = mediumRadius;
  _minorRadius = minorRadius;
  setOrientation(alpha, beta, chi);
}

template <class T>
void Ellipsoid3d<T>::setOrientation(omReal64 alpha, omReal64 beta, omReal64 chi) {
  _alpha = alpha;
  _beta = beta;
  _chi = chi;
  const RotationMatrix matrix = eulerToMatrix(alpha, beta, chi);
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t column = 0; column < 3; ++column) _matRot(row, column) = matrix[row][column];
}

template <class T>
omReal64 Ellipsoid3d<T>::area() const {
  return ellipsoidArea(static_cast<omReal64>(_majorRadius), static_cast<omReal64>(_mediumRadius),
                       static_cast<omReal64>(_minorRadius));
}

template <class T>
omReal64 Ellipsoid3d<T>::volume() const {
  return ellipsoidVolume(static_cast<omReal64>(_majorRadius), static_cast<omReal64>(_mediumRadius),
                         static_cast<omReal64>(_minorRadius));
}

template <class T>
omReal64 Ellipsoid3d<T>::excentricity() const {
  return ellipsoidExcentricity(static_cast<omReal64>(_majorRadius), static_cast<omReal64>(_mediumRadius),
                               static_cast<omReal64>(_minorRadius));
}

template <class T>
omReal64 Ellipsoid3d<T>::radius(omReal64 theta, omReal64 phi) const {
  return ellipsoidRadius(static_cast<omReal64>(_majorRadius), static_cast<omReal64>(_mediumRadius),
                         static_cast<omReal64>(_minorRadius), _matRot, theta, phi);
}

template <class T>
Point3dData<omReal64> Ellipsoid3d<T>::boundaryPoint(omReal64 theta, omReal64 phi) const {
  omReal64 x = 0;
  omReal64 y = 0;
  omReal64 z = 0;
  ellipsoidPoint(static_cast<omReal64>(centerX()), static_cast<omReal64>(centerY()), static_cast<omReal64>(centerZ()),
                 static_cast<omReal64>(_majorRadius), static_cast<omReal64>(_mediumRadius),
                 static_cast<omReal64>(_minorRadius), _matRot, theta, phi, x, y, z);
  return {x, y, z};
}

template <class T>
BoolResult Ellipsoid3d<T>::read(BaseIArchive& archive) {
  BoolResult result = Entity3d<Ellipsoid3d, BaseTypedGeometryEntity3d<T>>::read(archive);
  if (result) setOrientation(_alpha, _beta, _chi);
  return result;
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Ellipsoid3d<T>& ellipsoid) {
  return stream << "[center=" << ellipsoid.center() << ", a=" << ellipsoid.getMajorRadius()
                << ", b=" << ellipsoid.getMediumRadius() << ", c=" << ellipsoid.getMinorRadius()
                << ", chi=" << ellipsoid.getChi() << ", beta=" << ellipsoid.getBeta()
                << ", alpha=" << ellipsoid.getAlpha() << ']';
}

template <class T>
bool compare(const Ellipsoid3d<T>& a, const Ellipsoid3d<T>& b, std::common_type_t<T> tolerance,
             omReal64 angleTolerance) {
  return compare(a.center(), b.center(), tolerance) &&
         ormix::compare(a.getMajorRadius(), b.getMajorRadius(), tolerance) &&
         ormix::compare(a.getMediumRadius(), b.getMediumRadius(), tolerance) &&
         ormix::compare(a.getMinorRadius(), b.getMinorRadius(), tolerance) &&
         ormix::compare(a.getChi(), b.getChi(), angleTolerance) &&
         ormix::compare(a.getBeta(), b.getBeta(), angleTolerance) &&
         ormix::compare(a.getAlpha(), b.getAlpha(), angleTolerance);
}

#define ORMIX_GEOMETRY_INSTANTIATE_ELLIPSOID(T)                                                                 \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Ellipsoid3d<T>&);                   \
  template ORMIX_GEOMETRY_API bool compare(const Ellipsoid3d<T>&, const Ellipsoid3d<T>&, std::common_type_t<T>, \
                                           omReal64);
ORMIX_GEOMETRY_INSTANTIATE_ELLIPSOID(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_ELLIPSOID(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_ELLIPSOID(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_ELLIPSOID(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_ELLIPSOID

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Ellipsoid3d)
