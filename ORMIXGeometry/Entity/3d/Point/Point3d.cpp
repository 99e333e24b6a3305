#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Point3d)
