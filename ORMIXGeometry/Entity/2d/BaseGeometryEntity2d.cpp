#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseGeometryEntity2d, geom::BaseGeometryEntity>;
}  // namespace ormix

namespace ormix::geom {

BaseGeometryEntity2d::~BaseGeometryEntity2d() = default;

eCoordinateDimension BaseGeometryEntity2d::getCoordinateDimension() const { return eCD_2d; }

}  // namespace ormix::geom
