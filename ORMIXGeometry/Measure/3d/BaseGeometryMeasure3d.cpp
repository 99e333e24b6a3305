#include <ORMIXGeometry/Measure/3d/BaseGeometryMeasure3d.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseGeometryMeasure3d, geom::BaseGeometryMeasure>;
}  // namespace ormix

namespace ormix::geom {

BaseGeometryMeasure3d::~BaseGeometryMeasure3d() = default;

eCoordinateDimension BaseGeometryMeasure3d::getCoordinateDimension() const { return eCD_3d; }

}  // namespace ormix::geom
