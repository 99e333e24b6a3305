// Any bytes as an OBJ, PLY or OFF file: what is found lies within the bytes, indices are those of vertices, and the
// triangles stand in a sound mesh.

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Tools/MeshFiles/MeshFile.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace ormix;
using namespace ormix::geom;

void expect(bool holds) {
  if (!holds) std::abort();
}

void check(const std::string& path, std::size_t size) {
  MeshReport report;
  const FaceVertexTriMesh3d<omReal64> mesh = readFaceVertexTriMesh<omReal64>(path, {}, report);
  expect(static_cast<bool>(mesh.checkIntegrity()));
  expect(report.nbBytes == size && report.stopOffset <= size && report.nbKept == report.nbTriangles);
  expect(mesh.getNbVertices() <= size && mesh.getNbTriangles() <= size);
  expect(report.nbPolygons + report.nbSkippedFaces <= size);
  const auto shared = readMesh<omReal64>(path, {}, report);
  expect(shared->checkIntegrity() && shared->getNbTriangles() == mesh.getNbTriangles());
  expect(shared->getNbVertices() == mesh.getNbVertices() + 3 * report.nbSeparated);
  // In omReal32 fewer numbers are in range.
  expect(static_cast<bool>(readFaceVertexTriMesh<omReal32>(path, {}, report).checkIntegrity()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // A file without a name, as the readers take paths.
  static const int file = ::memfd_create("mesh", 0);
  expect(::ftruncate(file, 0) == 0 && ::pwrite(file, data, size, 0) == static_cast<ssize_t>(size));
  check("/proc/self/fd/" + std::to_string(file), size);
  return 0;
}
