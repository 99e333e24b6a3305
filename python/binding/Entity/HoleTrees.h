#pragma once

#include "../Frame/Calls.h"
#include "../Frame/Indices.h"
#include "../Frame/KeepAlive.h"

#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>

#include <algorithm>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <vector>

/// \file
/// What polygons and meshes with holes have in common in Python. Nodes are shared: a hole that was added is the object
/// that was given, and an object of a hole keeps the whole tree alive. A node has one parent at most and is never below
/// itself, so that trees remain trees.

namespace ormix::python {

template <class Node>
using NodePtr = boost::shared_ptr<Node>;

/// The holes themselves.
/// @{
template <class T>
auto& holesOf(geom::PolygonWithHoles2d<T>& polygon) {
  return polygon.getPolygonHoles();
}
template <class T>
auto& holesOf(geom::MeshWithHoles3d<T>& mesh) {
  return mesh.getMeshHoles();
}
/// @}

/// The object of a hole, which keeps the tree of its parent alive; None of a null hole.
template <class Node>
py::object holeObject(const py::object& parent, const NodePtr<Node>& hole) {
  py::object object = py::cast(hole);
  if (hole) keepAlive(object, keeperOf(parent, py::cast<NodePtr<Node>>(parent)));
  return object;
}

/// The objects of the holes as a list.
template <class Node>
py::list holeObjects(const py::object& parent) {
  py::list objects;
  // A copy: making objects may run finalizers, which may change the holes.
  const std::vector<NodePtr<Node>> holes = holesOf(*py::cast<NodePtr<Node>>(parent));
  for (const NodePtr<Node>& hole : holes) objects.append(holeObject(parent, hole));
  return objects;
}

/// The object of the parent, or None. It keeps the same tree alive.
template <class Node>
py::object parentObject(const py::object& node) {
  const auto hole = py::cast<NodePtr<Node>>(node);
  const auto parent = boost::const_pointer_cast<Node>(hole->getParent());
  py::object object = py::cast(parent);
  if (parent) keepAlive(object, keeperOf(node, parent));
  return object;
}

/// \throw py::value_error where `hole` is a hole already, or would be below itself
template <class Node>
void requireNewHole(const Node& node, const Node& hole) {
  const auto refuse = [](const char* reason) { throw py::value_error(reason); };
  if (&node == &hole) refuse("nothing is a hole of itself");
  if (const auto parent = hole.getParent()) {
    const auto& holes = holesOf(const_cast<Node&>(*parent));
    const auto isHole = [&](const NodePtr<Node>& other) { return other.get() == &hole; };
    if (std::any_of(holes.begin(), holes.end(), isHole)) refuse("it is a hole already; remove it there, or add a copy");
  }
  if (!hole.hasHoles()) return;
  NodePtr<const Node> above = node.getParent();
  while (above && above.get() != &hole) above = above->getParent();
  if (above) refuse("nothing is a hole of one of its own holes");
}

/// Appends a hole to a node.
template <class Node>
void addHole(const py::object& node, const NodePtr<Node>& hole) {
  const auto parent = py::cast<NodePtr<Node>>(node);
  if (!hole) throw py::type_error("a hole cannot be None");
  {
    const Changing changing;
    requireNewHole(*parent, *hole);
    hole->setParent(parent);
    holesOf(*parent).push_back(hole);
  }
  keepAlive(py::cast(hole), keeperOf(node, parent));
}

/// Removes a hole and returns it.
/// \param index counts from the end where it is negative
/// \throw py::index_error
template <class Node>
py::object removeHole(Node& node, py::ssize_t index) {
  NodePtr<Node> hole;
  {
    const Changing changing;
    auto& holes = holesOf(node);
    const auto position = holes.begin() + static_cast<py::ssize_t>(positionOf(index, holes.size(), "hole"));
    hole = *position;
    holes.erase(position);
    if (hole) hole->setParent(nullptr);
  }
  py::object object = py::cast(hole);
  if (hole) keepAlive(object, py::none());
  return object;
}

template <class Node>
void clearHoles(Node& node) {
  const Changing changing;
  for (const NodePtr<Node>& hole : holesOf(node))
    if (hole) hole->setParent(nullptr);
  // Released iteratively, whatever the depth.
  Node released;
  holesOf(released).swap(holesOf(node));
}

/// Adds the properties and functions of holes to a class.
template <class Node, class Class>
void bindHoles(Class& entity) {
  entity
      .def_property_readonly("holes", &holeObjects<Node>,
                             "The holes, as a new list of nodes: each may have holes itself. See `add_hole`.")
      .def("add_hole", &addHole<Node>, "hole"_a,
           "Append a hole, which is shared and not copied.\n\n"
           "ValueError for one that is a hole already, or above this node.")
      .def("remove_hole", &removeHole<Node>, "index"_a = -1, "Remove a hole, by default the last one, and return it.")
      .def("clear_holes", &clearHoles<Node>, "Remove all holes.")
      // No pointer to a member of the second base: g++ 12's sanitizer looks for the table of virtual functions there.
      .def_property_readonly(
          "nb_holes", [](const Node& self) { return self.getNbHoles(); }, "The number of holes of this node.")
      .def_property_readonly("parent", &parentObject<Node>, "The node that this one is a hole of; None of a root.");
}

}  // namespace ormix::python
