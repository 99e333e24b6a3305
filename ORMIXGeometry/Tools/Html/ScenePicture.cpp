#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXGeometry/Tools/Html/SceneParts.h>
#include <ORMIXGeometry/Tools/MeshSimplification/MeshSimplification.h>
#include <ORMIXGeometry/Tools/RTree/CreateRTree.h>
#include <ORMIXGeometry/Tools/Svg/SpatialPicture.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <cstdlib>
#include <utility>

namespace ormix::geom::detail {

namespace {

using Points = std::vector<Point3dData<omReal64>>;

/// The vertices of a part in the frame of the scene, where everything is near the origin and of size 1.
Points pointsOf(const ScenePart& part, const SceneFrame& all) {
  Points points(part.positions.size() / 3);
  const auto place = [&](std::size_t i, std::size_t k) {
    return (part.frame.center[k] / 2 - all.center[k] / 2) / (all.radius / 2) +
           part.frame.radius / all.radius * omReal64(part.positions[3 * i + k]);
  };
  for (std::size_t i = 0; i < points.size(); ++i) points[i].setCoords(place(i, 0), place(i, 1), place(i, 2));
  return points;
}

/// Values of other points: those of the nearest ones that have them.
std::vector<omReal64> carriedOver(const std::vector<omReal64>& values, const Points& from, const Points& to) {
  if (values.empty()) return {};
  const auto tree = createRTree(PointCloud3d<omReal64>(from));
  std::vector<omReal64> result;
  for (const auto& point : to) result.push_back(values[tree.nearest(point).front()]);
  return result;
}

BoolResult addTriangles(SpatialPicture& picture, const ScenePart& part, Points points, MeshViewOptions options) {
  // More triangles are more than a picture shows, and than browsers draw soon.
  constexpr std::size_t most = 20000;
  options.values = part.values;
  const TriMesh3d<omReal64> whole(points.data(), points.size(), part.indices.data(), part.indices.size() / 3);
  if (whole.getNbTriangles() <= most) return picture.addMesh(whole, options, part.isOriented);
  auto mesh = toFaceVertexTriMesh3d(whole);
  MeshSimplificationOptions fewer;
  fewer.nbTriangles = most;
  if (const BoolResult simplified = MeshSimplification<omReal64>::simplify(mesh, fewer); !simplified) return simplified;
  options.values = carriedOver(options.values, points, mesh.getVertexColl());
  return picture.addMesh(TriMesh3d<omReal64>(mesh), options, part.isOriented);
}

}  // namespace

BoolResult drawScene(SvgWriter& writer, const SceneParts& scene) {
  const SceneFrame all = frameOf(scene);
  MeshViewOptions options;
  options.scale = scaleOf(scene);
  SpatialPicture picture(options.towardsViewer);
  std::vector<ScenePart> endless;
  for (const ScenePlane& plane : scene.planes) endless.push_back(squareOf(plane, all));
  for (const SceneLine& line : scene.lines) endless.push_back(segmentOf(line, all));
  for (const auto* parts : {&scene.parts, &std::as_const(endless)})
    for (const ScenePart& part : *parts) {
      Points points = pointsOf(part, all);
      const auto component = [&part](std::size_t at) {
        return static_cast<omUInt8>(std::strtoul(part.style.colour.substr(at, 2).c_str(), nullptr, 16));
      };
      options.red = component(1);
      options.green = component(3);
      options.blue = component(5);
      // The triangles of a round body are none of its edges.
      options.edgeAngle = part.isSmooth ? s_pi : MeshViewOptions().edgeAngle;
      if (part.kind == eSP_Triangles) {
        if (const BoolResult added = addTriangles(picture, part, std::move(points), options); !added) return added;
      } else if (part.kind == eSP_Lines) {
        for (std::size_t i = 0; i + 1 < part.indices.size(); i += 2)
          picture.addLine(points[part.indices[i]], points[part.indices[i + 1]], part.style.colour);
      } else {
        for (std::size_t i = 0; i < points.size(); ++i)
          picture.addDot(points[i], part.values.empty() ? part.style.colour : options.scale->colour(part.values[i]));
      }
    }
  return picture.drawInto(writer);
}

}  // namespace ormix::geom::detail
