#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2dFrame.ipp>

namespace ormix {
template class VersionedLevel<geom::HomographyTransform2d, geom::BaseGeometryTransform2d>;
template class RegisteredObject<geom::HomographyTransform2d, geom::BaseGeometryTransform2d>;
}  // namespace ormix

namespace ormix::geom {

template class LinearTransform2d<HomographyTransform2d, Homography2d>;

namespace {
const DynamicRegistrator<HomographyTransform2d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom
