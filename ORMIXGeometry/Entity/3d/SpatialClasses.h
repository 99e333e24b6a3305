#pragma once

#include <ORMIXGeometry/Entity/ClassList.h>
#include <ORMIXGeometry/Export.h>

// The one declaration of every spatial class. The first declaration of a class decides the visibility of the templates
// that are instantiated for it before it is defined: a header that needs a class declared includes this one.

namespace ormix::geom {

/// \name Entities.
/// @{
template <class T>
class ORMIX_GEOMETRY_API BoundingBox3d;
template <class T>
class ORMIX_GEOMETRY_API Circle3d;
template <class T>
class ORMIX_GEOMETRY_API Cone3d;
template <class T>
class ORMIX_GEOMETRY_API Cube3d;
template <class T>
class ORMIX_GEOMETRY_API Cuboid3d;
template <class T>
class ORMIX_GEOMETRY_API Cylinder3d;
template <class T>
class ORMIX_GEOMETRY_API Ellipsoid3d;
template <class T>
class ORMIX_GEOMETRY_API Mesh3d;
template <class T>
class ORMIX_GEOMETRY_API MeshWithHoles3d;
template <class T>
class ORMIX_GEOMETRY_API Point3d;
template <class T>
class ORMIX_GEOMETRY_API PointCloud3d;
template <class T>
class ORMIX_GEOMETRY_API Segment3d;
template <class T>
class ORMIX_GEOMETRY_API Sphere3d;
template <class T>
class ORMIX_GEOMETRY_API Torus3d;
template <class T>
class ORMIX_GEOMETRY_API Triangle3d;
class ORMIX_GEOMETRY_API Line3d;
class ORMIX_GEOMETRY_API Plan3d;
class ORMIX_GEOMETRY_API Shape3d;
class ORMIX_GEOMETRY_API Vector3d;
/// @}

/// \name Transforms, in order of their visits.
/// @{
class ORMIX_GEOMETRY_API AnisotropicScaleTransform3d;
class ORMIX_GEOMETRY_API HomographyTransform3d;
class ORMIX_GEOMETRY_API RigidTransform3d;
class ORMIX_GEOMETRY_API RotationTransform3d;
class ORMIX_GEOMETRY_API ScaleTransform3d;
class ORMIX_GEOMETRY_API SimilarityTransform3d;
class ORMIX_GEOMETRY_API TranslationTransform3d;
class ORMIX_GEOMETRY_API CentroidTransform3d;
class ORMIX_GEOMETRY_API ConvexHullTransform3d;
class ORMIX_GEOMETRY_API EnvelopeTransform3d;
class ORMIX_GEOMETRY_API MinEnclosingSphereTransform3d;
/// @}

/// \name Measures, in order of their visits.
/// @{
class ORMIX_GEOMETRY_API AreaMsr3d;
class ORMIX_GEOMETRY_API VolumeMsr3d;
/// @}

/// The entities of space. A concrete entity that is missing here does not compile; CONTRIBUTING.md says what else an
/// entity needs.
using SpatialEntityList =
    JoinedLists<ScalarClassList<BoundingBox3d, Cube3d, Cuboid3d, Ellipsoid3d, Mesh3d, MeshWithHoles3d, Point3d,
                                PointCloud3d, Segment3d, Sphere3d, Triangle3d>,
                ClassList<Plan3d, Shape3d, Vector3d>, ScalarClassList<Cylinder3d, Cone3d, Torus3d, Circle3d>,
                ClassList<Line3d>>;

/// The transforms of spatial entities: those that own a map, those that derive a geometry, and both.
/// @{
using SpatialLinearTransformList =
    ClassList<AnisotropicScaleTransform3d, HomographyTransform3d, RigidTransform3d, RotationTransform3d,
              ScaleTransform3d, SimilarityTransform3d, TranslationTransform3d>;
using SpatialDerivedTransformList =
    ClassList<CentroidTransform3d, ConvexHullTransform3d, EnvelopeTransform3d, MinEnclosingSphereTransform3d>;
using SpatialTransformList = JoinedLists<SpatialLinearTransformList, SpatialDerivedTransformList>;
/// @}

/// The measures of spatial entities.
using SpatialMeasureList = ClassList<AreaMsr3d, VolumeMsr3d>;

}  // namespace ormix::geom
