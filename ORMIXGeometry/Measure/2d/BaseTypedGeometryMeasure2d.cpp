#include <ORMIXGeometry/Measure/2d/BaseTypedGeometryMeasure2d.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<omInt32>, geom::BaseGeometryMeasure2d>;
template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<omUInt32>, geom::BaseGeometryMeasure2d>;
template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<omReal32>, geom::BaseGeometryMeasure2d>;
template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<omReal64>, geom::BaseGeometryMeasure2d>;
}  // namespace ormix

namespace ormix::geom {
template class BaseTypedGeometryMeasure2d<omInt32>;
template class BaseTypedGeometryMeasure2d<omUInt32>;
template class BaseTypedGeometryMeasure2d<omReal32>;
template class BaseTypedGeometryMeasure2d<omReal64>;
}  // namespace ormix::geom
