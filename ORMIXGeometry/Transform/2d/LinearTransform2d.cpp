#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RotationTransform2d.h>
#include <ORMIXGeometry/Transform/2d/ScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2d.ipp>
#include <ORMIXGeometry/Transform/LinearTransformFrame.ipp>

// The linear transforms that are no more than their map; the anisotropic scale has a source of its own.

ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(, HomographyTransform2d, Homography2d)
ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(, RigidTransform2d, Rigid2d)
ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(, RotationTransform2d, Rotation2d)
ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(, ScaleTransform2d, Scale2d)
ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(, SimilarityTransform2d, Similarity2d)
ORMIX_GEOMETRY_LINEAR_TRANSFORM2D_LEVELS(, TranslationTransform2d, Translation2d)
