// Measures the rings of a text file, archives them, measures what it reads back, and draws them.
// Usage: measure_contours FILE [OUTPUT_FOLDER]
// Exit status: 0 when all went well, 1 when a line was skipped or a step failed, 2 for wrong arguments.
#include <ORMIXGeometry/ORMIXGeometry.h>
#include <ORMIXGeometry/Tools/PointsBoundingBox.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>
#include <ORMIXGeometry/Tools/Text/RingFile.h>

#include <algorithm>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace {

using namespace ormix;
using namespace ormix::geom;
using Ring = Polygon2d<omReal64>;

struct Measures {
  bool closed = false;
  std::size_t vertices = 0;
  omReal64 area = 0;       // of the ring closed by a straight edge; positive counter-clockwise
  omReal64 perimeter = 0;  // of the path as stored
  BoundingBox2d<omReal64> box;

  bool operator==(const Measures& other) const {
    return closed == other.closed && vertices == other.vertices && area == other.area && perimeter == other.perimeter &&
           box == other.box;
  }
};

Measures measure(const Ring& ring) {
  Ring closedRing = ring;
  closePolygon(closedRing);
  return {isClosed(ring), ring.getNbPoints(), AreaMsr2d::measure(closedRing), PerimeterMsr2d::measure(ring),
          pointsBoundingBox(ring.getPointColl())};
}

/// A ring as the object that archives hold, with what was measured on it.
struct Contour {
  boost::shared_ptr<Ring> ring;
  Measures measures;
};

/// The file's rings, the largest first.
std::vector<Contour> readContours(const std::string& path, bool& complete) {
  const ProcessingResult<RingFile> file = readRings(path);
  if (!file.getMessage().empty()) throw std::runtime_error(file.getMessage());
  for (const RingFile::Problem& problem : file.getResult().problems)
    std::cerr << path << ":" << problem.line << ": skipped: " << problem.message << '\n';
  complete = file.getResult().nbProblems == 0;
  if (!complete) std::cerr << file.getResult().nbProblems << " malformed line(s) skipped\n";

  std::vector<Contour> contours;
  for (const Ring& ring : file.getResult().rings) contours.push_back({boost::make_shared<Ring>(ring), measure(ring)});
  std::stable_sort(contours.begin(), contours.end(), [](const Contour& a, const Contour& b) {
    return std::abs(a.measures.area) > std::abs(b.measures.area);
  });
  return contours;
}

void printTable(std::ostream& stream, const std::vector<Contour>& contours, std::size_t most) {
  stream << "rank  closed  vertices  turns       area  perimeter  bounding box\n" << std::fixed << std::setprecision(2);
  for (std::size_t index = 0; index < std::min(most, contours.size()); ++index) {
    const Measures& m = contours[index].measures;
    stream << std::setw(4) << index + 1 << std::setw(8) << (m.closed ? "yes" : "no") << std::setw(10) << m.vertices
           << std::setw(7)
           << (m.area > 0   ? "ccw"
               : m.area < 0 ? "cw"
                            : "-")
           << std::setw(11) << std::abs(m.area) << std::setw(11) << m.perimeter << "  " << m.box << '\n';
  }
}

/// Writes all rings to one archive, reads them by the names of their classes and measures them again.
void checkArchive(const std::vector<Contour>& contours, const std::string& path) {
  SerializationObjectPtrColl objects;
  for (const Contour& contour : contours) objects.push_back(contour.ring);
  if (const BoolResult saved = saveAll(path, objects); !saved) throw std::runtime_error(saved.getMessage());

  const SerializationObjectPtrColl loaded = loadAll(path);
  std::size_t identical = 0;
  for (std::size_t index = 0; index < std::min(loaded.size(), contours.size()); ++index) {
    const auto ring = boost::dynamic_pointer_cast<Ring>(loaded[index]);
    identical += ring && measure(*ring) == contours[index].measures;
  }
  std::cout << path << ": " << std::filesystem::file_size(path) << " bytes, " << loaded.size() << " rings read back, "
            << identical << " measured identical\n";
  if (identical != contours.size() || loaded.size() != contours.size())
    throw std::runtime_error(path + ": not everything was measured as before");
}

/// Darker the larger; the ten largest carry their rank.
void draw(const std::vector<Contour>& contours, const std::string& path) {
  SvgWriter writer(1000);
  for (std::size_t index = 0; index < contours.size(); ++index) {
    const auto shade = static_cast<unsigned char>(200 * std::log1p(index) / std::log1p(contours.size()));
    char fill[16];
    std::snprintf(fill, sizeof fill, "#%02x%02x%02x", 40 + shade, 90 + 3 * shade / 5, 140 + 2 * shade / 5);
    const SvgStyle style{"#203040", fill, 0.7, index < 10 ? std::to_string(index + 1) : ""};
    if (const BoolResult drawn = writer.draw(*contours[index].ring, style); !drawn)
      throw std::runtime_error(drawn.getMessage());
  }
  writer.setScaleBar("");
  if (const BoolResult written = writer.write(path); !written) throw std::runtime_error(written.getMessage());
  std::cout << path << ": drawn\n";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) return std::cerr << "usage: measure_contours FILE [OUTPUT_FOLDER]\n", 2;
  try {
    bool complete = false;
    const std::vector<Contour> contours = readContours(argv[1], complete);
    if (contours.empty()) throw std::runtime_error(std::string(argv[1]) + ": no ring found");
    const std::filesystem::path folder = argc > 2 ? argv[2] : ".";
    std::filesystem::create_directories(folder);

    std::cout << argv[1] << ": " << contours.size() << " rings, the ten largest by area:\n\n";
    printTable(std::cout, contours, 10);
    std::cout << '\n';
    std::ostringstream table;
    printTable(table, contours, contours.size());
    const std::string tablePath = (folder / "measures.txt").string();
    std::ofstream tableFile(tablePath);
    tableFile << table.str() << std::flush;
    if (!tableFile) throw std::runtime_error("Cannot write \"" + tablePath + "\"");
    std::cout << tablePath << ": the measures of every ring\n";
    for (const char* name : {"contours.cbor", "contours.json"}) checkArchive(contours, (folder / name).string());
    draw(contours, (folder / "contours.svg").string());
    return complete ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << "measure_contours: " << error.what() << '\n';
    return 1;
  }
}
