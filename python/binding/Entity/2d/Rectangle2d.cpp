#include "../AsType.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/2d/Rectangle/Rectangle2d.h>
#include <ORMIXGeometry/Entity/2d/Square/Square2d.h>

namespace ormix::python {
namespace {

// What rectangles and squares have in common.
template <class Class>
void bindCorners(Class& entity) {
  using Entity = typename Class::type;
  entity
      .def_property_readonly(
          "corners",
          [](const Entity& self) {
            return py::make_tuple(self.topLeftCorner(), self.topRightCorner(), self.bottomRightCorner(),
                                  self.bottomLeftCorner());
          },
          "The corners: top left, top right, bottom right, bottom left, where top is towards negative y, as in images.")
      .def_property_readonly("length", &Entity::getLength, "Twice the half length.");
  bindField(entity, "center", &Entity::center, &Entity::setCenter, "The center, (x, y).");
  bindField(entity, "half_length", &Entity::getHalfLength, &Entity::setHalfLength,
            "Half the size along the orientation.");
  bindField(entity, "orientation", &Entity::getOrientation, &Entity::setOrientation,
            "The angle of the length from the x axis, in radians.");
}

}  // namespace

void bindRectangle2d(py::module_& module) {
  bindFamily<geom::Rectangle2d>(
      module, "Rectangle2d", py::make_tuple("center", "half_length", "half_width", "orientation"),
      "The rectangle that extends half a length to both sides of its center along the orientation, in radians, and\n"
      "half a width across it. Sizes are not checked.\n\n"
      ">>> Rectangle2d((0, 0), half_length=2, half_width=1).corners[0]\n"
      "(-2.0, -1.0)",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Rectangle = geom::Rectangle2d<T>;
        entity
            .def(py::init<const geom::Point2dData<T>&, T, T, omReal64>(), "center"_a, "half_length"_a, "half_width"_a,
                 "orientation"_a = 0.0)
            .def_property_readonly("width", &Rectangle::getWidth, "Twice the half width.")
            .def_property_readonly("area", &Rectangle::getArea, "The area inside.");
        bindCorners(entity);
        bindField(entity, "half_width", &Rectangle::getHalfWidth, &Rectangle::setHalfWidth,
                  "Half the size across the orientation.");
        bindAsType(entity, [](const auto& from, auto to) {
          using TOut = decltype(to);
          return geom::Rectangle2d<TOut>(geom::cast<TOut>(from.center()), castScalar<TOut>(from.getHalfLength()),
                                         castScalar<TOut>(from.getHalfWidth()), from.getOrientation());
        });
      });
}

void bindSquare2d(py::module_& module) {
  bindFamily<geom::Square2d>(module, "Square2d", py::make_tuple("center", "half_length", "orientation"),
                             "The square whose sides are at half a length from its center, turned by the orientation, "
                             "in radians. The size is\n"
                             "not checked.\n\n"
                             ">>> Square2d((0, 0), half_length=2).length\n"
                             "4.0",
                             [](auto& entity, auto coordinate) {
                               using T = decltype(coordinate);
                               entity.def(py::init<const geom::Point2dData<T>&, T, omReal64>(), "center"_a,
                                          "half_length"_a, "orientation"_a = 0.0);
                               bindCorners(entity);
                               bindAsType(entity, [](const auto& from, auto to) {
                                 using TOut = decltype(to);
                                 return geom::Square2d<TOut>(geom::cast<TOut>(from.center()),
                                                             castScalar<TOut>(from.getHalfLength()),
                                                             from.getOrientation());
                               });
                             });
}

}  // namespace ormix::python
