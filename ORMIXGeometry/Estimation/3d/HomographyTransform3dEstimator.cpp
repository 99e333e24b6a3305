#include <ORMIXGeometry/Estimation/3d/HomographyTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/HomographyEstimator.ipp>

namespace ormix {
template class VersionedLevel<geom::HomographyTransform3dEstimator, BaseEstimator>;
template class RegisteredObject<geom::HomographyTransform3dEstimator, BaseEstimator>;
}  // namespace ormix

namespace ormix::geom {

template class GeometryEstimator<HomographyTransform3dEstimator>;
template class HomographyEstimator<HomographyTransform3dEstimator, 3>;

namespace {
const DynamicRegistrator<HomographyTransform3dEstimator> g_classRegistrator;
}  // namespace

}  // namespace ormix::geom
