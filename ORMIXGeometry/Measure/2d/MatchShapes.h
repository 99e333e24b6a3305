#pragma once

#include <ORMIXGeometry/Enumeration.h>
#include <ORMIXGeometry/Measure/2d/HuMomentsMsr2d.h>

namespace ormix::geom {

/// How the Hu moments of two shapes are compared, as a sum or maximum over m = sign(h)·log10|h| of each moment h.
enum eShapeMatching {
  eSM_I1,  ///< the sum of |1/mA − 1/mB|
  eSM_I2,  ///< the sum of |mA − mB|
  eSM_I3   ///< the maximum of |mA − mB| / |mA|
};

}  // namespace ormix::geom

namespace ormix {
/// Texts of eShapeMatching.
template <>
struct EnumerationNames<geom::eShapeMatching> {
  static constexpr std::string_view typeName = "eShapeMatching";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 3> names{"eSM_I1", "eSM_I2", "eSM_I3"};
};
}  // namespace ormix

namespace ormix::geom {

/// How much two shapes differ, from their Hu moments: 0 for shapes that are the same up to translation, rotation and
/// scale. Moments h that are 0 in either are left out, as are those whose m = ±log10|h| is 0 where it is divided by; 0
/// where nothing remains. eSM_I3 depends on the order of the shapes.
/// @{
ORMIX_GEOMETRY_API omReal64 matchShapes(const HuMoments2dO3& a, const HuMoments2dO3& b, eShapeMatching method);
/// \throw ORMIXGeometryException, logged first, where HuMomentsMsr2d::measure() does for one of the entities
ORMIX_GEOMETRY_API omReal64 matchShapes(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b,
                                        eShapeMatching method);
/// @}

}  // namespace ormix::geom
