#include <ORMIXGeometry/Transform/3d/HomographyTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RotationTransform3d.h>
#include <ORMIXGeometry/Transform/3d/ScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>
#include <ORMIXGeometry/Transform/3d/LinearTransform3d.ipp>
#include <ORMIXGeometry/Transform/LinearTransformFrame.ipp>

// The linear transforms that are no more than their map; the anisotropic scale has a source of its own.

ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(, HomographyTransform3d, Homography3d)
ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(, RigidTransform3d, Rigid3d)
ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(, RotationTransform3d, Rotation3d)
ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(, ScaleTransform3d, Scale3d)
ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(, SimilarityTransform3d, Similarity3d)
ORMIX_GEOMETRY_LINEAR_TRANSFORM3D_LEVELS(, TranslationTransform3d, Translation3d)
