#include <ORMIXGeometry/Transform/2d/ScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2dFrame.ipp>

namespace ormix {
template class VersionedLevel<geom::ScaleTransform2d, geom::BaseGeometryTransform2d>;
template class RegisteredObject<geom::ScaleTransform2d, geom::BaseGeometryTransform2d>;
}  // namespace ormix

namespace ormix::geom {

template class LinearTransform2d<ScaleTransform2d, Scale2d>;

namespace {
const DynamicRegistrator<ScaleTransform2d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom
