#include "../Frame/Enumerations.h"
#include "../Frame/Family.h"
#include "Measures.h"

#include <ORMIXGeometry/Measure/2d/HuMoments2dO3.h>
#include <ORMIXGeometry/Measure/2d/MatchShapes.h>
#include <ORMIXGeometry/Measure/2d/Moments2dO3.h>

#include <pybind11/operators.h>
#include <sstream>

namespace ormix::python {
namespace {

using geom::HuMoments2dO3;
using geom::Moments2dO3;

void bindMoments2dO3(py::module_& module) {
  using Base = BaseSerializationObject;
  py::class_<Moments2dO3, Base, boost::shared_ptr<Moments2dO3>> moments(
      module, "Moments2dO3",
      "Moments up to the order 3 of a region of the plane, or of points of mass 1. Two sets together have the sum.\n\n"
      ">>> square = og.moments(og.Polygon2d([[0, 0], [2, 0], [2, 2], [0, 2]]))\n"
      ">>> square.mass, square.centroid, square.central_moment(2, 1)\n"
      "(4.0, (1.0, 1.0), 0.0)");
  moments.def(py::init<>())
      .def_property_readonly(
          "mass", [](const Moments2dO3& self) { return self.getMoment(0, 0); },
          "The area, negative for a ring in the direction that is not its own, or the number of points.")
      .def_property_readonly(
          "centroid", [](const Moments2dO3& self) { return self.getCentroid().getCoords(); },
          "(x, y). Error when the mass is 0.")
      .def("moment", &Moments2dO3::getMoment, "p"_a, "q"_a, "The integral of x^p y^q. Error when p + q > 3.")
      .def("central_moment", &Moments2dO3::getCentralMoment, "p"_a, "q"_a,
           "The integral of (x - xc)^p (y - yc)^q. Error when p + q > 3 or the mass is 0.")
      .def("normalized_moment", &Moments2dO3::getNormalizedMoment, "p"_a, "q"_a,
           "The central moment of the region scaled to the mass 1. Error when p + q > 3 or the mass is 0.")
      .def(
          "equivalent_ellipse",
          [](const Moments2dO3& self) -> geom::GeometryEntity2dPtr {
            return boost::make_shared<geom::Ellipse2d<omReal64>>(equivalentEllipse(self));
          },
          "The ellipse with the same centroid and second moments. Error when there is none.")
      .def_property_readonly(
          "principal_orientation", [](const Moments2dO3& self) { return principalOrientation(self); },
          "The direction of the larger axis of the equivalent ellipse, in (-pi/2, pi/2], radians.")
      .def_property_readonly(
          "eccentricity", [](const Moments2dO3& self) { return eccentricity(self); },
          "That of the equivalent ellipse, in [0, 1].")
      .def("__repr__",
           [](const Moments2dO3& self) {
             std::ostringstream text;
             text << "<Moments2dO3 " << self << '>';
             return text.str();
           })
      .def(py::self + py::self)
      .def(py::self - py::self)
      .def(
          "is_close",
          [](const Moments2dO3& self, const Moments2dO3& other, omReal64 tolerance) {
            return compare(self, other, tolerance);
          },
          "other"_a, "tolerance"_a,
          "Whether the centroids are at most `tolerance` apart and masses and normalized moments differ by at most\n"
          "`tolerance`, relative to the mass.");
}

void bindHuMoments2dO3(py::module_& module) {
  using Base = BaseSerializationObject;
  py::class_<HuMoments2dO3, Base, boost::shared_ptr<HuMoments2dO3>> moments(
      module, "HuMoments2dO3",
      "Hu's seven invariants of a region: the same when it is translated, rotated or scaled. `numpy.asarray` takes "
      "it.\n\n"
      ">>> HuMoments2dO3(og.moments(og.Circle2d((5, 7), 2))).values.round(4)[:2].tolist()\n"
      "[0.1592, 0.0]");
  const auto values = [](const HuMoments2dO3& self) {
    return py::array_t<omReal64>(HuMoments2dO3::s_nbValues, self.getValues().data());
  };
  moments.attr("__match_args__") = py::make_tuple("values");
  moments.def(py::init<>())
      .def(py::init<const Moments2dO3&>(), "moments"_a,
           "Those of a region with these moments. Error when the mass is 0.")
      .def(py::init([](const py::object& given) {
             const auto numbers = numbersOf<omReal64>(given, "values");
             std::array<omReal64, HuMoments2dO3::s_nbValues> read{};
             if (numbers.ndim() != 1 || numbers.size() != static_cast<py::ssize_t>(read.size()))
               throw py::value_error("values: 7 numbers were wanted, not an array of shape " +
                                     py::cast<std::string>(py::repr(numbers.attr("shape"))));
             std::copy_n(numbers.data(), read.size(), read.begin());
             return boost::make_shared<HuMoments2dO3>(read);
           }),
           "values"_a, "The seven values, in the order of Hu.")
      .def_property_readonly("values", values, "The seven values, in the order of Hu.")
      .def(
          "__array__",
          [values](const HuMoments2dO3& self, const py::object& dtype) -> py::object {
            return dtype.is_none() ? py::object(values(self)) : values(self).attr("astype")(dtype);
          },
          "dtype"_a = py::none())
      .def("__getitem__",
           [](const HuMoments2dO3& self, py::ssize_t index) {
             constexpr py::ssize_t size = HuMoments2dO3::s_nbValues;
             if (index < -size || index >= size) throw py::index_error("HuMoments2dO3: there are 7 values");
             return self.getValues()[static_cast<std::size_t>(index < 0 ? index + size : index)];
           })
      .def("__len__", [](const HuMoments2dO3&) { return HuMoments2dO3::s_nbValues; })
      .def(
          "is_close",
          [](const HuMoments2dO3& self, const HuMoments2dO3& other, omReal64 tolerance) {
            return compare(self, other, tolerance);
          },
          "other"_a, "tolerance"_a, "Whether each value differs by at most `tolerance`.");
}

}  // namespace

void bindMoments(py::module_& module) {
  bindMoments2dO3(module);
  bindHuMoments2dO3(module);
  bindEnumeration<geom::eShapeMatching>(module, "How the Hu moments of two shapes are compared.");
  const char* const doc =
      "How much two shapes differ, from their Hu moments: 0 when they are the same up to translation, rotation and "
      "scale.\n\n"
      "Takes two entities of the plane, or the HuMoments2dO3 of both. eSM_I3 depends on the order.\n\n"
      ">>> og.match_shapes(og.Circle2d((0, 0), 1), og.Circle2d((9, 9), 5))\n"
      "0.0";
  module.def("match_shapes",
             py::overload_cast<const HuMoments2dO3&, const HuMoments2dO3&, geom::eShapeMatching>(&geom::matchShapes),
             "a"_a, "b"_a, enumerator("method", geom::eSM_I1), doc);
  module.def(
      "match_shapes",
      py::overload_cast<const geom::BaseGeometryEntity2d&, const geom::BaseGeometryEntity2d&, geom::eShapeMatching>(
          &geom::matchShapes),
      "a"_a, "b"_a, enumerator("method", geom::eSM_I1), LongCall());
}

}  // namespace ormix::python
