#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseGeometryEntity3d, geom::BaseGeometryEntity>;
}  // namespace ormix

namespace ormix::geom {

BaseGeometryEntity3d::~BaseGeometryEntity3d() = default;

eCoordinateDimension BaseGeometryEntity3d::getCoordinateDimension() const { return eCD_3d; }

}  // namespace ormix::geom
