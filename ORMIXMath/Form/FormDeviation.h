#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Estimation/EstimationStatus.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/Enumeration.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

/// \file
/// Form deviations of measured points from lines, planes, circles, spheres and cylinders, in the terms of ISO 1101 and
/// of ISO 12180, 12181, 12780 and 12781.
///
/// Points are rows of two (plane) or three (space) finite coordinates, at any place and scale: they are shifted and
/// scaled to their cloud first. Each function leaves the result untouched when it fails: eEC_InvalidInput for another
/// dimension, for coordinates that are not finite, and for a reference that the form does not have; eEC_TooFewSamples;
/// eEC_Coincident, eEC_Collinear and eEC_Coplanar where the least squares have no such element; eEC_NotOfThisType where
/// an inscribed element can grow without end.

namespace ormix {

/// The element that deviations are measured from.
enum eFormReference {
  eFR_LeastSquares,         ///< The one with the least sum of squared distances.
  eFR_MinimumZone,          ///< The one with the least deviation.
  eFR_MaximumInscribed,     ///< The greatest one with no point inside.
  eFR_MinimumCircumscribed  ///< The smallest one with no point outside.
};

/// Texts of eFormReference, for printing and archives.
template <>
struct EnumerationNames<eFormReference> {
  static constexpr std::string_view typeName = "eFormReference";  ///< Name of the type.
  /// Names of the enumerators, in the order of their values.
  static constexpr std::array<std::string_view, 4> names{"eFR_LeastSquares", "eFR_MinimumZone", "eFR_MaximumInscribed",
                                                         "eFR_MinimumCircumscribed"};
};

/// What is known of an element that is the best of its kind.
enum eFormOptimum {
  eFO_None,   ///< Nothing: least squares.
  eFO_Local,  ///< No element near it is better; that none at all is, is likely.
  eFO_Global  ///< None is better: all that come into question have been compared or excluded by bounds.
};

/// Texts of eFormOptimum, for printing and archives.
template <>
struct EnumerationNames<eFormOptimum> {
  static constexpr std::string_view typeName = "eFormOptimum";  ///< Name of the type.
  /// Names of the enumerators, in the order of their values.
  static constexpr std::array<std::string_view, 3> names{"eFO_None", "eFO_Local", "eFO_Global"};
};

/// A point on one of the limits.
struct FormContact {
  std::size_t index;    ///< of the point
  int side;             ///< 1 on the outer or upper limit, -1 on the inner or lower one
  omReal64 multiplier;  ///< how much it holds: not negative; those of a side sum to 1
};

/// A form deviation. Lengths are in the unit of the points.
struct FormDeviation {
  eFormReference reference = eFR_LeastSquares;  ///< What it is measured from.
  omReal64 deviation = 0;                       ///< Not negative: `highest` less `lowest`; of straightness in space the
                                                ///< diameter of the cylinder around the points.
  /// A point of the line or plane, the centre of the circle or sphere, or a point of the axis. A centre of least
  /// squares that is farther away than 10⁶ times the extent of the points, as of points along a line, is moved to
  /// there: beyond, distances differ by rounding only.
  SpatialPoint point{0, 0, 0};
  /// Of length 1: of the line or axis, or the normal of the plane; 0 of circles and spheres.
  SpatialPoint direction{0, 0, 0};
  /// Of the circle, sphere or cylinder, `lowest` of an inscribed and `highest` of a circumscribed one, their mean of a
  /// zone; of straightness in space half the deviation; 0 of lines and planes.
  omReal64 radius = 0;
  /// The least and greatest distance of the points: signed to the left of a planar line and along the normal of a
  /// plane, from the centre or axis of the others.
  omReal64 lowest = 0;
  omReal64 highest = 0;  ///< See `lowest`.
  /// The points that determine the element, none for least squares. The sum over the outer ones of multiplier times
  /// gradient of the distance (by the element's position and direction) equals that over the inner ones: no small
  /// motion makes all gain.
  std::vector<FormContact> contacts;
  omReal64 imbalance = 0;           ///< Length of the difference of these sums, in the cloud's scale: 0 to rounding.
  eFormOptimum optimum = eFO_None;  ///< Whether the element is known to be the best.
};

/// Straightness of a line in the plane, from two different points on; eFR_LeastSquares or eFR_MinimumZone. The zone is
/// the width of the convex hull, of all. O(n log n).
ORMIX_MATH_API EstimationStatus planarStraightness(const SampleView& points, eFormReference reference,
                                                   FormDeviation& result);

/// Straightness of a line of space, from two different points on: the diameter of a cylinder that holds all points,
/// about the line of least squares, or the smallest near that one (eFR_MinimumZone, local). At most 200 steps of a few
/// passes over the points each, of which some ten are usual.
ORMIX_MATH_API EstimationStatus spatialStraightness(const SampleView& points, eFormReference reference,
                                                    FormDeviation& result);

/// Flatness, from three points on that are not on a line; eFR_LeastSquares or eFR_MinimumZone. Zone: see sphericity().
ORMIX_MATH_API EstimationStatus flatness(const SampleView& points, eFormReference reference, FormDeviation& result);

/// Roundness in the plane, from three points on that are not on a line; all references. Zone, inscribed and
/// circumscribed circle are the best of all; zone: see sphericity(). An inscribed circle is the best of those that are
/// surrounded by their points and hold the centre of least squares, if there are such: it shall not slip out through a
/// gap. It is found in O(n log n) as observed by a hull of space, with no better bound than that of convexHull3d().
ORMIX_MATH_API EstimationStatus roundness(const SampleView& points, eFormReference reference, FormDeviation& result);

/// Sphericity, from four points on that are not in a plane; all references. Zone and circumscribed sphere are the best
/// of all; the inscribed sphere is the best near the ones of least squares and circumscribed.
///
/// The zones of planes, circles and spheres are searched by branch and bound over all directions or centres, in 10 to
/// 100 passes over the points as observed. None is narrower by more than 1e-9 of it, and the rounding of distances.
/// Centres farther away than about 10⁶ times the extent of the points are left out. After 800 passes, or as much other
/// work, the search is given up, and the answer is the best seen, eFO_Local. This happens where very many zones are
/// nearly as narrow: with the flatness of 10⁴ points all over a sphere.
ORMIX_MATH_API EstimationStatus sphericity(const SampleView& points, eFormReference reference, FormDeviation& result);

/// Cylindricity, from five points on that are not in a plane; all references, each the best near the cylinder of least
/// squares and near those of the others, eFO_Local: contacts and multipliers prove that no small motion of the axis
/// makes all gain. Other directions of the axis are not searched. At most 200 steps for each of four starts, of a few
/// passes over the points, of which some ten are usual.
ORMIX_MATH_API EstimationStatus cylindricity(const SampleView& points, eFormReference reference, FormDeviation& result);

}  // namespace ormix
