#include "../AsType.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/3d/Cube/Cube3d.h>
#include <ORMIXGeometry/Entity/3d/Cuboid/Cuboid3d.h>

namespace ormix::python {
namespace {

// What cubes and cuboids have in common.
template <class T, class Class>
void bindCorners(Class& entity) {
  using Entity = typename Class::type;
  entity
      .def_property_readonly(
          "corners",
          [](const Entity& self) {
            return py::make_tuple(self.topLeftFrontCorner(), self.topRightFrontCorner(), self.bottomRightFrontCorner(),
                                  self.bottomLeftFrontCorner(), self.topLeftBackCorner(), self.topRightBackCorner(),
                                  self.bottomRightBackCorner(), self.bottomLeftBackCorner());
          },
          "The corners of the front, which was towards +x: top left, top right, bottom right, bottom left; then those\n"
          "of the back.")
      .def_property_readonly("length", &Entity::getLength, "Twice the half length.");
  bindField(entity, "center", &Entity::center, py::overload_cast<const geom::Point3dData<T>&>(&Entity::setCenter),
            "The center before the rotation, (x, y, z).");
  bindField(entity, "half_length", &Entity::getHalfLength, &Entity::setHalfLength, "Half the size along x.");
  bindField(entity, "alpha", &Entity::getAlpha, &Entity::setAlpha, "The first angle of the rotation, about x.");
  bindField(entity, "beta", &Entity::getBeta, &Entity::setBeta, "The angle about y.");
  bindField(entity, "chi", &Entity::getChi, &Entity::setChi, "The last angle, about z.");
}

}  // namespace

void bindCube3d(py::module_& module) {
  bindFamily<geom::Cube3d>(
      module, "Cube3d", py::make_tuple("center", "half_length", "alpha", "beta", "chi"),
      "The cube whose faces are at half a length from its center, turned by Rz(chi) Ry(beta) Rx(alpha), angles in\n"
      "radians, about the origin of coordinates and not about its center. The size is not checked.\n\n"
      ">>> Cube3d((0, 0, 0), half_length=1).corners[0]\n"
      "(1.0, -1.0, -1.0)",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        entity.def(py::init<const geom::Point3dData<T>&, T, omReal64, omReal64, omReal64>(), "center"_a,
                   "half_length"_a, "alpha"_a = 0.0, "beta"_a = 0.0, "chi"_a = 0.0);
        bindCorners<T>(entity);
        bindAsType(entity, [](const auto& from, auto to) {
          using TOut = decltype(to);
          return geom::Cube3d<TOut>(geom::cast<TOut>(from.center()), castScalar<TOut>(from.getHalfLength()),
                                    from.getAlpha(), from.getBeta(), from.getChi());
        });
      });
}

void bindCuboid3d(py::module_& module) {
  bindFamily<geom::Cuboid3d>(
      module, "Cuboid3d", py::make_tuple("center", "half_length", "half_width", "half_height", "alpha", "beta", "chi"),
      "The cuboid with half sizes along x, y and z around its center, turned by Rz(chi) Ry(beta) Rx(alpha), angles in\n"
      "radians, about the origin of coordinates and not about its center. Sizes are not checked.\n\n"
      ">>> Cuboid3d((0, 0, 0), 3, 2, 1).height\n"
      "2.0",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Cuboid = geom::Cuboid3d<T>;
        entity
            .def(py::init<const geom::Point3dData<T>&, T, T, T, omReal64, omReal64, omReal64>(), "center"_a,
                 "half_length"_a, "half_width"_a, "half_height"_a, "alpha"_a = 0.0, "beta"_a = 0.0, "chi"_a = 0.0)
            .def_property_readonly("width", &Cuboid::getWidth, "Twice the half width.")
            .def_property_readonly("height", &Cuboid::getHeight, "Twice the half height.");
        bindCorners<T>(entity);
        bindField(entity, "half_width", &Cuboid::getHalfWidth, &Cuboid::setHalfWidth, "Half the size along y.");
        bindField(entity, "half_height", &Cuboid::getHalfHeight, &Cuboid::setHalfHeight, "Half the size along z.");
        bindAsType(entity, [](const auto& from, auto to) {
          using TOut = decltype(to);
          return geom::Cuboid3d<TOut>(geom::cast<TOut>(from.center()), castScalar<TOut>(from.getHalfLength()),
                                      castScalar<TOut>(from.getHalfWidth()), castScalar<TOut>(from.getHalfHeight()),
                                      from.getAlpha(), from.getBeta(), from.getChi());
        });
      });
}

}  // namespace ormix::python
