#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"
#include "../Frame/Enumerations.h"
#include "Tools.h"

#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Tools/Location/NearestPoint.h>
#include <ORMIXGeometry/Tools/Location/PointLocation.h>

namespace ormix::python {
namespace {

using Point = geom::Point2dData<omReal64>;

// Whether these are coordinates of one point rather than of an array of points.
bool isPoint(const py::array& numbers) { return numbers.ndim() == 1 && numbers.shape(0) == 2; }

// Calls `find(point)` for a point or each of an array of points, with the interpreter lock released. `Number` is what
// it answers `width` of.
template <class Number, py::ssize_t width, class Find>
py::object forPoints(const py::object& values, Find find) {
  const auto numbers = numbersOf<omReal64>(values, "points");
  const bool isOne = isPoint(numbers);
  const auto points = isOne ? numbers : matrixOf<omReal64>(values, 2, "points");
  const auto count = static_cast<std::size_t>(points.size() / 2);
  std::vector<Number> found(count * static_cast<std::size_t>(width));
  {
    const omReal64* const xy = points.data();
    const Reading reading;
    for (std::size_t i = 0; i < count; ++i)
      find(Point(xy[2 * i], xy[2 * i + 1]), found.data() + i * static_cast<std::size_t>(width));
  }
  std::vector<py::ssize_t> shape{static_cast<py::ssize_t>(count), width};
  if (isOne) shape.erase(shape.begin());
  if (width == 1) shape.pop_back();
  return py::array_t<Number>(shape, found.data());
}

constexpr const char* s_locateDoc =
    "Where a point is to the region of a polygon, a polygon with holes or a shape, decided exactly.\n\n"
    "An ePointLocation; of an array of points, (n, 2), an array of int8 with its values: 0 outside, 1 on the "
    "boundary,\n"
    "2 inside. Many points are asked through an index.\n\n"
    ">>> locate(Polygon2d([[0, 0], [4, 0], [4, 3]]), [(3, 1), (4, 1), (5, 1)]).tolist()\n"
    "[2, 1, 0]";

template <class Region>
py::object locate(const Region& region, const py::object& values) {
  const auto numbers = numbersOf<omReal64>(values, "points");
  if (isPoint(numbers)) {
    const Point point(numbers.data()[0], numbers.data()[1]);
    const geom::ePointLocation location = [&] {
      const Reading reading;
      return geom::locate(region, point);
    }();
    return py::cast(location);
  }
  const geom::PreparedPolygon2d prepared = [&] {
    const Reading reading;
    return geom::PreparedPolygon2d(region);
  }();
  return forPoints<signed char, 1>(values, [&](const Point& point, signed char* found) {
    *found = static_cast<signed char>(prepared.locate(point));
  });
}

template <class Region>
void bindLocate(py::module_& module) {
  module.def("locate", &locate<Region>, "region"_a, "points"_a, s_locateDoc);
}

void bindPrepared(py::module_& module) {
  using Boundary = geom::PreparedBoundary2d;
  using Entity = geom::BaseGeometryEntity2d;
  const auto store = [](const geom::Point2d<omReal64>& nearest, omReal64* found) {
    found[0] = nearest.getX();
    found[1] = nearest.getY();
  };
  module.def(
      "nearest_point",
      [store](const Entity& entity, const py::object& values) {
        return forPoints<omReal64, 2>(
            values, [&](const Point& point, omReal64* found) { store(geom::nearestPoint(entity, point), found); });
      },
      "entity"_a, "points"_a,
      "The point of a bounded planar entity that is nearest to a point, an array of shape (2,), or to each of an "
      "array\n"
      "of points, (n, 2). A point inside is its own nearest point.\n\n"
      ">>> nearest_point(Circle2d((0, 0), 1), (5, 0)).tolist()\n"
      "[1.0, 0.0]");
  module.def(
      "nearest_boundary_point",
      [store](const Entity& entity, const py::object& values) {
        return forPoints<omReal64, 2>(values, [&](const Point& point, omReal64* found) {
          store(geom::nearestBoundaryPoint(entity, point), found);
        });
      },
      "entity"_a, "points"_a, "The same on the boundary, also for points inside.");
  py::class_<Boundary> boundary(module, "PreparedBoundary2d",
                                "The boundary of a polygon or shape, sorted so that it can be asked for its nearest\n"
                                "point to many points.");
  const auto init = [&boundary](auto tag) {
    using Region = typename decltype(tag)::Type;
    boundary.def(py::init<const Region&>(), "region"_a, LongCall());
  };
  geom::forEachClass(geom::JoinedLists<geom::ScalarClassList<geom::Polygon2d, geom::PolygonWithHoles2d>,
                                       geom::ClassList<geom::Shape2d>>(),
                     init);
  boundary.def(
      "nearest_point",
      [store](const Boundary& self, const py::object& values) {
        return forPoints<omReal64, 2>(
            values, [&](const Point& point, omReal64* found) { store(self.nearestPoint(point), found); });
      },
      "points"_a, "The nearest point of the boundary to a point, or to each of an array of points.");
}

}  // namespace

void bindLocation(py::module_& module) {
  bindEnumeration<geom::ePointLocation>(module, "Where a point is to a region.");
  geom::forEachClass(geom::JoinedLists<geom::ScalarClassList<geom::Polygon2d, geom::PolygonWithHoles2d>,
                                       geom::ClassList<geom::Shape2d>>(),
                     [&module](auto tag) { bindLocate<typename decltype(tag)::Type>(module); });
  bindPrepared(module);
}

}  // namespace ormix::python
