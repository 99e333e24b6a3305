// Any bytes as an STL file: what each reader finds lies within the bytes, merging changes no corner, the counts of
// defects fit together, and every triangle stands in a sound mesh.

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Tools/Stl/StlMerge.h>
#include <ORMIXGeometry/Tools/Stl/StlReader.h>
#include <ORMIXGeometry/Tools/Stl/TriangleDefects.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using namespace ormix;
using namespace ormix::geom;

void expect(bool holds) {
  if (!holds) std::abort();
}

void checkMesh(const std::vector<omReal32>& coords) {
  const MergedCoords merged = removeDoubles(coords);
  expect(3 * merged.indexColl.size() == coords.size());
  for (std::size_t corner = 0; corner < coords.size(); ++corner) {
    const omReal32 read = coords[corner];
    const omReal32 kept = merged.coordColl[3 * std::size_t{merged.indexColl[corner / 3]} + corner % 3];
    expect(kept == read || (kept != kept && read != read));
  }
  const TriangleDefects defects = findDefects(merged.getNbVertices(), merged.indexColl);
  const std::size_t nbTriangles = coords.size() / 9;
  expect(defects.nbDegenerate + defects.nbDuplicate <= nbTriangles);
  expect(defects.nbBoundaryEdges + defects.nbNonManifoldEdges + defects.nbFlippedNeighbours <= defects.nbEdges);
  expect(defects.nbComponents <= nbTriangles && defects.nbBoundaryLoops <= defects.nbBoundaryEdges);
  Mesh3d<omReal32> mesh;
  expect(static_cast<bool>(
      mesh.build(Mesh3d<omReal32>::VertexColl(merged.getNbVertices()), merged.indexColl, eNMP_OwnVertices)));
  expect(mesh.getNbTriangles() == nbTriangles && mesh.checkIntegrity());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  StlInput input(bytes);
  hasStlAsciiFormat(input);
  const auto check = [&](const StlTriangles& triangles, std::size_t smallestTriangle) {
    expect(triangles.stopOffset <= size && triangles.getNbTriangles() * smallestTriangle <= size);
    checkMesh(triangles.coordColl);
    input.rewind();
  };
  input.rewind();
  check(readAsciiTriangles(input), 30);
  check(readTolerantAsciiTriangles(input), 60);
  check(readBinaryTriangles(input), 50);
  check(readBinaryTriangles(input, StlCount::Hint), 50);
  return 0;
}
