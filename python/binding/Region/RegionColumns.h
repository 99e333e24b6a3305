#pragma once

#include <ORMIXGeometry/Region/RegionProperties.h>

#include <array>
#include <cmath>

/// \file
/// What regionProperties() measures as columns of a table.

namespace ormix::python {

/// The unit of a column.
enum class Unit { None, Length, Area, Angle, Moment2, Moment3 };
/// The option that a column needs, see RegionOptions.
enum class Group { Always, Perimeters, Moments, Hull, Circles };

/// A column: its name, its unit, and its number of a region.
struct RegionColumn {
  const char* name;
  Unit unit;
  Group group;
  omReal64 (*value)(const geom::RegionProperties& p);
};

/// A column of whole numbers.
struct RegionCount {
  const char* name;
  omInt64 (*value)(const geom::RegionProperties& p);
};

namespace detail {

using P = geom::RegionProperties;

template <omUInt32 p, omUInt32 q>
omReal64 centralMoment(const P& region) {
  const bool isMeasured = region.moments.getPlanarMoments().about[0] != 0;
  return isMeasured ? region.moments.getCentralMoment(p, q) : P::s_none;
}

template <std::size_t i>
omReal64 huMoment(const P& region) {
  return std::isnan(region.eccentricity) ? P::s_none : region.huMoments.getValues()[i];
}

}  // namespace detail

// clang-format off
/// Counts, which are always measured.
inline constexpr std::array s_regionCounts{
    RegionCount{"nb_pixels", [](const detail::P& p) { return static_cast<omInt64>(p.nbPixels); }},
    RegionCount{"nb_parts", [](const detail::P& p) { return static_cast<omInt64>(p.nbParts); }},
    RegionCount{"nb_holes", [](const detail::P& p) { return static_cast<omInt64>(p.nbHoles); }},
    RegionCount{"euler_number", [](const detail::P& p) { return p.eulerNumber; }},
};

/// All other columns, in the order of tables. Angles are in radians.
inline constexpr std::array s_regionColumns{
    RegionColumn{"area", Unit::Area, Group::Always, [](const detail::P& p) { return p.area; }},
    RegionColumn{"centroid_x", Unit::Length, Group::Always, [](const detail::P& p) { return p.centroid.getX(); }},
    RegionColumn{"centroid_y", Unit::Length, Group::Always, [](const detail::P& p) { return p.centroid.getY(); }},
    RegionColumn{"bbox_x_min", Unit::Length, Group::Always, [](const detail::P& p) { return p.box.getXMin(); }},
    RegionColumn{"bbox_y_min", Unit::Length, Group::Always, [](const detail::P& p) { return p.box.getYMin(); }},
    RegionColumn{"bbox_x_max", Unit::Length, Group::Always, [](const detail::P& p) { return p.box.getXMax(); }},
    RegionColumn{"bbox_y_max", Unit::Length, Group::Always, [](const detail::P& p) { return p.box.getYMax(); }},
    RegionColumn{"extent", Unit::None, Group::Always, [](const detail::P& p) { return p.extent; }},
    RegionColumn{"equivalent_diameter", Unit::Length, Group::Always, [](const detail::P& p) { return p.equivalentDiameter; }},
    RegionColumn{"hole_area", Unit::Area, Group::Always, [](const detail::P& p) { return p.holeArea; }},
    RegionColumn{"perimeter", Unit::Length, Group::Always, [](const detail::P& p) { return p.perimeter; }},
    RegionColumn{"polygon_perimeter", Unit::Length, Group::Perimeters, [](const detail::P& p) { return p.polygonPerimeter; }},
    RegionColumn{"crofton_perimeter", Unit::Length, Group::Perimeters, [](const detail::P& p) { return p.croftonPerimeter; }},
    RegionColumn{"minimum_length_perimeter", Unit::Length, Group::Perimeters, [](const detail::P& p) { return p.minimumLengthPerimeter; }},
    RegionColumn{"circularity", Unit::None, Group::Always, [](const detail::P& p) { return p.circularity; }},
    RegionColumn{"central_moment_20", Unit::Moment2, Group::Moments, detail::centralMoment<2, 0>},
    RegionColumn{"central_moment_11", Unit::Moment2, Group::Moments, detail::centralMoment<1, 1>},
    RegionColumn{"central_moment_02", Unit::Moment2, Group::Moments, detail::centralMoment<0, 2>},
    RegionColumn{"central_moment_30", Unit::Moment3, Group::Moments, detail::centralMoment<3, 0>},
    RegionColumn{"central_moment_21", Unit::Moment3, Group::Moments, detail::centralMoment<2, 1>},
    RegionColumn{"central_moment_12", Unit::Moment3, Group::Moments, detail::centralMoment<1, 2>},
    RegionColumn{"central_moment_03", Unit::Moment3, Group::Moments, detail::centralMoment<0, 3>},
    RegionColumn{"hu_moment_1", Unit::None, Group::Moments, detail::huMoment<0>},
    RegionColumn{"hu_moment_2", Unit::None, Group::Moments, detail::huMoment<1>},
    RegionColumn{"hu_moment_3", Unit::None, Group::Moments, detail::huMoment<2>},
    RegionColumn{"hu_moment_4", Unit::None, Group::Moments, detail::huMoment<3>},
    RegionColumn{"hu_moment_5", Unit::None, Group::Moments, detail::huMoment<4>},
    RegionColumn{"hu_moment_6", Unit::None, Group::Moments, detail::huMoment<5>},
    RegionColumn{"hu_moment_7", Unit::None, Group::Moments, detail::huMoment<6>},
    RegionColumn{"equivalent_ellipse_major_radius", Unit::Length, Group::Moments, [](const detail::P& p) { return p.equivalentEllipse.getMajorRadius(); }},
    RegionColumn{"equivalent_ellipse_minor_radius", Unit::Length, Group::Moments, [](const detail::P& p) { return p.equivalentEllipse.getMinorRadius(); }},
    RegionColumn{"orientation", Unit::Angle, Group::Moments, [](const detail::P& p) { return p.equivalentEllipse.getTheta(); }},
    RegionColumn{"eccentricity", Unit::None, Group::Moments, [](const detail::P& p) { return p.eccentricity; }},
    RegionColumn{"convex_area", Unit::Area, Group::Hull, [](const detail::P& p) { return p.convexArea; }},
    RegionColumn{"convex_perimeter", Unit::Length, Group::Hull, [](const detail::P& p) { return p.convexPerimeter; }},
    RegionColumn{"solidity", Unit::None, Group::Hull, [](const detail::P& p) { return p.solidity; }},
    RegionColumn{"convexity", Unit::None, Group::Hull, [](const detail::P& p) { return p.convexity; }},
    RegionColumn{"greatest_feret_length", Unit::Length, Group::Hull, [](const detail::P& p) { return p.greatestFeret.length; }},
    RegionColumn{"greatest_feret_angle", Unit::Angle, Group::Hull, [](const detail::P& p) { return p.greatestFeret.angle; }},
    RegionColumn{"greatest_feret_from_x", Unit::Length, Group::Hull, [](const detail::P& p) { return p.greatestFeret.from.x; }},
    RegionColumn{"greatest_feret_from_y", Unit::Length, Group::Hull, [](const detail::P& p) { return p.greatestFeret.from.y; }},
    RegionColumn{"greatest_feret_to_x", Unit::Length, Group::Hull, [](const detail::P& p) { return p.greatestFeret.to.x; }},
    RegionColumn{"greatest_feret_to_y", Unit::Length, Group::Hull, [](const detail::P& p) { return p.greatestFeret.to.y; }},
    RegionColumn{"least_feret_length", Unit::Length, Group::Hull, [](const detail::P& p) { return p.leastFeret.length; }},
    RegionColumn{"least_feret_angle", Unit::Angle, Group::Hull, [](const detail::P& p) { return p.leastFeret.angle; }},
    RegionColumn{"least_feret_from_x", Unit::Length, Group::Hull, [](const detail::P& p) { return p.leastFeret.from.x; }},
    RegionColumn{"least_feret_from_y", Unit::Length, Group::Hull, [](const detail::P& p) { return p.leastFeret.from.y; }},
    RegionColumn{"least_feret_to_x", Unit::Length, Group::Hull, [](const detail::P& p) { return p.leastFeret.to.x; }},
    RegionColumn{"least_feret_to_y", Unit::Length, Group::Hull, [](const detail::P& p) { return p.leastFeret.to.y; }},
    RegionColumn{"feret_across_length", Unit::Length, Group::Hull, [](const detail::P& p) { return p.feretAcross.length; }},
    RegionColumn{"feret_across_angle", Unit::Angle, Group::Hull, [](const detail::P& p) { return p.feretAcross.angle; }},
    RegionColumn{"smallest_rectangle_center_x", Unit::Length, Group::Hull, [](const detail::P& p) { return p.smallestRectangle.centerX(); }},
    RegionColumn{"smallest_rectangle_center_y", Unit::Length, Group::Hull, [](const detail::P& p) { return p.smallestRectangle.centerY(); }},
    RegionColumn{"smallest_rectangle_half_length", Unit::Length, Group::Hull, [](const detail::P& p) { return p.smallestRectangle.getHalfLength(); }},
    RegionColumn{"smallest_rectangle_half_width", Unit::Length, Group::Hull, [](const detail::P& p) { return p.smallestRectangle.getHalfWidth(); }},
    RegionColumn{"smallest_rectangle_orientation", Unit::Angle, Group::Hull, [](const detail::P& p) { return p.smallestRectangle.getOrientation(); }},
    RegionColumn{"roundness", Unit::None, Group::Hull, [](const detail::P& p) { return p.roundness; }},
    RegionColumn{"enclosing_circle_x", Unit::Length, Group::Circles, [](const detail::P& p) { return p.enclosingCircle.centerX(); }},
    RegionColumn{"enclosing_circle_y", Unit::Length, Group::Circles, [](const detail::P& p) { return p.enclosingCircle.centerY(); }},
    RegionColumn{"enclosing_circle_radius", Unit::Length, Group::Circles, [](const detail::P& p) { return p.enclosingCircle.getRadius(); }},
    RegionColumn{"inscribed_circle_x", Unit::Length, Group::Circles, [](const detail::P& p) { return p.inscribedCircle.centerX(); }},
    RegionColumn{"inscribed_circle_y", Unit::Length, Group::Circles, [](const detail::P& p) { return p.inscribedCircle.centerY(); }},
    RegionColumn{"inscribed_circle_radius", Unit::Length, Group::Circles, [](const detail::P& p) { return p.inscribedCircle.getRadius(); }},
};
// clang-format on

}  // namespace ormix::python
