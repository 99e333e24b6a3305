#include <ORMIXGeometry/Transform/BaseGeometryTransform.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

namespace ormix {
template class VersionedLevel<geom::BaseGeometryTransform, BaseSerializationObject>;
}  // namespace ormix

namespace ormix::geom {

BaseGeometryTransform::~BaseGeometryTransform() = default;

}  // namespace ormix::geom
