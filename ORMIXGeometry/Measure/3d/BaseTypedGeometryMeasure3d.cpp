#include <ORMIXGeometry/Measure/3d/BaseTypedGeometryMeasure3d.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseTypedGeometryMeasure3d<omReal64>, geom::BaseGeometryMeasure3d>;
}  // namespace ormix

namespace ormix::geom {
template class BaseTypedGeometryMeasure3d<omReal64>;
}  // namespace ormix::geom
