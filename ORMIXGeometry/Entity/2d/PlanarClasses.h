#pragma once

#include <ORMIXGeometry/Entity/ClassList.h>
#include <ORMIXGeometry/Export.h>

// Forward declarations of all planar classes. The first declaration of a class decides the symbol visibility of the
// templates that are instantiated for it before its definition, so include this header instead of declaring a planar
// class elsewhere.

namespace ormix::geom {

/// \name Entities
/// @{
template <class T>
class ORMIX_GEOMETRY_API Arc2d;
template <class T>
class ORMIX_GEOMETRY_API BoundingBox2d;
template <class T>
class ORMIX_GEOMETRY_API Circle2d;
template <class T>
class ORMIX_GEOMETRY_API Ellipse2d;
template <class T>
class ORMIX_GEOMETRY_API Point2d;
template <class T>
class ORMIX_GEOMETRY_API PointCloud2d;
template <class T>
class ORMIX_GEOMETRY_API Polygon2d;
template <class T>
class ORMIX_GEOMETRY_API PolygonWithHoles2d;
template <class T>
class ORMIX_GEOMETRY_API Rectangle2d;
template <class T>
class ORMIX_GEOMETRY_API Segment2d;
template <class T>
class ORMIX_GEOMETRY_API Square2d;
class ORMIX_GEOMETRY_API Line2d;
class ORMIX_GEOMETRY_API Parabola2d;
class ORMIX_GEOMETRY_API Shape2d;
class ORMIX_GEOMETRY_API Skeleton2d;
class ORMIX_GEOMETRY_API SkeletonVertex2d;
class ORMIX_GEOMETRY_API Vector2d;
/// @}

/// \name Transforms, in the order of their visit functions
/// @{
class ORMIX_GEOMETRY_API AnisotropicScaleTransform2d;
class ORMIX_GEOMETRY_API HomographyTransform2d;
class ORMIX_GEOMETRY_API RigidTransform2d;
class ORMIX_GEOMETRY_API RotationTransform2d;
class ORMIX_GEOMETRY_API ScaleTransform2d;
class ORMIX_GEOMETRY_API SimilarityTransform2d;
class ORMIX_GEOMETRY_API TranslationTransform2d;
class ORMIX_GEOMETRY_API CentroidTransform2d;
class ORMIX_GEOMETRY_API ConvexHullTransform2d;
class ORMIX_GEOMETRY_API EnvelopeTransform2d;
class ORMIX_GEOMETRY_API SimplifyTransform2d;
class ORMIX_GEOMETRY_API MinEnclosingCircleTransform2d;
/// @}

/// \name Measures, in the order of their visit functions, and their results that are not scalars
/// @{
class ORMIX_GEOMETRY_API PerimeterMsr2d;
class ORMIX_GEOMETRY_API AreaMsr2d;
class ORMIX_GEOMETRY_API MomentsMsr2d;
class ORMIX_GEOMETRY_API HuMomentsMsr2d;
class ORMIX_GEOMETRY_API Moments2dO3;
class ORMIX_GEOMETRY_API HuMoments2dO3;
/// @}

/// All entities of the plane, for every coordinate type; an entity that is not listed does not compile. CONTRIBUTING.md
/// says what else a new entity needs.
using PlanarEntityList =
    JoinedLists<ScalarClassList<BoundingBox2d, Circle2d, Ellipse2d, Point2d, PointCloud2d, Polygon2d,
                                PolygonWithHoles2d, Rectangle2d, Segment2d, Square2d>,
                ClassList<Line2d, Parabola2d, Shape2d, Skeleton2d, SkeletonVertex2d, Vector2d>, ScalarClassList<Arc2d>>;

/// All transforms of planar entities that are defined: those that own a map, those that derive a geometry,
/// and all.
/// @{
using PlanarLinearTransformList =
    ClassList<AnisotropicScaleTransform2d, HomographyTransform2d, RigidTransform2d, RotationTransform2d,
              ScaleTransform2d, SimilarityTransform2d, TranslationTransform2d>;
using PlanarDerivedTransformList =
    ClassList<CentroidTransform2d, ConvexHullTransform2d, EnvelopeTransform2d, MinEnclosingCircleTransform2d>;
using PlanarTransformList =
    JoinedLists<PlanarLinearTransformList, PlanarDerivedTransformList, ClassList<SimplifyTransform2d>>;
/// @}

/// All measures of planar entities that are defined.
using PlanarMeasureList = ClassList<PerimeterMsr2d, AreaMsr2d, MomentsMsr2d, HuMomentsMsr2d>;

/// All results of measures of planar entities that are objects themselves.
using PlanarMeasureResultList = ClassList<Moments2dO3, HuMoments2dO3>;

}  // namespace ormix::geom
