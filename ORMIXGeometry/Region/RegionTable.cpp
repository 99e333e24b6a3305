#include <ORMIXGeometry/Region/RegionColumns.h>
#include <ORMIXGeometry/Region/RegionTable.h>
#include <ORMIXSerialization/Archive/FileTarget.h>

#include <array>
#include <charconv>
#include <cmath>
#include <ostream>

namespace ormix::geom {

namespace {

using detail::eRegionUnit;
using detail::RegionColumn;
using detail::s_regionColumns;

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

std::string nameOf(const RegionColumn& column, const std::string& unit) {
  const std::string name(column.name);
  switch (column.unit) {
    case eRegionUnit::Length:
      return name + " [" + unit + "]";
    case eRegionUnit::Area:
      return name + " [" + unit + "^2]";
    case eRegionUnit::Angle:
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
  for (const RegionColumn& column : s_regionColumns) appendField(line += ',', nameOf(column, spacing.unit));
  stream << (line += "\r\n");
  for (std::size_t index = 0; index < regions.size() && stream; ++index) {
    line = std::to_string(index + 1);
    for (const RegionColumn& column : s_regionColumns) appendNumber(line += ',', column.value(regions[index]));
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
