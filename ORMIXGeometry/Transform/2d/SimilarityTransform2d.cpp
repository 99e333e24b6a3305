#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2dFrame.ipp>

namespace ormix::geom {

namespace {
const DynamicRegistrator<SimilarityTransform2d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(, SimilarityTransform2d, Similarity2d)
