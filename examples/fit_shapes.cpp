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
#include <sstream>
#include <stdexcept>

namespace {

using namespace ormix;
using namespace ormix::geom;
using Point = Point2dData<omReal64>;
using Points = std::vector<Point>;
using Circle = Circle2d<omReal64>;

void require(const BoolResult& result) {
  if (!result) throw std::runtime_error(result.getMessage());
}

/// A shape that was fitted, to the inliers only where a threshold was given.
struct Fit {
  std::string name;
  Points points;
  boost::shared_ptr<BaseEstimator> estimator;
  RobustResult found;
  GeometryEntity2dPtr entity;
  std::string description;
};

template <class Entity, class Estimator, class Set>
Fit fit(const std::string& name, const Points& points, const Set& set, omReal64 threshold = 0) {
  Fit fit{name, points, boost::make_shared<Estimator>(), {}, {}, {}};
  fit.found.inliers.assign(points.size(), true);
  fit.found.nbInliers = points.size();
  RobustOptions options;
  options.threshold = threshold;
  require(threshold > 0 ? robustEstimation(*fit.estimator, toSamples(points), options, fit.found)
                        : fit.estimator->computeEstimation(toSamples(points), fit.found.params));
  const auto entity = boost::make_shared<Entity>();
  set(*entity, fit.found.params);
  std::ostringstream text;
  text << std::fixed << std::setprecision(3) << *entity;
  fit.description = text.str();
  fit.entity = entity;
  return fit;
}

std::vector<Fit> fitAll(const std::vector<Polygon2d<omReal64>>& sets) {
  const auto circle = [](auto& entity, const RealVector& p) { entity.setCoords({p(0), p(1)}, p(2)); };
  const auto ellipse = [](auto& entity, const RealVector& p) { entity.setCoords({p(0), p(1)}, p(2), p(3), p(4)); };
  const auto line = [](auto& entity, const RealVector& p) { entity.setCoords(p(1), p(0)); };
  return {fit<Circle, Circle2dEstimator>("circle", sets[0].getPointColl(), circle),
          fit<Ellipse2d<omReal64>, Ellipse2dEstimator>("ellipse", sets[1].getPointColl(), ellipse),
          fit<Line2d, Line2dEstimator>("line", sets[2].getPointColl(), line),
          fit<Circle, Circle2dEstimator>("arc, plain fit", sets[3].getPointColl(), circle),
          fit<Circle, Circle2dEstimator>("arc, robust fit", sets[3].getPointColl(), circle, 0.15)};
}

/// Distances to the shape. Residuals are just these, but for a circle, where they are algebraic.
RealVector distances(const Fit& fit, const Points& points) {
  const RealVector& params = fit.found.params;
  RealVector values;
  require(fit.estimator->computeResiduals(toSamples(points), params, values));
  if (fit.estimator->getClassName() == Circle2dEstimator::s_className)
    for (omReal64& value : values) value = std::sqrt(value + params(2) * params(2)) - params(2);
  return values;
}

/// The shape's point nearest to p: by the distance against its gradient, which has the length 1.
Point foot(const Fit& fit, const Point& p) {
  const omReal64 h = 1e-6 * (1 + normL2(p)), x = p.getX(), y = p.getY();
  const RealVector d = distances(fit, {p, {x + h, y}, {x - h, y}, {x, y + h}, {x, y - h}});
  return {x - d(0) * (d(1) - d(2)) / (2 * h), y - d(0) * (d(3) - d(4)) / (2 * h)};
}

void printRow(const Fit& fit) {
  const RealVector d = distances(fit, fit.points);
  omReal64 sum = 0;
  for (std::size_t i = 0; i < d.size(); ++i) sum += fit.found.inliers[i] ? d(i) * d(i) : 0;
  std::cout << std::left << std::setw(16) << fit.name << std::right << std::setw(6) << d.size() << std::setw(9)
            << fit.found.nbInliers << std::fixed << std::setprecision(3) << std::setw(7)
            << std::sqrt(sum / static_cast<omReal64>(fit.found.nbInliers)) << "  " << fit.description << '\n';
}

/// Draws into a panel of side 1: the points, the shape, and what separates them.
void draw(SvgWriter& writer, const Fit& fit, omReal64 left) {
  Polygon2d<omReal64> path;
  Points &feet = path.getPointColl(), all = fit.points;
  for (const Point& point : fit.points) feet.push_back(foot(fit, point));
  all.insert(all.end(), feet.begin(), feet.end());
  const RealVector& p = fit.found.params;
  const bool isLine = p.size() == Line2dEstimator::s_nbParams;
  if (!isLine) all.insert(all.end(), {{p(0) - p(2), p(1) - p(2)}, {p(0) + p(2), p(1) + p(2)}});
  const BoundingBox2d<omReal64> box = pointsBoundingBox(all);
  const omReal64 scale = 0.84 / std::max({box.getXMax() - box.getXMin(), box.getYMax() - box.getYMin(), 1e-9});
  const SimilarityTransform2d place(scale, 0, left + 0.5 - scale * (box.getXMin() + box.getXMax()) / 2,
                                    0.47 - scale * (box.getYMin() + box.getYMax()) / 2);
  const auto put = [&](const BaseGeometryEntity2d& entity, const char* colour, omReal64 width) {
    const GeometryEntity2dPtr placed = place.apply(entity);
    require(placed ? writer.draw(*placed, {colour, "none", width, ""})
                   : failure("A point is too far away to be drawn"));
  };
  // A line has no end: it is drawn as far as there are points.
  put(isLine ? path : static_cast<const BaseGeometryEntity2d&>(*fit.entity), "#2060a0", 2);
  for (std::size_t i = 0; i < feet.size(); ++i) {
    if (fit.found.inliers[i]) put(Segment2d<omReal64>(fit.points[i], feet[i]), "#d03020", 1);
    put(Point2d<omReal64>(fit.points[i]), fit.found.inliers[i] ? "#203040" : "#b0b4bc", 1.5);
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
    printRow(fit);
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
