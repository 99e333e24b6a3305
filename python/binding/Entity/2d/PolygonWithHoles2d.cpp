#include "../AsType.h"
#include "../Entities.h"
#include "../HoleTrees.h"

#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>

namespace ormix::python {
namespace {

template <class T>
geom::Polygon2d<T> ringOf(const py::handle& values, geom::ePolygon2dType type, const char* name) {
  if (py::isinstance<geom::Polygon2d<T>>(values)) return *py::cast<boost::shared_ptr<geom::Polygon2d<T>>>(values);
  geom::Polygon2d<T> ring;
  ring.getPointColl() = pointsOf<geom::Point2dData<T>>(values, name);
  ring.setPolygon2dType(type);
  return ring;
}

// A node as it is, or a new one with a ring.
template <class T>
boost::shared_ptr<geom::PolygonWithHoles2d<T>> holeOf(const py::handle& values, geom::ePolygon2dType type) {
  using Node = geom::PolygonWithHoles2d<T>;
  if (py::isinstance<Node>(values)) return py::cast<boost::shared_ptr<Node>>(values);
  auto hole = boost::make_shared<Node>();
  hole->getExteriorPolygon() = ringOf<T>(values, type, "holes");
  return hole;
}

template <class T>
void setExterior(geom::PolygonWithHoles2d<T>& polygon, const py::object& values) {
  auto ring = ringOf<T>(values, polygon.getPolygon2dType(), "exterior");
  const Changing changing;
  requireNoView(polygon.getExteriorPolygon().getPointColl().data(), "points");
  polygon.getExteriorPolygon() = std::move(ring);
}

// The exterior ring itself: it is where its node is, and keeps that alive.
template <class T>
boost::shared_ptr<geom::Polygon2d<T>> exteriorOf(const boost::shared_ptr<geom::PolygonWithHoles2d<T>>& self) {
  return {self, &self->getExteriorPolygon()};
}

template <class T>
void appendHoles(const py::object& self, const py::iterable& holes) {
  const auto node = py::cast<boost::shared_ptr<geom::PolygonWithHoles2d<T>>>(self);
  const bool isHole = node->getPolygon2dType() == geom::eP2DT_Interior;
  for (const py::handle hole : holes)
    addHole<geom::PolygonWithHoles2d<T>>(self, holeOf<T>(hole, isHole ? geom::eP2DT_Exterior : geom::eP2DT_Interior));
}

}  // namespace

void bindPolygonWithHoles2d(py::module_& module) {
  bindFamily<geom::PolygonWithHoles2d>(
      module, "PolygonWithHoles2d", py::make_tuple("exterior", "holes"),
      "The region inside an exterior ring and outside its holes. A hole is a polygon with holes itself: its holes are\n"
      "islands. It is not checked that holes lie inside.\n\n"
      "exterior: Polygon2d of the same dtype, which is copied, or array of shape (n, 2).\n"
      "holes: nodes of the same class, which are shared, or what `exterior` may be; arrays get the other role.\n\n"
      ">>> polygon = PolygonWithHoles2d([[0, 0], [9, 0], [9, 9], [0, 0]], holes=[[[5, 2], [8, 5], [8, 2], [5, 2]]])\n"
      ">>> polygon.holes[0].parent is polygon\n"
      "True",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Node = geom::PolygonWithHoles2d<T>;
        entity.attr("_defaults") = py::dict("holes"_a = py::list());
        entity
            .def(py::init([](const py::object& exterior, const py::iterable& holes) {
                   auto polygon = boost::make_shared<Node>();
                   polygon->getExteriorPolygon() = ringOf<T>(exterior, geom::eP2DT_Exterior, "exterior");
                   appendHoles<T>(py::cast(polygon), holes);
                   return polygon;
                 }),
                 "exterior"_a, "holes"_a = py::tuple())
            .def_property("exterior", &exteriorOf<T>, &setExterior<T>,
                          "The exterior ring itself: what changes it changes this polygon.")
            .def_property(
                "points",
                [](const boost::shared_ptr<Node>& self) {
                  return viewOfPoints(self, self->getExteriorPolygon().getPointColl());
                },
                &setExterior<T>, "The vertices of the exterior ring as an array of shape (n, 2), a view.")
            .def_property_readonly("type", &Node::getPolygon2dType, "The role of the exterior ring.")
            .def_property_readonly("nb_tot_polygons", &Node::getNbTotPolygons, "The number of rings of the whole tree.")
            .def_property_readonly("nb_tot_points", &Node::getNbTotPoints, "The number of vertices of all of them.")
            .def_property_readonly("is_empty", &Node::isEmpty, "Whether the exterior ring has no vertices.");
        bindHoles<Node>(entity);
        bindAsType(entity);
      });
}

}  // namespace ormix::python
