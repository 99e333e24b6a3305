#include <ORMIXGeometry/Entity/2d/Skeleton/Skeleton2d.h>
#include <ORMIXGeometry/Entity/2d/Skeleton/SkeletonArchive.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>

namespace ormix::geom {

namespace {

AxisVertex axisVertex(const SkeletonVertex2d& vertex) {
  return {{vertex.getPoint().getX(), vertex.getPoint().getY()}, vertex.getRadius()};
}

[[noreturn]] void throwInvalidVertex(std::size_t vertexIdx, std::size_t nbVertices) {
  logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_InvalidVertexIndex, vertexIdx, nbVertices), __func__,
              __FILE__, __LINE__);
}

Point2dData<omReal64> toData(const PlanarPoint& point) { return {point.x, point.y}; }

}  // namespace

Skeleton2d::Skeleton2d(const MedialAxis& axis) : _edgeColl(axis.edges), _partColl(axis.parts) {
  _vertexColl.reserve(axis.vertices.size());
  for (const AxisVertex& vertex : axis.vertices) _vertexColl.emplace_back(toData(vertex.point), vertex.radius);
  if (const BoolResult valid = validate(*this); !valid) logAndThrow(valid.getMessage(), __func__, __FILE__, __LINE__);
  linkVertices();
}

Skeleton2d& Skeleton2d::operator=(const Skeleton2d& other) {
  if (this != &other) *this = Skeleton2d(other);
  return *this;
}

const SkeletonVertex2d& Skeleton2d::getVertex(std::size_t vertexIdx) const {
  if (vertexIdx >= _vertexColl.size()) throwInvalidVertex(vertexIdx, _vertexColl.size());
  return _vertexColl[vertexIdx];
}

const AxisEdge& Skeleton2d::getEdge(std::size_t edgeIdx) const {
  if (edgeIdx >= _edgeColl.size())
    logAndThrow("Edge with index " + std::to_string(edgeIdx) + " is not valid given edge collection size " +
                    std::to_string(_edgeColl.size()),
                __func__, __FILE__, __LINE__);
  return _edgeColl[edgeIdx];
}

AxisCurve Skeleton2d::getCurve(std::size_t edgeIdx) const {
  const AxisEdge& edge = getEdge(edgeIdx);
  return {axisVertex(_vertexColl[edge.vertices[0]]), axisVertex(_vertexColl[edge.vertices[1]]),
          _partColl[edge.parts[0]], _partColl[edge.parts[1]]};
}

Parabola2d Skeleton2d::getParabola(std::size_t startVertexIdx, std::size_t endVertexIdx) const {
  if (endVertexIdx >= _vertexColl.size()) throwInvalidVertex(endVertexIdx, _vertexColl.size());
  for (const omUInt32 edgeIdx : getVertex(startVertexIdx).getEdgeIndexColl()) {
    const AxisEdge& edge = _edgeColl[edgeIdx];
    if (edge.vertices[0] + std::size_t{edge.vertices[1]} != startVertexIdx + endVertexIdx) continue;
    const AxisPart &left = _partColl[edge.parts[0]], &right = _partColl[edge.parts[1]];
    if (left.isVertex == right.isVertex) continue;
    const AxisPart &focus = left.isVertex ? left : right, &directrix = left.isVertex ? right : left;
    return {toData(focus.start), Line2d(toData(directrix.start), toData(directrix.end))};
  }
  logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_ParabolaSegmentNotFound, startVertexIdx, endVertexIdx),
              __func__, __FILE__, __LINE__);
}

std::vector<omUInt32> Skeleton2d::getNearestParts(std::size_t vertexIdx) const {
  std::vector<omUInt32> parts;
  for (const omUInt32 edgeIdx : getVertex(vertexIdx).getEdgeIndexColl())
    parts.insert(parts.end(), _edgeColl[edgeIdx].parts.begin(), _edgeColl[edgeIdx].parts.end());
  std::sort(parts.begin(), parts.end());
  parts.erase(std::unique(parts.begin(), parts.end()), parts.end());
  return parts;
}

MedialAxis Skeleton2d::toMedialAxis() const {
  MedialAxis axis;
  axis.vertices.reserve(_vertexColl.size());
  for (const SkeletonVertex2d& vertex : _vertexColl) axis.vertices.push_back(axisVertex(vertex));
  axis.edges = _edgeColl;
  axis.parts = _partColl;
  return axis;
}

void Skeleton2d::clear() noexcept {
  _vertexColl.clear();
  _edgeColl.clear();
  _partColl.clear();
}

BoolResult Skeleton2d::validate(const Skeleton2d& skeleton) {
  constexpr std::size_t s_maxNb = std::numeric_limits<omUInt32>::max();
  const std::size_t nbVertices = skeleton._vertexColl.size(), nbParts = skeleton._partColl.size();
  if (std::max({nbVertices, nbParts, skeleton._edgeColl.size()}) >= s_maxNb)
    return failure("A skeleton has 2^32 parts");
  for (std::size_t v = 0; v < nbVertices; ++v) {
    const SkeletonVertex2d& vertex = skeleton._vertexColl[v];
    if (!std::isfinite(vertex.getPoint().getX()) || !std::isfinite(vertex.getPoint().getY()))
      return failure("Vertex " + std::to_string(v) + " of a skeleton is not finite");
    if (!(vertex.getRadius() >= 0 && std::isfinite(vertex.getRadius())))
      return failure("The radius of vertex " + std::to_string(v) + " of a skeleton is not a number of at least 0");
  }
  for (std::size_t e = 0; e < skeleton._edgeColl.size(); ++e) {
    const AxisEdge& edge = skeleton._edgeColl[e];
    if (std::max(edge.vertices[0], edge.vertices[1]) >= nbVertices || std::max(edge.parts[0], edge.parts[1]) >= nbParts)
      return failure("Edge " + std::to_string(e) +
                     " of a skeleton refers to a vertex or to a part that it does not have");
  }
  return true;
}

void Skeleton2d::linkVertices() {
  for (std::size_t e = 0; e < _edgeColl.size(); ++e)
    for (const omUInt32 vertex : _edgeColl[e].vertices) _vertexColl[vertex].addEdgeIndex(static_cast<omUInt32>(e));
}

std::ostream& operator<<(std::ostream& stream, const Skeleton2d& skeleton) {
  stream << "[vertices=[";
  const char* separator = "";
  for (const SkeletonVertex2d& vertex : skeleton.getVertexColl()) {
    stream << separator << vertex;
    separator = ", ";
  }
  stream << "], edges=[";
  separator = "";
  for (const AxisEdge& edge : skeleton.getEdgeColl()) {
    stream << separator << '[' << edge.vertices[0] << ", " << edge.vertices[1] << ']';
    separator = ", ";
  }
  return stream << "]]";
}

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_LEVELS(, Skeleton2d, BaseGeometryEntity2d)
