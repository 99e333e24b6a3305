#include <ORMIXGeometry/Transform/3d/ScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/LinearTransform3dFrame.ipp>

namespace ormix::geom {

namespace {
const DynamicRegistrator<ScaleTransform3d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(, ScaleTransform3d, Scale3d)
