#pragma once

#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"

#include <ORMIXGeometry/Tools/RTree/RTree.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <limits>
#include <string>
#include <utility>
#include <vector>

/// \file
/// The queries of an index, each for one place or for an array of places. One place is an array of shape `Place` (a
/// point (D,), a box or a segment (2, D)), several have one dimension more.

namespace ormix::python {

/// Places of a query, of `nbPoints` points each.
template <std::size_t D, py::ssize_t nbPoints>
class Places {
 public:
  using Point = geom::SearchPoint<D>;

  /// \throw py::value_error for an array of another shape
  Places(const py::object& values, const char* name) : _numbers(numbersOf<omReal64>(values, name)) {
    constexpr py::ssize_t dimension = static_cast<py::ssize_t>(D);
    constexpr py::ssize_t nbAxes = nbPoints == 1 ? 1 : 2;
    const py::ssize_t last = _numbers.ndim() - 1;
    const bool isPlace = last + 1 >= nbAxes && _numbers.shape(last) == dimension &&
                         (nbPoints == 1 || _numbers.shape(last - 1) == nbPoints);
    if (!isPlace || _numbers.ndim() > nbAxes + 1)
      throw py::value_error(std::string(name) + ": an array of shape (" +
                            (nbPoints == 1 ? std::string() : std::to_string(nbPoints) + ", ") +
                            std::to_string(dimension) + (nbAxes == 1 ? ",)" : ")") +
                            ", or several of them in one array, was wanted, not of shape " +
                            py::cast<std::string>(py::repr(_numbers.attr("shape"))));
    _isOne = _numbers.ndim() == nbAxes;
    _count = _isOne ? 1 : static_cast<std::size_t>(_numbers.shape(0));
    _data = _numbers.data();
  }

  bool isOne() const { return _isOne; }         ///< whether a single place was given, not an array of them
  std::size_t count() const { return _count; }  ///< the number of places
  /// A point of a place.
  Point point(std::size_t place, std::size_t which = 0) const {
    const omReal64* const at = _data + (place * static_cast<std::size_t>(nbPoints) + which) * D;
    if constexpr (D == 2)
      return {at[0], at[1]};
    else
      return {at[0], at[1], at[2]};
  }

 private:
  py::array_t<omReal64, py::array::c_style> _numbers;
  const omReal64* _data;
  std::size_t _count;
  bool _isOne;
};

/// Calls `query(place)`, which answers indices, for all places. Of one place its answer; of several an array of shape
/// (2, k), the indices of places above those of items, in order of the places.
template <class Places, class Query>
py::object indicesOf(const Places& places, Query query) {
  std::vector<py::ssize_t> ofPlaces, ofItems;
  {
    const Reading reading;
    for (std::size_t place = 0; place < places.count(); ++place)
      for (const std::size_t item : query(place)) {
        if (!places.isOne()) ofPlaces.push_back(static_cast<py::ssize_t>(place));
        ofItems.push_back(static_cast<py::ssize_t>(item));
      }
  }
  if (places.isOne()) return copyOf(ofItems);
  ofPlaces.insert(ofPlaces.end(), ofItems.begin(), ofItems.end());
  return py::array_t<py::ssize_t>(std::vector<py::ssize_t>{2, static_cast<py::ssize_t>(ofItems.size())},
                                  ofPlaces.data());
}

/// Calls `count(place)` for all places; an integer for one, an array for several.
template <class Places, class Count>
py::object countsOf(const Places& places, Count count) {
  std::vector<py::ssize_t> counts;
  {
    const Reading reading;
    for (std::size_t place = 0; place < places.count(); ++place)
      counts.push_back(static_cast<py::ssize_t>(count(place)));
  }
  if (places.isOne()) return py::int_(counts.at(0));
  return copyOf(counts);
}

/// The k nearest items of each place and their distances: arrays of shape (k,), or (m, k) for several places. Where
/// there are fewer, an array of several has -1 and infinity, and that of one place is shorter.
template <class Tree, class Places>
std::pair<py::array, py::array> neighboursOf(const Tree& tree, const Places& places, std::size_t k, omReal64 bound) {
  // More than all items are never found, so that a large k takes no memory.
  const std::size_t width = std::min(k, tree.size());
  std::vector<py::ssize_t> indices;
  std::vector<omReal64> distances;
  {
    const Reading reading;
    for (std::size_t place = 0; place < places.count(); ++place) {
      const auto found = tree.neighbours(places.point(place), k, bound);
      for (const auto& neighbour : found) {
        indices.push_back(static_cast<py::ssize_t>(neighbour.index));
        distances.push_back(neighbour.distance);
      }
      if (places.isOne()) continue;
      indices.resize((place + 1) * width, -1);
      distances.resize((place + 1) * width, std::numeric_limits<omReal64>::infinity());
    }
  }
  if (places.isOne()) return {copyOf(indices), copyOf(distances)};
  const std::vector<py::ssize_t> shape{static_cast<py::ssize_t>(places.count()), static_cast<py::ssize_t>(width)};
  return {py::array_t<py::ssize_t>(shape, indices.data()), py::array_t<omReal64>(shape, distances.data())};
}

/// Adds the queries to the class of an index.
template <class Item, class TreeClass>
void bindQueries(TreeClass& tree) {
  using Tree = geom::RTree<Item>;
  constexpr std::size_t D = Tree::s_dimension;
  using PointPlaces = Places<D, 1>;
  using PairPlaces = Places<D, 2>;
  constexpr omReal64 infinity = std::numeric_limits<omReal64>::infinity();
  tree.def(
          "query",
          [](const Tree& self, const py::object& box) {
            const PairPlaces boxes(box, "box");
            return indicesOf(boxes, [&](std::size_t i) { return self.query({boxes.point(i, 0), boxes.point(i, 1)}); });
          },
          "box"_a,
          "The indices of the items that meet a box, given by its two corners, ascending.\n\n"
          "Of m boxes, an array of shape (m, 2, D), an array of shape (2, k): the number of a box above the index of\n"
          "an item that meets it.")
      .def(
          "count",
          [](const Tree& self, const py::object& box) {
            const PairPlaces boxes(box, "box");
            return countsOf(boxes, [&](std::size_t i) { return self.count({boxes.point(i, 0), boxes.point(i, 1)}); });
          },
          "box"_a, "The number of items that meet a box, or an array of these numbers of several boxes.")
      .def(
          "query_within",
          [](const Tree& self, const py::object& point, omReal64 distance) {
            const PointPlaces points(point, "point");
            return indicesOf(points, [&](std::size_t i) { return self.queryWithin(points.point(i), distance); });
          },
          "point"_a, "distance"_a,
          "The indices of the items that are at most this far from a point; of several points as `query`.")
      .def(
          "count_within",
          [](const Tree& self, const py::object& point, omReal64 distance) {
            const PointPlaces points(point, "point");
            return countsOf(points, [&](std::size_t i) { return self.countWithin(points.point(i), distance); });
          },
          "point"_a, "distance"_a, "The number of these items, or an array of these numbers of several points.")
      .def(
          "query_along",
          [](const Tree& self, const py::object& segment, omReal64 distance) {
            const PairPlaces segments(segment, "segment");
            return indicesOf(segments, [&](std::size_t i) {
              return self.queryAlong({segments.point(i, 0), segments.point(i, 1)}, distance);
            });
          },
          "segment"_a, "distance"_a = 0.0,
          "The indices of the items that are at most this far from a segment, given by its two ends; at the\n"
          "distance 0 those that it meets. Of several segments as `query`.")
      .def(
          "query_along_ray",
          [](const Tree& self, const py::object& ray, omReal64 distance) {
            const PairPlaces rays(ray, "ray");
            return indicesOf(
                rays, [&](std::size_t i) { return self.queryAlongRay(rays.point(i, 0), rays.point(i, 1), distance); });
          },
          "ray"_a, "distance"_a = 0.0,
          "The same along a ray, given by its origin and its direction, an array of shape (2, D); of several rays as\n"
          "`query`.")
      .def(
          "nearest",
          [](const Tree& self, const py::object& point, std::size_t k, omReal64 bound) {
            return neighboursOf(self, PointPlaces(point, "point"), k, bound).first;
          },
          "point"_a, "k"_a = 1, "bound"_a = infinity,
          "The indices of the k items that are nearest to a point, nearest first, those at most `bound` away.\n\n"
          "Of m points an array of shape (m, k), with -1 where there are fewer.")
      .def(
          "neighbours",
          [](const Tree& self, const py::object& point, std::size_t k, omReal64 bound) {
            return neighboursOf(self, PointPlaces(point, "point"), k, bound);
          },
          "point"_a, "k"_a = 1, "bound"_a = infinity, "The same as `nearest`, and the distances of these items.");
}

}  // namespace ormix::python
