// Finds out which cells of a tissue touch, and for how long: grows cells around seeds until they meet, makes shapes of
// the labels, and asks for their contacts; then for those of smooth outlines, which do not share pixel edges any more.
// Writes a table and a picture with the borders. Usage: find_contacts OUTPUT_FOLDER. Exit status: 0 when all went well,
// else 1.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <stdexcept>

namespace {

using namespace ormix;
using namespace ormix::geom;

void require(const BoolResult& result) {
  if (!result) throw std::runtime_error(result.getMessage());
}

constexpr std::size_t s_width = 480, s_height = 360;

/// Each pixel has the number of the nearest seed, or 0 where all are farther than a cell's radius.
std::vector<omUInt16> growCells() {
  constexpr int nbSeeds = 40;
  constexpr double radius = 45;
  std::vector<omUInt16> labels(s_width * s_height, 0);
  for (std::size_t y = 0; y < s_height; ++y)
    for (std::size_t x = 0; x < s_width; ++x) {
      double nearest = radius;
      for (int seed = 0; seed < nbSeeds; ++seed) {
        // Multiples of the golden ratio and of its square spread evenly.
        const double seedX = s_width * std::fmod(0.5 + 0.7548776662466927 * seed, 1);
        const double seedY = s_height * std::fmod(0.5 + 0.5698402909980532 * seed, 1);
        const double distance = std::hypot(static_cast<double>(x) + 0.5 - seedX, static_cast<double>(y) + 0.5 - seedY);
        if (distance >= nearest) continue;
        nearest = distance;
        labels[y * s_width + x] = static_cast<omUInt16>(seed + 1);
      }
    }
  return labels;
}

void writeTable(const RegionContacts& graph, const std::string& path) {
  std::ofstream file(path);
  file << "first,second,length\n";
  for (const RegionContact& pair : graph.contacts)
    file << pair.first + 1 << ',' << pair.second + 1 << ',' << pair.length() << '\n';
  if (!file.flush()) throw std::runtime_error(path + ": cannot be written");
  std::cout << path << ": " << graph.contacts.size() << " pairs\n";
}

void print(const RegionContacts& graph, const char* what) {
  omReal64 touching = 0, perimeter = 0;
  for (const RegionContact& pair : graph.contacts) touching += 2 * pair.length();
  for (const RegionBorder& border : graph.borders) perimeter += border.perimeter;
  std::cout << what << ": " << graph.contacts.size() << " pairs of " << graph.borders.size() << " cells touch, along "
            << std::fixed << std::setprecision(1) << 100 * touching / perimeter << " % of their boundaries\n";
}

/// The cells, and the borders that they share.
void draw(const Shape2dPtrColl& cells, const RegionContacts& graph, omReal64 gap, const std::string& path) {
  SvgWriter writer(960);
  writer.setYAxis(eSYA_Down);
  for (std::size_t cell = 0; cell < cells.size(); ++cell)
    require(writer.draw(*cells[cell], {"#808080", "#f0e8d8", 1, std::to_string(cell + 1)}));
  for (const RegionContact& pair : graph.contacts)
    for (const ContactPiece2d& piece : contact(*cells[pair.first], *cells[pair.second], gap).onA.pieces)
      for (const Segment2d<omReal64>& segment : piece) require(writer.draw(segment, {"#c02020", "none", 2.5, ""}));
  require(writer.write(path));
  std::cout << path << ": drawn\n";
}

void run(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  std::vector<omUInt16> labels = growCells();
  const MaskView<omUInt16> view{labels.data(), s_width, s_height, s_width};
  const Shape2dPtrColl cells = shapesOfLabels(view);
  const RegionContacts exact = contacts(cells, 0);
  print(exact, "along pixel edges");
  writeTable(exact, (folder / "contacts.csv").string());
  draw(cells, exact, 0, (folder / "contacts.svg").string());
  constexpr omReal64 tolerance = 1.5;
  const Shape2dPtrColl smooth = shapesOfLabels(view, ePC_8, tolerance);
  const RegionContacts near = contacts(smooth, 2 * tolerance);
  print(near, "smooth outlines at a gap of 3");
  draw(smooth, near, 2 * tolerance, (folder / "smooth_contacts.svg").string());
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc < 2) return std::cerr << "usage: find_contacts OUTPUT_FOLDER\n", 2;
  run(argv[1]);
  return 0;
} catch (const std::exception& error) {
  return std::cerr << "find_contacts: " << error.what() << '\n', 1;
}
