#include <ORMIXGeometry/Entity/3d/Triangle/Triangle3d.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <ostream>

namespace ormix::geom {

namespace {

template <class T>
Point3dData<omReal64> normalOf(const Triangle3d<T>& triangle) {
  const auto pt0 = cast<omReal64>(triangle.getPoint0());
  return crossProduct(cast<omReal64>(triangle.getPoint1()) - pt0, cast<omReal64>(triangle.getPoint2()) - pt0);
}

template <class T>
Point3dData<omReal64> unitNormalOf(const Triangle3d<T>& triangle) {
  const Point3dData<omReal64> normal = normalOf(triangle);
  const omReal64 length = normal.normL2();
  return length == 0 ? normal : normal / length;
}

/// The normal as a vector. convert() makes the direction −z point to +z; a negative length restores it.
Vector3d vectorOf(const Point3dData<omReal64>& normal) {
  const Vector3d vector = convert(normal);
  return normal.getZ() < 0 && vector.getTheta() == 0 ? Vector3d(-vector.getRho(), 0, 0) : vector;
}

}  // namespace

template <class T>
Vector3d Triangle3d<T>::getNormal() const {
  return vectorOf(normalOf(*this));
}

template <class T>
void Triangle3d<T>::getNormal(omReal64& nx, omReal64& ny, omReal64& nz) const {
  const Point3dData<omReal64> normal = normalOf(*this);
  nx = normal.getX();
  ny = normal.getY();
  nz = normal.getZ();
}

template <class T>
Vector3d Triangle3d<T>::getUnitNormal() const {
  return vectorOf(unitNormalOf(*this));
}

template <class T>
void Triangle3d<T>::getUnitNormal(omReal64& nx, omReal64& ny, omReal64& nz) const {
  const Point3dData<omReal64> normal = unitNormalOf(*this);
  nx = normal.getX();
  ny = normal.getY();
  nz = normal.getZ();
}

template <class T>
Point3dData<omReal64> Triangle3d<T>::getBarycenter() const {
  return (cast<omReal64>(_pt0) + cast<omReal64>(_pt1) + cast<omReal64>(_pt2)) / 3.0;
}

template <class T>
omReal64 Triangle3d<T>::perimeter() const {
  return distance(_pt0, _pt1) + distance(_pt1, _pt2) + distance(_pt2, _pt0);
}

template <class T>
omReal64 Triangle3d<T>::area() const {
  return normalOf(*this).normL2() / 2;
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Triangle3d<T>& triangle) {
  return stream << "[pt0=" << triangle.getPoint0() << ", pt1=" << triangle.getPoint1()
                << ", pt2=" << triangle.getPoint2() << ']';
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(Triangle3d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Triangle3d)
