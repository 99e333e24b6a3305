// Fits a circle, an ellipse and a line to published points, and a circle to an arc among outliers.
// Usage: fit_shapes FILE [OUTPUT_FOLDER]
// Exit status: 0 when all went well, 1 when a line was skipped or a step failed, 2 for wrong arguments.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <algorithm>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <cmath>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <stdexcept>

namespace {

using namespace ormix;
using namespace ormix::geom;
using Point = Point2dData<omReal64>;
using Points = std::vector<Point>;
using Circle = Circle2d<omReal64>;
using Ellipse = Ellipse2d<omReal64>;

void require(const BoolResult& result) {
  if (!result) throw std::runtime_error(result.getMessage());
}

/// A shape that was fitted, to the inliers only where a threshold was given, and how sure it is.
struct Fit {
  std::string name;
  Points points;
  GeometryEntity2dPtr entity;
  FitReport report;

  bool isInlier(std::size_t i) const { return report.inliers.empty() || report.inliers[i]; }
};

template <class Entity>
using FitFunction = BoolResult (*)(const SampleView&, const FitOptions&, Entity&, FitReport&);

template <class Entity>
Fit fit(const std::string& name, const Points& points, FitFunction<Entity> function, omReal64 threshold = 0) {
  RobustOptions robust;
  robust.threshold = threshold;
  FitOptions options;
  options.method = eFM_Algebraic;
  if (threshold > 0) options.robust = &robust;
  const auto entity = boost::make_shared<Entity>();
  Fit fit{name, points, entity, {}};
  require(function(toSamples(points), options, *entity, fit.report));
  return fit;
}

std::vector<Fit> fitAll(const std::vector<Polygon2d<omReal64>>& sets) {
  return {fit<Circle>("circle", sets[0].getPointColl(), fitCircle),
          fit<Ellipse>("ellipse", sets[1].getPointColl(), fitEllipse),
          fit<Line2d>("line", sets[2].getPointColl(), fitLine),
          fit<Circle>("arc, plain fit", sets[3].getPointColl(), fitCircle),
          fit<Circle>("arc, robust fit", sets[3].getPointColl(), fitCircle, 0.15)};
}

/// The shape's point nearest to that of an index.
Point foot(const Fit& fit, std::size_t i) {
  const auto* line = dynamic_cast<const Line2d*>(fit.entity.get());
  if (!line) return nearestPoints(Point2d<omReal64>(fit.points[i]), *fit.entity, eIP_Boundary).onB;
  const omReal64 distance = fit.report.residuals[i];
  const Point& point = fit.points[i];
  return {point.getX() - distance * std::cos(line->getTheta()), point.getY() - distance * std::sin(line->getTheta())};
}

void printFit(const Fit& fit) {
  omReal64 sum = 0;
  std::size_t nbInliers = 0;
  for (std::size_t i = 0; i < fit.points.size(); ++i) {
    if (!fit.isInlier(i)) continue;
    sum += fit.report.residuals[i] * fit.report.residuals[i];
    ++nbInliers;
  }
  std::cout << std::left << std::setw(16) << fit.name << std::right << std::setw(6) << fit.points.size() << std::setw(9)
            << nbInliers << std::fixed << std::setprecision(3) << std::setw(7)
            << std::sqrt(sum / static_cast<omReal64>(nbInliers));
  std::string indent = "  ";
  for (std::size_t i = 0; i < fit.report.params.size(); ++i) {
    std::cout << indent << std::left << std::setw(13) << fit.report.parameterNames[i]
              << withUncertainty(fit.report.params[i], fit.report.standardUncertainty(i)) << '\n';
    indent = std::string(40, ' ');
  }
}

/// Draws into a panel of side 1: the points, the shape, what separates them, and where the centre is with 95 %.
void draw(SvgWriter& writer, const Fit& fit, omReal64 left) {
  Polygon2d<omReal64> path;
  Points &feet = path.getPointColl(), all = fit.points;
  for (std::size_t i = 0; i < fit.points.size(); ++i) feet.push_back(foot(fit, i));
  all.insert(all.end(), feet.begin(), feet.end());
  const std::vector<omReal64>& p = fit.report.params;
  const bool isLine = fit.report.model == "Line2d";
  if (!isLine) all.insert(all.end(), {{p[0] - p[2], p[1] - p[2]}, {p[0] + p[2], p[1] + p[2]}});
  const BoundingBox2d<omReal64> box = pointsBoundingBox(all);
  const omReal64 scale = 0.84 / std::max({box.getXMax() - box.getXMin(), box.getYMax() - box.getYMin(), 1e-9});
  const SimilarityTransform2d place(scale, 0, left + 0.5 - scale * (box.getXMin() + box.getXMax()) / 2,
                                    0.47 - scale * (box.getYMin() + box.getYMax()) / 2);
  const auto put = [&](const BaseGeometryEntity2d& entity, const char* colour, omReal64 width) {
    const GeometryEntity2dPtr placed = place.apply(entity);
    require(placed ? writer.draw(*placed, {colour, "none", width, ""})
                   : failure("A point is too far away to be drawn"));
  };
  Ellipse center;
  if (!isLine) {
    require(errorEllipse(fit.report, 0, 1, 0.95, center));
    put(center, "#80a8d0", 1);
  }
  // A line has no end: it is drawn as far as there are points.
  put(isLine ? path : static_cast<const BaseGeometryEntity2d&>(*fit.entity), "#2060a0", 2);
  for (std::size_t i = 0; i < feet.size(); ++i) {
    if (fit.isInlier(i)) put(Segment2d<omReal64>(fit.points[i], feet[i]), "#d03020", 1);
    put(Point2d<omReal64>(fit.points[i]), fit.isInlier(i) ? "#203040" : "#b0b4bc", 1.5);
  }
  require(writer.draw(BoundingBox2d<omReal64>(left, 0, left + 1, 1), {"#d0d4dc", "none", 1, ""}));
  require(writer.draw(Point2d<omReal64>(left + 0.5, 0.95), {"none", "none", 0, fit.name}));
}

int run(const std::string& path, const std::filesystem::path& folder) {
  const ProcessingResult<RingFile> file = readRings(path);
  if (!file.getMessage().empty()) throw std::runtime_error(file.getMessage());
  for (const RingFile::Problem& problem : file.getResult().problems)
    std::cerr << path << ":" << problem.line << ": skipped: " << problem.message << '\n';
  if (file.getResult().rings.size() != 4) throw std::runtime_error(path + ": four sets of points are needed");
  std::cout << "fit             points  inliers    rms  parameters\n";
  SvgWriter writer(1200);
  require(writer.setView({-0.02, -0.02, 5.02, 1.02}));
  SerializationObjectPtrColl entities;
  for (const Fit& fit : fitAll(file.getResult().rings)) {
    printFit(fit);
    draw(writer, fit, static_cast<omReal64>(entities.size()));
    entities.push_back(fit.entity);
  }
  std::filesystem::create_directories(folder);
  const std::string archive = (folder / "fits.json").string(), picture = (folder / "fits.svg").string();
  require(saveAll(archive, entities));
  require(writer.write(picture));
  std::cout << '\n' << archive << ": the shapes\n" << picture << ": drawn\n";
  return file.getResult().nbProblems == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) return std::cerr << "usage: fit_shapes FILE [OUTPUT_FOLDER]\n", 2;
  try {
    return run(argv[1], argc > 2 ? argv[2] : ".");
  } catch (const std::exception& error) {
    std::cerr << "fit_shapes: " << error.what() << '\n';
    return 1;
  }
}
