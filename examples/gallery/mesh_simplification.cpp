// A surface with 8,392 triangles, with 800 and with 200: flat parts lose most of them, edges keep theirs.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>
#include <iostream>

int main() {
  using namespace ormix;
  using namespace ormix::geom;

  // A ring with three balls on it, as the smooth surface of voxels.
  constexpr int size = 44;
  std::vector<omUInt8> volume(size * size * size);
  for (int z = 0; z < size; ++z)
    for (int y = 0; y < size; ++y)
      for (int x = 0; x < size; ++x) {
        const double dx = x - 21.5, dy = y - 21.5, dz = z - 21.5;
        bool isInside = std::hypot(std::hypot(dx, dy) - 14, dz) < 4;
        for (const double angle : {0.3, 2.394, 4.489})
          isInside |= std::hypot(dx - 14 * std::cos(angle), dy - 14 * std::sin(angle), dz) < 7;
        volume[static_cast<std::size_t>((z * size + y) * size + x)] = isInside;
      }
  const RowIntersections3d voxels =
      toRowIntersections3d(VolumeView<const omUInt8>{volume.data(), size, size, size, size, size * size});
  Mesh3d<double> mesh = surfaceNets<double>(voxels, eVC_26).front()->getExteriorMesh();

  SvgWriter picture(1000);
  for (const std::size_t nbTriangles : {mesh.getNbTriangles(), std::size_t{800}, std::size_t{200}}) {
    MeshSimplificationOptions options;
    options.nbTriangles = nbTriangles;
    options.keepsVolume = true;
    MeshSimplificationReport report;
    if (!MeshSimplification<double>::simplify(mesh, options, &report)) return 1;
    std::cout << mesh.getNbTriangles() << " triangles, at most " << report.fromInput.greatest << " off\n";
    if (nbTriangles > 800) continue;
    drawMesh(picture, mesh, {{1, -2, 2}});
    TranslationTransform3d(40, 20, 0).applyInSitu(mesh);  // to the right
  }
  return picture.write("mesh_simplification.svg") ? 0 : 1;
}
