#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>
#include <ORMIXGeometry/Tools/Svg/SpatialPicture.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormix::geom::detail {

namespace {

using Point = Point3dData<omReal64>;
using Rgb = std::array<omReal64, 3>;

omReal64 dot(const Point& a, const Point& b) { return a.getX() * b.getX() + a.getY() * b.getY() + a.getZ() * b.getZ(); }

Point unit(const Point& vector) {
  const omReal64 length = vector.normL2();
  return {vector.getX() / length, vector.getY() / length, vector.getZ() / length};
}

std::string colourText(const Rgb& colour) {
  std::string text = "#";
  for (const omReal64 component : colour) {
    const auto value = static_cast<unsigned>(std::clamp(component, 0.0, 255.0));
    text += "0123456789abcdef"[value / 16];
    text += "0123456789abcdef"[value % 16];
  }
  return text;
}

Rgb rgbOf(const std::string& text) {
  const auto component = [&text](std::size_t at) { return omReal64(std::stoi(text.substr(at, 2), nullptr, 16)); };
  return {component(1), component(3), component(5)};
}

Rgb times(const Rgb& colour, omReal64 factor) { return {colour[0] * factor, colour[1] * factor, colour[2] * factor}; }

/// How much an edge stands out, from 0 to 1: the more, the sharper it is.
omReal64 sharpness(omReal64 angle) { return std::min(angle / (s_pi / 3), 1.0); }

}  // namespace

SpatialPicture::SpatialPicture(const Point& towardsViewer) : _depth(unit(towardsViewer)) {
  const bool isAlongZ = std::abs(_depth.getZ()) > 0.999;
  _right = unit(crossProduct(isAlongZ ? Point(0, 1, 0) : Point(0, 0, 1), _depth));
  _up = crossProduct(_depth, _right);
}

SpatialPicture::Place SpatialPicture::project(const Point& point) const {
  return {dot(point, _right), dot(point, _up)};
}

omReal64 SpatialPicture::depthOf(const Point& point) const { return dot(point, _depth); }

SpatialPicture::Element SpatialPicture::toFace(const std::array<Point, 3>& corners, const Point& normal,
                                               const MeshViewOptions& options, omReal64 value) const {
  Element face{{}, 0, {}, 3, 0.7};
  for (std::size_t k = 0; k < 3; ++k) {
    face.corners[k] = project(corners[k]);
    face.depth += depthOf(corners[k]) / 3;
  }
  const bool isInside = dot(normal, _depth) < 0;
  const omReal64 side = isInside ? -1 : 1;
  const omReal64 x = side * dot(normal, _right), y = side * dot(normal, _up), z = side * dot(normal, _depth);
  // From the upper left, and lit from the right a little. A face that looks at the viewer is on the slope of both, so
  // that its neighbours, even at a few degrees, have other shades.
  omReal64 light = 0.7 + 0.37 * (-0.6 * x + 0.7 * y + 0.4 * z) + 0.05 * x;
  const bool hasValue = options.scale && !options.values.empty();
  if (hasValue) light = (1 + light) / 2;
  if (isInside) light *= 0.6;
  const Rgb base = hasValue ? rgbOf(options.scale->colour(value))
                            : Rgb{omReal64(options.red), omReal64(options.green), omReal64(options.blue)};
  face.colour = colourText(times(base, light));
  return face;
}

template <class T>
BoolResult SpatialPicture::addMesh(const TriMesh3d<T>& mesh, const MeshViewOptions& options, bool isOriented) {
  if (!options.values.empty() && options.values.size() != mesh.getNbVertices())
    return failure(std::to_string(options.values.size()) + " values were given for " +
                   std::to_string(mesh.getNbVertices()) + " vertices");
  const SharpEdges sharp = findSharpEdges(mesh, options.edgeAngle);
  const std::size_t first = _elements.size();
  std::vector<omReal64> depths(mesh.getNbTriangles(), -std::numeric_limits<omReal64>::infinity());
  std::vector<std::size_t> places(mesh.getNbTriangles());
  for (std::size_t t = 0; t < mesh.getNbTriangles(); ++t) {
    const IndexTriangle indices = mesh.getTriangleVertexIndices(t);
    std::array<Point, 3> corners;
    omReal64 value = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      corners[k] = cast<omReal64>(mesh.getVertex(indices[k]));
      if (!options.values.empty()) value += options.values[indices[k]] / 3;
    }
    Point normal = unitNormal(corners);
    if (!isOriented && dot(normal, _depth) < 0) normal = {-normal.getX(), -normal.getY(), -normal.getZ()};
    Element face = toFace(corners, normal, options, value);
    if (!std::isfinite(face.depth) || !std::all_of(face.corners.begin(), face.corners.end(), [](const Place& place) {
          return std::isfinite(place.getX()) && std::isfinite(place.getY());
        })) {
      _elements.resize(first);
      return failure("A vertex of the mesh is not finite or too large");
    }
    if (sharp.isClosed && dot(normal, _depth) < 0) continue;
    depths[t] = face.depth;
    places[t] = _elements.size() - first;
    _elements.push_back(std::move(face));
  }
  for (const SharpEdge& edge : sharp.edges) {
    // As near as the nearer of its faces, over which it is drawn, and darker than that.
    const bool isFirst = depths[edge.triangles[0]] >= depths[edge.triangles[1]];
    const std::size_t face = edge.triangles[isFirst ? 0 : 1];
    if (!std::isfinite(depths[face])) continue;
    const Place from = project(cast<omReal64>(mesh.getVertex(edge.vertices[0])));
    const Place to = project(cast<omReal64>(mesh.getVertex(edge.vertices[1])));
    const omReal64 weight = sharpness(edge.angle);
    const std::string dark = colourText(times(rgbOf(_elements[first + places[face]].colour), 0.8 - 0.5 * weight));
    _elements.push_back({{from, to, to}, depths[face], dark, 2, 0.6 + 0.5 * weight});
  }
  return true;
}

void SpatialPicture::addLine(const Point& from, const Point& to, const std::string& colour) {
  _elements.push_back({{project(from), project(to), project(to)}, depthOf(from) / 2 + depthOf(to) / 2, colour, 2, 1.2});
}

void SpatialPicture::addDot(const Point& place, const std::string& colour) {
  _elements.push_back({{project(place), project(place), project(place)}, depthOf(place), colour, 1, 1.2});
}

BoolResult SpatialPicture::drawInto(SvgWriter& writer) {
  // Faces come before their edges, which are as near.
  std::stable_sort(_elements.begin(), _elements.end(),
                   [](const Element& a, const Element& b) { return a.depth < b.depth; });
  for (const Element& each : _elements) {
    BoolResult drawn;
    if (each.nbCorners == 3) {
      Polygon2d<omReal64> outline;
      outline.getPointColl() = {each.corners[0], each.corners[1], each.corners[2], each.corners[0]};
      // The line leaves no gap between neighbours.
      drawn = writer.draw(outline, {each.colour, each.colour, each.width, ""});
    } else if (each.nbCorners == 2) {
      drawn = writer.draw(Segment2d<omReal64>(each.corners[0], each.corners[1]), {each.colour, "none", each.width, ""});
    } else {
      drawn = writer.draw(Point2d<omReal64>(each.corners[0]), {each.colour, "none", each.width, ""});
    }
    if (!drawn) return drawn;
  }
  return {};
}

template BoolResult SpatialPicture::addMesh(const TriMesh3d<omInt32>&, const MeshViewOptions&, bool);
template BoolResult SpatialPicture::addMesh(const TriMesh3d<omUInt32>&, const MeshViewOptions&, bool);
template BoolResult SpatialPicture::addMesh(const TriMesh3d<omReal32>&, const MeshViewOptions&, bool);
template BoolResult SpatialPicture::addMesh(const TriMesh3d<omReal64>&, const MeshViewOptions&, bool);

}  // namespace ormix::geom::detail
