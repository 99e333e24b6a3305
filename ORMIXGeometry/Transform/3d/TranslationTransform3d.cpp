#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>
#include <ORMIXGeometry/Transform/3d/LinearTransform3dFrame.ipp>

namespace ormix::geom {

namespace {
const DynamicRegistrator<TranslationTransform3d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(, TranslationTransform3d, Translation3d)
