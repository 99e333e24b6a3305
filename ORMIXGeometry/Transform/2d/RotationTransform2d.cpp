#include <ORMIXGeometry/Transform/2d/RotationTransform2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2dFrame.ipp>

namespace ormix {
template class VersionedLevel<geom::RotationTransform2d, geom::BaseGeometryTransform2d>;
template class RegisteredObject<geom::RotationTransform2d, geom::BaseGeometryTransform2d>;
}  // namespace ormix

namespace ormix::geom {

template class LinearTransform2d<RotationTransform2d, Rotation2d>;

namespace {
const DynamicRegistrator<RotationTransform2d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom
