#include <ORMIXGeometry/Entity/3d/Shape/ConnectedVoxels.h>
#include <ORMIXGeometry/Entity/3d/Shape/CornerPlane.h>
#include <ORMIXGeometry/Entity/3d/Shape/FaceStrips.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelShells.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <algorithm>
#include <array>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <iterator>
#include <map>
#include <string>
#include <utility>

namespace ormix::geom::detail {

namespace {

/// Goes along the corners of a line.
struct LineCursor {
  const BoundaryCorner* corner;
  CornerPlane* plane;

  /// The corner at x, which there is, not before the last one asked for.
  const BoundaryCorner& at(omUInt32 x) {
    while (corner->x < x) ++corner;
    return *corner;
  }
};

/// A corner of a face.
struct FaceCorner {
  const BoundaryCorner* corner;
  CornerPlane* plane;
  std::array<omUInt64, 3> place;
};

/// How faces of one side are connected with what is around their corners, which are known by their offsets (du, dv)
/// along the axes u and v behind that of the face, in the order of the triangles.
struct FaceSide {
  std::size_t axis;
  bool isUpper;

  std::size_t u() const { return (axis + 1) % 3; }
  std::size_t v() const { return (axis + 2) % 3; }
  std::size_t du(std::size_t corner) const { return isUpper ? (corner == 1 || corner == 2) : (corner >= 2); }
  std::size_t dv(std::size_t corner) const { return isUpper ? (corner >= 2) : (corner == 1 || corner == 2); }
  /// The slot of the face among those around its corner: a voxel at a corner with offset 1 is on its lower side.
  std::size_t slotAt(std::size_t corner) const { return faceSlot(axis, 1 - du(corner), 1 - dv(corner)); }
};

template <class T>
class ShellMaker {
 public:
  ShellMaker(const NumberedRows& rows, eVoxelConnectivity connectivity, const FaceStrips& strips)
      : _rows(rows), _connectivity(connectivity), _fans(cornerFans(connectivity)), _faces(strips) {}

  std::vector<VoxelShell<T>> make() {
    reserve();
    _below.set(_rows, 0, _fans);
    std::vector<FaceStrip> strips;
    for (_slice = 0; _slice < _rows.nbSlices(); ++_slice) {
      _above.set(_rows, _slice + 1, _fans);
      for (_y = _rows.slice(_slice).getStartRow(); _y < _rows.slice(_slice).getEndRow(); ++_y) {
        _faces.collect(_slice, _y, strips);
        addRow(strips);
      }
      std::swap(_below, _above);
    }
    return std::move(_shells);
  }

 private:
  /// The four lines at the edges of a row, by dy + 2·dz.
  using Lines = std::array<LineCursor, 4>;

  Lines linesAtRow() {
    return {LineCursor{_below.line(_y), &_below}, LineCursor{_below.line(_y + 1), &_below},
            LineCursor{_above.line(_y), &_above}, LineCursor{_above.line(_y + 1), &_above}};
  }

  void reserve() {
    std::vector<std::size_t> nbFaces(_faces.nbShells());
    std::vector<FaceStrip> strips;
    for (std::size_t slice = 0; slice < _rows.nbSlices(); ++slice)
      for (omUInt64 y = _rows.slice(slice).getStartRow(); y < _rows.slice(slice).getEndRow(); ++y) {
        _faces.collect(slice, y, strips);
        for (const FaceStrip& strip : strips) nbFaces[strip.shell] += strip.axis == 0 ? 1 : strip.end - strip.begin;
      }
    _shells.resize(nbFaces.size());
    const std::size_t nbExteriors = _faces.nbExteriors();
    for (std::size_t index = 0; index < nbFaces.size(); ++index) {
      // A face with vertices in the middle of all its edges has six triangles.
      if (nbFaces[index] > MeshTopology::s_maxNbTriangles / 6)
        logAndThrow("Surfaces of voxels: one of them has " + std::to_string(nbFaces[index]) +
                        " faces of voxels, more than " + std::to_string(MeshTopology::s_maxNbTriangles / 6),
                    __PRETTY_FUNCTION__, __FILE__, __LINE__);
      VoxelShell<T>& shell = _shells[index];
      shell.vertices.reserve(nbFaces[index] + 2);  // by Euler's formula, without middles of edges and tunnels
      shell.indices.reserve(6 * nbFaces[index]);
      shell.isHole = index >= nbExteriors;
      const omUInt32 around = shell.isHole ? 0 : _faces.surrounding(index);
      if (shell.isHole)
        shell.parent = _faces.enclosingOf(index - nbExteriors + 1);
      else
        shell.parent = around == 0 ? VoxelShell<T>::s_noParent : nbExteriors + around - 1;
    }
  }

  void addRow(const std::vector<FaceStrip>& strips) {
    Lines lines = linesAtRow();
    const FaceStrip* former = nullptr;
    for (const FaceStrip& strip : strips) {
      // Strips ascend on each side; those across x come first, in pairs.
      const bool isNewSide =
          former != nullptr && strip.axis != 0 && (former->axis != strip.axis || former->isUpper != strip.isUpper);
      if (isNewSide) lines = linesAtRow();
      former = &strip;
      if (strip.axis == 0) {
        addAcrossX(strip, lines);
      } else {
        addStrip(strip, lines);
      }
    }
  }

  void addAcrossX(const FaceStrip& strip, Lines& lines) {
    std::array<FaceCorner, 4> corners;
    for (std::size_t dy = 0; dy < 2; ++dy)
      for (std::size_t dz = 0; dz < 2; ++dz) corners[dy + 2 * dz] = cornerAt(strip.begin, dy, dz, lines);
    addFace({0, strip.isUpper}, corners, _shells[strip.shell]);
  }

  void addStrip(const FaceStrip& strip, Lines& lines) {
    const FaceSide side{strip.axis, strip.isUpper};
    const std::size_t upper = strip.isUpper ? 1 : 0;
    // Corners by du + 2·dv: across y, u is z and v is x; across z, u is x and v is y.
    const std::size_t stepOfX = strip.axis == 1 ? 2 : 1;
    const std::size_t stepOfOther = 3 - stepOfX;
    std::array<FaceCorner, 4> corners;
    const auto take = [&](omUInt32 x, std::size_t first) {
      for (std::size_t other = 0; other < 2; ++other)
        corners[first + other * stepOfOther] =
            strip.axis == 1 ? cornerAt(x, upper, other, lines) : cornerAt(x, other, upper, lines);
    };
    take(strip.begin, stepOfX);
    for (omUInt32 x = strip.begin; x < strip.end; ++x) {
      corners[0] = corners[stepOfX];
      corners[stepOfOther] = corners[3];
      take(x + 1, stepOfX);
      addFace(side, corners, _shells[strip.shell]);
    }
  }

  FaceCorner cornerAt(omUInt32 x, std::size_t dy, std::size_t dz, Lines& lines) {
    LineCursor& line = lines[dy + 2 * dz];
    return {&line.at(x), line.plane, {x, _y + dy, _rows.z(_slice) + dz}};
  }

  /// Adds the two triangles of a face.
  /// \param corners by du + 2·dv
  void addFace(const FaceSide& side, const std::array<FaceCorner, 4>& corners, VoxelShell<T>& shell) {
    std::array<FaceCorner, 4> inOrder;
    std::array<omUInt32, 4> vertices;
    unsigned doubleEdges = 0;
    for (std::size_t index = 0; index < 4; ++index) {
      inOrder[index] = corners[side.du(index) + 2 * side.dv(index)];
      vertices[index] = vertexOf(inOrder[index], side.slotAt(index), shell);
      doubleEdges |= _fans[inOrder[index].corner->pattern].doubleEdges;
    }
    if (doubleEdges != 0) return addDividedFace(side, inOrder, vertices, shell);
    const omUInt32 triangles[] = {vertices[0], vertices[1], vertices[2], vertices[0], vertices[2], vertices[3]};
    shell.indices.insert(shell.indices.end(), std::begin(triangles), std::end(triangles));
  }

  /// The same of a face that may have vertices in the middle of its edges: then the triangles are around one of these.
  void addDividedFace(const FaceSide& side, const std::array<FaceCorner, 4>& corners,
                      const std::array<omUInt32, 4>& vertices, VoxelShell<T>& shell) {
    std::array<omUInt32, 8> polygon;
    std::size_t nbVertices = 0;
    std::size_t start = 0;
    for (std::size_t index = 0; index < 4; ++index) {
      polygon[nbVertices++] = vertices[index];
      const omUInt32 middle = middleOf(side, index, corners[index], corners[(index + 1) % 4], shell);
      if (middle == CornerPlane::s_noVertex) continue;
      start = nbVertices;
      polygon[nbVertices++] = middle;
    }
    for (std::size_t k = 1; k + 1 < nbVertices; ++k)
      for (const std::size_t offset : {std::size_t{0}, k, k + 1})
        shell.indices.push_back(polygon[(start + offset) % nbVertices]);
  }

  omUInt32 vertexOf(const FaceCorner& at, std::size_t slot, VoxelShell<T>& shell) {
    omUInt32& vertex = at.plane->vertices()[at.corner->firstFan + _fans[at.corner->pattern].fanOfSlot[slot]];
    if (vertex == CornerPlane::s_noVertex) {
      vertex = static_cast<omUInt32>(shell.vertices.size());
      shell.vertices.emplace_back(static_cast<T>(at.place[0]), static_cast<T>(at.place[1]),
                                  static_cast<T>(at.place[2]));
    }
    return vertex;
  }

  /// The vertex in the middle of the edge behind a corner of the face. There is one on the first of two passes of the
  /// boundary that have both ends in common: triangles of both would have the same edge.
  omUInt32 middleOf(const FaceSide& side, std::size_t index, const FaceCorner& from, const FaceCorner& to,
                    VoxelShell<T>& shell) {
    const unsigned doubleEdges = _fans[from.corner->pattern].doubleEdges;
    if (doubleEdges == 0) return CornerPlane::s_noVertex;
    const bool isAlongU = side.du(index) != side.du((index + 1) % 4);
    const std::size_t along = isAlongU ? side.u() : side.v();
    const bool isUpwards = from.place[along] < to.place[along];
    if ((doubleEdges >> (2 * along + (isUpwards ? 1 : 0)) & 1) == 0 ||
        (_fans[to.corner->pattern].doubleEdges >> (2 * along + (isUpwards ? 0 : 1)) & 1) == 0)
      return CornerPlane::s_noVertex;
    // The owner of the pass is the voxel of the face, or the background before it.
    const std::size_t across = isAlongU ? side.v() : side.u();
    const std::size_t ownerAcross = 1 - (isAlongU ? side.dv(index) : side.du(index));
    const std::size_t ownerAlongAxis = side.isUpper == (_connectivity == eVC_6) ? 0 : 1;
    if ((side.axis < across ? ownerAlongAxis : ownerAcross) != 0) return CornerPlane::s_noVertex;
    return middleVertex(isUpwards ? from.place : to.place, along, shell);
  }

  /// Two faces ask for each middle, the first of which makes it.
  omUInt32 middleVertex(const std::array<omUInt64, 3>& lower, std::size_t along, VoxelShell<T>& shell) {
    const std::pair key{lower, along};
    const auto found = _middles.find(key);
    if (found != _middles.end()) {
      const omUInt32 vertex = found->second;
      _middles.erase(found);
      return vertex;
    }
    if (lower[along] >= omUInt64{1} << (std::numeric_limits<T>::digits - 1))
      logAndThrow("Surfaces of voxels: the middle of an edge at " + std::to_string(lower[0]) + ", " +
                      std::to_string(lower[1]) + ", " + std::to_string(lower[2]) + " is not held exactly by " +
                      Mesh3d<T>().getClassName(),
                  __PRETTY_FUNCTION__, __FILE__, __LINE__);
    const auto vertex = static_cast<omUInt32>(shell.vertices.size());
    const auto middle = [&](std::size_t axis) {
      return static_cast<T>(lower[axis]) + (axis == along ? static_cast<T>(0.5) : 0);
    };
    shell.vertices.emplace_back(middle(0), middle(1), middle(2));
    _middles.emplace(key, vertex);
    return vertex;
  }

  const NumberedRows& _rows;
  eVoxelConnectivity _connectivity;
  const CornerFansTable& _fans;
  const FaceStrips& _faces;
  std::size_t _slice = 0;
  omUInt64 _y = 0;
  CornerPlane _below;
  CornerPlane _above;
  // By the lower end of the edge and its axis. Between the two faces that ask for one is at most a slice.
  std::map<std::pair<std::array<omUInt64, 3>, std::size_t>, omUInt32> _middles;
  std::vector<VoxelShell<T>> _shells;
};

template <class T>
void checkCoordinates(const RowIntersections3d& voxels) {
  omUInt64 largest = voxels.zOffset + voxels.rowIntersectionsColl.size();
  if (largest < voxels.zOffset) largest = voxels.zOffset;
  for (const RowIntersections& slice : voxels.rowIntersectionsColl) {
    largest = std::max(largest, slice.getEndRow());
    for (const PixelRun& run : slice.getRunColl()) largest = std::max<omUInt64>(largest, run.end);
  }
  constexpr omUInt64 limit = omUInt64{1} << std::numeric_limits<T>::digits;
  if (largest > limit)
    logAndThrow("Surfaces of voxels: a coordinate is " + std::to_string(largest) + ", above " + std::to_string(limit) +
                    ", up to which " + Mesh3d<T>().getClassName() + " holds every whole number",
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

}  // namespace

template <class T>
std::vector<VoxelShell<T>> traceShells(const RowIntersections3d& given, eVoxelConnectivity connectivity) {
  const RowIntersections3d voxels = normalized(given);
  checkCoordinates<T>(voxels);
  const NumberedRows rows(voxels);
  const FaceStrips strips(rows, connectivity, componentsOf(voxels, connectivity));
  return ShellMaker<T>(rows, connectivity, strips).make();
}

template <class T>
std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> makeMeshes(std::vector<VoxelShell<T>>& shells) {
  std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> meshes, roots;
  meshes.reserve(shells.size());
  for (VoxelShell<T>& shell : shells) {
    meshes.push_back(boost::make_shared<MeshWithHoles3d<T>>());
    Mesh3d<T>& mesh = meshes.back()->getExteriorMesh();
    mesh.setMesh3dType(shell.isHole ? eM3DT_Interior : eM3DT_Exterior);
    if (const BoolResult built = mesh.build(std::move(shell.vertices), std::move(shell.indices)); !built)
      logAndThrow("Surfaces of voxels: " + built.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  }
  for (std::size_t index = 0; index < shells.size(); ++index) {
    if (shells[index].parent == VoxelShell<T>::s_noParent) {
      roots.push_back(meshes[index]);
      continue;
    }
    meshes[shells[index].parent]->getMeshHoles().push_back(meshes[index]);
    meshes[index]->setParent(meshes[shells[index].parent]);
  }
  return roots;
}

#define ORMIX_GEOMETRY_INSTANTIATE_VOXEL_SHELLS(T)                                                   \
  template std::vector<VoxelShell<T>> traceShells<T>(const RowIntersections3d&, eVoxelConnectivity); \
  template std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> makeMeshes(std::vector<VoxelShell<T>>&);
ORMIX_GEOMETRY_INSTANTIATE_VOXEL_SHELLS(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_VOXEL_SHELLS(omReal64)

}  // namespace ormix::geom::detail
