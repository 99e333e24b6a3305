#include <ORMIXGeometry/Entity/2d/Shape/CombinedRuns.h>
#include <ORMIXGeometry/Entity/3d/RoundSolidOf.h>
#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Message/ToolsMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Distance/SpatialBody.h>
#include <ORMIXGeometry/Transform/3d/SpatialParts.h>
#include <ORMIXMath/Distance/Orientation3d.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace ormix::geom::detail {

namespace {

using Box = ormix::detail::IndexBox<3>;

template <class T>
SpatialPoint toPoint(const Point3dData<T>& p) {
  return toSpatialPoint(p.getX(), p.getY(), p.getZ());
}

/// Adds one facet with vertices of its own.
template <std::size_t N>
void addFacet(SpatialBody& body, const std::array<SpatialPoint, N>& corners) {
  const auto first = static_cast<omUInt32>(body.vertices.size());
  body.vertices.insert(body.vertices.end(), corners.begin(), corners.end());
  body.nbCorners = N;
  body.facets.push_back({first, first + (N > 1 ? 1U : 0U), first + static_cast<omUInt32>(N - 1)});
}

void closeSurface(SpatialBody& body, bool isClosed) { body.surfaces.push_back({body.facets.size(), isClosed}); }

/// The six sides of what is bounded by eight corners, which are numbered by bits for x, y and z.
void addBlock(SpatialBody& body, const std::array<SpatialPoint, 8>& corners) {
  body.vertices.assign(corners.begin(), corners.end());
  constexpr std::array<std::array<omUInt32, 4>, 6> sides{
      {{0, 4, 6, 2}, {1, 3, 7, 5}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 2, 3, 1}, {4, 5, 7, 6}}};
  for (const auto& side : sides) {
    body.facets.push_back({side[0], side[1], side[2]});
    body.facets.push_back({side[0], side[2], side[3]});
  }
  closeSurface(body, true);
}

template <class T>
void addTo(SpatialBody& body, const Point3d<T>& point) {
  addFacet<1>(body, {toPoint(point.getCoords())});
}
template <class T>
void addTo(SpatialBody& body, const Segment3d<T>& segment) {
  addFacet<2>(body, {toPoint(segment.getPoint0()), toPoint(segment.getPoint1())});
}
template <class T>
void addTo(SpatialBody& body, const Triangle3d<T>& triangle) {
  addFacet<3>(body, {toPoint(triangle.getPoint0()), toPoint(triangle.getPoint1()), toPoint(triangle.getPoint2())});
}
template <class T>
void addTo(SpatialBody& body, const PointCloud3d<T>& cloud) {
  for (const Point3dData<T>& point : cloud.getCollection()) addFacet<1>(body, {toPoint(point)});
}
template <class T>
void addTo(SpatialBody& body, const BoundingBox3d<T>& box) {
  std::array<SpatialPoint, 8> corners{};
  const auto [x0, x1] = std::minmax({omReal64(box.getXMin()), omReal64(box.getXMax())});
  const auto [y0, y1] = std::minmax({omReal64(box.getYMin()), omReal64(box.getYMax())});
  const auto [z0, z1] = std::minmax({omReal64(box.getZMin()), omReal64(box.getZMax())});
  for (std::size_t i = 0; i < 8; ++i)
    corners[i] = {(i & 1) != 0 ? x1 : x0, (i & 2) != 0 ? y1 : y0, (i & 4) != 0 ? z1 : z0};
  addBlock(body, corners);
}
/// Cubes and cuboids.
template <class Solid>
void addSolid(SpatialBody& body, const Solid& solid) {
  // Top to bottom, left to right and front to back are the three directions of the numbering.
  std::array<SpatialPoint, 8> corners{};
  const auto named = cornersOf(solid);
  for (std::size_t i = 0; i < 8; ++i) corners[i] = toPoint(named[i]);
  addBlock(body, corners);
}
template <class T>
void addTo(SpatialBody& body, const Cube3d<T>& cube) {
  addSolid(body, cube);
}
template <class T>
void addTo(SpatialBody& body, const Cuboid3d<T>& cuboid) {
  addSolid(body, cuboid);
}

void addEllipsoid(SpatialBody& body, const SpatialEllipsoid& ellipsoid) {
  if (std::max({ellipsoid.radii[0], ellipsoid.radii[1], ellipsoid.radii[2]}) == 0)
    return addFacet<1>(body, {ellipsoid.center});
  body.kind = eBK_Ellipsoid;
  body.ellipsoid = ellipsoid;
}
template <class T>
void addTo(SpatialBody& body, const Sphere3d<T>& sphere) {
  const auto radius = omReal64(sphere.getRadius());
  addEllipsoid(body, toSpatialEllipsoid(toPoint(sphere.center()), radius, radius, radius, 0, 0, 0));
}
template <class T>
void addTo(SpatialBody& body, const Ellipsoid3d<T>& e) {
  addEllipsoid(body,
               toSpatialEllipsoid(toPoint(e.center()), omReal64(e.getMajorRadius()), omReal64(e.getMediumRadius()),
                                  omReal64(e.getMinorRadius()), e.getAlpha(), e.getBeta(), e.getChi()));
}
void addTo(SpatialBody& body, const Plan3d& plan) {
  const Vector3d normal = plan.getNormal();
  body.kind = eBK_Plane;
  body.normal = {normal.getX(), normal.getY(), normal.getZ()};
  body.rho = plan.getRho();
}

/// Cylinders, cones, tori and circles.
template <class Entity>
std::enable_if_t<s_isRoundSolid<Entity>> addTo(SpatialBody& body, const Entity& entity) {
  body.kind = eBK_Round;
  body.round = roundSolidOf(entity);
}
void addTo(SpatialBody& body, const Line3d& line) {
  body.kind = eBK_Line;
  body.linePoint = toSpatial(line.getNearestPointFromOrigin());
  body.lineDirection = toSpatial(line.getDirection());
}

/// The triangles of a mesh with the vertices that they use.
template <class T>
void addTo(SpatialBody& body, const Mesh3d<T>& mesh) {
  constexpr omUInt32 isUnused = std::numeric_limits<omUInt32>::max();
  std::vector<omUInt32> places(mesh.getNbVertices(), isUnused);
  body.facets.reserve(body.facets.size() + mesh.getNbTriangles());
  body.vertices.reserve(body.vertices.size() + mesh.getNbVertices());
  visitTriangleIndices(mesh.getTopology(), [&](omUInt32 i0, omUInt32 i1, omUInt32 i2) {
    SpatialBody::Facet facet{i0, i1, i2};
    for (omUInt32& vertex : facet) {
      omUInt32& place = places[vertex];
      if (place == isUnused) {
        place = static_cast<omUInt32>(body.vertices.size());
        body.vertices.push_back(toPoint(mesh.getVertexColl()[vertex]));
      }
      vertex = place;
    }
    body.facets.push_back(facet);
  });
  closeSurface(body, mesh.isClosed());
}
template <class T>
void addTo(SpatialBody& body, const MeshWithHoles3d<T>& mesh) {
  visitNodes(mesh, [&body](const MeshWithHoles3d<T>& node) {
    addTo(body, node.getExteriorMesh());
    return true;
  });
}

/// The runs of a row of voxels, those that adjoin joined; none where there is no such row.
class VoxelRows {
 public:
  explicit VoxelRows(const RowIntersections3d& voxels) : _voxels(voxels) {}

  /// Beginning and end of each run.
  std::vector<std::array<omReal64, 2>> row(omInt64 slice, omInt64 y) const {
    std::vector<std::array<omReal64, 2>> runs;
    if (slice < 0 || slice >= static_cast<omInt64>(_voxels.rowIntersectionsColl.size())) return runs;
    const RowIntersections& rows = _voxels.rowIntersectionsColl[static_cast<std::size_t>(slice)];
    if (y < static_cast<omInt64>(rows.getStartRow()) || y >= static_cast<omInt64>(rows.getEndRow())) return runs;
    RowIntersections::RunColl joined;
    for (const PixelRun& run : joinedRuns(rows.getRow(static_cast<omUInt64>(y)), joined))
      runs.push_back({omReal64(run.begin), omReal64(run.end)});
    return runs;
  }

 private:
  const RowIntersections3d& _voxels;
};

/// Calls `visit(x0, x1)` for what the runs of a row have beyond those of another.
template <class Runs, class Visit>
void visitBeyond(const Runs& runs, const Runs& others, Visit&& visit) {
  auto other = others.begin();
  for (const auto& run : runs) {
    omReal64 from = run[0];
    while (other != others.end() && (*other)[1] <= from) ++other;
    for (auto at = other; at != others.end() && (*at)[0] < run[1]; ++at) {
      if ((*at)[0] > from) visit(from, (*at)[0]);
      from = std::max(from, (*at)[1]);
    }
    if (from < run[1]) visit(from, run[1]);
  }
}

/// The faces between voxels of a shape and what is not of it, as rectangles along the runs.
void addVoxels(SpatialBody& body, const Shape3d& shape) {
  const RowIntersections3d& voxels = shape.getRowIntersections();
  const VoxelRows rows(voxels);
  const auto addSide = [&body](const SpatialPoint& p, const SpatialPoint& q, const SpatialPoint& r,
                               const SpatialPoint& s) {
    addFacet<3>(body, {p, q, r});
    addFacet<3>(body, {p, r, s});
  };
  for (std::size_t slice = 0; slice < voxels.rowIntersectionsColl.size(); ++slice) {
    const RowIntersections& plane = voxels.rowIntersectionsColl[slice];
    const auto k = static_cast<omInt64>(slice);
    const omReal64 z = omReal64(voxels.zOffset) + omReal64(slice);
    for (omUInt64 row = plane.getStartRow(); row < plane.getEndRow(); ++row) {
      const auto j = static_cast<omInt64>(row);
      const auto y = omReal64(row);
      const auto runs = rows.row(k, j);
      // Seen from outside counter-clockwise.
      for (const auto& [x0, x1] : runs) {
        addSide({x0, y, z}, {x0, y, z + 1}, {x0, y + 1, z + 1}, {x0, y + 1, z});
        addSide({x1, y, z}, {x1, y + 1, z}, {x1, y + 1, z + 1}, {x1, y, z + 1});
      }
      visitBeyond(runs, rows.row(k, j - 1), [&](omReal64 a, omReal64 b) {
        addSide({a, y, z}, {b, y, z}, {b, y, z + 1}, {a, y, z + 1});
      });
      visitBeyond(runs, rows.row(k, j + 1), [&](omReal64 a, omReal64 b) {
        addSide({a, y + 1, z}, {a, y + 1, z + 1}, {b, y + 1, z + 1}, {b, y + 1, z});
      });
      visitBeyond(runs, rows.row(k - 1, j), [&](omReal64 a, omReal64 b) {
        addSide({a, y, z}, {a, y + 1, z}, {b, y + 1, z}, {b, y, z});
      });
      visitBeyond(runs, rows.row(k + 1, j), [&](omReal64 a, omReal64 b) {
        addSide({a, y, z + 1}, {b, y, z + 1}, {b, y + 1, z + 1}, {a, y + 1, z + 1});
      });
    }
  }
  closeSurface(body, true);
}
void addTo(SpatialBody& body, const Shape3d& shape) {
  for (const auto& mesh : shape.getMeshWithHolesColl())
    if (mesh) addTo(body, *mesh);
  if (shape.getMeshWithHolesColl().empty()) addVoxels(body, shape);
}

template <class Message>
[[noreturn]] void refuse(Message message, const BaseGeometryEntity3d& entity) {
  logAndThrow(formatMessage<eToolsMessage>(message, std::string(entity.getClassName())), __PRETTY_FUNCTION__, __FILE__,
              __LINE__);
}
void addTo(SpatialBody&, const Vector3d& vector) { refuse(eToolsMessage::eTM_NotBounded, vector); }

void buildTree(SpatialBody& body) {
  std::vector<Box> boxes(body.facets.size());
  for (std::size_t i = 0; i < boxes.size(); ++i)
    for (const omUInt32 vertex : body.facets[i]) {
      const SpatialPoint& p = body.vertices[vertex];
      boxes[i].add(ormix::detail::IndexPoint<3>{p.x, p.y, p.z});
    }
  body.tree = ormix::detail::BoxTree<3>(boxes);
}

/// All numbers of a body, in the order of their importance for isBefore().
template <class Visit>
void visitNumbers(const SpatialBody& body, Visit&& visit) {
  const auto visitPoint = [&visit](const SpatialPoint& p) {
    visit(p.x);
    visit(p.y);
    visit(p.z);
  };
  for (const SpatialPoint& vertex : body.vertices) visitPoint(vertex);
  if (body.kind == eBK_Plane) {
    visitPoint(body.normal);
    visit(body.rho);
  }
  if (body.kind == eBK_Line) {
    visitPoint(body.linePoint);
    visitPoint(body.lineDirection);
  }
  if (body.kind == eBK_Round) {
    visit(body.round.kind);
    visitPoint(body.round.origin);
    visitPoint(body.round.axis);
    visit(body.round.height);
    visit(body.round.radius0);
    visit(body.round.radius1);
  }
  if (body.kind != eBK_Ellipsoid) return;
  visitPoint(body.ellipsoid.center);
  for (const SpatialPoint& axis : body.ellipsoid.axes) visitPoint(axis);
  for (const omReal64 radius : body.ellipsoid.radii) visit(radius);
}

/// The number of times by which each surface winds around a point, from the crossings of a segment; false where that
/// meets an edge.
bool addWindings(const SpatialBody& body, const SpatialPoint& p, const SpatialPoint& out, std::vector<int>& windings) {
  const ormix::detail::IndexPoint<3> origin{p.x, p.y, p.z}, direction{out.x - p.x, out.y - p.y, out.z - p.z};
  return body.tree.visitAlong(origin, direction, 1, [&](std::size_t facet) {
    const auto [a, b, c] = body.corners(facet);
    const int side = orientation3d(a, b, c, p);
    if (side == 0 || side * orientation3d(a, b, c, out) >= 0) return true;
    const int ab = orientation3d(p, out, a, b), bc = orientation3d(p, out, b, c), ca = orientation3d(p, out, c, a);
    if (std::max({ab, bc, ca}) > 0 && std::min({ab, bc, ca}) < 0) return true;
    if (ab == 0 || bc == 0 || ca == 0) return false;
    const auto surface = std::upper_bound(
        body.surfaces.begin(), body.surfaces.end(), facet,
        [](std::size_t place, const SpatialBody::Surface& candidate) { return place < candidate.end; });
    windings[static_cast<std::size_t>(surface - body.surfaces.begin())] += side;
    return true;
  });
}

}  // namespace

SpatialBody toBodyWithoutTree(const BaseGeometryEntity3d& entity) {
  SpatialBody body;
  callTyped(SpatialEntityList(), entity, [&body](const auto& typed) {
    addTo(body, typed);
    return true;
  });
  return body;
}

SpatialBody toSpatialBody(const BaseGeometryEntity3d& entity) {
  SpatialBody body = toBodyWithoutTree(entity);
  if (body.kind == eBK_Facets && body.facets.empty()) refuse(eToolsMessage::eTM_NoPoints, entity);
  bool isFinite = true;
  visitNumbers(body, [&isFinite](omReal64 value) { isFinite = isFinite && std::isfinite(value); });
  if (!isFinite) refuse(eToolsMessage::eTM_EntityNotFinite, entity);
  if (body.kind == eBK_Facets) buildTree(body);
  return body;
}

bool contains(const SpatialBody& body, const SpatialPoint& point) {
  const Box& box = body.tree.envelope();
  if (std::none_of(body.surfaces.begin(), body.surfaces.end(), [](const auto& s) { return s.isClosed; })) return false;
  if (!box.meets({{point.x, point.y, point.z}, {point.x, point.y, point.z}})) return false;
  const SpatialPoint size{box.high[0] - box.low[0], box.high[1] - box.low[1], box.high[2] - box.low[2]};
  std::vector<int> windings(body.surfaces.size());
  // Of a few ends beyond one side, with fractions that no edges share, one is soon found that avoids all edges.
  constexpr int maxNbTrials = 64;
  for (int trial = 0; trial < maxNbTrials; ++trial) {
    const auto fraction = [trial](omReal64 step) { return std::fmod(0.5 + trial * step, 1.0); };
    const omReal64 beyond = 1.25 * std::max({size.x, size.y, size.z});
    const SpatialPoint out{box.high[0] + beyond, box.low[1] + size.y * fraction(0.6180339887498949),
                           box.low[2] + size.z * fraction(0.7548776662466927)};
    std::fill(windings.begin(), windings.end(), 0);
    if (addWindings(body, point, out, windings)) break;
  }
  bool isInside = false;
  for (std::size_t i = 0; i < windings.size(); ++i)
    isInside = isInside != (body.surfaces[i].isClosed && windings[i] != 0);
  return isInside;
}

SpatialBody scaled(const SpatialBody& body, int exponent) {
  SpatialBody result = body;
  const auto scalePoint = [exponent](SpatialPoint& p) {
    p = {std::ldexp(p.x, exponent), std::ldexp(p.y, exponent), std::ldexp(p.z, exponent)};
  };
  for (SpatialPoint& vertex : result.vertices) scalePoint(vertex);
  scalePoint(result.ellipsoid.center);
  // What is as small as nothing keeps a square.
  constexpr omReal64 least = 0x1p-300;
  for (omReal64& radius : result.ellipsoid.radii) radius = std::max(std::ldexp(radius, exponent), least);
  result.rho = std::ldexp(body.rho, exponent);
  scalePoint(result.linePoint);
  scalePoint(result.round.origin);
  for (omReal64* const length : {&result.round.height, &result.round.radius0, &result.round.radius1})
    *length = std::ldexp(*length, exponent);
  if (body.kind == eBK_Facets) buildTree(result);
  return result;
}

omReal64 magnitude(const SpatialBody& body) {
  if (body.kind == eBK_Plane) return std::abs(body.rho);
  omReal64 largest = 0;
  const auto add = [&largest](const SpatialPoint& p) {
    largest = std::max({largest, std::abs(p.x), std::abs(p.y), std::abs(p.z)});
  };
  if (body.kind == eBK_Line) {
    add(body.linePoint);
    return largest;
  }
  if (body.kind == eBK_Round) {
    add(body.round.origin);
    return std::max({largest, body.round.height, body.round.radius0, body.round.radius1});
  }
  if (body.kind == eBK_Ellipsoid) {
    add(body.ellipsoid.center);
    return std::max({largest, body.ellipsoid.radii[0], body.ellipsoid.radii[1], body.ellipsoid.radii[2]});
  }
  const Box& box = body.tree.envelope();
  add({box.low[0], box.low[1], box.low[2]});
  add({box.high[0], box.high[1], box.high[2]});
  return largest;
}

bool isBefore(const SpatialBody& a, const SpatialBody& b) {
  const auto sizes = [](const SpatialBody& body) {
    return std::make_tuple(body.kind, body.nbCorners, body.facets.size(), body.vertices.size(), body.surfaces.size());
  };
  if (sizes(a) != sizes(b)) return sizes(a) < sizes(b);
  if (a.kind == eBK_Facets) {
    const auto isLess = [](const SpatialPoint& p, const SpatialPoint& q) {
      return std::tie(p.x, p.y, p.z) < std::tie(q.x, q.y, q.z);
    };
    const auto differ = [](const SpatialPoint& p, const SpatialPoint& q) {
      return p.x != q.x || p.y != q.y || p.z != q.z;
    };
    const auto [p, q] = std::mismatch(a.vertices.begin(), a.vertices.end(), b.vertices.begin(),
                                      [&](const auto& u, const auto& v) { return !differ(u, v); });
    if (p != a.vertices.end()) return isLess(*p, *q);
    return a.facets < b.facets;
  }
  std::vector<omReal64> ofA, ofB;
  visitNumbers(a, [&ofA](omReal64 value) { ofA.push_back(value); });
  visitNumbers(b, [&ofB](omReal64 value) { ofB.push_back(value); });
  return ofA < ofB;
}

}  // namespace ormix::geom::detail
