#include <ORMIXGeometry/Entity/3d/Mesh/RevolvedSurface.h>
#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Entity/3d/UnitDirection.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Tools/Distance/SpatialBody.h>
#include <ORMIXGeometry/Tools/Html/SceneParts.h>
#include <ORMIXGeometry/Tools/Svg/SharpEdges.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom {

namespace detail {

namespace {

/// A finite frame around the vertices that are used; nothing where one of these is not finite, or they are too far
/// apart for numbers.
template <class T>
std::optional<SceneFrame> frameOf(const Point3dData<T>* vertices, const std::vector<bool>& isUsed) {
  std::array<omReal64, 3> low{}, high{};
  bool isFirst = true;
  for (std::size_t i = 0; i < isUsed.size(); ++i) {
    if (!isUsed[i]) continue;
    const std::array<omReal64, 3> p{omReal64(vertices[i].getX()), omReal64(vertices[i].getY()),
                                    omReal64(vertices[i].getZ())};
    for (std::size_t k = 0; k < 3; ++k) {
      if (!std::isfinite(p[k])) return std::nullopt;
      low[k] = isFirst ? p[k] : std::min(low[k], p[k]);
      high[k] = isFirst ? p[k] : std::max(high[k], p[k]);
    }
    isFirst = false;
  }
  SceneFrame frame;
  frame.radius = 0;
  for (std::size_t k = 0; k < 3; ++k) {
    frame.center[k] = low[k] / 2 + high[k] / 2;
    frame.radius = std::max(frame.radius, high[k] / 2 - low[k] / 2);
  }
  // The corners of a scene must still be numbers.
  if (!(frame.radius < 1e307) || !(std::abs(frame.center[0]) < 1e307) || !(std::abs(frame.center[1]) < 1e307) ||
      !(std::abs(frame.center[2]) < 1e307))
    return std::nullopt;
  // A single place is given some room, which is a normal number.
  if (frame.radius < 1e-300) frame.radius = frame.radius > 0 ? 1e-300 : 1;
  return frame;
}

/// The kind's vertices in the frame, those that are not used at its centre.
template <class T>
BoolResult fill(ScenePart& part, const Point3dData<T>* vertices, std::size_t nbVertices) {
  std::vector<bool> isUsed(nbVertices, part.kind == eSP_Points);
  for (const omUInt32 index : part.indices) isUsed[index] = true;
  const auto frame = frameOf(vertices, isUsed);
  if (!frame) return failure("a coordinate is not finite or too large");
  part.frame = *frame;
  part.positions.resize(3 * nbVertices);
  const auto place = [&frame](omReal64 value, std::size_t k) {
    return static_cast<omReal32>((value / 2 - frame->center[k] / 2) / (frame->radius / 2));
  };
  for (std::size_t i = 0; i < nbVertices; ++i) {
    if (!isUsed[i]) continue;
    part.positions[3 * i] = place(omReal64(vertices[i].getX()), 0);
    part.positions[3 * i + 1] = place(omReal64(vertices[i].getY()), 1);
    part.positions[3 * i + 2] = place(omReal64(vertices[i].getZ()), 2);
  }
  return true;
}

BoolResult checkStyle(const HtmlSceneStyle& style) {
  const auto isHex = [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); };
  if (style.colour.size() != 7 || style.colour[0] != '#' ||
      !std::all_of(style.colour.begin() + 1, style.colour.end(), isHex))
    return failure("a colour must have the form \"#rrggbb\"");
  return style.opacity >= 0 && style.opacity <= 1 ? BoolResult() : failure("an opacity must be between 0 and 1");
}

BoolResult setValues(ScenePart& part, const std::vector<omReal64>& values, std::size_t nbVertices) {
  if (!values.empty() && values.size() != nbVertices)
    return failure(std::to_string(values.size()) + " values were given for " + std::to_string(nbVertices) + " points");
  part.values = values;
  return true;
}

/// The lines over the triangles: every edge that is sharp, and those that are a little bent where they are so few that
/// they do not hide the shades of the surface.
template <class T>
void addEdges(ScenePart& part, const TriMesh3d<T>& mesh) {
  constexpr omReal64 bent = 0.05, sharp = 0.5;
  constexpr std::size_t mostSoft = 20000, mostSharp = 200000;
  for (const SharpEdge& edge : findSharpEdges(mesh, bent).edges) {
    std::vector<omUInt32>& pairs = edge.angle > sharp ? part.edges : part.softEdges;
    pairs.insert(pairs.end(), edge.vertices.begin(), edge.vertices.end());
  }
  if (part.softEdges.size() > 2 * mostSoft) part.softEdges.clear();
  if (part.edges.size() > 2 * mostSharp) part.edges.clear();
}

/// A net of meridians and parallels on an ellipsoid, whose triangles are seen from outside.
void addEllipsoid(SpatialBody& body) {
  constexpr omUInt32 nbTurns = 96, nbRows = 48;
  const SpatialEllipsoid& e = body.ellipsoid;
  for (omUInt32 row = 0; row <= nbRows; ++row)
    for (omUInt32 turn = 0; turn < nbTurns; ++turn) {
      const omReal64 theta = s_pi * row / nbRows, phi = 2 * s_pi * turn / nbTurns;
      const std::array<omReal64, 3> s{std::sin(theta) * std::cos(phi) * e.radii[0],
                                      std::sin(theta) * std::sin(phi) * e.radii[1], std::cos(theta) * e.radii[2]};
      const auto sum = [&](auto c) {
        return e.center.*c + s[0] * (e.axes[0].*c) + s[1] * (e.axes[1].*c) + s[2] * (e.axes[2].*c);
      };
      body.vertices.push_back({sum(&SpatialPoint::x), sum(&SpatialPoint::y), sum(&SpatialPoint::z)});
    }
  for (omUInt32 row = 0; row < nbRows; ++row)
    for (omUInt32 turn = 0; turn < nbTurns; ++turn) {
      const omUInt32 a = row * nbTurns + turn, b = row * nbTurns + (turn + 1) % nbTurns, c = a + nbTurns,
                     d = b + nbTurns;
      body.facets.push_back({a, c, d});
      body.facets.push_back({a, d, b});
    }
}

/// The surface of a solid, or the segments of a circle. With so many sides their edges do not show.
void addRound(SpatialBody& body) {
  constexpr omUInt32 nbSides = 144;
  if (body.round.kind == eRS_Frustum || body.round.radius1 > 0) {
    const RevolvedSurface surface = revolvedSurface(body.round, nbSides);
    for (const auto& vertex : surface.vertices) body.vertices.push_back(toSpatial(vertex));
    for (std::size_t i = 0; i + 2 < surface.indices.size(); i += 3)
      body.facets.push_back({surface.indices[i], surface.indices[i + 1], surface.indices[i + 2]});
    return;
  }
  const SpatialPoint u = directionAcross(body.round.axis), v = ormix::detail::cross(body.round.axis, u);
  body.nbCorners = 2;
  for (omUInt32 side = 0; side < nbSides; ++side) {
    using ormix::detail::operator+;
    using ormix::detail::operator*;
    const omReal64 angle = s_twoPi * side / nbSides;
    body.vertices.push_back(body.round.origin + (u * std::cos(angle) + v * std::sin(angle)) * body.round.radius0);
    body.facets.push_back({side, (side + 1) % nbSides, (side + 1) % nbSides});
  }
}

template <class T>
void addBox(const BoundingBox3d<T>& box, std::vector<Point3dData<omReal64>>& points, ScenePart& part) {
  for (omUInt32 i = 0; i < 8; ++i) {
    points.emplace_back(omReal64((i & 1) != 0 ? box.getXMax() : box.getXMin()),
                        omReal64((i & 2) != 0 ? box.getYMax() : box.getYMin()),
                        omReal64((i & 4) != 0 ? box.getZMax() : box.getZMin()));
    for (const omUInt32 bit : {1U, 2U, 4U})
      if ((i & bit) == 0) part.indices.insert(part.indices.end(), {i, i | bit});
  }
}

}  // namespace

}  // namespace detail

namespace {

using namespace detail;

BoolResult refused(const std::string& what, const BoolResult& why) {
  return failure(std::string("Not drawn: ") + why.getMessage() + " (" + what + ")");
}

/// A part of an entity that is no mesh and no plan; nothing of it is checked but its coordinates.
BoolResult makePart(const BaseGeometryEntity3d& entity, ScenePart& part) {
  std::vector<Point3dData<omReal64>> points;
  part.kind = eSP_Lines;
  const bool isBox = callTyped(ScalarClassList<BoundingBox3d>(), entity,
                               [&](const auto& box) { return addBox(box, points, part), true; });
  if (const auto* vector = dynamic_cast<const Vector3d*>(&entity)) {
    points = {{0, 0, 0}, {vector->getX(), vector->getY(), vector->getZ()}};
    part.indices = {0, 1};
  } else if (!isBox) {
    SpatialBody body = toBodyWithoutTree(entity);
    if (body.kind == eBK_Round) addRound(body);
    part.isSmooth = body.kind == eBK_Ellipsoid;
    if (part.isSmooth) addEllipsoid(body);
    part.kind = body.nbCorners == 3 ? eSP_Triangles : body.nbCorners == 2 ? eSP_Lines : eSP_Points;
    points.reserve(body.vertices.size());
    for (const SpatialPoint& p : body.vertices) points.emplace_back(p.x, p.y, p.z);
    if (part.kind != eSP_Points)
      for (const SpatialBody::Facet& facet : body.facets)
        part.indices.insert(part.indices.end(), facet.begin(), facet.begin() + std::ptrdiff_t(body.nbCorners));
  }
  if (points.empty()) return failure("there are no points");
  if (part.kind == eSP_Triangles && !part.isSmooth)
    addEdges(part, TriMesh3d<omReal64>(points.data(), points.size(), part.indices.data(), part.indices.size() / 3));
  return fill(part, points.data(), points.size());
}

}  // namespace

HtmlScene::HtmlScene(std::string unit) : _parts(std::make_unique<SceneParts>()) { _parts->unit = std::move(unit); }
HtmlScene::~HtmlScene() = default;
HtmlScene::HtmlScene(HtmlScene&&) noexcept = default;
HtmlScene& HtmlScene::operator=(HtmlScene&&) noexcept = default;

detail::SceneParts& HtmlScene::own() {
  if (!_parts) _parts = std::make_unique<SceneParts>();
  return *_parts;
}

bool HtmlScene::isEmpty() const {
  return !_parts || (_parts->parts.empty() && _parts->planes.empty() && _parts->lines.empty());
}

void HtmlScene::setScale(std::string quantity, std::string unit, const std::optional<ColourScale>& scale) {
  own().quantity = std::move(quantity);
  own().valueUnit = std::move(unit);
  own().scale = scale;
}

BoolResult HtmlScene::draw(const BaseGeometryEntity3d& entity, const HtmlSceneStyle& style) {
  BoolResult drawn;
  if (callTyped(ScalarClassList<Mesh3d>(), entity, [&](const auto& mesh) { return drawn = draw(mesh, style), true; }))
    return drawn;
  if (const BoolResult fine = checkStyle(style); !fine) return refused(entity.getClassName(), fine);
  if (const auto* plan = dynamic_cast<const Plan3d*>(&entity)) {
    const Vector3d normal = plan->getNormal();
    if (!std::isfinite(normal.getX() + normal.getY() + normal.getZ()) || !(std::abs(plan->getRho()) < 1e307))
      return refused(entity.getClassName(), failure("a coordinate is not finite or too large"));
    own().planes.push_back({{normal.getX(), normal.getY(), normal.getZ()}, plan->getRho(), style});
    return true;
  }
  if (const auto* line = dynamic_cast<const Line3d*>(&entity)) {
    const Point3dData<omReal64>&p = line->getNearestPointFromOrigin(), &d = line->getDirection();
    if (!(std::max({std::abs(p.getX()), std::abs(p.getY()), std::abs(p.getZ())}) < 1e307) ||
        !std::isfinite(p.getX() + p.getY() + p.getZ()))
      return refused(entity.getClassName(), failure("a coordinate is not finite or too large"));
    own().lines.push_back({{p.getX(), p.getY(), p.getZ()}, {d.getX(), d.getY(), d.getZ()}, style});
    return true;
  }
  ScenePart part;
  part.style = style;
  if (const BoolResult made = makePart(entity, part); !made) return refused(entity.getClassName(), made);
  own().parts.push_back(std::move(part));
  return true;
}

template <class T>
BoolResult HtmlScene::draw(const TriMesh3d<T>& mesh, const std::vector<omReal64>& values, const HtmlSceneStyle& style) {
  ScenePart part;
  part.kind = eSP_Triangles;
  part.isOriented = true;
  part.style = style;
  BoolResult result = checkStyle(style);
  if (result) result = checkIndices(mesh);
  if (result && mesh.getNbTriangles() == 0) result = failure("there are no triangles");
  if (result) result = setValues(part, values, mesh.getNbVertices());
  if (result) {
    part.indices.assign(mesh.getIndices(), mesh.getIndices() + 3 * mesh.getNbTriangles());
    result = fill(part, mesh.getVertices(), mesh.getNbVertices());
  }
  if (!result) return refused("mesh", result);
  addEdges(part, mesh);
  own().parts.push_back(std::move(part));
  return true;
}

template <class T>
BoolResult HtmlScene::draw(const std::vector<Point3dData<T>>& points, const std::vector<omReal64>& values,
                           const HtmlSceneStyle& style) {
  ScenePart part;
  part.kind = eSP_Points;
  part.style = style;
  BoolResult result = checkStyle(style);
  if (result && points.empty()) result = failure("there are no points");
  if (result) result = setValues(part, values, points.size());
  if (result) result = fill(part, points.data(), points.size());
  if (!result) return refused("points", result);
  own().parts.push_back(std::move(part));
  return true;
}

#define ORMIX_GEOMETRY_SCENE(T)                                                                             \
  template ORMIX_GEOMETRY_API BoolResult HtmlScene::draw(const TriMesh3d<T>&, const std::vector<omReal64>&, \
                                                         const HtmlSceneStyle&);                            \
  template ORMIX_GEOMETRY_API BoolResult HtmlScene::draw(const std::vector<Point3dData<T>>&,                \
                                                         const std::vector<omReal64>&, const HtmlSceneStyle&);
ORMIX_GEOMETRY_SCENE(omInt32)
ORMIX_GEOMETRY_SCENE(omUInt32)
ORMIX_GEOMETRY_SCENE(omReal32)
ORMIX_GEOMETRY_SCENE(omReal64)
#undef ORMIX_GEOMETRY_SCENE

}  // namespace ormix::geom
