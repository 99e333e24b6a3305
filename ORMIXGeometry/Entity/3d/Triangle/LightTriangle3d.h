#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXGeometry/Entity/3d/Triangle/Triangle3d.h>
#include <ORMIXSerialization/Archive/ArchiveItem.h>

namespace ormix::geom {

/// Three vertices without the virtual functions of Triangle3d: what a run of many triangles is made of. Trivially
/// copyable and without padding, so that consecutive triangles are consecutive numbers x0, y0, z0, x1, …
template <class T>
class ORMIX_GEOMETRY_API LightTriangle3d {
 public:
  static constexpr const char* s_className = "ormix::geom::LightTriangle3d";  ///< name in those of its containers
  using CoordinateType = T;  ///< omInt32, omUInt32, omReal32 or omReal64

  /// All vertices at the origin.
  constexpr LightTriangle3d() = default;
  /// The vertices as given.
  /// @{
  constexpr LightTriangle3d(const Point3dData<T>& pt0, const Point3dData<T>& pt1, const Point3dData<T>& pt2)
      : _pt0(pt0), _pt1(pt1), _pt2(pt2) {}
  explicit LightTriangle3d(const Triangle3d<T>& triangle)
      : _pt0(triangle.getPoint0()), _pt1(triangle.getPoint1()), _pt2(triangle.getPoint2()) {}
  /// @}

  /// The triangle as an entity, with its measures and transforms.
  Triangle3d<T> toTriangle3d() const { return {_pt0, _pt1, _pt2}; }

  /// Replaces all vertices or one.
  /// @{
  constexpr void setCoords(const Point3dData<T>& pt0, const Point3dData<T>& pt1, const Point3dData<T>& pt2) {
    _pt0 = pt0;
    _pt1 = pt1;
    _pt2 = pt2;
  }
  constexpr void setPoint0(const Point3dData<T>& point) { _pt0 = point; }
  constexpr void setPoint1(const Point3dData<T>& point) { _pt1 = point; }
  constexpr void setPoint2(const Point3dData<T>& point) { _pt2 = point; }
  /// @}

  /// A vertex as stored.
  /// @{
  constexpr const Point3dData<T>& getPoint0() const { return _pt0; }
  constexpr const Point3dData<T>& getPoint1() const { return _pt1; }
  constexpr const Point3dData<T>& getPoint2() const { return _pt2; }
  /// @}

  /// Exact, vertex by vertex; a NaN coordinate equals nothing.
  /// @{
  friend constexpr bool operator==(const LightTriangle3d& a, const LightTriangle3d& b) {
    return a._pt0 == b._pt0 && a._pt1 == b._pt1 && a._pt2 == b._pt2;
  }
  friend constexpr bool operator!=(const LightTriangle3d& a, const LightTriangle3d& b) { return !(a == b); }
  /// @}

 private:
  Point3dData<T> _pt0;
  Point3dData<T> _pt1;
  Point3dData<T> _pt2;
};

/// "[pt0=[0, 0, 0], pt1=[1, 0, 0], pt2=[0, 1, 0]]", as a Triangle3d.
template <class T>
std::ostream& operator<<(std::ostream& stream, const LightTriangle3d<T>& triangle);

/// Whether each vertex is at most the tolerance from that of the other triangle, see compare() of points.
template <class T>
bool compare(const LightTriangle3d<T>& a, const LightTriangle3d<T>& b, std::common_type_t<T> tolerance);

/// Writes or reads a single triangle: a section with the points "pt0", "pt1" and "pt2". A triangle whose reading fails
/// stays unchanged.
/// @{
template <class T>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const LightTriangle3d<T>& triangle);
template <class T>
BoolResult readItem(BaseIArchive& archive, std::string_view key, LightTriangle3d<T>& triangle);
/// @}

}  // namespace ormix::geom

namespace ormix {

/// A vector of triangles is archived as one numeric array of nine columns, one row a triangle.
template <class T>
struct PackedCoordinates<geom::LightTriangle3d<T>> {
  using Scalar = T;                            ///< type of the numbers
  static constexpr std::size_t nbColumns = 9;  ///< x0, y0, z0, …, z2
};

}  // namespace ormix
