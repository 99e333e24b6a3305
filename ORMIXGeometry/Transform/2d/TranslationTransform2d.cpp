#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2dFrame.ipp>

namespace ormix {
template class VersionedLevel<geom::TranslationTransform2d, geom::BaseGeometryTransform2d>;
template class RegisteredObject<geom::TranslationTransform2d, geom::BaseGeometryTransform2d>;
}  // namespace ormix

namespace ormix::geom {

template class LinearTransform2d<TranslationTransform2d, Translation2d>;

namespace {
const DynamicRegistrator<TranslationTransform2d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom
