#include "../Frame/Calls.h"
#include "../Frame/Errors.h"
#include "Tools.h"

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXGeometry/Tools/Html/HtmlReport.h>
#include <ORMIXGeometry/Tools/Html/ToHtml.h>

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

namespace ormix::python {
namespace {

using geom::HtmlReport;

// One level of lists within lists, which Python bounds.
class ListLevel {
 public:
  ListLevel() {
    if (Py_EnterRecursiveCall(" of a list within itself") != 0) throw py::error_already_set();
  }
  ~ListLevel() { Py_LeaveRecursiveCall(); }
  ListLevel(const ListLevel&) = delete;
  ListLevel& operator=(const ListLevel&) = delete;
};

// Adds an entity, or each of a list or tuple of them.
void add(geom::HtmlView& view, const py::handle& shown) {
  if (py::isinstance<geom::BaseGeometryEntity2d>(shown)) {
    view.add(py::cast<const geom::BaseGeometryEntity2d&>(shown));
  } else if (py::isinstance<geom::BaseGeometryEntity3d>(shown)) {
    view.add(py::cast<const geom::BaseGeometryEntity3d&>(shown));
  } else if (py::isinstance<py::list>(shown) || py::isinstance<py::tuple>(shown)) {
    const ListLevel level;
    for (const py::handle item : py::reinterpret_borrow<py::sequence>(shown)) add(view, item);
  } else {
    throw py::type_error("entities of the plane or of space, or lists of them, can be shown, not " +
                         py::cast<std::string>(py::repr(py::type::handle_of(shown))));
  }
}

geom::HtmlOptions optionsOf(const std::string& title, const std::string& language) {
  geom::HtmlOptions options;
  options.title = title;
  options.language = language;
  return options;
}

std::string toHtml(const py::args& entities, const std::string& title, const std::string& language) {
  geom::HtmlView view;
  for (const py::handle shown : entities) add(view, shown);
  const Reading reading;
  HtmlReport report(optionsOf(title, language));
  view.appendTo(report);
  return report.toHtml();
}

// Columns of a dictionary as a table, each number with all its digits.
geom::HtmlTable tableOf(const py::dict& columns, const std::string& caption) {
  geom::HtmlTable table;
  table.caption = caption;
  for (const auto& [name, values] : columns) {
    std::size_t row = 0;
    for (const py::handle value : values) {
      if (row == table.rows.size()) table.rows.emplace_back();
      table.rows[row].resize(table.columns.size());
      table.rows[row++].push_back(py::cast<std::string>(py::str(value)));
    }
    table.columns.push_back(py::cast<std::string>(py::str(name)));
  }
  return table;
}

}  // namespace

void bindHtml(py::module_& module) {
  module.def("to_html", &toHtml, py::kw_only(), "title"_a = "Entities", "language"_a = "en",
             "A page that shows entities and lists of them: a picture of what is in the plane, a scene of what is in\n"
             "space, which is turned by mouse, touch or keyboard, and a table of their measures. It is one text that\n"
             "needs no network.\n\n"
             ">>> page = to_html(Circle2d((0, 0), 1), title='A circle')\n"
             ">>> '<title>A circle</title>' in page\n"
             "True");
  py::class_<HtmlReport>(module, "HtmlReport",
                         "A page of headings, texts, tables, pictures and scenes in one file that needs no network.")
      .def(py::init([](const std::string& title, const std::string& language) {
             return HtmlReport(optionsOf(title, language));
           }),
           "title"_a = "Report", "language"_a = "en")
      .def("add_heading", &HtmlReport::addHeading, "text"_a, "level"_a = 2, "Add a heading, level 2 to 6.")
      .def("add_text", &HtmlReport::addText, "text"_a, "Add paragraphs, which empty lines part.")
      .def(
          "add_table",
          [](HtmlReport& self, const py::dict& columns, const std::string& caption) {
            check(self.addTable(tableOf(columns, caption)), "HtmlReport", "columns");
          },
          "columns"_a, "caption"_a = "", "Add a table that can be sorted, of a dictionary of columns.")
      .def(
          "add_picture",
          [](HtmlReport& self, const geom::SvgWriter& picture, const std::string& caption) {
            check(self.addPicture(picture, caption), "HtmlReport", "picture");
          },
          "picture"_a, "caption"_a, "Add a picture of an SvgWriter.")
      .def(
          "add_entities",
          [](HtmlReport& self, const py::args& entities) {
            geom::HtmlView view;
            for (const py::handle shown : entities) add(view, shown);
            view.appendTo(self);
          },
          "Add what `to_html` shows of entities.")
      .def(
          "add_file",
          [](HtmlReport& self, const std::filesystem::path& path, const std::string& caption) {
            check(self.addFile(path.string(), caption), "HtmlReport", "path");
          },
          "path"_a, "caption"_a = "", "Add a file: CSV, SVG, PNG, JPEG, STL, OBJ, PLY or OFF.")
      .def("to_html", &HtmlReport::toHtml, "The page as text.")
      .def(
          "write",
          [](const HtmlReport& self, const std::filesystem::path& path) {
            check(self.write(path.string()), "HtmlReport", "path");
          },
          "path"_a, "Write the page to a file, which is replaced when the page is complete.");
}

}  // namespace ormix::python
