#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2dFrame.ipp>

namespace ormix {
template class VersionedLevel<geom::SimilarityTransform2d, geom::BaseGeometryTransform2d>;
template class RegisteredObject<geom::SimilarityTransform2d, geom::BaseGeometryTransform2d>;
}  // namespace ormix

namespace ormix::geom {

template class LinearTransform2d<SimilarityTransform2d, Similarity2d>;

namespace {
const DynamicRegistrator<SimilarityTransform2d> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom
