#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2dFrame.ipp>

namespace ormix::geom {

namespace {
const DynamicRegistrator<TranslationTransform2d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(, TranslationTransform2d, Translation2d)
