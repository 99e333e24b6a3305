#include <ORMIXGeometry/Entity/3d/Shape/SurfaceNets.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelShells.h>

#include <cmath>

namespace ormix::geom {

namespace {

/// A displacement, or a sum of them and their number.
struct NetVector {
  omReal64 x = 0, y = 0, z = 0;
  omReal64 weight = 0;
};

constexpr omReal64 s_farthest = 0.5;

/// Moves the vertices of a shell. Displacements are kept apart from the places on the faces, so that they are as exact
/// far from the origin as near to it.
template <class T>
class NetRelaxation {
 public:
  explicit NetRelaxation(detail::VoxelShell<T>& shell)
      : _shell(shell), _displacements(shell.vertices.size()), _sums(shell.vertices.size()) {}

  void run(std::size_t nbSteps) {
    for (std::size_t step = 0; step < nbSteps; ++step) {
      sumNeighbours();
      // Neighbours of neighbours change places if all go the whole way again and again.
      moveAll(step == 0 ? 1 : 0.5);
    }
    for (std::size_t vertex = 0; vertex < _displacements.size(); ++vertex) {
      const Point3dData<T>& place = _shell.vertices[vertex];
      const NetVector& moved = _displacements[vertex];
      _shell.vertices[vertex] = {static_cast<T>(static_cast<omReal64>(place.getX()) + moved.x),
                                 static_cast<T>(static_cast<omReal64>(place.getY()) + moved.y),
                                 static_cast<T>(static_cast<omReal64>(place.getZ()) + moved.z)};
    }
  }

 private:
  /// Sums for each vertex where its neighbours are, relative to its place. Those along edges of faces differ from it in
  /// one coordinate; others are across a face. In a closed mesh each edge has one triangle in either direction.
  void sumNeighbours() {
    _sums.assign(_sums.size(), {});
    const std::vector<omUInt32>& indices = _shell.indices;
    for (std::size_t first = 0; first < indices.size(); first += 3)
      for (std::size_t k = 0; k < 3; ++k) addNeighbour(indices[first + k], indices[first + (k + 1) % 3]);
  }

  void addNeighbour(omUInt32 vertex, omUInt32 neighbour) {
    const Point3dData<T>& place = _shell.vertices[vertex];
    const Point3dData<T>& other = _shell.vertices[neighbour];
    const T x = other.getX() - place.getX();
    const T y = other.getY() - place.getY();
    const T z = other.getZ() - place.getZ();
    if ((x != 0) + (y != 0) + (z != 0) != 1) return;
    const NetVector& moved = _displacements[neighbour];
    NetVector& sum = _sums[vertex];
    sum.x += static_cast<omReal64>(x) + moved.x;
    sum.y += static_cast<omReal64>(y) + moved.y;
    sum.z += static_cast<omReal64>(z) + moved.z;
    sum.weight += 1;
  }

  void moveAll(omReal64 share) {
    for (std::size_t vertex = 0; vertex < _displacements.size(); ++vertex) {
      NetVector& moved = _displacements[vertex];
      const NetVector& sum = _sums[vertex];
      const auto next = [&](omReal64 from, omReal64 total) { return from + share * (total / sum.weight - from); };
      moved = {next(moved.x, sum.x), next(moved.y, sum.y), next(moved.z, sum.z), 0};
      const omReal64 length = std::sqrt(moved.x * moved.x + moved.y * moved.y + moved.z * moved.z);
      if (length <= s_farthest) continue;
      const omReal64 shrink = s_farthest / length;
      moved = {moved.x * shrink, moved.y * shrink, moved.z * shrink, 0};
    }
  }

  detail::VoxelShell<T>& _shell;
  std::vector<NetVector> _displacements;
  std::vector<NetVector> _sums;
};

}  // namespace

template <class T>
std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> surfaceNets(const RowIntersections3d& voxels,
                                                               eVoxelConnectivity connectivity, std::size_t nbSteps) {
  auto shells = detail::traceShells<T>(voxels, connectivity);
  for (detail::VoxelShell<T>& shell : shells) NetRelaxation<T>(shell).run(nbSteps);
  return detail::makeMeshes(shells);
}

template ORMIX_GEOMETRY_API std::vector<boost::shared_ptr<MeshWithHoles3d<omReal32>>> surfaceNets<omReal32>(
    const RowIntersections3d&, eVoxelConnectivity, std::size_t);
template ORMIX_GEOMETRY_API std::vector<boost::shared_ptr<MeshWithHoles3d<omReal64>>> surfaceNets<omReal64>(
    const RowIntersections3d&, eVoxelConnectivity, std::size_t);

}  // namespace ormix::geom
