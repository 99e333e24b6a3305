#pragma once

#include <ORMIXGeometry/Transform/3d/BaseGeometryTransform3d.h>
#include <ORMIXMath/Transform/3d/BaseGeometricTransform3d.h>

namespace ormix::geom {

/// The transform of entities that does what a transform of space does.
/// \throw ORMIXGeometryException, logged first, for an affine transform, which has none
ORMIX_GEOMETRY_API GeometryTransform3dPtr convert(const BaseGeometricTransform3d& transform);

/// As `transform.applyInSitu(entity)`.
ORMIX_GEOMETRY_API BoolResult apply(const BaseGeometryTransform3d& transform, BaseGeometryEntity3d& entity);
/// As `transform.apply(*entity)`; empty for a null pointer.
ORMIX_GEOMETRY_API GeometryEntity3dPtr apply(const BaseGeometryTransform3d& transform,
                                             const boost::shared_ptr<const BaseGeometryEntity3d>& entity);
/// Converts first.
/// \throw ORMIXGeometryException as `convert`
ORMIX_GEOMETRY_API GeometryEntity3dPtr apply(const BaseGeometricTransform3d& transform,
                                             const boost::shared_ptr<const BaseGeometryEntity3d>& entity);

/// In place on every element, in order. Stops at the first failure and answers it: elements before it are transformed,
/// it and those after it are not.
ORMIX_GEOMETRY_API BoolResult applyAll(const BaseGeometryTransform3d& transform, GeometryEntity3dPtrColl& entities);
/// Images of every element. `out` is emptied first; after a failure it holds the images so far.
/// \param out may be `in`
ORMIX_GEOMETRY_API BoolResult applyAll(const BaseGeometryTransform3d& transform, const GeometryEntity3dPtrColl& in,
                                       GeometryEntity3dPtrColl& out);
/// Images of every element.
/// \throw ORMIXGeometryException, logged first, at the first element without one
ORMIX_GEOMETRY_API GeometryEntity3dPtrColl applyAll(const BaseGeometryTransform3d& transform,
                                                    const GeometryEntity3dPtrColl& entities);
/// Converts first.
/// \throw ORMIXGeometryException as `convert` and as above
ORMIX_GEOMETRY_API GeometryEntity3dPtrColl applyAll(const BaseGeometricTransform3d& transform,
                                                    const GeometryEntity3dPtrColl& entities);

}  // namespace ormix::geom
