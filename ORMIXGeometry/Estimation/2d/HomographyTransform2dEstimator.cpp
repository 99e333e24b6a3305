#include <ORMIXGeometry/Estimation/2d/HomographyTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/HomographyEstimator.ipp>

namespace ormix {
template class VersionedLevel<geom::HomographyTransform2dEstimator, BaseEstimator>;
template class RegisteredObject<geom::HomographyTransform2dEstimator, BaseEstimator>;
}  // namespace ormix

namespace ormix::geom {

template class GeometryEstimator<HomographyTransform2dEstimator>;
template class HomographyEstimator<HomographyTransform2dEstimator, 2>;

namespace {
const DynamicRegistrator<HomographyTransform2dEstimator> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom
