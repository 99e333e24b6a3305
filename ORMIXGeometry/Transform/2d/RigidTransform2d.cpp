#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2dFrame.ipp>

namespace ormix {
template class VersionedLevel<geom::RigidTransform2d, geom::BaseGeometryTransform2d>;
template class RegisteredObject<geom::RigidTransform2d, geom::BaseGeometryTransform2d>;
}  // namespace ormix

namespace ormix::geom {

template class LinearTransform2d<RigidTransform2d, Rigid2d>;

namespace {
const DynamicRegistrator<RigidTransform2d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom
