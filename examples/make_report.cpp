// Joins what the other programs of the demo left in their folders to one page: pictures, tables that sort, archives
// that are read back, and meshes that turn, coloured by their distances from the plane, sphere or ellipsoid on which
// most of their vertices are. Usage: make_report OUTPUT.html FOLDER... Exit status: 0 when all went well, 1 when a file
// could not be shown, 2 for wrong arguments.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace {

using namespace ormix;
using namespace ormix::geom;
using Path = std::filesystem::path;
using Mesh = FaceVertexTriMesh3d<omReal64>;
using Points = std::vector<Point3dData<omReal64>>;

void require(const BoolResult& result) {
  if (!result) throw std::runtime_error(result.getMessage());
}

std::string text(omReal64 number) {
  std::ostringstream stream;
  stream.precision(4);
  stream << number;
  return stream.str();
}

/// The files of the demo, in the order of the page, and what they show. Others are left alone.
struct KnownFile {
  const char* name;
  const char* caption;
};
constexpr std::array<KnownFile, 10> s_knownFiles{
    {{"regions.svg",
      "Contours red; of the ten largest their numbers, ellipses of equal moments blue and least Feret diameters "
      "yellow; "
      "green where a neighbour is near"},
     {"skeletons.svg", "Skeletons of elongated regions, coloured by their distance from the boundary"},
     {"regions.csv", "All that was measured on each region"},
     {"contacts.svg", "Cells, and in red the edges of pixels along which they touch"},
     {"smooth_contacts.svg", "The same of smooth outlines, which touch within a gap of 3 pixels"},
     {"contacts.csv", "Which cells touch, and how long their contacts are"},
     {"contours.svg", "Rings, darker the larger; the ten largest with their rank"},
     {"contours.json", "Rings as read back from their archive"},
     {"fits.svg",
      "Points, fitted shapes with the regions of their centres, and in red the distances; outliers found are grey"},
     {"fits.json", "Shapes as read back from their archive"}}};

std::string titleOf(const Path& folder) {
  static const std::map<std::string, std::string> titles{{"regions", "Regions of images"},
                                                         {"contacts", "Cells that touch"},
                                                         {"contours", "Contours"},
                                                         {"fits", "Fitted shapes"},
                                                         {"models", "Meshes"}};
  const auto found = titles.find(folder.filename().string());
  return found != titles.end() ? found->second : folder.filename().string();
}

/// A shape that was fitted robustly, and the signed distances of all vertices from it.
struct Deviations {
  std::string shape;
  std::size_t nbInliers = 0;
  std::vector<omReal64> distances;
};

/// Replaces `best` when more points are on a shape of the estimator. `describe(params)` is a pair: what the shape is,
/// and a function of a point and its residual, which answers the signed distance.
template <class Estimator, class Describe>
void tryShape(const Points& points, omReal64 threshold, Describe describe, Deviations& best) {
  Estimator estimator;
  RobustOptions options;
  options.threshold = threshold;
  RobustResult found;
  if (!robustEstimation(estimator, toSamples(points), options, found) || found.nbInliers <= best.nbInliers) return;
  RealVector residuals;
  require(estimator.computeResiduals(toSamples(points), found.params, residuals));
  const auto [shape, signedDistance] = describe(found.params);
  best = {shape, found.nbInliers, {}};
  for (std::size_t i = 0; i < points.size(); ++i) best.distances.push_back(signedDistance(points[i], residuals(i)));
}

Deviations deviationsOf(const Points& points, omReal64 threshold) {
  Deviations best;
  tryShape<Plan3dEstimator>(
      points, threshold,
      [](const RealVector&) { return std::pair("plane", [](const auto&, omReal64 residual) { return residual; }); },
      best);
  tryShape<Sphere3dEstimator>(
      points, threshold,
      [](const RealVector& p) {
        const Sphere3d<omReal64> sphere({p(0), p(1), p(2)}, p(3));
        return std::pair("sphere of radius " + text(p(3)),
                         [sphere](const auto& point, omReal64) { return sphere.signedDistance(point); });
      },
      best);
  // Residuals of ellipsoids have no sign: a point is inside where the ellipsoid reaches farther in its direction.
  tryShape<Ellipsoid3dEstimator>(
      points, threshold,
      [](const RealVector& p) {
        const SpatialEllipsoid body = toSpatialEllipsoid({p(0), p(1), p(2)}, p(3), p(4), p(5), p(6), p(7), p(8));
        return std::pair("ellipsoid of radii " + text(p(3)) + ", " + text(p(4)) + " and " + text(p(5)),
                         [body](const auto& q, omReal64 residual) {
                           return ellipsoidLevel(body, {q.getX(), q.getY(), q.getZ()}) < 1 ? -residual : residual;
                         });
      },
      best);
  return best;
}

Mesh readTriangles(const Path& path) {
  MeshReport report;
  Mesh mesh = readFaceVertexTriMesh<omReal64>(path.string(), {}, report);
  if (mesh.getNbTriangles() == 0) throw std::runtime_error(path.string() + ": " + report.message);
  return mesh;
}

/// A repaired model, coloured by its distances, and what was left of it by simplification.
void addModel(HtmlReport& report, const Path& repaired, HtmlTable& measures) {
  const std::string file = repaired.string(), name = repaired.stem().string();
  const std::string model = name.substr(0, name.rfind("-repaired"));
  const Mesh mesh = readTriangles(repaired);
  const auto box = pointsBoundingBox(mesh.getVertexColl());
  const omReal64 threshold = distance(box.getMinCornerPt(), box.getMaxCornerPt()) / 100;
  const Deviations found = deviationsOf(mesh.getVertexColl(), threshold);
  report.addHeading(model, 3);
  HtmlScene scene;
  scene.setScale("distance from the " + found.shape, "units of the file", ColourScale(-5 * threshold, 5 * threshold));
  require(scene.draw(mesh, found.distances));
  const std::size_t nbTriangles = mesh.getNbTriangles();
  require(report.addScene(scene, model + ", repaired: " + std::to_string(nbTriangles) + " triangles, " +
                                     std::to_string(found.nbInliers) + " of " + std::to_string(mesh.getNbVertices()) +
                                     " vertices within " + text(threshold) + " of the " + found.shape));
  std::string nbSimplified;
  const Path simplified = repaired.parent_path() / (model + "-simplified.ply");
  if (std::filesystem::exists(simplified)) {
    const Mesh fewer = readTriangles(simplified);
    nbSimplified = std::to_string(fewer.getNbTriangles());
    HtmlScene second;
    require(second.draw(fewer));
    require(report.addScene(second, model + ", simplified: " + nbSimplified + " triangles"));
  }
  measures.rows.push_back(
      {model, std::to_string(nbTriangles), text(area(mesh)), text(volume(mesh)), found.shape, nbSimplified});
}

/// The entities of an archive, read by the names of their classes.
HtmlTable tableOf(const Path& archive, const char* caption) {
  HtmlTable table{caption, {"no.", "class", "area", "perimeter"}, {}};
  for (const SerializationObjectPtr& object : loadAll(archive.string())) {
    const auto entity = boost::dynamic_pointer_cast<BaseGeometryEntity2d>(object);
    if (!entity) continue;
    omReal64 entityArea = 0, perimeter = 0;
    const std::string name = entity->getClassName().substr(std::string("ormix::geom::").size());
    table.rows.push_back({std::to_string(table.rows.size() + 1), name.substr(0, name.find('<')),
                          AreaMsr2d().measure(*entity, entityArea) ? text(entityArea) : "",
                          PerimeterMsr2d().measure(*entity, perimeter) ? text(perimeter) : ""});
  }
  return table;
}

/// What programs of the demo left in a folder, and in those in it that are of an image each.
void addFolder(HtmlReport& report, const Path& folder, int level) {
  std::vector<Path> images, models;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (std::filesystem::exists(entry.path() / "regions.csv")) images.push_back(entry.path());
    if (name.find("-repaired.ply") != std::string::npos) models.push_back(entry.path());
  }
  std::sort(images.begin(), images.end());
  std::sort(models.begin(), models.end());
  report.addHeading(titleOf(folder), level);
  for (const KnownFile& known : s_knownFiles) {
    const Path file = folder / known.name;
    if (!std::filesystem::exists(file)) continue;
    require(file.extension() == ".json" ? report.addTable(tableOf(file, known.caption))
                                        : report.addFile(file.string(), known.caption));
  }
  if (!models.empty()) {
    HtmlTable measures{"Models", {"model", "triangles", "area", "volume", "most vertices are on", "simplified"}, {}};
    for (const Path& model : models) addModel(report, model, measures);
    require(report.addTable(measures));
  }
  for (const Path& image : images) addFolder(report, image, level + 1);
}

int run(const Path& output, const std::vector<Path>& folders) {
  HtmlReport report({"What the demo measured"});
  int status = 0;
  for (const Path& folder : folders) try {
      addFolder(report, std::filesystem::canonical(folder), 2);
    } catch (const std::exception& error) {
      std::cerr << "make_report: " << error.what() << '\n';
      status = 1;
    }
  require(report.write(output.string()));
  std::cout << std::filesystem::absolute(output).string() << ": all of it as one page\n";
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return std::cerr << "usage: make_report OUTPUT.html FOLDER...\n", 2;
  try {
    return run(argv[1], {argv + 2, argv + argc});
  } catch (const std::exception& error) {
    std::cerr << "make_report: " << error.what() << '\n';
    return 1;
  }
}
