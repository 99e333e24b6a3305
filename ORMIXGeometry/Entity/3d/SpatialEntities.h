#pragma once

/// \file
/// Every entity of space, complete; the list is in SpatialClasses.h.

#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>
#include <ORMIXGeometry/Entity/3d/Circle/Circle3d.h>
#include <ORMIXGeometry/Entity/3d/Cone/Cone3d.h>
#include <ORMIXGeometry/Entity/3d/Cube/Cube3d.h>
#include <ORMIXGeometry/Entity/3d/Cuboid/Cuboid3d.h>
#include <ORMIXGeometry/Entity/3d/Cylinder/Cylinder3d.h>
#include <ORMIXGeometry/Entity/3d/Ellipsoid/Ellipsoid3d.h>
#include <ORMIXGeometry/Entity/3d/Line/Line3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Plan/Plan3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXGeometry/Entity/3d/Segment/Segment3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/Entity/3d/Sphere/Sphere3d.h>
#include <ORMIXGeometry/Entity/3d/Torus/Torus3d.h>
#include <ORMIXGeometry/Entity/3d/Triangle/Triangle3d.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>
