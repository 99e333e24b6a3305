#include <ORMIXGeometry/Region/RegionTable.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXSerialization/Archive/FileTarget.h>

#include <array>
#include <charconv>
#include <cmath>
#include <ostream>
#include <string_view>

namespace ormix::geom {

namespace {

enum class eUnit { None, Length, Area, Angle };

/// A column: its name, its unit, and the number of a region that stands in it.
struct Column {
  std::string_view name;
  eUnit unit;
  omReal64 (*value)(const RegionProperties& p);
};

using P = RegionProperties;

template <std::size_t i>
omReal64 hu(const P& p) {
  return std::isnan(p.eccentricity) ? P::s_none : p.huMoments.getValues()[i];
}

constexpr std::array s_columns{
    Column{"pixels", eUnit::None, [](const P& p) { return static_cast<omReal64>(p.nbPixels); }},
    Column{"area", eUnit::Area, [](const P& p) { return p.area; }},
    Column{"centroid x", eUnit::Length, [](const P& p) { return p.centroid.getX(); }},
    Column{"centroid y", eUnit::Length, [](const P& p) { return p.centroid.getY(); }},
    Column{"box x min", eUnit::Length, [](const P& p) { return p.box.getXMin(); }},
    Column{"box y min", eUnit::Length, [](const P& p) { return p.box.getYMin(); }},
    Column{"box x max", eUnit::Length, [](const P& p) { return p.box.getXMax(); }},
    Column{"box y max", eUnit::Length, [](const P& p) { return p.box.getYMax(); }},
    Column{"extent", eUnit::None, [](const P& p) { return p.extent; }},
    Column{"equivalent diameter", eUnit::Length, [](const P& p) { return p.equivalentDiameter; }},
    Column{"parts", eUnit::None, [](const P& p) { return static_cast<omReal64>(p.nbParts); }},
    Column{"holes", eUnit::None, [](const P& p) { return static_cast<omReal64>(p.nbHoles); }},
    Column{"Euler number", eUnit::None, [](const P& p) { return static_cast<omReal64>(p.eulerNumber); }},
    Column{"hole area", eUnit::Area, [](const P& p) { return p.holeArea; }},
    Column{"perimeter", eUnit::Length, [](const P& p) { return p.perimeter; }},
    Column{"polygon perimeter", eUnit::Length, [](const P& p) { return p.polygonPerimeter; }},
    Column{"Crofton perimeter", eUnit::Length, [](const P& p) { return p.croftonPerimeter; }},
    Column{"minimum-length perimeter", eUnit::Length, [](const P& p) { return p.minimumLengthPerimeter; }},
    Column{"circularity", eUnit::None, [](const P& p) { return p.circularity; }},
    Column{"ellipse major axis", eUnit::Length, [](const P& p) { return 2 * p.equivalentEllipse.getMajorRadius(); }},
    Column{"ellipse minor axis", eUnit::Length, [](const P& p) { return 2 * p.equivalentEllipse.getMinorRadius(); }},
    Column{"orientation", eUnit::Angle, [](const P& p) { return p.equivalentEllipse.getTheta(); }},
    Column{"eccentricity", eUnit::None, [](const P& p) { return p.eccentricity; }},
    Column{"convex area", eUnit::Area, [](const P& p) { return p.convexArea; }},
    Column{"convex perimeter", eUnit::Length, [](const P& p) { return p.convexPerimeter; }},
    Column{"solidity", eUnit::None, [](const P& p) { return p.solidity; }},
    Column{"convexity", eUnit::None, [](const P& p) { return p.convexity; }},
    Column{"greatest Feret diameter", eUnit::Length, [](const P& p) { return p.greatestFeret.length; }},
    Column{"its angle", eUnit::Angle, [](const P& p) { return p.greatestFeret.angle; }},
    Column{"least Feret diameter", eUnit::Length, [](const P& p) { return p.leastFeret.length; }},
    Column{"its angle", eUnit::Angle, [](const P& p) { return p.leastFeret.angle; }},
    Column{"Feret diameter across", eUnit::Length, [](const P& p) { return p.feretAcross.length; }},
    Column{"rectangle length", eUnit::Length, [](const P& p) { return 2 * p.smallestRectangle.getHalfLength(); }},
    Column{"rectangle width", eUnit::Length, [](const P& p) { return 2 * p.smallestRectangle.getHalfWidth(); }},
    Column{"rectangle angle", eUnit::Angle, [](const P& p) { return p.smallestRectangle.getOrientation(); }},
    Column{"roundness", eUnit::None, [](const P& p) { return p.roundness; }},
    Column{"enclosing circle x", eUnit::Length, [](const P& p) { return p.enclosingCircle.centerX(); }},
    Column{"enclosing circle y", eUnit::Length, [](const P& p) { return p.enclosingCircle.centerY(); }},
    Column{"enclosing circle radius", eUnit::Length, [](const P& p) { return p.enclosingCircle.getRadius(); }},
    Column{"inscribed circle x", eUnit::Length, [](const P& p) { return p.inscribedCircle.centerX(); }},
    Column{"inscribed circle y", eUnit::Length, [](const P& p) { return p.inscribedCircle.centerY(); }},
    Column{"inscribed circle radius", eUnit::Length, [](const P& p) { return p.inscribedCircle.getRadius(); }},
    Column{"Hu 1", eUnit::None, hu<0>},
    Column{"Hu 2", eUnit::None, hu<1>},
    Column{"Hu 3", eUnit::None, hu<2>},
    Column{"Hu 4", eUnit::None, hu<3>},
    Column{"Hu 5", eUnit::None, hu<4>},
    Column{"Hu 6", eUnit::None, hu<5>},
    Column{"Hu 7", eUnit::None, hu<6>},
};

/// A text in quotes where RFC 4180 asks for them.
void appendField(std::string& line, const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) {
    line += text;
    return;
  }
  line += '"';
  for (const char c : text) line += c == '"' ? std::string("\"\"") : std::string(1, c);
  line += '"';
}

std::string nameOf(const Column& column, const std::string& unit) {
  const std::string name(column.name);
  switch (column.unit) {
    case eUnit::Length:
      return name + " [" + unit + "]";
    case eUnit::Area:
      return name + " [" + unit + "^2]";
    case eUnit::Angle:
      return name + " [deg]";
    default:
      return name;
  }
}

void appendNumber(std::string& line, omReal64 number) {
  if (std::isnan(number)) return;
  std::array<char, 32> digits;
  line.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

}  // namespace

BoolResult writeRegionTable(std::ostream& stream, const std::vector<RegionProperties>& regions,
                            const PixelSpacing& spacing) {
  std::string line = "region";
  for (const Column& column : s_columns) appendField(line += ',', nameOf(column, spacing.unit));
  stream << (line += "\r\n");
  for (std::size_t index = 0; index < regions.size() && stream; ++index) {
    line = std::to_string(index + 1);
    for (const Column& column : s_columns) {
      const omReal64 value = column.value(regions[index]);
      appendNumber(line += ',', column.unit == eUnit::Angle ? value * (180 / s_pi) : value);
    }
    stream << (line += "\r\n");
  }
  stream.flush();
  return stream ? BoolResult() : failure("The table of regions could not be written completely (disk full?)");
}

BoolResult writeRegionTable(const std::string& path, const std::vector<RegionProperties>& regions,
                            const PixelSpacing& spacing) {
  FileTarget target(path);
  BoolResult written = target.open();
  if (written) written = writeRegionTable(target.stream(), regions, spacing);
  if (written) written = target.commit();
  return written ? written : failure("Cannot write \"" + path + "\": " + written.getMessage());
}

}  // namespace ormix::geom
