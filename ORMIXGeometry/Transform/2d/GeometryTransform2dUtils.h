#pragma once

#include <ORMIXGeometry/Transform/2d/BaseGeometryTransform2d.h>
#include <ORMIXMath/Transform/2d/BaseGeometricTransform2d.h>

namespace ormix::geom {

/// The transform of entities that does what a transform of the plane does.
/// \throw ORMIXGeometryException, logged first, for an affine transform, which has none
ORMIX_GEOMETRY_API GeometryTransform2dPtr convert(const BaseGeometricTransform2d& transform);

/// As `transform.applyInSitu(entity)`.
ORMIX_GEOMETRY_API BoolResult apply(const BaseGeometryTransform2d& transform, BaseGeometryEntity2d& entity);
/// As `transform.apply(*entity)`; empty for a null pointer.
ORMIX_GEOMETRY_API GeometryEntity2dPtr apply(const BaseGeometryTransform2d& transform,
                                             const boost::shared_ptr<const BaseGeometryEntity2d>& entity);
/// Converts first.
/// \throw ORMIXGeometryException as `convert`
ORMIX_GEOMETRY_API GeometryEntity2dPtr apply(const BaseGeometricTransform2d& transform,
                                             const boost::shared_ptr<const BaseGeometryEntity2d>& entity);

/// In place on every element, in order. Stops at the first failure and answers it: elements before it are transformed,
/// it and those after it are not.
ORMIX_GEOMETRY_API BoolResult applyAll(const BaseGeometryTransform2d& transform, GeometryEntity2dPtrColl& entities);
/// Images of every element. `out` is emptied first; after a failure it holds the images so far.
/// \param out may be `in`
ORMIX_GEOMETRY_API BoolResult applyAll(const BaseGeometryTransform2d& transform, const GeometryEntity2dPtrColl& in,
                                       GeometryEntity2dPtrColl& out);
/// Images of every element.
/// \throw ORMIXGeometryException, logged first, at the first element without one
ORMIX_GEOMETRY_API GeometryEntity2dPtrColl applyAll(const BaseGeometryTransform2d& transform,
                                                    const GeometryEntity2dPtrColl& entities);
/// Converts first.
/// \throw ORMIXGeometryException as `convert` and as above
ORMIX_GEOMETRY_API GeometryEntity2dPtrColl applyAll(const BaseGeometricTransform2d& transform,
                                                    const GeometryEntity2dPtrColl& entities);

}  // namespace ormix::geom
