#pragma once

#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>
#include <ORMIXGeometry/Entity/3d/Cube/Cube3d.h>
#include <ORMIXGeometry/Entity/3d/Cuboid/Cuboid3d.h>
#include <ORMIXGeometry/Entity/3d/Ellipsoid/Ellipsoid3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/Entity/3d/Sphere/Sphere3d.h>
#include <ORMIXGeometry/Entity/3d/Triangle/Triangle3d.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>

/// \file
/// Every measured entity of space, to be instantiated at the end of a measure's source; not installed.

#define ORMIX_GEOMETRY_INSTANTIATE_MEASURE3D(Measure)               \
  template bool Measure::process(const Vector3d&, omReal64&) const; \
  template bool Measure::process(const Shape3d&, omReal64&) const;  \
  ORMIX_GEOMETRY_INSTANTIATE_MEASURE3D_OF(Measure, omInt32)         \
  ORMIX_GEOMETRY_INSTANTIATE_MEASURE3D_OF(Measure, omUInt32)        \
  ORMIX_GEOMETRY_INSTANTIATE_MEASURE3D_OF(Measure, omReal32)        \
  ORMIX_GEOMETRY_INSTANTIATE_MEASURE3D_OF(Measure, omReal64)
#define ORMIX_GEOMETRY_INSTANTIATE_MEASURE3D_OF(Measure, T)                 \
  template bool Measure::process(const Point3d<T>&, omReal64&) const;       \
  template bool Measure::process(const BoundingBox3d<T>&, omReal64&) const; \
  template bool Measure::process(const Sphere3d<T>&, omReal64&) const;      \
  template bool Measure::process(const Ellipsoid3d<T>&, omReal64&) const;   \
  template bool Measure::process(const Cube3d<T>&, omReal64&) const;        \
  template bool Measure::process(const Cuboid3d<T>&, omReal64&) const;      \
  template bool Measure::process(const Triangle3d<T>&, omReal64&) const;    \
  template bool Measure::process(const Mesh3d<T>&, omReal64&) const;        \
  template bool Measure::process(const MeshWithHoles3d<T>&, omReal64&) const;
