#include <ORMIXGeometry/Transform/3d/RotationTransform3d.h>
#include <ORMIXGeometry/Transform/3d/LinearTransform3dFrame.ipp>

namespace ormix::geom {

namespace {
const DynamicRegistrator<RotationTransform3d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(, RotationTransform3d, Rotation3d)
