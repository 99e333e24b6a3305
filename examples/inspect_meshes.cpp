// Opens STL, OBJ, PLY and OFF files: says what is in them and what is wrong, repairs the meshes, simplifies them to a
// number of triangles (a tenth without one), measures them, fits shapes to their points, moves them, and saves what
// became of them, their convex hulls and pictures. Usage: inspect_meshes OUTPUT_FOLDER FILE... [--triangles NUMBER]
// Exit status: 0 when all went well, 1 when a file or a step failed, 2 for
// wrong arguments.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <algorithm>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace {

using namespace ormix;
using namespace ormix::geom;
using Mesh = Mesh3d<omReal64>;
using Points = std::vector<Point3dData<omReal64>>;

void require(const BoolResult& result) {
  if (!result) throw std::runtime_error(result.getMessage());
}

struct Model {
  std::filesystem::path path;
  MeshReport report;
  boost::shared_ptr<Mesh> mesh;
  Mesh repaired, simplified;
  std::string name() const { return path.stem().string(); }
};

/// What a report finds wrong, in words.
std::string complaints(const MeshReport& report) {
  std::ostringstream text;
  const auto add = [&text](std::size_t count, const char* what) {
    if (count > 0) text << (text.tellp() > 0 ? ", " : "") << count << ' ' << what;
  };
  add(report.defects.nbDegenerate, "degenerate");
  add(report.defects.nbDuplicate, "duplicate");
  add(report.defects.nbNonManifoldEdges, "non-manifold edges");
  add(report.defects.nbFlippedNeighbours, "flipped neighbours");
  add(report.defects.nbBoundaryLoops, "boundary loops");
  if (!report.message.empty()) text << (text.tellp() > 0 ? ", " : "") << report.message;
  return text.tellp() > 0 ? text.str() : "nothing";
}

const char* formatName(eMeshFileFormat format) {
  static constexpr std::array<const char*, 7> names{"ASCII", "binary", "OBJ", "ASCII", "binary", "binary", "OFF"};
  return names[format];
}

void printReport(const Model& model) {
  const BoundingBox3d<omReal64> box = pointsBoundingBox(model.mesh->getVertexColl());
  std::ostringstream size;
  size << std::setprecision(4) << box.sizeX() << " x " << box.sizeY() << " x " << box.sizeZ();
  std::cout << std::left << std::setw(26) << model.name() << std::setw(8) << formatName(model.report.format)
            << std::right << std::setw(9) << model.report.nbTriangles << std::setw(9) << model.report.nbVertices
            << std::setw(7) << model.report.defects.nbComponents << std::setw(8)
            << (model.mesh->isClosed() ? "yes" : "no") << "  " << std::left << std::setw(26) << size.str()
            << complaints(model.report) << '\n';
}

/// Components, defects and what repair did about them; saves the repaired mesh.
void printRepair(Model& model, const std::filesystem::path& folder) {
  MeshReport file;
  RepairReport report;
  std::vector<omUInt32> labels;
  const auto triangles = readFaceVertexTriMesh<omReal64>(model.path.string(), {}, file);
  const MeshValidation found = validate(triangles);
  std::cout << '\n' << model.name() << ": " << labelComponents(triangles, labels) << " components";
  for (std::size_t kind = 0; kind < s_nbMeshDefects; ++kind)
    if (found.counts[kind] > 0)
      std::cout << ", " << found.counts[kind] << ' ' << toString(static_cast<eMeshDefect>(kind)).substr(4);
  require(repair(triangles, model.repaired, {}, report));
  std::cout << '\n';
  for (const std::string& line : report.log) std::cout << "  " << line << '\n';
  std::cout << "  repaired: " << (report.isClosed ? "closed" : "open") << ", " << model.repaired.getNbTriangles()
            << " triangles, area " << report.areaBefore << " -> " << report.areaAfter << ", volume "
            << report.volumeBefore << " -> " << report.volumeAfter << '\n';
  require(writeMesh((folder / (model.name() + "-repaired.ply")).string(), model.repaired));
}

/// Simplifies the repaired mesh and saves what is left.
/// \param nbTriangles how many triangles to keep; 0 for a tenth
void printSimplification(Model& model, std::size_t nbTriangles, const std::filesystem::path& folder) {
  MeshSimplificationOptions options;
  options.nbTriangles = nbTriangles != 0 ? nbTriangles : model.repaired.getNbTriangles() / 10;
  MeshSimplificationReport report;
  model.simplified = model.repaired;
  require(MeshSimplification<omReal64>::simplify(model.simplified, options, &report));
  std::cout << "  simplified: " << model.simplified.getNbTriangles() << " triangles, area "
            << AreaMsr3d::measure(model.simplified) << ", volume " << VolumeMsr3d::measure(model.simplified) << '\n';
  require(writeMesh((folder / (model.name() + "-simplified.ply")).string(), model.simplified));
}

/// Writes the mesh in a format and reads it again.
boost::shared_ptr<Mesh> throughFile(const Mesh& mesh, const std::filesystem::path& path, eMeshFileFormat format) {
  MeshWriteOptions options;
  options.format = format;
  require(writeMesh(path.string(), mesh, options));
  return readMesh<omReal64>(path.string());
}

/// Measures, hull, and whether the model is the same in both formats.
void printMeasures(const Model& model, const std::filesystem::path& folder) {
  const std::string stem = (folder / model.name()).string();
  const Mesh& mesh = *model.mesh;
  const auto ascii = throughFile(mesh, stem + "-ascii.stl", eMFF_StlAscii);
  const auto binary = throughFile(mesh, stem + "-binary.stl", eMFF_StlBinary);
  MeshMoments body;
  std::ostringstream centroid;
  centroid << std::setprecision(4);
  if (mesh.isClosed() && moments(mesh, body))
    centroid << Point3dData<omReal64>(body.centroid.x, body.centroid.y, body.centroid.z);
  else
    centroid << "open: no body";
  std::cout << std::left << std::setw(26) << model.name() << std::right << std::setprecision(6) << std::setw(10)
            << AreaMsr3d::measure(mesh) << std::setw(10) << VolumeMsr3d::measure(mesh) << "  " << std::left
            << std::setw(24) << centroid.str();
  Mesh hull;
  if (const BoolResult result = quickHull(mesh.getVertexColl(), hull); result) {
    require(saveToStLBinary(stem + "-hull.stl", hull));
    std::cout << std::right << std::setw(9) << hull.getNbTriangles() << std::setw(12) << std::abs(localVolume(hull));
  } else {
    std::cout << std::right << std::setw(9) << "flat" << std::setw(12) << 0;
  }
  std::cout << (compare(*ascii, *binary, 0) ? "  the same" : "  different") << '\n';
}

/// The points that agree with a shape, and how well; "-" where there is none.
template <class Estimator>
std::string robustFit(const Points& points, omReal64 threshold, std::size_t firstShown, std::size_t nbShown) {
  Estimator estimator;
  RobustOptions options;
  options.threshold = threshold;
  RobustResult found;
  std::ostringstream text;
  if (!robustEstimation(estimator, toSamples(points), options, found)) return "-";
  text << std::setprecision(4) << found.nbInliers << " on";
  for (std::size_t k = 0; k < nbShown; ++k) text << (k ? ", " : " ") << found.params(firstShown + k);
  return text.str();
}

/// The model is moved by a transform that was fitted to pairs of points known to a thousandth of its size.
omReal64 residualOfMove(const Model& model, omReal64 size) {
  const Points sources = model.mesh->getVertexColl();
  PointCloud3d<omReal64> moved(sources);
  require(RigidTransform3d(0.3, -0.2, 0.5, size, -size, size / 2).applyInSitu(moved));
  const omReal64 grid = size / 1000;
  for (Point3dData<omReal64>& point : moved.getCollection())
    point.setCoords(std::round(point.getX() / grid) * grid, std::round(point.getY() / grid) * grid,
                    std::round(point.getZ() / grid) * grid);
  RigidTransform3d fitted;
  require(fitRigid(toSamples(sources, moved.getCollection()), fitted));
  require(fitted.applyInSitu(*model.mesh));
  omReal64 sum = 0;
  for (std::size_t i = 0; i < sources.size(); ++i)
    sum += std::pow(distance(model.mesh->getVertexColl()[i], moved.getCollection()[i]), 2);
  return std::sqrt(sum / static_cast<omReal64>(sources.size())) / size;
}

void printFits(const Model& model) {
  const Points& points = model.mesh->getVertexColl();
  const BoundingBox3d<omReal64> box = pointsBoundingBox(points);
  const omReal64 size = distance(box.getMinCornerPt(), box.getMaxCornerPt());
  const omReal64 threshold = size / 100;
  std::cout << std::left << std::setw(26) << model.name() << std::setw(14)
            << robustFit<Plan3dEstimator>(points, threshold, 0, 0) << std::setw(20)
            << robustFit<Sphere3dEstimator>(points, threshold, 3, 1) << std::setw(30)
            << robustFit<Ellipsoid3dEstimator>(points, threshold, 3, 3) << std::setprecision(2);
  try {
    std::cout << residualOfMove(model, size) << '\n';
  } catch (const std::exception& error) {
    std::cout << error.what() << '\n';
  }
}

void saveView(const Mesh& mesh, const std::string& stem) {
  SvgWriter writer(600);
  require(drawMesh(writer, mesh));
  require(writer.write(stem + ".svg"));
}

int run(const std::filesystem::path& folder, const std::vector<std::string>& paths, std::size_t nbTriangles) {
  std::filesystem::create_directories(folder);
  std::vector<Model> models;
  std::cout << "model                     format  triangles vertices  parts  closed  size                      wrong\n";
  for (const std::string& path : paths) {
    Model model;
    model.path = path;
    model.mesh = readMesh<omReal64>(path, {}, model.report);
    if (model.report.nbTriangles == 0) {
      std::cout << path << ": " << model.report.message << '\n';
      continue;
    }
    printReport(model);
    models.push_back(model);
  }
  for (Model& model : models) {
    printRepair(model, folder);
    if (!model.repaired.isEmpty()) printSimplification(model, nbTriangles, folder);
  }
  std::cout
      << "\nmodel                           area    volume  centroid                hull of  its volume  ASCII and\n"
         "                                                                      triangles              binary\n";
  for (const Model& model : models) printMeasures(model, folder);
  for (const Model& model : models) {
    const std::string stem = (folder / model.name()).string();
    saveView(*model.mesh, stem);
    if (!model.repaired.isEmpty()) saveView(model.repaired, stem + "-repaired");
    if (!model.simplified.isEmpty()) saveView(model.simplified, stem + "-simplified");
  }
  std::cout
      << "\nmodel                     points on a   on a sphere,        on an ellipsoid,              residual of\n"
         "                          plane         radius              radii                         a fitted move\n";
  for (const Model& model : models) printFits(model);
  std::cout << '\n'
            << folder.string()
            << ": pictures, hulls, the repaired and the simplified models, and those read in both formats of STL\n";
  return models.size() == paths.size() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> words(argv + 1, argv + argc);
  std::size_t nbTriangles = 0;
  const auto option = std::find(words.begin(), words.end(), "--triangles");
  bool isUnderstood = true;
  if (option != words.end()) {
    isUnderstood = option + 1 != words.end() &&
                   std::from_chars(option[1].data(), option[1].data() + option[1].size(), nbTriangles).ptr ==
                       option[1].data() + option[1].size() &&
                   nbTriangles != 0;
    words.erase(option, isUnderstood ? option + 2 : words.end());
  }
  if (!isUnderstood || words.size() < 2)
    return std::cerr << "usage: inspect_meshes OUTPUT_FOLDER FILE... [--triangles NUMBER]\n", 2;
  try {
    return run(words.front(), {words.begin() + 1, words.end()}, nbTriangles);
  } catch (const std::exception& error) {
    std::cerr << "inspect_meshes: " << error.what() << '\n';
    return 1;
  }
}
