#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"
#include "../Frame/Dtypes.h"
#include "../Frame/Enumerations.h"
#include "Arguments.h"
#include "Regions.h"

#include <ORMIXGeometry/Entity/2d/Shape/Contours.h>
#include <ORMIXGeometry/Entity/2d/Shape/Rasterize.h>
#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>

#include <pybind11/stl.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <optional>

namespace ormix::python {
namespace {

template <class T>
using Polygon = geom::PolygonWithHoles2d<T>;
using Polygons = std::vector<boost::shared_ptr<Polygon<omReal64>>>;

// omReal64 holds the coordinates of every type, so that nothing of them is lost.
template <class T>
boost::shared_ptr<Polygon<omReal64>> toReal(const boost::shared_ptr<Polygon<T>>& polygon) {
  if constexpr (std::is_same_v<T, omReal64>)
    return polygon;
  else
    return polygon ? boost::make_shared<Polygon<omReal64>>(geom::cast<omReal64>(*polygon)) : nullptr;
}

boost::shared_ptr<Polygon<omReal64>> ofRing(geom::Polygon2d<omReal64> ring) {
  auto polygon = boost::make_shared<Polygon<omReal64>>();
  polygon->getExteriorPolygon() = std::move(ring);
  return polygon;
}

template <class T>
bool addEntity(py::handle value, Polygons& polygons) {
  if (py::isinstance<Polygon<T>>(value))
    polygons.push_back(toReal(value.cast<boost::shared_ptr<Polygon<T>>>()));
  else if (py::isinstance<geom::Polygon2d<T>>(value))
    polygons.push_back(ofRing(geom::cast<omReal64>(value.cast<const geom::Polygon2d<T>&>())));
  else
    return false;
  return true;
}

bool addPolygons(py::handle value, Polygons& polygons) {
  if (addEntity<omReal64>(value, polygons) || addEntity<omReal32>(value, polygons) ||
      addEntity<omInt32>(value, polygons) || addEntity<omUInt32>(value, polygons))
    return true;
  if (!py::isinstance<geom::Shape2d>(value)) return false;
  for (const auto& polygon : value.cast<const geom::Shape2d&>().getPolygonWithHolesColl())
    polygons.push_back(toReal(polygon));
  return true;
}

// The polygons of an entity, of a sequence of entities, or of an array of vertices.
Polygons polygonsOf(const py::object& value) {
  Polygons polygons;
  if (addPolygons(value, polygons)) return polygons;
  if (!py::isinstance<py::array>(value) && py::isinstance<py::sequence>(value)) {
    const py::sequence items = value;
    const std::size_t nbItems = items.size();
    std::size_t i = 0;
    while (i < nbItems && addPolygons(items[i], polygons)) ++i;
    if (i == nbItems) return polygons;
    if (i > 0) throw py::type_error("polygons: item " + std::to_string(i) + " is no polygon");
  }
  geom::Polygon2d<omReal64> ring;
  ring.getPointColl() = pointsOf<geom::Point2dData<omReal64>>(value, "polygons");
  polygons.push_back(ofRing(std::move(ring)));
  return polygons;
}

geom::RowIntersections rasterize(const py::object& value, const std::optional<BoxArgument>& box,
                                 geom::eRasterRule rule) {
  const Polygons polygons = polygonsOf(value);
  if (box) checkNbRows(box->box.getYMax() - box->box.getYMin());
  const Reading reading;
  return box ? geom::rasterize(polygons, box->box, rule) : geom::rasterize(polygons, rule);
}

py::object traceContours(const PixelsArgument& pixels, PixelConnectivity connectivity, const py::object& dtype) {
  return callWithDtype(AllDtypes(), dtype, [&](auto coordinate) -> py::object {
    const auto contours = [&] {
      const Reading reading;
      return geom::traceContours<decltype(coordinate)>(pixels.get(), connectivity);
    }();
    return py::cast(contours);
  });
}

}  // namespace

void bindContours(py::module_& module) {
  bindEnumeration<geom::eRasterRule>(module, "Which pixels belong to a region.");
  module
      .def("trace_contours", &traceContours, "pixels"_a, "connectivity"_a = PixelConnectivity{geom::ePC_8},
           "dtype"_a = "float64",
           "The boundaries of the connected regions of a set of pixels, as polygons with holes, whose holes may "
           "contain\n"
           "islands. They run on the edges of the pixels, with vertices at corners only: their area is the number of\n"
           "the pixels, and `rasterize` is the way back, both exactly.\n\n"
           "`connectivity`: 8 or 4, with which neighbours pixels are one region.\n"
           "`dtype`: of the coordinates; an error where it does not hold one exactly.\n\n"
           ">>> trace_contours([[0, 0, 0], [0, 1, 1]], dtype='int32')[0].exterior.points.tolist()\n"
           "[[1, 1], [3, 1], [3, 2], [1, 2], [1, 1]]")
      .def("rasterize", &rasterize, "polygons"_a, "box"_a = py::none(), "rule"_a = geom::eRR_Center,
           "The pixels of a polygon, with or without holes, of a sequence of them, or of an array of the vertices of "
           "one,\n"
           "shape (n, 2). A point is inside where a ray from it crosses the rings an odd number of times. Exact for "
           "all\n"
           "finite coordinates.\n\n"
           "`box`: only the pixels in these columns and rows, (x_min, y_min, x_max, y_max) or an entity.\n"
           "`rule`: eRR_Center: the center of the pixel is inside; eRR_Touched: a point of the closed region lies in "
           "it;\n"
           "eRR_Covered: it is wholly inside.\n\n"
           "An error where a pixel has a negative column or row, or there are more than 2^26 rows without a box.\n\n"
           ">>> rasterize([[0, 0], [4, 0], [4, 3]]).nb_pixels\n"
           "6");
}

}  // namespace ormix::python
