#include "Pictures.h"

#include "Calls.h"

#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Tools/Svg/MeshView.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>

#include <sstream>

namespace ormix::python {
namespace {

constexpr int s_width = 300;  // of a picture in a notebook, in pixels

// Adds what `add` draws and answers the file, empty where it fails or draws nothing.
template <class Add>
py::object drawn(Add add) {
  std::string text;
  {
    const Reading reading;
    geom::SvgWriter writer(s_width);
    std::ostringstream stream;
    if (add(writer) && writer.write(stream)) text = stream.str();
  }
  if (text.empty()) return py::none();
  return py::str(text);
}

// The triangles that are seen from outside, as far as they are drawn.
template <class T>
std::size_t nbSeen(const geom::Mesh3d<T>& mesh) {
  return mesh.getNbTriangles();
}
template <class T>
std::size_t nbSeen(const geom::MeshWithHoles3d<T>& mesh) {
  return mesh.getNbExteriorTriangles();
}

template <class T>
bool drawOne(geom::SvgWriter& writer, const geom::Mesh3d<T>& mesh) {
  return static_cast<bool>(geom::drawMesh(writer, mesh));
}
template <class T>
bool drawOne(geom::SvgWriter& writer, const geom::MeshWithHoles3d<T>& mesh) {
  return drawOne(writer, mesh.getExteriorMesh());
}

template <class Mesh>
py::object meshPicture(const Mesh& mesh) {
  if (nbSeen(mesh) == 0 || nbSeen(mesh) > s_mostTriangles) return py::none();
  return drawn([&](geom::SvgWriter& writer) { return drawOne(writer, mesh); });
}

py::object meshPicture(const geom::Shape3d& shape) {
  const std::size_t nbTriangles = shape.getNbExteriorTriangles();
  if (nbTriangles == 0 || nbTriangles > s_mostTriangles) return py::none();
  return drawn([&](geom::SvgWriter& writer) {
    for (const auto& mesh : shape.getMeshWithHolesColl())
      if (mesh && !drawOne(writer, *mesh)) return false;
    return true;
  });
}

using Drawn =
    geom::JoinedLists<geom::ScalarClassList<geom::Mesh3d, geom::MeshWithHoles3d>, geom::ClassList<geom::Shape3d>>;

}  // namespace

py::object picture(const geom::BaseGeometryEntity2d& entity) {
  return drawn([&](geom::SvgWriter& writer) {
    return static_cast<bool>(writer.draw(entity, {"black", "#d0e0f0", 1, ""}));
  });
}

py::object picture(const geom::BaseGeometryEntity3d& entity) {
  py::object result = py::none();
  geom::forEachClass(Drawn(), [&](auto tag) {
    const auto* const mesh = dynamic_cast<const typename decltype(tag)::Type*>(&entity);
    if (mesh != nullptr) result = meshPicture(*mesh);
  });
  return result;
}

}  // namespace ormix::python
