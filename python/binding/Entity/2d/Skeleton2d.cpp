#include "../../Frame/Family.h"
#include "../../Frame/Indices.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/2d/Skeleton/Skeleton2d.h>
#include <ORMIXGeometry/Entity/2d/Skeleton/SkeletonVertex2d.h>

#include <string>
#include <utility>

namespace ormix::python {
namespace {

using geom::Skeleton2d;
using geom::SkeletonVertex2d;
using Point = geom::Point2dData<omReal64>;

// An array of `columns` columns with a row for each element; without columns it has one dimension.
template <class T, class Elements, class Write>
py::array_t<T> rowsOf(const Elements& elements, py::ssize_t columns, Write write) {
  const auto nbRows = static_cast<py::ssize_t>(elements.size());
  py::array_t<T> rows(columns == 0 ? std::vector<py::ssize_t>{nbRows} : std::vector<py::ssize_t>{nbRows, columns});
  T* to = rows.mutable_data();
  for (const auto& element : elements) write(element, to);
  return rows;
}

py::array_t<omReal64> verticesOf(const Skeleton2d& skeleton) {
  return rowsOf<omReal64>(skeleton.getVertexColl(), 2, [](const SkeletonVertex2d& vertex, omReal64*& to) {
    *to++ = vertex.getPoint().getX();
    *to++ = vertex.getPoint().getY();
  });
}

py::array_t<omReal64> radiiOf(const Skeleton2d& skeleton) {
  return rowsOf<omReal64>(skeleton.getVertexColl(), 0,
                          [](const SkeletonVertex2d& vertex, omReal64*& to) { *to++ = vertex.getRadius(); });
}

py::array_t<omUInt32> edgesOf(const Skeleton2d& skeleton) {
  return rowsOf<omUInt32>(skeleton.getEdgeColl(), 4, [](const AxisEdge& edge, omUInt32*& to) {
    for (const omUInt32 vertex : edge.vertices) *to++ = vertex;
    for (const omUInt32 part : edge.parts) *to++ = part;
  });
}

py::array_t<omReal64> partsOf(const Skeleton2d& skeleton) {
  return rowsOf<omReal64>(skeleton.getPartColl(), 4, [](const AxisPart& part, omReal64*& to) {
    for (const omReal64 coordinate : {part.start.x, part.start.y, part.end.x, part.end.y}) *to++ = coordinate;
  });
}

py::array_t<omUInt32> placesOf(const Skeleton2d& skeleton) {
  return rowsOf<omUInt32>(skeleton.getPartColl(), 3, [](const AxisPart& part, omUInt32*& to) {
    *to++ = part.ringIdx;
    *to++ = part.pointIdx;
    *to++ = part.isVertex ? 1 : 0;
  });
}

void requireLength(py::ssize_t length, py::ssize_t wanted, const char* name) {
  if (length != wanted)
    throw py::value_error(std::string(name) + ": " + std::to_string(length) + " rows, " + std::to_string(wanted) +
                          " were wanted");
}

boost::shared_ptr<Skeleton2d> makeSkeleton(const py::object& vertices, const py::object& radii, const py::object& edges,
                                           const py::object& parts, const py::object& places) {
  const auto points = matrixOf<omReal64>(vertices, 2, "vertices");
  const auto radius = numbersOf<omReal64>(radii, "radii");
  const auto ends = matrixOf<omUInt32>(edges, 4, "edges");
  const auto coordinates = matrixOf<omReal64>(parts, 4, "parts");
  const auto numbers = matrixOf<omUInt32>(places, 3, "part_places");
  requireLength(radius.size(), points.shape(0), "radii");
  requireLength(numbers.shape(0), coordinates.shape(0), "part_places");
  MedialAxis axis;
  for (py::ssize_t i = 0; i < points.shape(0); ++i)
    axis.vertices.push_back({{points.at(i, 0), points.at(i, 1)}, radius.data()[i]});
  for (py::ssize_t i = 0; i < ends.shape(0); ++i)
    axis.edges.push_back({{ends.at(i, 0), ends.at(i, 1)}, {ends.at(i, 2), ends.at(i, 3)}});
  for (py::ssize_t i = 0; i < coordinates.shape(0); ++i)
    axis.parts.push_back({{coordinates.at(i, 0), coordinates.at(i, 1)},
                          {coordinates.at(i, 2), coordinates.at(i, 3)},
                          numbers.at(i, 0),
                          numbers.at(i, 1),
                          numbers.at(i, 2) != 0});
  return boost::make_shared<Skeleton2d>(axis);
}

}  // namespace

void bindSkeletonVertex2d(py::module_& module) {
  const auto setEdges = [](SkeletonVertex2d& vertex, const py::object& values) {
    const auto indices = numbersOf<omUInt32>(values, "edges");
    const Changing changing;
    vertex.setEdgeIndexColl({indices.data(), indices.data() + indices.size()});
  };
  auto entity = bindEntity<SkeletonVertex2d>(module, "SkeletonVertex2d", py::make_tuple("point", "radius", "edges"),
                                             "A vertex of a skeleton.\n\n"
                                             "point: where it is, (x, y).\n"
                                             "radius: its distance to the boundary.\n"
                                             "edges: array of indices of its edges.\n\n"
                                             ">>> SkeletonVertex2d((1, 2), 0.5, [3]).is_end_point\n"
                                             "True");
  entity
      .def(py::init([setEdges](const Point& point, omReal64 radius, const py::object& edges) {
             auto vertex = boost::make_shared<SkeletonVertex2d>(point, radius);
             setEdges(*vertex, edges);
             return vertex;
           }),
           "point"_a, "radius"_a, "edges"_a = py::tuple())
      .def_property(
          "edges", [](const SkeletonVertex2d& self) { return copyOf(self.getEdgeIndexColl()); }, setEdges,
          "The indices of its edges, as an array of its own.")
      .def_property_readonly("nb_edges", &SkeletonVertex2d::getNbEdges, "The number of ends of edges here.")
      .def_property_readonly("is_end_point", &SkeletonVertex2d::isEndPoint, "Whether one edge ends here.")
      .def_property_readonly("is_branch_point", &SkeletonVertex2d::isBranchPoint,
                             "Whether three or more edges meet here.");
  bindField(entity, "point", &SkeletonVertex2d::getPoint, &SkeletonVertex2d::setPoint, "Where it is, (x, y).");
  bindField(entity, "radius", &SkeletonVertex2d::getRadius, &SkeletonVertex2d::setRadius,
            "Its distance to the boundary.");
}

void bindSkeleton2d(py::module_& module) {
  bindEntity<Skeleton2d>(
      module, "Skeleton2d", py::make_tuple("vertices", "radii", "edges", "parts", "part_places"),
      "The skeleton of a region: a graph of the points with two or more nearest places on the boundary. Arrays are\n"
      "copies; `compute_skeleton` makes skeletons.\n\n"
      "vertices, radii: arrays of shapes (n, 2) and (n,): where vertices are, and their distances to the boundary.\n"
      "edges: array of shape (m, 4): first and last vertex, the part of the boundary to the left and to the right.\n"
      "parts: array of shape (k, 4): where each part of the boundary starts and ends.\n"
      "part_places: array of shape (k, 3): its ring, its vertex in the ring, and 1 if it is a vertex.\n\n"
      ">>> Skeleton2d([[0, 0], [1, 0]], [1, 1], [[0, 1, 0, 1]], np.zeros((2, 4)), np.zeros((2, 3))).nb_edges\n"
      "1")
      .def(py::init(&makeSkeleton), "vertices"_a, "radii"_a, "edges"_a, "parts"_a, "part_places"_a)
      .def_property_readonly("vertices", &verticesOf, "The points of the vertices, an array of shape (n, 2).")
      .def_property_readonly("radii", &radiiOf, "The distances of the vertices to the boundary, an array.")
      .def_property_readonly("edges", &edgesOf,
                             "First and last vertex, left and right part of each edge, an array of shape (m, 4).")
      .def_property_readonly("parts", &partsOf, "Start and end of the parts of the boundary, an array of shape (k, 4).")
      .def_property_readonly("part_places", &placesOf,
                             "Ring, vertex, and whether it is a vertex, of each part: an array of shape (k, 3).")
      .def_property_readonly("nb_vertices", &Skeleton2d::getNbVertices, "The number of vertices.")
      .def_property_readonly("nb_edges", &Skeleton2d::getNbEdges, "The number of edges.")
      .def_property_readonly("is_empty", &Skeleton2d::isEmpty, "Whether there are no vertices.")
      .def(
          "vertex",
          [](const Skeleton2d& self, py::ssize_t index) {
            return self.getVertex(positionOf(index, self.getNbVertices(), "vertex"));
          },
          "index"_a, "A copy of a vertex.")
      .def(
          "parabola",
          [](const Skeleton2d& self, py::ssize_t start, py::ssize_t end) {
            return self.getParabola(positionOf(start, self.getNbVertices(), "vertex"),
                                    positionOf(end, self.getNbVertices(), "vertex"));
          },
          "start_vertex"_a, "end_vertex"_a,
          "The parabola of the edge between two vertices. Error where none is an arc of a parabola.")
      .def(
          "nearest_parts",
          [](const Skeleton2d& self, py::ssize_t vertex) {
            return copyOf(self.getNearestParts(positionOf(vertex, self.getNbVertices(), "vertex")));
          },
          "vertex"_a, "The parts of the boundary that are nearest to a vertex, an array of indices.")
      .def("clear", &Skeleton2d::clear, ChangingCall(), "Remove everything.");
}

}  // namespace ormix::python
