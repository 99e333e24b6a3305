#include <ORMIXGeometry/Measure/2d/BaseGeometryMeasure2d.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseGeometryMeasure2d, geom::BaseGeometryMeasure>;
}  // namespace ormix

namespace ormix::geom {

BaseGeometryMeasure2d::~BaseGeometryMeasure2d() = default;

eCoordinateDimension BaseGeometryMeasure2d::getCoordinateDimension() const { return eCD_2d; }

}  // namespace ormix::geom
