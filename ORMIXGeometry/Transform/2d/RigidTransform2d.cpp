#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2dFrame.ipp>

namespace ormix::geom {

namespace {
const DynamicRegistrator<RigidTransform2d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(, RigidTransform2d, Rigid2d)
