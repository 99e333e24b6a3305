#include <ORMIXGeometry/Entity/3d/Shape/CornerFans.h>

#include <algorithm>
#include <utility>

namespace ormix::geom::detail {

namespace {

/// Edge from the corner along an axis, on its lower or upper side, with the four voxels around it.
struct CornerEdge {
  std::size_t axis;
  std::size_t side;

  std::size_t p() const { return (axis + 1) % 3; }
  std::size_t q() const { return (axis + 2) % 3; }
  bool hasVoxel(std::size_t pattern, std::size_t bp, std::size_t bq) const {
    return (pattern >> (side << axis | bp << p() | bq << q()) & 1) != 0;
  }
  // The face across p (or q) that is at this place along the other one.
  std::size_t faceAcrossP(std::size_t bq) const { return faceSlot(p(), bq, side); }
  std::size_t faceAcrossQ(std::size_t bp) const { return faceSlot(q(), side, bp); }
};

using Fans = std::array<std::size_t, 12>;  // the lowest slot of the fan of each face

void join(Fans& fans, std::size_t a, std::size_t b) {
  const auto [kept, joined] = std::minmax({fans[a], fans[b]});
  std::replace(fans.begin(), fans.end(), std::size_t{joined}, std::size_t{kept});
}

/// The slots of the faces at an edge: the first two and the last two are joined there. There are none, two or four.
std::array<std::size_t, 4> facesAt(const CornerEdge& edge, std::size_t pattern, eVoxelConnectivity connectivity,
                                   std::size_t& nbFaces) {
  std::array<std::size_t, 4> faces{};
  nbFaces = 0;
  const auto has = [&](std::size_t bp, std::size_t bq) { return edge.hasVoxel(pattern, bp, bq); };
  if (has(0, 0) == has(1, 1) && has(0, 1) == has(1, 0) && has(0, 0) != has(0, 1)) {
    const bool isOwnerOnDiagonal = has(0, 0) == (connectivity == eVC_6);
    for (std::size_t bp = 0; bp < 2; ++bp) {
      const std::size_t bq = isOwnerOnDiagonal ? bp : 1 - bp;
      faces[nbFaces++] = edge.faceAcrossP(bq);
      faces[nbFaces++] = edge.faceAcrossQ(bp);
    }
    return faces;
  }
  for (std::size_t k = 0; k < 2; ++k) {
    if (has(0, k) != has(1, k)) faces[nbFaces++] = edge.faceAcrossP(k);
    if (has(k, 0) != has(k, 1)) faces[nbFaces++] = edge.faceAcrossQ(k);
  }
  return faces;
}

CornerFans fansOf(std::size_t pattern, eVoxelConnectivity connectivity) {
  Fans fans{};
  for (std::size_t slot = 0; slot < fans.size(); ++slot) fans[slot] = slot;
  std::array<bool, 12> isFace{};
  std::array<std::pair<std::size_t, std::size_t>, 6> passes{};  // a face of each pass of the edges with four
  for (std::size_t index = 0; index < 6; ++index) {
    std::size_t nbFaces = 0;
    const auto faces = facesAt({index / 2, index % 2}, pattern, connectivity, nbFaces);
    for (std::size_t k = 0; k < nbFaces; k += 2) join(fans, faces[k], faces[k + 1]);
    for (std::size_t k = 0; k < nbFaces; ++k) isFace[faces[k]] = true;
    if (nbFaces == 4) passes[index] = {faces[0], faces[2]};
  }
  CornerFans result;
  std::array<omUInt8, 12> numbers{};
  for (std::size_t slot = 0; slot < fans.size(); ++slot) {
    if (!isFace[slot]) continue;
    if (fans[slot] == slot) numbers[slot] = result.nbFans++;
    result.fanOfSlot[slot] = numbers[fans[slot]];
  }
  for (std::size_t index = 0; index < 6; ++index) {
    const auto [first, second] = passes[index];
    if (first != second && fans[first] == fans[second])
      result.doubleEdges = static_cast<omUInt8>(result.doubleEdges | 1u << index);
  }
  return result;
}

CornerFansTable makeTable(eVoxelConnectivity connectivity) {
  CornerFansTable table;
  for (std::size_t pattern = 0; pattern < table.size(); ++pattern) table[pattern] = fansOf(pattern, connectivity);
  return table;
}

}  // namespace

const CornerFansTable& cornerFans(eVoxelConnectivity connectivity) {
  static const CornerFansTable of6 = makeTable(eVC_6);
  static const CornerFansTable of26 = makeTable(eVC_26);
  return connectivity == eVC_6 ? of6 : of26;
}

}  // namespace ormix::geom::detail
