#pragma once

#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Rectangle/Rectangle2d.h>
#include <ORMIXGeometry/Entity/2d/Square/Square2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>

/// \file
/// Every measured entity of the plane, to be instantiated at the end of a measure's source; not installed.

#define ORMIX_GEOMETRY_INSTANTIATE_MEASURE2D(Measure)               \
  template bool Measure::process(const Vector2d&, omReal64&) const; \
  ORMIX_GEOMETRY_INSTANTIATE_MEASURE2D_OF(Measure, omInt32)         \
  ORMIX_GEOMETRY_INSTANTIATE_MEASURE2D_OF(Measure, omUInt32)        \
  ORMIX_GEOMETRY_INSTANTIATE_MEASURE2D_OF(Measure, omReal32)        \
  ORMIX_GEOMETRY_INSTANTIATE_MEASURE2D_OF(Measure, omReal64)
#define ORMIX_GEOMETRY_INSTANTIATE_MEASURE2D_OF(Measure, T)                 \
  template bool Measure::process(const Point2d<T>&, omReal64&) const;       \
  template bool Measure::process(const BoundingBox2d<T>&, omReal64&) const; \
  template bool Measure::process(const Circle2d<T>&, omReal64&) const;      \
  template bool Measure::process(const Ellipse2d<T>&, omReal64&) const;     \
  template bool Measure::process(const Square2d<T>&, omReal64&) const;      \
  template bool Measure::process(const Rectangle2d<T>&, omReal64&) const;   \
  template bool Measure::process(const Polygon2d<T>&, omReal64&) const;     \
  template bool Measure::process(const PolygonWithHoles2d<T>&, omReal64&) const;
