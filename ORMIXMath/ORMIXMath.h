#pragma once

/// \file
/// Everything of ORMIXMath.

#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/PlanarSegment.h>
#include <ORMIXMath/Distance/PointSegmentDistance.h>
#include <ORMIXMath/Distance/SegmentsDistance.h>
#include <ORMIXMath/Scalar/Cast.h>
#include <ORMIXMath/Scalar/Compare.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXMath/Shape/Ellipse.h>
#include <ORMIXMath/Shape/Ring.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Transform/2d/Affine2d.h>
#include <ORMIXMath/Transform/2d/AffineTransform2d.h>
#include <ORMIXMath/Transform/2d/AnisotropicScale2d.h>
#include <ORMIXMath/Transform/2d/BaseGeometricTransform2d.h>
#include <ORMIXMath/Transform/2d/GeometricTransform2dType.h>
#include <ORMIXMath/Transform/2d/Homography2d.h>
#include <ORMIXMath/Transform/2d/ParametricTransform2d.h>
#include <ORMIXMath/Transform/2d/PointRun2d.h>
#include <ORMIXMath/Transform/2d/Rigid2d.h>
#include <ORMIXMath/Transform/2d/Rotation2d.h>
#include <ORMIXMath/Transform/2d/Scale2d.h>
#include <ORMIXMath/Transform/2d/Similarity2d.h>
#include <ORMIXMath/Transform/2d/Translation2d.h>
