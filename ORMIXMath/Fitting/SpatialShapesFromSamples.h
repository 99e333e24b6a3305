#pragma once

#include <ORMIXMath/Estimation/EstimationStatus.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>
#include <ORMIXMath/Fitting/SpatialShapes.h>

/// \file
/// Orthogonal least-squares fits of lines, planes and circles of space, arcs, spheres, cylinders, cones and tori: the
/// shape with the least sum of squared distances of the samples.
///
/// No guess is needed. Coordinates are shifted and scaled to the cloud of points, so that translated or scaled samples
/// give a translated or scaled shape, to rounding. Surfaces are searched from several starts, found over many
/// directions of the axis on at most 500 samples, by damped steps with true derivatives; the best end is refined on all
/// samples. That it is the least of all is likely, and not proved. From the minimal number of samples one of the shapes
/// through them is found (there are up to six cylinders through five points).
///
/// Samples have dimension 3 (arcs: 2). Each function leaves the shape untouched when it fails, and says why:
/// eEC_InvalidInput for another dimension, and for coordinates that are NaN or infinite (with the indices of
/// the first samples that have one), eEC_TooFewSamples, eEC_Coincident, eEC_Collinear and eEC_Coplanar for samples that
/// span too little, eEC_RankDeficient where they leave a parameter undetermined, eEC_NotOfThisType where the best
/// surface is another one, eEC_NoConvergence where the steps do not end. O(samples) an iteration.

namespace ormix {

/// A line from two samples on, that are not all equal. Its point is the mean. Not iterative.
ORMIX_MATH_API EstimationStatus lineFromSamples(const SampleView& samples, SpatialLine& line);

/// A plane from three samples on, that are not on a line: the mean of the samples, and the normal, its component of
/// largest magnitude positive. Not iterative.
ORMIX_MATH_API EstimationStatus planeFromSamples(const SampleView& samples, SpatialPoint& mean, SpatialPoint& normal);

/// A circle of space from three samples on, that are not on a line.
ORMIX_MATH_API EstimationStatus circleFromSamples(const SampleView& samples, SpatialCircle& circle);

/// An arc from three samples on, that are not on a line: the circle with the least squares of distances, and the arc
/// of it that holds the feet of all samples, which is the rest of the widest gap between two of them.
ORMIX_MATH_API EstimationStatus arcFromSamples(const SampleView& samples, PlanarArc& arc);

/// A sphere from four samples on, that are not in a plane.
ORMIX_MATH_API EstimationStatus sphereFromSamples(const SampleView& samples, SpatialSphere& sphere);

/// A cylinder from five samples on, that are not in a plane.
ORMIX_MATH_API EstimationStatus cylinderFromSamples(const SampleView& samples, SpatialCylinder& cylinder);

/// A cone from six samples on, that are not in a plane. Samples near a cylinder or a plane give eEC_NotOfThisType.
ORMIX_MATH_API EstimationStatus coneFromSamples(const SampleView& samples, SpatialCone& cone);

/// A ring torus from seven samples on, that are not in a plane. A tube as wide as its ring, or wider, gives
/// eEC_NotOfThisType.
ORMIX_MATH_API EstimationStatus torusFromSamples(const SampleView& samples, SpatialTorus& torus);

/// \name From a shape that is near
/// As the functions above, but by steps from the given shape only, which is replaced: many times faster.
/// @{
ORMIX_MATH_API EstimationStatus refineCylinder(const SampleView& samples, SpatialCylinder& cylinder);
ORMIX_MATH_API EstimationStatus refineCone(const SampleView& samples, SpatialCone& cone);
ORMIX_MATH_API EstimationStatus refineTorus(const SampleView& samples, SpatialTorus& torus);
/// @}

}  // namespace ormix
