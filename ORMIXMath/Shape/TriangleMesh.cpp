#include <ORMIXMath/Shape/CompensatedSum.h>
#include <ORMIXMath/Shape/TriangleMesh.h>
#include <ORMIXMath/Shape/TrianglePairs.h>
#if defined(__x86_64__)
#include <ORMIXMath/Shape/TriangleQuadsAvx2.h>
#endif

#include <algorithm>
#include <array>
#include <cmath>

namespace ormix {
namespace {

using detail::CornerPair;
using detail::Pair;
using detail::TrianglePair;

/// Calls `take(pair, nbTriangles)` with the triangles from the given one on, two by two in their order, a last single
/// one beside itself.
template <class T, class Take>
inline void forPairs(const TriangleMeshView<T>& mesh, std::size_t first, Take take) {
  const omUInt32* indices = mesh.indices + 3 * first;
  for (std::size_t pairs = (mesh.nbTriangles - first) / 2; pairs > 0; --pairs, indices += 6)
    take(detail::trianglePair(mesh.xyz, indices), 2);
  if ((mesh.nbTriangles - first) % 2 != 0) take(detail::doubledTriangle(mesh.xyz, indices), 1);
}

template <class T>
CornerPair firstCorner(const TriangleMeshView<T>& mesh) {
  const T* vertex = mesh.xyz + 3 * static_cast<std::size_t>(mesh.indices[0]);
  return detail::cornerPair(vertex, vertex);
}

/// Adds twice the area of triangle t to lane t % 4, from the given triangle on, of which four divides the index.
template <class T>
void addDoubleAreas(const TriangleMeshView<T>& mesh, std::size_t first, detail::Lanes<4>& lanes) {
  // The lanes of the pair at hand, and those of the one before, which comes next.
  Pair sum{lanes.sum[0], lanes.sum[1]}, nextSum{lanes.sum[2], lanes.sum[3]};
  Pair error{lanes.error[0], lanes.error[1]}, nextError{lanes.error[2], lanes.error[3]};
  bool isSwapped = false;
  forPairs(mesh, first, [&](const TrianglePair& t, int nbTriangles) {
    Pair area = detail::doubleAreaPair(t);
    if (nbTriangles == 1) area[1] = 0;
    detail::addCompensated(area, sum, error);
    std::swap(sum, nextSum);
    std::swap(error, nextError);
    isSwapped = !isSwapped;
  });
  if (isSwapped) {
    std::swap(sum, nextSum);
    std::swap(error, nextError);
  }
  for (std::size_t l = 0; l < 2; ++l) {
    lanes.sum[l] = sum[l];
    lanes.sum[2 + l] = nextSum[l];
    lanes.error[l] = error[l];
    lanes.error[2 + l] = nextError[l];
  }
}

/// Integrals over a body, about some origin: of 1, of the coordinates, and of their products.
struct Integrals {
  omReal64 volume;
  std::array<omReal64, 3> first;
  omReal64 xx, yy, zz, xy, xz, yz;
};

/// Sums of tetrahedra with a common apex, about it, up to the factors 6, 24 and 120.
class IntegralSums {
 public:
  explicit IntegralSums(const CornerPair& apex) : _apex(apex) {}

  void add(const TrianglePair& triangles, const Pair& weight) {
    const Pair d = weight * detail::determinantPair(triangles, _apex);
    const TrianglePair t{triangles.a - _apex, triangles.b - _apex, triangles.c - _apex};
    const CornerPair s{t.a.x + t.b.x + t.c.x, t.a.y + t.b.y + t.c.y, t.a.z + t.b.z + t.c.z};
    const std::array<Pair, 10> terms{d,
                                     d * s.x,
                                     d * s.y,
                                     d * s.z,
                                     d * (t.a.x * t.a.x + t.b.x * t.b.x + t.c.x * t.c.x + s.x * s.x),
                                     d * (t.a.y * t.a.y + t.b.y * t.b.y + t.c.y * t.c.y + s.y * s.y),
                                     d * (t.a.z * t.a.z + t.b.z * t.b.z + t.c.z * t.c.z + s.z * s.z),
                                     d * (t.a.x * t.a.y + t.b.x * t.b.y + t.c.x * t.c.y + s.x * s.y),
                                     d * (t.a.x * t.a.z + t.b.x * t.b.z + t.c.x * t.c.z + s.x * s.z),
                                     d * (t.a.y * t.a.z + t.b.y * t.b.z + t.c.y * t.c.z + s.y * s.z)};
    for (std::size_t k = 0; k < terms.size(); ++k) _sums[k] += terms[k];
  }

  Integrals result() const {
    const auto total = [this](std::size_t k) { return _sums[k][0] + _sums[k][1]; };
    return {total(0) / 6,   {total(1) / 24, total(2) / 24, total(3) / 24},
            total(4) / 120, total(5) / 120,
            total(6) / 120, total(7) / 120,
            total(8) / 120, total(9) / 120};
  }

 private:
  CornerPair _apex;
  std::array<Pair, 10> _sums{};
};

bool isFinite(const MeshMoments& m) {
  const std::array<omReal64, 10> all{m.volume,    m.centroid.x, m.centroid.y, m.centroid.z, m.inertiaXX,
                                     m.inertiaYY, m.inertiaZZ,  m.inertiaXY,  m.inertiaXZ,  m.inertiaYZ};
  return std::all_of(all.begin(), all.end(), [](omReal64 value) { return std::isfinite(value); });
}

/// Moves the second moments to the centroid (parallel axes) and the centroid back to where the mesh is.
MeshMoments momentsOf(const Integrals& about, const CornerPair& origin) {
  const omReal64 volume = about.volume;
  const omReal64 sign = volume < 0 ? -1 : 1;
  const omReal64 x = about.first[0] / volume;
  const omReal64 y = about.first[1] / volume;
  const omReal64 z = about.first[2] / volume;
  const omReal64 xx = sign * (about.xx - volume * x * x);
  const omReal64 yy = sign * (about.yy - volume * y * y);
  const omReal64 zz = sign * (about.zz - volume * z * z);
  return {sign * volume,
          {origin.x[0] + x, origin.y[0] + y, origin.z[0] + z},
          yy + zz,
          xx + zz,
          xx + yy,
          -sign * (about.xy - volume * x * y),
          -sign * (about.xz - volume * x * z),
          -sign * (about.yz - volume * y * z)};
}

}  // namespace

omReal64 tetrahedronSignedVolume(omReal64 x0, omReal64 y0, omReal64 z0, omReal64 x1, omReal64 y1, omReal64 z1,
                                 omReal64 x2, omReal64 y2, omReal64 z2) {
  const omReal64 ex = x1 - x0, ey = y1 - y0, ez = z1 - z0;
  const omReal64 fx = x2 - x0, fy = y2 - y0, fz = z2 - z0;
  return (x0 * (ey * fz - ez * fy) + y0 * (ez * fx - ex * fz) + z0 * (ex * fy - ey * fx)) / 6;
}

template <class T>
omReal64 meshArea(const TriangleMeshView<T>& mesh) {
  detail::Lanes<4> lanes;
  std::size_t nbDone = 0;
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) nbDone = detail::TriangleQuadsAvx2::addDoubleAreas(mesh, lanes);
#endif
  addDoubleAreas(mesh, nbDone, lanes);
  return 0.5 * detail::joined(lanes);
}

template <class T>
omReal64 meshSignedVolume(const TriangleMeshView<T>& mesh) {
  omReal64 sum = 0;
  std::size_t nbDone = 0;
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) nbDone = detail::TriangleQuadsAvx2::addVolumes(mesh, sum);
#endif
  forPairs(mesh, nbDone, [&](const TrianglePair& t, int nbTriangles) {
    const Pair volume = detail::determinantPair(t) / 6;
    sum += volume[0];
    if (nbTriangles == 2) sum += volume[1];
  });
  return sum;
}

template <class T>
omReal64 meshLocalVolume(const TriangleMeshView<T>& mesh) {
  if (mesh.nbTriangles == 0) return 0;
  const CornerPair origin = firstCorner(mesh);
  Pair sum{};
  std::size_t nbDone = 0;
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) nbDone = detail::TriangleQuadsAvx2::addDeterminants(mesh, origin, sum);
#endif
  forPairs(mesh, nbDone, [&](const TrianglePair& t, int nbTriangles) {
    Pair determinant = detail::determinantPair(t, origin);
    if (nbTriangles == 1) determinant[1] = 0;
    sum += determinant;
  });
  return (sum[0] + sum[1]) / 6;
}

template <class T>
bool meshMoments(const TriangleMeshView<T>& mesh, MeshMoments& moments) {
  if (mesh.nbTriangles == 0) return false;
  const CornerPair origin = firstCorner(mesh);
  IntegralSums sums(origin);
  forPairs(mesh, 0, [&](const TrianglePair& t, int nbTriangles) {
    sums.add(t, Pair{1, nbTriangles == 2 ? 1.0 : 0.0});
  });
  const Integrals about = sums.result();
  if (about.volume == 0) return false;
  const MeshMoments found = momentsOf(about, origin);
  if (!isFinite(found)) return false;
  moments = found;
  return true;
}

// clang-format off
template omReal64 meshArea(const TriangleMeshView<omInt32>&);
template omReal64 meshArea(const TriangleMeshView<omUInt32>&);
template omReal64 meshArea(const TriangleMeshView<omReal32>&);
template omReal64 meshArea(const TriangleMeshView<omReal64>&);
template omReal64 meshSignedVolume(const TriangleMeshView<omInt32>&);
template omReal64 meshSignedVolume(const TriangleMeshView<omUInt32>&);
template omReal64 meshSignedVolume(const TriangleMeshView<omReal32>&);
template omReal64 meshSignedVolume(const TriangleMeshView<omReal64>&);
template omReal64 meshLocalVolume(const TriangleMeshView<omInt32>&);
template omReal64 meshLocalVolume(const TriangleMeshView<omUInt32>&);
template omReal64 meshLocalVolume(const TriangleMeshView<omReal32>&);
template omReal64 meshLocalVolume(const TriangleMeshView<omReal64>&);
template bool meshMoments(const TriangleMeshView<omInt32>&, MeshMoments&);
template bool meshMoments(const TriangleMeshView<omUInt32>&, MeshMoments&);
template bool meshMoments(const TriangleMeshView<omReal32>&, MeshMoments&);
template bool meshMoments(const TriangleMeshView<omReal64>&, MeshMoments&);
// clang-format on

}  // namespace ormix
