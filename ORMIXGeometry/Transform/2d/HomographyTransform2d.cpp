#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2dFrame.ipp>

namespace ormix::geom {

namespace {
const DynamicRegistrator<HomographyTransform2d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(, HomographyTransform2d, Homography2d)
