#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/LinearTransform3dFrame.ipp>

namespace ormix::geom {

namespace {
const DynamicRegistrator<RigidTransform3d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(, RigidTransform3d, Rigid3d)
