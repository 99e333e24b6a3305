#include <ORMIXGeometry/Transform/2d/RotationTransform2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2dFrame.ipp>

namespace ormix::geom {

namespace {
const DynamicRegistrator<RotationTransform2d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(, RotationTransform2d, Rotation2d)
