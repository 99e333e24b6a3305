#pragma once

/// \file
/// Includes the definitions of all planar entities; PlanarClasses.h has their list.

#include <ORMIXGeometry/Entity/2d/Arc/Arc2d.h>
#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXGeometry/Entity/2d/Parabola/Parabola2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/PointCloud/PointCloud2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Rectangle/Rectangle2d.h>
#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>
#include <ORMIXGeometry/Entity/2d/Skeleton/Skeleton2d.h>
#include <ORMIXGeometry/Entity/2d/Square/Square2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
