#pragma once

#include <ORMIXGeometry/Region/RegionProperties.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <array>
#include <cmath>
#include <string_view>

/// \file
/// What regionProperties() measures as a run of named numbers, for tables of every kind; not installed.

namespace ormix::geom::detail {

/// What the unit of a number is.
enum class eRegionUnit { None, Length, Area, Angle };

/// A column: its name, its unit, and the number of a region that stands in it.
struct RegionColumn {
  std::string_view name;  ///< "its angle" belongs to the column before
  eRegionUnit unit;
  omReal64 (*read)(const RegionProperties& p);

  /// The number, NaN where it was not measured; angles in degrees.
  omReal64 value(const RegionProperties& p) const {
    return unit == eRegionUnit::Angle ? read(p) * (180 / s_pi) : read(p);
  }
};

/// An invariant of Hu, counted from 0.
template <std::size_t i>
omReal64 huMoment(const RegionProperties& p) {
  return std::isnan(p.eccentricity) ? RegionProperties::s_none : p.huMoments.getValues()[i];
}

/// All of them, in the order of tables.
inline constexpr std::array s_regionColumns{
    RegionColumn{"pixels", eRegionUnit::None,
                 [](const RegionProperties& p) { return static_cast<omReal64>(p.nbPixels); }},
    RegionColumn{"area", eRegionUnit::Area, [](const RegionProperties& p) { return p.area; }},
    RegionColumn{"centroid x", eRegionUnit::Length, [](const RegionProperties& p) { return p.centroid.getX(); }},
    RegionColumn{"centroid y", eRegionUnit::Length, [](const RegionProperties& p) { return p.centroid.getY(); }},
    RegionColumn{"box x min", eRegionUnit::Length, [](const RegionProperties& p) { return p.box.getXMin(); }},
    RegionColumn{"box y min", eRegionUnit::Length, [](const RegionProperties& p) { return p.box.getYMin(); }},
    RegionColumn{"box x max", eRegionUnit::Length, [](const RegionProperties& p) { return p.box.getXMax(); }},
    RegionColumn{"box y max", eRegionUnit::Length, [](const RegionProperties& p) { return p.box.getYMax(); }},
    RegionColumn{"extent", eRegionUnit::None, [](const RegionProperties& p) { return p.extent; }},
    RegionColumn{"equivalent diameter", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.equivalentDiameter; }},
    RegionColumn{"parts", eRegionUnit::None,
                 [](const RegionProperties& p) { return static_cast<omReal64>(p.nbParts); }},
    RegionColumn{"holes", eRegionUnit::None,
                 [](const RegionProperties& p) { return static_cast<omReal64>(p.nbHoles); }},
    RegionColumn{"Euler number", eRegionUnit::None,
                 [](const RegionProperties& p) { return static_cast<omReal64>(p.eulerNumber); }},
    RegionColumn{"hole area", eRegionUnit::Area, [](const RegionProperties& p) { return p.holeArea; }},
    RegionColumn{"perimeter", eRegionUnit::Length, [](const RegionProperties& p) { return p.perimeter; }},
    RegionColumn{"polygon perimeter", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.polygonPerimeter; }},
    RegionColumn{"Crofton perimeter", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.croftonPerimeter; }},
    RegionColumn{"minimum-length perimeter", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.minimumLengthPerimeter; }},
    RegionColumn{"circularity", eRegionUnit::None, [](const RegionProperties& p) { return p.circularity; }},
    RegionColumn{"ellipse major axis", eRegionUnit::Length,
                 [](const RegionProperties& p) { return 2 * p.equivalentEllipse.getMajorRadius(); }},
    RegionColumn{"ellipse minor axis", eRegionUnit::Length,
                 [](const RegionProperties& p) { return 2 * p.equivalentEllipse.getMinorRadius(); }},
    RegionColumn{"orientation", eRegionUnit::Angle,
                 [](const RegionProperties& p) { return p.equivalentEllipse.getTheta(); }},
    RegionColumn{"eccentricity", eRegionUnit::None, [](const RegionProperties& p) { return p.eccentricity; }},
    RegionColumn{"convex area", eRegionUnit::Area, [](const RegionProperties& p) { return p.convexArea; }},
    RegionColumn{"convex perimeter", eRegionUnit::Length, [](const RegionProperties& p) { return p.convexPerimeter; }},
    RegionColumn{"solidity", eRegionUnit::None, [](const RegionProperties& p) { return p.solidity; }},
    RegionColumn{"convexity", eRegionUnit::None, [](const RegionProperties& p) { return p.convexity; }},
    RegionColumn{"greatest Feret diameter", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.greatestFeret.length; }},
    RegionColumn{"its angle", eRegionUnit::Angle, [](const RegionProperties& p) { return p.greatestFeret.angle; }},
    RegionColumn{"least Feret diameter", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.leastFeret.length; }},
    RegionColumn{"its angle", eRegionUnit::Angle, [](const RegionProperties& p) { return p.leastFeret.angle; }},
    RegionColumn{"Feret diameter across", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.feretAcross.length; }},
    RegionColumn{"rectangle length", eRegionUnit::Length,
                 [](const RegionProperties& p) { return 2 * p.smallestRectangle.getHalfLength(); }},
    RegionColumn{"rectangle width", eRegionUnit::Length,
                 [](const RegionProperties& p) { return 2 * p.smallestRectangle.getHalfWidth(); }},
    RegionColumn{"rectangle angle", eRegionUnit::Angle,
                 [](const RegionProperties& p) { return p.smallestRectangle.getOrientation(); }},
    RegionColumn{"roundness", eRegionUnit::None, [](const RegionProperties& p) { return p.roundness; }},
    RegionColumn{"enclosing circle x", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.enclosingCircle.centerX(); }},
    RegionColumn{"enclosing circle y", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.enclosingCircle.centerY(); }},
    RegionColumn{"enclosing circle radius", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.enclosingCircle.getRadius(); }},
    RegionColumn{"inscribed circle x", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.inscribedCircle.centerX(); }},
    RegionColumn{"inscribed circle y", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.inscribedCircle.centerY(); }},
    RegionColumn{"inscribed circle radius", eRegionUnit::Length,
                 [](const RegionProperties& p) { return p.inscribedCircle.getRadius(); }},
    RegionColumn{"Hu 1", eRegionUnit::None, huMoment<0>},
    RegionColumn{"Hu 2", eRegionUnit::None, huMoment<1>},
    RegionColumn{"Hu 3", eRegionUnit::None, huMoment<2>},
    RegionColumn{"Hu 4", eRegionUnit::None, huMoment<3>},
    RegionColumn{"Hu 5", eRegionUnit::None, huMoment<4>},
    RegionColumn{"Hu 6", eRegionUnit::None, huMoment<5>},
    RegionColumn{"Hu 7", eRegionUnit::None, huMoment<6>},
};

}  // namespace ormix::geom::detail
