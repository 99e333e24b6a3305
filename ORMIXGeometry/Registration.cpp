#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PerimeterMsr2d.h>
#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXUtil/Object/DynamicRegistrator.h>

// Every class of the library is registered here while the library is loaded, and taken back when it is closed.

namespace ormix::geom {

namespace {

template <class List>
struct Registrators;
template <class... Class>
struct Registrators<ClassList<Class...>> : DynamicRegistrator<Class>... {};

const Registrators<JoinedLists<PlanarEntityList, SpatialEntityList>> g_entities;
const Registrators<JoinedLists<PlanarMeasureList, SpatialMeasureList>> g_measures;

}  // namespace

}  // namespace ormix::geom
