#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/LinearTransform3dFrame.ipp>

namespace ormix::geom {

namespace {
const DynamicRegistrator<SimilarityTransform3d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(, SimilarityTransform3d, Similarity3d)
