#include <ORMIXMath/Form/FormDeviation.h>
#include <command/Subcommands.h>
#include <command/frame/Arguments.h>
#include <command/frame/Errors.h>
#include <command/io/PointSets.h>
#include <command/io/Rows.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

namespace ormix::command {

namespace {

using FormFunction = EstimationStatus (*)(const SampleView&, eFormReference, FormDeviation&);

struct Form {
  std::string_view name;
  std::size_t dimension;
  FormFunction function;
  bool isRound;  ///< has inscribed and circumscribed elements
};

constexpr std::array<Form, 6> s_forms{{{"straightness", 2, planarStraightness, false},
                                       {"straightness", 3, spatialStraightness, false},
                                       {"flatness", 3, flatness, false},
                                       {"roundness", 2, roundness, true},
                                       {"sphericity", 3, sphericity, true},
                                       {"cylindricity", 3, cylindricity, true}}};

// In the order of eFormReference.
constexpr std::array<std::string_view, 4> s_references{"least-squares", "zone", "inscribed", "circumscribed"};

/// \throw UsageError for an unknown form, and a reference that it does not have
void checkForm(const std::string& name, eFormReference reference) {
  const auto form = std::find_if(s_forms.begin(), s_forms.end(), [&](const Form& f) { return f.name == name; });
  if (form == s_forms.end()) throw UsageError("there is no form \"" + name + '"');
  if (!form->isRound && reference != eFR_LeastSquares && reference != eFR_MinimumZone)
    throw UsageError(name + " has no reference \"" + std::string(s_references[reference]) + '"');
}

const Form& formOf(const std::string& name, std::size_t dimension) {
  std::string needed;
  for (const Form& form : s_forms) {
    if (form.name != name) continue;
    if (form.dimension == dimension) return form;
    needed += (needed.empty() ? "" : " or ") + std::to_string(form.dimension);
  }
  throw DataError(name + " is measured of lines of " + needed + " numbers, and these have " +
                  std::to_string(dimension));
}

eFormReference referenceOf(const Arguments& arguments) {
  const std::string name = arguments.text("reference", "zone");
  const auto found = std::find(s_references.begin(), s_references.end(), name);
  return static_cast<eFormReference>(found - s_references.begin());
}

std::string listOf(const std::vector<FormContact>& contacts, int side) {
  std::string text;
  for (const FormContact& contact : contacts)
    if (contact.side == side) text += (text.empty() ? "" : " ") + std::to_string(contact.index + 1);
  return text;
}

Row rowOf(const std::string& file, std::size_t item, const std::string& name, const PointSet& set,
          const FormDeviation& form) {
  const bool isPlanar = set.dimension == 2;
  Row row;
  row.add("file", file).add("item", omUInt64(item)).add("form", name).add("points", omUInt64(set.nbRows()));
  row.add("reference", std::string(s_references[form.reference])).add("deviation", form.deviation);
  const auto addPoint = [&](const char* key, const SpatialPoint& p) {
    if (isPlanar)
      row.addPoint(key, {p.x, p.y});
    else
      row.addPoint(key, {p.x, p.y, p.z});
  };
  addPoint("point", form.point);
  if (form.direction.x != 0 || form.direction.y != 0 || form.direction.z != 0) addPoint("direction", form.direction);
  if (form.radius > 0) row.add("radius", form.radius);
  row.add("lowest", form.lowest).add("highest", form.highest);
  if (form.optimum == eFO_None) return row;
  row.add("outer_contacts", listOf(form.contacts, 1)).add("inner_contacts", listOf(form.contacts, -1));
  row.add("imbalance", form.imbalance).add("optimum", form.optimum == eFO_Global ? "global" : "local");
  return row;
}

Row measured(const Arguments& arguments, const std::string& file, std::size_t item, const PointSet& set) {
  const std::string& name = arguments.operands().front();
  const Form& form = formOf(name, set.dimension);
  FormDeviation deviation;
  const SampleView points{set.values.data(), set.nbRows(), set.dimension};
  const EstimationStatus status = form.function(points, referenceOf(arguments), deviation);
  if (!status) {
    std::ostringstream text;
    text << status;
    throw DataError(text.str());
  }
  return rowOf(file, item, name, set, deviation);
}

int run(const Arguments& arguments) {
  if (arguments.operands().empty()) throw UsageError("the form is missing");
  checkForm(arguments.operands().front(), referenceOf(arguments));
  RowPrinter printer(arguments);
  const auto use = [&](const std::string& file) {
    std::size_t item = 0;
    readDocuments(
        arguments, file,
        [&](const Document& document) {
          for (const PointSet& set : pointSetsOf(document)) try {
              printer.print(measured(arguments, file, ++item, set));
            } catch (const DataError& error) {
              arguments.complain(file, "set " + std::to_string(item) + ": " + error.what());
            }
        },
        eInputFormat::Points);
  };
  const int status = arguments.forEachInput(arguments.inputs(1), use);
  printer.finish();
  return status;
}

}  // namespace

Command formCommand() {
  std::vector<std::string_view> names;
  for (const Form& form : s_forms)
    if (std::find(names.begin(), names.end(), form.name) == names.end()) names.push_back(form.name);
  std::vector<Option> options{{"reference", 'r', eOptionKind::Choice, "least-squares|zone|inscribed|circumscribed",
                               "the element that is measured from; zone, of the least deviation, when not given"},
                              fromOption()};
  options.insert(options.end(), rowOptions().begin(), rowOptions().end());
  return {"form",
          "FORM [FILE...]",
          "how far points are from straight, flat, round",
          "Forms of points \"x y\": straightness, roundness; of points \"x y z\": straightness, flatness, sphericity, "
          "cylindricity. A text has a point on a line; a blank line parts two sets.\n\n"
          "\"deviation\" is the width of the zone that holds all points. \"outer_contacts\" and \"inner_contacts\" are "
          "the points, counted from 1, that touch its limits; \"imbalance\" is 0 where they hold it, and \"optimum\" "
          "says whether it is the best of all or near itself.",
          names,
          std::move(options),
          {{"ormix form roundness fits.txt", "The roundness of each set of points"},
           {"ormix form flatness --reference least-squares part.stl",
            "The flatness of the vertices of a mesh, from the plane of least squares"}},
          run};
}

}  // namespace ormix::command
