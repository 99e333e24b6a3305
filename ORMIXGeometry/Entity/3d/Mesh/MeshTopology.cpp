#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopology.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshWalks.h>
#include <ORMIXGeometry/Entity/ReserveMore.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <algorithm>
#include <utility>

namespace ormix::geom {

namespace {

constexpr omUInt32 narrowed(std::size_t index) { return static_cast<omUInt32>(index); }

}  // namespace

// Nothing fails once there is room.
MeshTopology& MeshTopology::operator=(const MeshTopology& other) {
  reserve(other.getNbTriangles());
  _halfEdgeColl = other._halfEdgeColl;
  _triangleToHalfEdgeColl = other._triangleToHalfEdgeColl;
  _vertexIndexColl = other._vertexIndexColl;
  _halfEdgeTable = other._halfEdgeTable;
  return *this;
}

std::size_t MeshTopology::getNbBoundaryHalfEdges() const {
  return static_cast<std::size_t>(
      std::count_if(_halfEdgeColl.begin(), _halfEdgeColl.end(),
                    [](const HalfEdge& halfEdge) { return halfEdge.oppositeHalfEdgeIdx == s_noHalfEdge; }));
}

bool MeshTopology::isClosed() const {
  return std::none_of(_halfEdgeColl.begin(), _halfEdgeColl.end(),
                      [](const HalfEdge& halfEdge) { return halfEdge.oppositeHalfEdgeIdx == s_noHalfEdge; });
}

std::array<std::size_t, 3> MeshTopology::getTriangleVertexIndices(std::size_t triangleIdx) const {
  if (triangleIdx >= getNbTriangles()) throwInvalidTriangle(triangleIdx);
  const omUInt32* vertices = &_vertexIndexColl[3 * triangleIdx];
  return {vertices[0], vertices[1], vertices[2]};
}

std::size_t MeshTopology::getPreviousHalfEdgeIdx(std::size_t halfEdgeIdx) const {
  return _halfEdgeColl[getHalfEdge(halfEdgeIdx).nextHalfEdgeIdx].nextHalfEdgeIdx;
}

std::size_t MeshTopology::getEndVertexIdx(std::size_t halfEdgeIdx) const {
  return _halfEdgeColl[getHalfEdge(halfEdgeIdx).nextHalfEdgeIdx].startVertexIdx;
}

std::size_t MeshTopology::getHalfEdgeBetween(std::size_t halfEdgeIdx0, std::size_t halfEdgeIdx1) const {
  const std::size_t end = getHalfEdge(halfEdgeIdx1).startVertexIdx;
  std::size_t found = s_noHalfEdge;
  visitFan(*this, halfEdgeIdx0, [&](std::size_t halfEdgeIdx) {
    if (getEndVertexIdx(halfEdgeIdx) == end) found = halfEdgeIdx;
  });
  if (found == s_noHalfEdge)
    logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_HalfEdgeStartsNotLinked, halfEdgeIdx0, halfEdgeIdx1),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return found;
}

BoolResult MeshTopology::addTriangle(std::size_t vertexIdx0, std::size_t vertexIdx1, std::size_t vertexIdx2,
                                     std::size_t nbVertices) {
  const std::array<std::size_t, 3> corners{vertexIdx0, vertexIdx1, vertexIdx2};
  if (BoolResult refused = detail::checkCorners(corners, nbVertices); !refused) return refused;
  if (getNbTriangles() >= s_maxNbTriangles) return detail::tooManyTriangles();
  _halfEdgeTable.update(_halfEdgeColl, 3);
  std::array<omUInt32, 3> opposites{};
  for (std::size_t corner = 0; corner < 3; ++corner) {
    const omUInt32 start = narrowed(corners[corner]);
    const omUInt32 end = narrowed(corners[(corner + 1) % 3]);
    // The opposite half-edge knows whether there is one in this direction.
    const omUInt32 opposite = _halfEdgeTable.find(end, start, _halfEdgeColl);
    const omUInt32 taken = opposite != s_noHalfEdge ? _halfEdgeColl[opposite].oppositeHalfEdgeIdx
                                                    : _halfEdgeTable.find(start, end, _halfEdgeColl);
    if (taken != s_noHalfEdge)
      return failure(formatMessage<eEntityMessage>(eEntityMessage::eEM_HalfEdgeCannotTakeTriangle, taken));
    opposites[corner] = opposite;
  }
  detail::reserveMore(_halfEdgeColl, 3);
  detail::reserveMore(_triangleToHalfEdgeColl, 1);
  detail::reserveMore(_vertexIndexColl, 3);
  const omUInt32 first = narrowed(getNbHalfEdges());
  const omUInt32 triangle = narrowed(getNbTriangles());
  for (omUInt32 corner = 0; corner < 3; ++corner) {
    const omUInt32 opposite = opposites[corner];
    _halfEdgeColl.push_back({narrowed(corners[corner]), first + (corner + 1) % 3, opposite, triangle});
    _vertexIndexColl.push_back(narrowed(corners[corner]));
    if (opposite != s_noHalfEdge) _halfEdgeColl[opposite].oppositeHalfEdgeIdx = first + corner;
  }
  _triangleToHalfEdgeColl.push_back(first);
  return {};
}

// (a, b, c) becomes (a, c, b): the first and the third half-edge of a triangle change roles, the order stays.
void MeshTopology::reverseOrientation() {
  _halfEdgeTable.clear();
  const auto turned = [this](omUInt32 halfEdgeIdx) {
    if (halfEdgeIdx == s_noHalfEdge) return halfEdgeIdx;
    const omUInt32 next = _halfEdgeColl[halfEdgeIdx].nextHalfEdgeIdx;
    const omUInt32 first = _triangleToHalfEdgeColl[_halfEdgeColl[halfEdgeIdx].triangleIdx];
    if (halfEdgeIdx == first) return _halfEdgeColl[next].nextHalfEdgeIdx;
    return next == first ? first : halfEdgeIdx;
  };
  for (std::size_t triangle = 0; triangle < getNbTriangles(); ++triangle) {
    HalfEdge& first = _halfEdgeColl[_triangleToHalfEdgeColl[triangle]];
    HalfEdge& second = _halfEdgeColl[first.nextHalfEdgeIdx];
    HalfEdge& third = _halfEdgeColl[second.nextHalfEdgeIdx];
    std::swap(second.startVertexIdx, third.startVertexIdx);
    std::swap(_vertexIndexColl[3 * triangle + 1], _vertexIndexColl[3 * triangle + 2]);
    std::swap(first.oppositeHalfEdgeIdx, third.oppositeHalfEdgeIdx);
    for (HalfEdge* const halfEdge : {&first, &second, &third})
      halfEdge->oppositeHalfEdgeIdx = turned(halfEdge->oppositeHalfEdgeIdx);
  }
}

void MeshTopology::reserve(std::size_t nbTriangles) {
  _halfEdgeColl.reserve(3 * nbTriangles);
  _triangleToHalfEdgeColl.reserve(nbTriangles);
  _vertexIndexColl.reserve(3 * nbTriangles);
}

void MeshTopology::clear() noexcept {
  _halfEdgeColl.clear();
  _triangleToHalfEdgeColl.clear();
  _vertexIndexColl.clear();
  _halfEdgeTable.clear();
}

void MeshTopology::refresh() {
  _halfEdgeTable.clear();
  _vertexIndexColl.resize(_halfEdgeColl.size());
  omUInt32* vertexIdx = _vertexIndexColl.data();
  for (omUInt32 halfEdgeIdx : _triangleToHalfEdgeColl) {
    for (std::size_t corner = 0; corner < 3; ++corner) {
      *vertexIdx++ = _halfEdgeColl[halfEdgeIdx].startVertexIdx;
      halfEdgeIdx = _halfEdgeColl[halfEdgeIdx].nextHalfEdgeIdx;
    }
  }
}

void MeshTopology::throwInvalidHalfEdge(std::size_t halfEdgeIdx) const {
  logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_InvalidHalfEdgeIndex, halfEdgeIdx, getNbHalfEdges()),
              __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

void MeshTopology::throwInvalidTriangle(std::size_t triangleIdx) const {
  logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_InvalidTriangleIndex, triangleIdx, getNbTriangles()),
              __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

bool haveSameTriangles(const MeshTopology& a, const MeshTopology& b) {
  return a.getVertexIndexColl() == b.getVertexIndexColl();
}

}  // namespace ormix::geom
