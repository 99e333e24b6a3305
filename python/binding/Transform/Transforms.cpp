#include "Transforms.h"

#include "../Entity/Meshes.h"
#include "../Frame/Views.h"
#include "ApplyTransform.h"

#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>
#include <ORMIXGeometry/Transform/2d/BaseGeometryTransform2d.h>
#include <ORMIXGeometry/Transform/3d/BaseGeometryTransform3d.h>

namespace ormix::python {
namespace {

using python::requireNoViewsOf;  // of meshes

template <class T>
void requireNoViewsOf(geom::Polygon2d<T>& polygon) {
  requireNoView(polygon.getPointColl().data(), "points");
}
template <class T>
void requireNoViewsOf(geom::PolygonWithHoles2d<T>& polygon) {
  geom::visitNodes(polygon, [](geom::PolygonWithHoles2d<T>& node) {
    requireNoViewsOf(node.getExteriorPolygon());
    return true;
  });
}
void requireNoViewsOf(geom::Shape2d& shape) {
  for (const auto& polygon : shape.getPolygonWithHolesColl())
    if (polygon) requireNoViewsOf(*polygon);
}

template <class List, class Entity>
void requireNoViewsAmong(Entity& entity) {
  geom::forEachClass(List(), [&](auto tag) {
    if (auto* const typed = dynamic_cast<typename decltype(tag)::Type*>(&entity)) requireNoViewsOf(*typed);
  });
}

// Linear transforms change coordinates where they are; the others give an entity new ones.
bool isLinear(const geom::BaseGeometryTransform2d& transform) {
  return transform.getTransform2dType() <= geom::eT2DT_HomographyTransform;
}
bool isLinear(const geom::BaseGeometryTransform3d& transform) {
  return transform.getTransform3dType() <= geom::eT3DT_HomographyTransform;
}

template <class Space>
void bindBase(py::module_& module, const char* name, const char* doc) {
  using Base = typename Space::Transform;
  ClassOf<Base, geom::BaseGeometryTransform>(module, name, doc)
      .def(
          "__matmul__",
          [](const Base& self, const py::object& operand) -> py::object {
            if (py::isinstance<geom::BaseGeometryTransform>(operand))
              return py::reinterpret_borrow<py::object>(Py_NotImplemented);
            return apply<Space>(self, operand);
          },
          "operand"_a, py::is_operator(),
          "The image of an entity as a new one, or a list of those of a sequence. A linear transform also maps an "
          "array\nof points, and is composed with another one. Error for what has no image.")
      .def(
          "apply_in_place",
          [](const Base& self, typename Space::Entity& entity) {
            const Changing changing;
            if (!isLinear(self)) requireNoViews(entity);
            const BoolResult result = self.applyInSitu(entity);
            check(result, entity.getClassName());
          },
          "entity"_a,
          "Change an entity to its image, with all its arrays. Error, with the entity as it was, for what has none of "
          "its\nclass.");
}

}  // namespace

void requireNoViews(geom::BaseGeometryEntity2d& entity) {
  using namespace geom;
  requireNoViewsAmong<JoinedLists<ScalarClassList<Polygon2d, PolygonWithHoles2d>, ClassList<Shape2d>>>(entity);
}
void requireNoViews(geom::BaseGeometryEntity3d& entity) {
  requireNoViewsAmong<geom::ScalarClassList<geom::Mesh3d>>(entity);
}

void bindTransforms(py::module_& module) {
  using namespace geom;
  ClassOf<BaseGeometryTransform, BaseSerializationObject>(
      module, "Transform", "A transform of entities. `transform @ entity` is the image.");
  bindBase<PlanarTransforms>(module, "Transform2d", "A transform of planar entities.");
  bindBase<SpatialTransforms>(module, "Transform3d", "A transform of spatial entities.");
  bindLinearTransforms2d(module);
  bindLinearTransforms3d(module);
  bindDerivedTransforms(module);
  bindSimplification(module);
  bindConvert(module);
  bindAffinePoints(module);
}

}  // namespace ormix::python
