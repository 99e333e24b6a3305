#include <ORMIXMath/Estimation/RobustEstimation.h>
#include <command/FitModels.h>
#include <command/Subcommands.h>
#include <command/frame/Errors.h>
#include <command/frame/Interrupt.h>
#include <command/io/Documents.h>
#include <command/io/Outputs.h>
#include <command/io/PointSets.h>
#include <command/io/Rows.h>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <charconv>
#include <cmath>

namespace ormix::command {

namespace {

/// The model of a name for points of a dimension.
const FitModel& modelOf(const std::string& name, std::size_t dimension) {
  std::string needed;
  for (const FitModel& model : fitModels()) {
    if (model.name != name) continue;
    if (model.dimension == dimension) return model;
    needed += (needed.empty() ? "" : " or ") + std::to_string(model.dimension);
  }
  throw DataError("a model \"" + name + "\" is fitted to lines of " + needed + " numbers, and these have " +
                  std::to_string(dimension) + "; --columns chooses some");
}

/// "2,3": the columns of a table, counted from 1.
std::vector<std::size_t> columnsOf(const Arguments& arguments) {
  std::vector<std::size_t> columns;
  std::string text = arguments.text("columns");
  while (!text.empty()) {
    const std::size_t comma = text.find(',');
    const std::string word = text.substr(0, comma);
    std::size_t column = 0;
    const auto [rest, error] = std::from_chars(word.data(), word.data() + word.size(), column);
    if (error != std::errc() || rest != word.data() + word.size() || column == 0)
      throw UsageError("option --columns is \"" + arguments.text("columns") +
                       "\", not whole numbers from 1, parted by commas");
    columns.push_back(column);
    text.erase(0, comma == text.npos ? comma : comma + 1);
  }
  return columns;
}

PointSet chosen(const PointSet& set, const std::vector<std::size_t>& columns) {
  if (columns.empty()) return set;
  if (const std::size_t last = *std::max_element(columns.begin(), columns.end()); last > set.dimension)
    throw DataError("there is no column " + std::to_string(last) + " of " + std::to_string(set.dimension));
  PointSet result;
  result.dimension = columns.size();
  for (std::size_t row = 0; row < set.nbRows(); ++row)
    for (const std::size_t column : columns) result.values.push_back(set.values[row * set.dimension + column - 1]);
  return result;
}

RobustOptions robustOptionsOf(const Arguments& arguments) {
  RobustOptions options;
  const std::string method = arguments.text("method", "msac");
  options.method = method == "ransac"       ? eRM_Ransac
                   : method == "lmeds"      ? eRM_LMedS
                   : method == "acontrario" ? eRM_Acontrario
                                            : eRM_Msac;
  options.isRanked = arguments.has("ranked");
  options.threshold = arguments.real("threshold", 0);
  options.seed = static_cast<omUInt32>(arguments.count("seed", 0));
  options.nbMaxIterations = static_cast<std::size_t>(arguments.count("iterations", options.nbMaxIterations));
  return options;
}

bool isRobust(const Arguments& arguments) {
  for (const char* option : {"robust", "threshold", "seed", "method", "iterations", "ranked"})
    if (arguments.has(option)) return true;
  return false;
}

std::string_view endOf(eRobustEnd end) {
  switch (end) {
    case eRO_Confident:
      return "confident";
    case eRO_IterationLimit:
      return "iteration limit";
    case eRO_Stopped:
      return "stopped";
    case eRO_NotConfident:
      break;
  }
  return "not confident";
}

struct Fit {
  Row row;
  SerializationObjectPtr entity;
};

/// How far the points are that agree, and which point is farthest.
void addDistances(Row& row, const FitModel& model, const RealVector& residuals, const RobustResult& found) {
  omReal64 sum = 0, greatest = 0;
  for (std::size_t i = 0; i < residuals.size(); ++i) {
    if (!found.inliers[i]) continue;
    const omReal64 distance = model.distance(residuals(i), found.params);
    sum += distance * distance;
    greatest = std::max(greatest, distance);
  }
  row.add("rms", std::sqrt(sum / static_cast<omReal64>(found.nbInliers)));
  row.add("greatest_distance", std::isnan(sum) ? sum : greatest);
}

/// What every result of a fit begins with.
Row rowOf(const std::string& file, std::size_t item, const FitModel& model, std::size_t nbPoints,
          std::size_t nbInliers) {
  Row row;
  row.add("file", file).add("item", omUInt64(item)).add("model", std::string(model.name));
  row.add("points", omUInt64(nbPoints)).add("inliers", omUInt64(nbInliers));
  return row;
}

/// The fit of least distances with the standard deviation of each parameter.
Fit fitWithReport(const Arguments& arguments, const std::string& file, std::size_t item, const FitModel& model,
                  const SampleView& samples) {
  InterruptScope scope;
  const RobustOptions robust = robustOptionsOf(arguments);
  FitOptions options;
  if (isRobust(arguments)) options.robust = &robust;
  options.progress = scope.progress(file);
  Fit result;
  geom::FitReport report;
  const BoolResult found = model.report(samples, options, result.entity, report);
  scope.finish();
  require(found);
  std::size_t nbInliers = 0;
  omReal64 sum = 0, greatest = 0;
  for (std::size_t i = 0; i < report.residuals.size(); ++i) {
    if (!report.inliers.empty() && !report.inliers[i]) continue;
    ++nbInliers;
    sum += report.residuals[i] * report.residuals[i];
    greatest = std::max(greatest, std::abs(report.residuals[i]));
  }
  result.row = rowOf(file, item, model, samples.nbSamples, nbInliers);
  for (std::size_t i = 0; i < report.params.size(); ++i) {
    std::string name = report.parameterNames[i];
    std::replace(name.begin(), name.end(), ' ', '_');
    result.row.add(name, report.params[i]).add("u_" + name, report.standardUncertainty(i));
  }
  result.row.add("sigma0", report.sigma0).add("degrees_of_freedom", omUInt64(report.degreesOfFreedom));
  result.row.add("rms", std::sqrt(sum / static_cast<omReal64>(nbInliers))).add("greatest_distance", greatest);
  if (isRobust(arguments)) result.row.add("end", std::string(endOf(report.status ? eRO_Confident : eRO_NotConfident)));
  return result;
}

Fit fit(const Arguments& arguments, const std::string& file, std::size_t item, const PointSet& set) {
  const FitModel& model = modelOf(arguments.operands().front(), set.dimension);
  const SampleView samples{set.values.data(), set.nbRows(), set.dimension};
  if (arguments.has("report") || !model.estimator) return fitWithReport(arguments, file, item, model, samples);
  const auto estimator = model.estimator();
  RobustResult found;
  if (isRobust(arguments)) {
    InterruptScope scope;
    RobustOptions options = robustOptionsOf(arguments);
    options.progress = scope.progress(file);
    const BoolResult result = robustEstimation(*estimator, samples, options, found);
    scope.finish();
    require(result);
  } else {
    require(estimator->computeEstimation(samples, found.params));
    found.inliers.assign(samples.nbSamples, true);
    found.nbInliers = samples.nbSamples;
  }
  RealVector residuals;
  require(estimator->computeResiduals(samples, found.params, residuals));
  Fit result;
  result.row = rowOf(file, item, model, samples.nbSamples, found.nbInliers);
  for (std::size_t i = 0; i < model.paramNames.size(); ++i)
    result.row.add(std::string(model.paramNames[i]), found.params(i));
  addDistances(result.row, model, residuals, found);
  if (isRobust(arguments)) {
    result.row.add("threshold", found.threshold).add("sigma", found.sigma).add("false_alarms", found.nbFalseAlarms);
    result.row.add("end", std::string(endOf(found.end)));
  }
  result.entity = model.entity(found.params);
  return result;
}

int run(const Arguments& arguments) {
  const std::vector<std::string_view>& names = arguments.command().firstOperands;
  if (arguments.operands().empty()) throw UsageError("the model is missing");
  const std::string& name = arguments.operands().front();
  if (std::find(names.begin(), names.end(), name) == names.end()) throw UsageError("there is no model \"" + name + '"');
  const std::vector<std::size_t> columns = columnsOf(arguments);
  const std::string output = arguments.text("output");
  const std::string format = output.empty() ? "" : archiveFormatNameOf(output);
  RowPrinter printer(arguments);
  SerializationObjectPtrColl entities;
  const auto use = [&](const std::string& file) {
    std::size_t item = 0;
    readDocuments(
        arguments, file,
        [&](const Document& document) {
          for (const PointSet& set : pointSetsOf(document)) try {
              ++item;
              const Fit result = fit(arguments, file, item, chosen(set, columns));
              entities.push_back(result.entity);
              if (output != "-") printer.print(result.row);
            } catch (const DataError& error) {
              arguments.complain(file, "set " + std::to_string(item) + ": " + error.what());
            }
        },
        eInputFormat::Points);
  };
  const int status = arguments.forEachInput(arguments.inputs(1), use);
  printer.finish();
  if (!output.empty() && !entities.empty()) writeArchive(output, entities, format);
  return status;
}

}  // namespace

Command fitCommand() {
  std::vector<std::string_view> names;
  for (const FitModel& model : fitModels())
    if (std::find(names.begin(), names.end(), model.name) == names.end()) names.push_back(model.name);
  std::vector<Option> options{
      {"robust", 'r', eOptionKind::Flag, "", "leave outliers out; implied by the next five"},
      {"threshold", 't', eOptionKind::Length, "T",
       "greatest distance of a point that agrees; found from the points when not given, or 0"},
      {"seed", 0, eOptionKind::Seed, "N", "seed of the random draws; 0 when not given"},
      {"method", 0, eOptionKind::Choice, "msac|ransac|lmeds|acontrario",
       "how the best model is chosen; msac when not given; acontrario needs no threshold, however many points are "
       "wrong"},
      {"iterations", 0, eOptionKind::Count, "N", "most draws; 10000 when not given"},
      {"ranked", 0, eOptionKind::Flag, "", "the points come in order of their quality, the best first"},
      {"report", 0, eOptionKind::Flag, "",
       "least distances, and the standard deviation of each parameter, as \"u_radius\"; arcs, cones, cylinders, tori, "
       "and circles and lines of space are always fitted so"},
      {"columns", 0, eOptionKind::Text, "I,J,...", "use these columns of a table, counted from 1"},
      outputOption("write what was fitted to an archive; \"-\" prints it instead of the results"),
      fromOption()};
  options.insert(options.end(), rowOptions().begin(), rowOptions().end());
  return {
      "fit",
      "MODEL [FILE...]",
      "shapes and transforms that fit points or pairs of points best",
      "Models of points \"x y\": arc, circle, ellipse, line; of points \"x y z\": circle, cone, cylinder, ellipsoid, "
      "line, plane, sphere, torus; of pairs \"x1 y1 x2 y2\" or \"x1 y1 z1 x2 y2 z2\", a source and its target: "
      "translation, rigid, similarity, homography.\n\n"
      "A text has a point or a pair on a line, its numbers parted by blanks, commas or semicolons; a blank line parts "
      "two sets, each of which is fitted. Archives, rings and meshes are fitted by their points. \"rms\" and "
      "\"greatest_distance\" are distances from the model of the points that agree. Angles are in radians.",
      names,
      std::move(options),
      {{"ormix fit circle --robust --threshold 0.15 --format csv fits.txt",
        "A circle for each set of points, outliers left out"},
       {"ormix fit circle --report fits.txt", "The circles nearest to the points, and how sure they are"},
       {"ormix fit plane part.stl", "The plane through the vertices of a mesh"},
       {"ormix fit similarity pairs.csv", "How marks on one image were moved to those on another"},
       {"ormix fit ellipse fits.txt -o - | ormix measure -", "What was fitted, measured"}},
      run};
}

}  // namespace ormix::command
