// Finds the regions of images: thresholds each, measures its connected regions, writes them to a table and to an
// archive that is read back and measured again, finds neighbours, draws all over the image, and the skeletons of
// elongated regions. Usage: measure_regions OUTPUT_FOLDER IMAGE.png... Exit status: 0 when all went well, 1 when an
// image or a step failed, 2 for wrong arguments.
#include <ORMIXGeometry/ORMIXGeometry.h>
#include <images/PngFile.h>
#include <images/Threshold.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <stdexcept>

namespace {

using namespace ormix;
using namespace ormix::geom;
using namespace ormix::images;

void require(const BoolResult& result) {
  if (!result) throw std::runtime_error(result.getMessage());
}

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  if (!file.is_open() || file.bad()) throw std::runtime_error("cannot be read");
  return bytes;
}

/// A region of an image and what was measured on it.
struct Region {
  Shape2dPtr shape;
  RegionProperties properties;
};

RegionProperties measure(const Shape2d& shape) { return regionProperties(shape); }

/// The connected regions, the largest first. Specks and gaps narrower than a disc of the radius 2 are noise: a closing
/// and an opening remove them.
std::vector<Region> regionsOf(const GrayImage& image, std::vector<omUInt8> mask) {
  constexpr omReal64 radius = 2;
  RowIntersections pixels = toRowIntersections(MaskView<omUInt8>{mask.data(), image.width, image.height, image.width});
  pixels = erode(dilate(pixels, radius), radius);
  pixels = dilate(erode(pixels, radius), radius);
  std::vector<Region> regions;
  for (const Shape2dPtr& shape : labelShapes(pixels)) regions.push_back({shape, measure(*shape)});
  std::stable_sort(regions.begin(), regions.end(),
                   [](const Region& a, const Region& b) { return a.properties.area > b.properties.area; });
  return regions;
}

void printTable(const std::vector<Region>& regions, std::size_t most) {
  std::cout << "region    area  holes  perimeter  circularity  solidity  ellipse axes  greatest x least Feret\n"
            << std::fixed << std::setprecision(1);
  for (std::size_t index = 0; index < std::min(most, regions.size()); ++index) {
    const RegionProperties& p = regions[index].properties;
    std::cout << std::setw(6) << index + 1 << std::setw(8) << std::setprecision(0) << p.area << std::setw(7)
              << p.nbHoles << std::setprecision(1) << std::setw(11) << p.perimeter << std::setprecision(3)
              << std::setw(13) << p.circularity << std::setw(10) << p.solidity << std::setprecision(1) << std::setw(7)
              << 2 * p.equivalentEllipse.getMajorRadius() << std::setw(7) << 2 * p.equivalentEllipse.getMinorRadius()
              << std::setw(12) << p.greatestFeret.length << " x " << p.leastFeret.length << '\n';
  }
}

/// The largest distance in pixels at which regions count as neighbours.
constexpr omReal64 s_neighbourGap = 10;

/// Prints which regions face each other closely, and for how long.
/// \return the parts of their contours that do, pair by pair
std::vector<Contact2d> printNeighbours(const std::vector<Region>& regions) {
  std::vector<boost::shared_ptr<Shape2d>> shapes;
  for (const Region& region : regions) shapes.push_back(region.shape);
  const RegionContacts graph = contacts(shapes, s_neighbourGap);
  std::vector<Contact2d> result;
  if (graph.contacts.empty()) return result;
  std::cout << graph.contacts.size() << " pairs of regions are within " << s_neighbourGap << " pixels";
  for (const RegionContact& pair : graph.contacts) {
    if (result.size() < 10)
      std::cout << (result.empty() ? ": " : ", ") << pair.first + 1 << " and " << pair.second + 1 << " for "
                << pair.length();
    result.push_back(contact(*shapes[pair.first], *shapes[pair.second], s_neighbourGap));
  }
  std::cout << "\n\n";
  return result;
}

/// Draws the skeletons of the largest elongated regions, without the branches that the steps of the mask make, and
/// prints how long and wide these regions are.
void drawSkeletons(const std::vector<Region>& regions, const std::string& path) {
  constexpr omReal64 greatestCircularity = 0.5, pruning = 2.5;
  SvgWriter writer(900);
  writer.setYAxis(eSYA_Down);
  bool isAnyDrawn = false;
  for (std::size_t index = 0; index < std::min<std::size_t>(10, regions.size()); ++index) {
    const auto& [shape, p] = regions[index];
    if (p.circularity > greatestCircularity) continue;
    const Skeleton2d skeleton = pruneSkeleton(computeSkeleton(*shape), pruning);
    const SkeletonPath longest = longestPath(skeleton);
    std::cout << "region " << index + 1 << ": skeleton of length " << countsOf(skeleton).length << ", longest path "
              << longest.length << ", mean width along it " << widthsAlong(skeleton, longest).mean << '\n';
    require(writer.draw(*shape, {"#404040", "#f0f0f0", 1, std::to_string(index + 1)}));
    require(drawSkeleton(writer, skeleton, {2, 0, 12}));
    isAnyDrawn = true;
  }
  if (!isAnyDrawn) return;
  require(writer.write(path));
  std::cout << path << ": skeletons\n";
}

/// Writes the regions to an archive, reads them by the names of their classes and measures them again.
void checkArchive(const std::vector<Region>& regions, const std::string& path) {
  SerializationObjectPtrColl objects;
  for (const Region& region : regions) objects.push_back(region.shape);
  require(saveAll(path, objects));
  const SerializationObjectPtrColl loaded = loadAll(path);
  std::size_t identical = 0;
  for (std::size_t index = 0; index < std::min(loaded.size(), regions.size()); ++index) {
    const auto shape = boost::dynamic_pointer_cast<Shape2d>(loaded[index]);
    if (!shape) continue;
    const RegionProperties again = measure(*shape), &before = regions[index].properties;
    identical += again.area == before.area && again.perimeter == before.perimeter && again.moments == before.moments &&
                 again.huMoments == before.huMoments;
  }
  std::cout << path << ": " << std::filesystem::file_size(path) << " bytes, " << loaded.size() << " regions read back, "
            << identical << " measured identical\n";
  if (identical != regions.size()) throw std::runtime_error(path + ": not everything was measured as before");
}

/// The contours over the image; of the ten largest regions their numbers, ellipses and least Feret diameters; what
/// faces a neighbour.
void draw(const std::string& bytes, const GrayImage& image, const std::vector<Region>& regions,
          const std::vector<Contact2d>& neighbours, const std::string& path) {
  SvgWriter writer(900);
  writer.setYAxis(eSYA_Down);
  const BoundingBox2d<omReal64> all(0, 0, static_cast<omReal64>(image.width), static_cast<omReal64>(image.height));
  require(writer.setView(all));
  require(writer.setScaleBar("px"));
  require(writer.drawImage(bytes, all));
  for (std::size_t index = 0; index < regions.size(); ++index) {
    const auto& [shape, p] = regions[index];
    const bool isLarge = index < 10;
    require(writer.draw(*shape, {"#ff3020", "none", 1.5, isLarge ? std::to_string(index + 1) : ""}));
    if (!isLarge) continue;
    require(writer.draw(p.equivalentEllipse, {"#20a0ff", "none", 1, ""}));
    const FeretDiameter& least = p.leastFeret;
    const Segment2d<omReal64> across(least.from.x, least.from.y, least.to.x, least.to.y);
    require(writer.draw(across, {"#ffd020", "none", 1.5, ""}));
  }
  for (const Contact2d& pair : neighbours)
    for (const ContactSide2d* side : {&pair.onA, &pair.onB})
      for (const ContactPiece2d& piece : side->pieces)
        for (const Segment2d<omReal64>& segment : piece) require(writer.draw(segment, {"#40ff60", "none", 3, ""}));
  require(writer.write(path));
  std::cout << path << ": drawn\n";
}

void processImage(const std::string& path, const std::filesystem::path& folder) {
  const std::string bytes = readFile(path);
  const GrayImage image = decodeGray(bytes);
  const int threshold = otsuThreshold(image);
  const std::vector<Region> regions = regionsOf(image, objectsOf(image, threshold));
  std::cout << path << ": " << image.width << " x " << image.height << " pixels, threshold " << threshold << ", "
            << regions.size() << " regions, the largest:\n\n";
  printTable(regions, 10);
  std::cout << '\n';
  const std::vector<Contact2d> neighbours = printNeighbours(regions);
  std::filesystem::create_directories(folder);
  std::vector<RegionProperties> properties;
  for (const Region& region : regions) properties.push_back(region.properties);
  require(writeRegionTable((folder / "regions.csv").string(), properties));
  std::cout << (folder / "regions.csv").string() << ": all that was measured\n";
  checkArchive(regions, (folder / "regions.cbor").string());
  draw(bytes, image, regions, neighbours, (folder / "regions.svg").string());
  drawSkeletons(regions, (folder / "skeletons.svg").string());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return std::cerr << "usage: measure_regions OUTPUT_FOLDER IMAGE.png...\n", 2;
  int status = 0;
  for (int index = 2; index < argc; ++index) try {
      if (index > 2) std::cout << '\n';
      processImage(argv[index], std::filesystem::path(argv[1]) / std::filesystem::path(argv[index]).stem());
    } catch (const std::exception& error) {
      std::cerr << "measure_regions: " << argv[index] << ": " << error.what() << '\n';
      status = 1;
    }
  return status;
}
