#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Tools/Html/SceneParts.h>
#include <ORMIXGeometry/Tools/Svg/MeshView.h>

namespace ormix::geom::detail {

BoolResult drawScene(SvgWriter& writer, const SceneParts& scene) {
  const SceneFrame all = frameOf(scene);
  for (const ScenePart& part : scene.parts) {
    if (part.kind != eSP_Triangles) continue;
    std::vector<Point3dData<omReal64>> points(part.positions.size() / 3);
    const auto place = [&](std::size_t i, std::size_t k) {
      return (part.frame.center[k] / 2 - all.center[k] / 2) / (all.radius / 2) +
             part.frame.radius / all.radius * omReal64(part.positions[3 * i + k]);
    };
    for (std::size_t i = 0; i < points.size(); ++i) points[i].setCoords(place(i, 0), place(i, 1), place(i, 2));
    Mesh3d<omReal64> mesh;
    BoolResult result =
        toMesh3d(TriMesh3d<omReal64>(points.data(), points.size(), part.indices.data(), part.indices.size() / 3), mesh);
    if (result) result = drawMesh(writer, mesh);
    if (!result) return result;
  }
  return true;
}

}  // namespace ormix::geom::detail
