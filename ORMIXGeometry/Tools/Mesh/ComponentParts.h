#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>

#include <algorithm>
#include <cstddef>
#include <vector>

/// \file
/// The triangles and vertices of each component of a mesh; not installed.

namespace ormix::geom::detail {

/// The triangles of each component, ascending (counting sort of the labels).
class TrianglesByComponent {
 public:
  TrianglesByComponent(const std::vector<omUInt32>& labels, std::size_t nbComponents)
      : _ends(nbComponents + 1), _triangles(labels.size()) {
    for (const omUInt32 label : labels) ++_ends[label + std::size_t{1}];
    for (std::size_t k = 1; k <= nbComponents; ++k) _ends[k] += _ends[k - 1];
    // `_ends[k]` is where component k begins; storing its triangles moves it to its end.
    for (omUInt32 t = 0; t < labels.size(); ++t) _triangles[_ends[labels[t]]++] = t;
  }
  const omUInt32* begin(std::size_t component) const {
    return _triangles.data() + (component == 0 ? 0 : _ends[component - 1]);
  }
  const omUInt32* end(std::size_t component) const { return _triangles.data() + _ends[component]; }
  std::size_t count(std::size_t component) const { return static_cast<std::size_t>(end(component) - begin(component)); }

 private:
  std::vector<omUInt32> _ends;
  std::vector<omUInt32> _triangles;
};

/// Cuts single components out of a mesh: the vertices in use in their order, and the triangles with their new indices.
template <class T>
class ComponentCutter {
 public:
  explicit ComponentCutter(const TriMesh3d<T>& mesh) : _mesh(mesh), _newIndices(mesh.getNbVertices(), s_unused) {}

  void cut(const omUInt32* first, const omUInt32* last, std::vector<Point3dData<T>>& vertices,
           std::vector<IndexTriangle>& triangles) {
    std::vector<omUInt32> used;
    for (const omUInt32* t = first; t != last; ++t)
      for (const omUInt32 corner : _mesh.getTriangleVertexIndices(*t)) {
        if (_newIndices[corner] != s_unused) continue;
        _newIndices[corner] = 0;
        used.push_back(corner);
      }
    sortIndices(used);
    vertices.reserve(used.size());
    for (const omUInt32 corner : used) {
      _newIndices[corner] = static_cast<omUInt32>(vertices.size());
      vertices.push_back(_mesh.getVertex(corner));
    }
    triangles.reserve(static_cast<std::size_t>(last - first));
    for (const omUInt32* t = first; t != last; ++t) {
      const IndexTriangle corners = _mesh.getTriangleVertexIndices(*t);
      triangles.push_back({_newIndices[corners[0]], _newIndices[corners[1]], _newIndices[corners[2]]});
    }
    for (const omUInt32 corner : used) _newIndices[corner] = s_unused;
  }

 private:
  static constexpr omUInt32 s_unused = 0xFFFFFFFFu;

  // Where the component has a good part of the vertices, looking at all of them is faster than sorting.
  void sortIndices(std::vector<omUInt32>& used) const {
    if (used.size() < _newIndices.size() / 8) {
      std::sort(used.begin(), used.end());
      return;
    }
    std::size_t nb = 0;
    for (omUInt32 vertex = 0; nb < used.size(); ++vertex)
      if (_newIndices[vertex] != s_unused) used[nb++] = vertex;
  }

  const TriMesh3d<T> _mesh;
  std::vector<omUInt32> _newIndices;
};

}  // namespace ormix::geom::detail
