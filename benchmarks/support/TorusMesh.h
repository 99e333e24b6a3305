#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>

#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <utility>

namespace ormix::benchmarks {

/// A closed mesh of about that many triangles: a grid of squares, each cut in two, wrapped around a torus and turned
/// outside. All coordinates are between 4,000 and 16,000, so that every scalar type can hold them; integers are
/// rounded.
template <class T>
geom::Mesh3d<T> torusMesh(std::size_t nbTriangles) {
  constexpr omReal64 fullTurn = 6.283185307179586;
  const auto nbRows = static_cast<omUInt32>(std::lround(std::sqrt(static_cast<omReal64>(nbTriangles) / 4)));
  const omUInt32 nbColumns = 2 * nbRows;
  typename geom::Mesh3d<T>::VertexColl vertices;
  typename geom::Mesh3d<T>::IndexColl indices;
  const auto at = [&](omUInt32 row, omUInt32 column) { return row % nbRows * nbColumns + column % nbColumns; };
  for (omUInt32 row = 0; row < nbRows; ++row) {
    const omReal64 tube = fullTurn * row / nbRows;
    const omReal64 radius = 4500 + 1500 * std::cos(tube);
    for (omUInt32 column = 0; column < nbColumns; ++column) {
      const omReal64 around = fullTurn * column / nbColumns;
      vertices.push_back(geom::cast<T>(geom::Point3dData<omReal64>(
          10000 + radius * std::cos(around), 10000 + radius * std::sin(around), 10000 + 1500 * std::sin(tube))));
      const omUInt32 corner = at(row, column);
      const omUInt32 opposite = at(row + 1, column + 1);
      indices.insert(indices.end(), {corner, at(row, column + 1), opposite, corner, opposite, at(row + 1, column)});
    }
  }
  geom::Mesh3d<T> mesh;
  if (const BoolResult result = mesh.build(std::move(vertices), indices); !result)
    throw std::runtime_error(result.getMessage());
  return mesh;
}

}  // namespace ormix::benchmarks
