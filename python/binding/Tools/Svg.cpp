#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"
#include "../Frame/Errors.h"
#include "Tools.h"

#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Tools/Skeleton/DrawSkeleton.h>
#include <ORMIXGeometry/Tools/Svg/MeshView.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>
#include <sstream>

namespace ormix::python {
namespace {

using geom::SvgWriter;

std::string pictureOf(const SvgWriter& writer) {
  std::ostringstream stream;
  check(writer.write(stream), "SvgWriter");
  return stream.str();
}

void drawOne(SvgWriter& writer, const geom::BaseGeometryEntity2d& entity, const geom::SvgStyle& style) {
  check(writer.draw(entity, style), "SvgWriter", "entity");
}

void bindDraw(py::class_<SvgWriter>& writer) {
  const auto draw = [](SvgWriter& self, const py::object& drawn, const std::string& stroke, const std::string& fill,
                       omReal64 width, const std::string& label) {
    const geom::SvgStyle style{stroke, fill, width, label};
    if (py::isinstance<geom::RowIntersections>(drawn))
      check(self.draw(py::cast<const geom::RowIntersections&>(drawn), style), "SvgWriter", "entity");
    else if (py::isinstance<geom::BaseGeometryEntity2d>(drawn))
      drawOne(self, py::cast<const geom::BaseGeometryEntity2d&>(drawn), style);
    else if (py::isinstance<py::list>(drawn) || py::isinstance<py::tuple>(drawn))
      for (const auto& entity : py::cast<std::vector<geom::GeometryEntity2dPtr>>(drawn)) {
        if (entity == nullptr) throw py::type_error("entity: None cannot be drawn");
        drawOne(self, *entity, style);
      }
    else
      throw py::type_error("entity: a planar entity, a list of them, or pixels were wanted");
  };
  writer.def("draw", draw, "entity"_a, "stroke"_a = "black", "fill"_a = "none", "width"_a = 1.0, "label"_a = "",
             "Add a planar entity, a list of them, or pixels. Colours are those of SVG; the width is in pixels of the\n"
             "picture.");
  writer.def(
      "draw_image",
      [](SvgWriter& self, const py::bytes& file, const geom::Point2dData<omReal64>& low,
         const geom::Point2dData<omReal64>& high) {
        check(self.drawImage(std::string_view(file), {low, high}), "SvgWriter", "file");
      },
      "file"_a, "low"_a, "high"_a, "Add a PNG or JPEG image, the bytes of its file, in the box of these corners.");
  writer.def(
      "draw_skeleton",
      [](SvgWriter& self, const geom::Skeleton2d& skeleton, omReal64 width, omReal64 circleStep, std::size_t nbColors) {
        check(geom::drawSkeleton(self, skeleton, {width, circleStep, nbColors}), "SvgWriter", "skeleton");
      },
      "skeleton"_a, "width"_a = 1.0, "circle_step"_a = 0.0, "nb_colors"_a = 12,
      "Add a skeleton with colours that show the width of the region, and circles at distances of `circle_step`.");
}

template <class T>
void bindDrawMesh(py::class_<SvgWriter>& writer) {
  writer.def(
      "draw_mesh",
      [](SvgWriter& self, const geom::Mesh3d<T>& mesh, const geom::Point3dData<omReal64>& towardsViewer,
         const py::object& values, const std::optional<std::pair<omReal64, omReal64>>& scale) {
        geom::MeshViewOptions options;
        options.towardsViewer = towardsViewer;
        if (!values.is_none()) {
          const auto numbers = numbersOf<omReal64>(values, "values");
          if (numbers.ndim() != 1) throw py::value_error("values: one number a vertex was wanted");
          options.values.assign(numbers.data(), numbers.data() + numbers.size());
          options.scale =
              scale ? geom::ColourScale(scale->first, scale->second) : geom::ColourScale::over(options.values);
        }
        check(geom::drawMesh(self, mesh, options), "SvgWriter", "mesh");
      },
      "mesh"_a, "towards_viewer"_a = geom::MeshViewOptions().towardsViewer, py::kw_only(), "values"_a = py::none(),
      "scale"_a = py::none(),
      "Add a mesh in orthographic projection, seen from a direction.\n\n"
      "`values`, one a vertex, are shown as colours over `scale`, a pair of the lowest and the highest, or over all "
      "of\n"
      "them: from blue over grey at 0 to red where they are of both signs, else from violet to yellow. Error for\n"
      "another number of values.\n\n"
      ">>> mesh = quick_hull([[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1]])\n"
      ">>> SvgWriter().draw_mesh(mesh, values=mesh.vertices[:, 2], scale=(0, 2))");
}

}  // namespace

void bindSvg(py::module_& module) {
  py::class_<SvgWriter> writer(module, "SvgWriter",
                               "Draws planar entities as an SVG picture, in the order given. Notebooks show it.\n\n"
                               ">>> writer = SvgWriter(size=200)\n"
                               ">>> writer.draw(Circle2d((0, 0), 1), stroke='navy', fill='#d0e0f0')\n"
                               ">>> writer.to_svg().startswith('<?xml')\n"
                               "True");
  writer
      .def(py::init([](omReal64 size, bool yDown) {
             SvgWriter made(size);
             if (yDown) made.setYAxis(geom::eSYA_Down);
             return made;
           }),
           "size"_a = 800.0, "y_down"_a = false,
           "`size` is the larger of width and height in pixels; `y_down` turns the y axis as rows of an image run.")
      .def(
          "set_view",
          [](SvgWriter& self, const geom::Point2dData<omReal64>& low, const geom::Point2dData<omReal64>& high) {
            check(self.setView({low, high}), "SvgWriter", "view");
          },
          "low"_a, "high"_a, "Show the box of these corners instead of everything drawn.")
      .def("to_svg", &pictureOf, "The picture as text.")
      .def("_repr_svg_", &pictureOf)
      .def(
          "write",
          [](const SvgWriter& self, const std::filesystem::path& path) {
            check(self.write(path.string()), "SvgWriter", "path");
          },
          "path"_a, "Write the picture to a file, which is replaced when the picture is complete.");
  bindDraw(writer);
  bindDrawMesh<omReal64>(writer);
  bindDrawMesh<omReal32>(writer);
  bindDrawMesh<omInt32>(writer);
  bindDrawMesh<omUInt32>(writer);
}

}  // namespace ormix::python
