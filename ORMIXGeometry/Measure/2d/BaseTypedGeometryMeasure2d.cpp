#include <ORMIXGeometry/Measure/2d/BaseTypedGeometryMeasure2d.h>
#include <ORMIXGeometry/Measure/2d/HuMoments2dO3.h>
#include <ORMIXGeometry/Measure/2d/Moments2dO3.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<omInt32>, geom::BaseGeometryMeasure2d>;
template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<omUInt32>, geom::BaseGeometryMeasure2d>;
template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<omReal32>, geom::BaseGeometryMeasure2d>;
template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<omReal64>, geom::BaseGeometryMeasure2d>;
template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<geom::Moments2dO3>, geom::BaseGeometryMeasure2d>;
template class VersionedLevel<geom::BaseTypedGeometryMeasure2d<geom::HuMoments2dO3>, geom::BaseGeometryMeasure2d>;
}  // namespace ormix

namespace ormix::geom {
template class BaseTypedGeometryMeasure2d<omInt32>;
template class BaseTypedGeometryMeasure2d<omUInt32>;
template class BaseTypedGeometryMeasure2d<omReal32>;
template class BaseTypedGeometryMeasure2d<omReal64>;
template class BaseTypedGeometryMeasure2d<Moments2dO3>;
template class BaseTypedGeometryMeasure2d<HuMoments2dO3>;
}  // namespace ormix::geom
