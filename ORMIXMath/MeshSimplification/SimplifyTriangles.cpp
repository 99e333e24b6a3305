#include "SimplifyTriangles.h"

#include <ORMIXMath/MeshSimplification/EdgeCollapse.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Scalar/Round.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <type_traits>
#include <utility>

namespace ormix {

namespace detail {
namespace {

/// The part of the progress that is told while edges collapse.
constexpr omReal64 s_progressOfCollapses = 0.9;

template <class T>
SpatialPoint roundTo(const SpatialPoint& p, omReal64 unit) {
  const auto one = [unit](omReal64 value) { return static_cast<omReal64>(round<T, omReal64>(value * unit)) / unit; };
  return {one(p.x), one(p.y), one(p.z)};
}

template <class T>
CoordinateRounding roundingOf(omReal64 unit) {
  if constexpr (std::is_same_v<T, omReal64>)
    return {nullptr, unit};
  else
    return {&roundTo<T>, unit};
}

BoolResult checkOptions(const MeshSimplificationOptions& options, std::size_t nbVertices) {
  const auto refuse = [](const char* option, const char* rule) {
    return failure(std::string("Simplification of meshes: ") + option + " " + rule);
  };
  if (!options.nbTriangles && !options.maxError) return refuse("nbTriangles or maxError", "must be given");
  if (options.maxError && !(*options.maxError >= 0)) return refuse("maxError", "must not be negative nor NaN");
  if (!(options.boundaryTolerance >= 0)) return refuse("boundaryTolerance", "must not be negative nor NaN");
  if (!(options.boundaryWeight >= 0 && options.boundaryWeight <= 1e6))
    return refuse("boundaryWeight", "must be from 0 to 10^6");
  if (options.featureAngle && !(*options.featureAngle >= 0 && *options.featureAngle <= s_pi))
    return refuse("featureAngle", "must be from 0 to pi");
  if (options.keepsVolume && options.placement == eCP_Ends)
    return refuse("keepsVolume", "needs another placement than eCP_Ends");
  for (const omUInt32 vertex : options.lockedVertices)
    if (vertex >= nbVertices) return refuse("lockedVertices", "must be indices of vertices");
  return {};
}

BoolResult checkVertices(const std::vector<SpatialPoint>& vertices) {
  constexpr omReal64 greatest = 0x1p1020;  // so that no place for a vertex overflows
  const auto isFit = [](omReal64 value) { return std::abs(value) <= greatest; };
  for (std::size_t i = 0; i < vertices.size(); ++i)
    if (!isFit(vertices[i].x) || !isFit(vertices[i].y) || !isFit(vertices[i].z))
      return failure("Simplification of meshes: vertex " + std::to_string(i) + " is not finite, or beyond 2^1020");
  return {};
}

/// The power of two above half of the extent of the vertices, 1 where there is none.
omReal64 unitOf(const std::vector<SpatialPoint>& vertices) {
  omReal64 halfExtent = 0;
  for (omReal64 SpatialPoint::*axis : {&SpatialPoint::x, &SpatialPoint::y, &SpatialPoint::z}) {
    omReal64 low = std::numeric_limits<omReal64>::infinity();
    omReal64 high = -low;
    for (const SpatialPoint& vertex : vertices) {
      low = std::min(low, vertex.*axis);
      high = std::max(high, vertex.*axis);
    }
    if (!vertices.empty()) halfExtent = std::max(halfExtent, high / 2 - low / 2);
  }
  return halfExtent > 0 ? std::ldexp(1, std::min(std::ilogb(halfExtent) + 1, 1023)) : 1;
}

/// What several fans share is pinned, and what the options lock is locked.
void setFreedoms(CollapsingMesh& mesh, const std::vector<omUInt32>& lockedVertices) {
  const CollapseTopology& topology = mesh.topology;
  mesh.freedoms.assign(topology.nbVertices(), eVF_Free);
  for (const omUInt32 vertex : lockedVertices) mesh.freedoms[vertex] = eVF_Locked;
  for (const omUInt32 vertex : topology.copied()) mesh.freedoms[vertex] = eVF_Pinned;
  std::fill(mesh.freedoms.end() - static_cast<std::ptrdiff_t>(topology.copied().size()), mesh.freedoms.end(),
            eVF_Pinned);
}

void setQuadrics(CollapsingMesh& mesh, const VertexQuadrics& vertexQuadrics) {
  std::vector<omUInt32> fan;
  mesh.quadrics.reserve(mesh.topology.nbVertices());
  for (omUInt32 vertex = 0; vertex < mesh.topology.nbVertices(); ++vertex) {
    mesh.topology.collectFan(vertex, fan);
    mesh.quadrics.push_back(vertexQuadrics.of(mesh, fan));
  }
}

CollapsingMesh makeMesh(std::vector<SpatialPoint> vertices, std::vector<MeshSide> sides, omReal64 unit,
                        const MeshSimplificationOptions& options) {
  for (SpatialPoint& vertex : vertices) vertex = vertex / unit;
  const std::size_t nbVertices = vertices.size();
  CollapsingMesh mesh{CollapseTopology(std::move(sides), nbVertices), std::move(vertices), {}, {}, {}};
  for (const omUInt32 origin : mesh.topology.copied()) mesh.positions.push_back(mesh.positions[origin]);
  setFreedoms(mesh, options.lockedVertices);
  mesh.sideFlags.assign(mesh.topology.nbSides(), 0);
  if (options.featureAngle) markFeatures(mesh, *options.featureAngle);
  setQuadrics(mesh, {options.boundaryWeight});
  return mesh;
}

CollapseSettings settingsOf(const MeshSimplificationOptions& options, omReal64 unit) {
  CollapseSettings settings;
  settings.nbTriangles = options.nbTriangles.value_or(0);
  if (options.maxError) settings.maxError = *options.maxError / unit;
  settings.boundaryTolerance = options.boundaryTolerance / unit;
  settings.isMemoryless = options.isMemoryless;
  settings.keepsVolume = options.keepsVolume;
  settings.keepsFeatures = options.featureAngle.has_value();
  settings.avoidsIntersections = options.avoidsIntersections;
  return settings;
}

/// Vertices in use and triangles in their order; copies are again the vertices that they were made of.
SimplifiedTriangles resultOf(const CollapsingMesh& mesh, omReal64 unit) {
  const CollapseTopology& topology = mesh.topology;
  SimplifiedTriangles result;
  std::vector<omUInt32> numbers(topology.nbVertices(), s_noSide);
  result.triangles.reserve(topology.nbTriangles());
  for (omUInt32 side = 0; side < topology.nbSides(); side += 3) {
    if (!topology.isAlive(side)) continue;
    IndexTriangle corners;
    for (omUInt32 k = 0; k < 3; ++k) {
      corners[k] = topology.originOf(topology.start(side + k));
      numbers[corners[k]] = 0;
    }
    result.triangles.push_back(corners);
  }
  for (omUInt32 vertex = 0; vertex < numbers.size(); ++vertex) {
    if (numbers[vertex] == s_noSide) continue;
    numbers[vertex] = static_cast<omUInt32>(result.vertices.size());
    result.vertices.push_back(mesh.positions[vertex] * unit);
  }
  for (IndexTriangle& corners : result.triangles)
    for (omUInt32& corner : corners) corner = numbers[corner];
  return result;
}

}  // namespace
}  // namespace detail

template <class T>
BoolResult simplifyTriangles(std::vector<SpatialPoint> vertices, std::vector<MeshSide> sides,
                             const MeshSimplificationOptions& options, SimplifiedTriangles& result,
                             MeshSimplificationReport& report) {
  BoolResult checked = detail::checkOptions(options, vertices.size());
  if (checked) checked = detail::checkVertices(vertices);
  if (!checked) return checked;
  const omReal64 unit = detail::unitOf(vertices);
  detail::CollapsingMesh mesh = detail::makeMesh(std::move(vertices), std::move(sides), unit, options);
  report.nbTrianglesBefore = mesh.topology.nbTriangles();
  const omReal64 nbToRemove =
      static_cast<omReal64>(report.nbTrianglesBefore) - static_cast<omReal64>(options.nbTriangles.value_or(0));
  const auto goOn = [&](std::size_t nbTriangles) {
    if (!options.progress) return true;
    const omReal64 nbRemoved = static_cast<omReal64>(report.nbTrianglesBefore - nbTriangles);
    const omReal64 fraction = nbToRemove > 0 ? std::min(nbRemoved / nbToRemove, 1.0) : 1;
    return options.progress(detail::s_progressOfCollapses * fraction);
  };
  detail::EdgeCollapse collapse(mesh, detail::settingsOf(options, unit),
                                {options.placement, detail::roundingOf<T>(unit)}, {options.boundaryWeight});
  if (!collapse.run(goOn)) return failure("Simplification of meshes: stopped by its progress callback");
  report.nbTrianglesAfter = mesh.topology.nbTriangles();
  report.nbCollapses = collapse.nbCollapses();
  report.nbRefusals = collapse.nbRefusals();
  report.greatestError = collapse.greatestError() * unit;
  result = detail::resultOf(mesh, unit);
  return {};
}

// clang-format off
template BoolResult simplifyTriangles<omInt32>(std::vector<SpatialPoint>, std::vector<MeshSide>, const MeshSimplificationOptions&, SimplifiedTriangles&, MeshSimplificationReport&);
template BoolResult simplifyTriangles<omUInt32>(std::vector<SpatialPoint>, std::vector<MeshSide>, const MeshSimplificationOptions&, SimplifiedTriangles&, MeshSimplificationReport&);
template BoolResult simplifyTriangles<omReal32>(std::vector<SpatialPoint>, std::vector<MeshSide>, const MeshSimplificationOptions&, SimplifiedTriangles&, MeshSimplificationReport&);
template BoolResult simplifyTriangles<omReal64>(std::vector<SpatialPoint>, std::vector<MeshSide>, const MeshSimplificationOptions&, SimplifiedTriangles&, MeshSimplificationReport&);
// clang-format on

}  // namespace ormix
