#include "../Frame/Calls.h"
#include "../Frame/Result.h"
#include "RTreeQueries.h"
#include "Tools.h"

#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Tools/RTree/CreateRTree.h>
#include <ORMIXGeometry/Tools/RTree/TreeDistance.h>

#include <pybind11/stl.h>
#include <boost/smart_ptr/make_shared_object.hpp>

namespace ormix::python {
namespace {

template <class Tree>
using TreeClass = py::class_<Tree, BaseSerializationObject, boost::shared_ptr<Tree>>;

// The items of an array of shape (n, D) for points, else (n, 2, D) or (n, 3, D); their coordinates in one row do as
// well.
template <class Item>
std::vector<Item> itemsOf(const py::object& values) {
  using Access = geom::RTreeItem<Item>;
  using Points = typename Access::Points;
  using T = typename Access::Coordinate;
  constexpr py::ssize_t nbPoints = std::tuple_size_v<Points>, dimension = Access::s_dimension;
  const auto numbers = numbersOf<T>(values, "items");
  const bool isRows = numbers.ndim() == 2 && numbers.shape(1) == nbPoints * dimension;
  const bool isPoints = numbers.ndim() == 3 && numbers.shape(1) == nbPoints && numbers.shape(2) == dimension;
  if (numbers.size() != 0 && !isRows && !isPoints)
    throw py::value_error(
        "items: an array of shape (n, " + (nbPoints == 1 ? std::string() : std::to_string(nbPoints) + ", ") +
        std::to_string(dimension) + ") was wanted, not " + py::cast<std::string>(py::repr(numbers.attr("shape"))));
  const auto* points = reinterpret_cast<const Points*>(numbers.data());
  std::vector<Item> items;
  items.reserve(static_cast<std::size_t>(numbers.size() / (nbPoints * dimension)));
  for (py::ssize_t i = 0; i < numbers.size() / (nbPoints * dimension); ++i)
    items.push_back(Access::fromPoints(points[i]));
  return items;
}

template <class Item>
Item itemOf(const py::object& values) {
  py::list one;
  one.append(values);
  return itemsOf<Item>(one).at(0);
}

// The points of an item as an array of shape (D,), (2, D) or (3, D).
template <class Item>
py::array arrayOf(const Item& item) {
  using Access = geom::RTreeItem<Item>;
  using T = typename Access::Coordinate;
  const auto points = Access::toPoints(item);
  std::vector<py::ssize_t> shape{static_cast<py::ssize_t>(points.size()),
                                 static_cast<py::ssize_t>(Access::s_dimension)};
  if (points.size() == 1) shape.erase(shape.begin());
  return py::array_t<T>(shape, reinterpret_cast<const T*>(points.data()));
}

template <class Item>
void bindChanges(TreeClass<geom::RTree<Item>>& tree) {
  using Tree = geom::RTree<Item>;
  tree.def(
          "insert",
          [](Tree& self, const py::object& item) {
            const Item added = itemOf<Item>(item);
            const Changing changing;
            return self.insert(added);
          },
          "item"_a, "Add an item, an array or sequence of its points, and return its index.")
      .def("remove", py::overload_cast<std::size_t>(&Tree::remove), "index"_a, ChangingCall(),
           "Remove the item of an index; False if it has been removed already.\n\n"
           "An index that was never given out is an Error.")
      .def("__len__", &Tree::size)
      .def("__contains__", &Tree::contains, "index"_a)
      .def_property_readonly("nb_indices", &Tree::getNbIndices, "How many indices were given out.")
      .def_property_readonly(
          "envelope", [](const Tree& self) { return arrayOf(self.envelope()); },
          "The smallest box around all items, an array of two corners.")
      .def(
          "item", [](const Tree& self, std::size_t index) { return arrayOf(self.getItem(index)); }, "index"_a,
          "The points of the item of an index, as an array.");
}

template <class Item>
void bindDistances(py::module_& module, TreeClass<geom::RTree<Item>>& tree, const std::string& name) {
  using Tree = geom::RTree<Item>;
  using Nearest = geom::detail::NearestItemsOf<Item>;
  constexpr omReal64 infinity = std::numeric_limits<omReal64>::infinity();
  if (!py::hasattr(module, name.c_str()))
    Result<Nearest>(module, name.c_str(), "The nearest items of two indexes, and the points of both where they are.")
        .value("distance", &Nearest::distance, "At least 0; infinite where there is none below the bound.")
        .value("index_a", &Nearest::indexA, "Index of the item of the first tree.")
        .value("index_b", &Nearest::indexB, "Index of the item of the second tree.")
        .value("on_a", &Nearest::onA, "The nearest point of the first item.")
        .value("on_b", &Nearest::onB, "The nearest point of the second item.");
  tree.def(
          "nearest_pair",
          [](const Tree& self, const Tree& other, omReal64 bound) { return geom::nearestPair(self, other, bound); },
          "other"_a, "bound"_a = infinity, LongCall(),
          "The nearest items of this index and another one, of those nearer than the bound.")
      .def(
          "distance",
          [](const Tree& self, const Tree& other, omReal64 bound) { return geom::distance(self, other, bound); },
          "other"_a, "bound"_a = infinity, LongCall(), "The distance of the nearest items of two indexes.")
      .def(
          "self_distance", [](const Tree& self, omReal64 bound) { return geom::selfDistance(self, bound); },
          "bound"_a = infinity, LongCall(), "The distance of the nearest two items that are not adjacent.");
}

template <class Item>
TreeClass<geom::RTree<Item>> bindTree(py::module_& module, const std::string& name) {
  using Tree = geom::RTree<Item>;
  TreeClass<Tree> tree(module, name.c_str(),
                       "An index of items: which of them meet a box, lie near a point or are nearest.\n\n"
                       "It is made of an array of points, (n, D), or of the points of segments, boxes or triangles,\n"
                       "(n, 2, D) or (n, 3, D). `RTree(items)` and `create_rtree(entity)` choose the class.");
  tree.attr("dtype") = py::dtype::of<typename geom::RTreeItem<Item>::Coordinate>();
  tree.attr("__match_args__") = py::make_tuple("nb_indices");
  tree.def(py::init<>())
      .def(py::init([](const py::object& values) {
             const auto items = itemsOf<Item>(values);
             const Reading reading;
             return boost::make_shared<Tree>(items);
           }),
           "items"_a);
  bindChanges<Item>(tree);
  bindQueries<Item>(tree);
  bindDistances<Item>(module, tree, geom::RTreeItem<Item>::s_dimension == 2 ? "NearestItems2d" : "NearestItems3d");
  return tree;
}

template <template <class> class Item>
void bindTrees(py::module_& module, const std::string& item) {
  const std::string name = "RTree_" + item;
  py::dict classes;
  classes["float64"] = bindTree<Item<omReal64>>(module, name + "_float64");
  classes["float32"] = bindTree<Item<omReal32>>(module, name + "_float32");
  for (const auto& [dtype, treeClass] : classes) treeClass.attr("family") = name;
  module.attr("_families")[name.c_str()] = classes;
}

template <class Entity>
void bindCreate(py::module_& module) {
  module.def(
      "create_rtree",
      [](const Entity& entity) {
        auto tree = geom::createRTree(entity);
        return boost::make_shared<decltype(tree)>(std::move(tree));
      },
      "entity"_a, LongCall(),
      "An index of the points of a cloud, the segments of a polygon or shape, the triangles of a mesh, or of the\n"
      "boxes of a list of entities, all by their place.\n\n"
      ">>> tree = create_rtree(Polygon2d([[0, 0], [4, 0], [4, 3]]))\n"
      ">>> tree.nearest((4.5, 1)).tolist()\n"
      "[1]");
}

template <template <class> class Entity>
void bindCreateOfAll(py::module_& module) {
  bindCreate<Entity<omReal64>>(module);
  bindCreate<Entity<omReal32>>(module);
  bindCreate<Entity<omInt32>>(module);
  bindCreate<Entity<omUInt32>>(module);
}

}  // namespace

void bindRTree(py::module_& module) {
  bindTrees<geom::Point2d>(module, "Point2d");
  bindTrees<geom::Segment2d>(module, "Segment2d");
  bindTrees<geom::BoundingBox2d>(module, "BoundingBox2d");
  bindTrees<geom::Point3d>(module, "Point3d");
  bindTrees<geom::Segment3d>(module, "Segment3d");
  bindTrees<geom::BoundingBox3d>(module, "BoundingBox3d");
  bindTrees<geom::LightTriangle3d>(module, "LightTriangle3d");
  bindCreateOfAll<geom::PointCloud2d>(module);
  bindCreateOfAll<geom::PointCloud3d>(module);
  bindCreateOfAll<geom::Polygon2d>(module);
  bindCreateOfAll<geom::PolygonWithHoles2d>(module);
  bindCreateOfAll<geom::Mesh3d>(module);
  bindCreateOfAll<geom::MeshWithHoles3d>(module);
  bindCreate<geom::Shape2d>(module);
  bindCreate<geom::Shape3d>(module);
  bindCreate<std::vector<geom::GeometryEntity2dPtr>>(module);
  bindCreate<std::vector<geom::GeometryEntity3dPtr>>(module);
}

}  // namespace ormix::python
