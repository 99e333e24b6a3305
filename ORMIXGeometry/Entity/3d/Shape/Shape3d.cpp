#include <ORMIXGeometry/Entity/3d/MeshWithHoles/PrintAddresses.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <utility>

namespace ormix::geom {

namespace {

using Node = MeshWithHoles3d<omReal32>;

std::size_t sumOverMeshes(const Shape3d& shape, std::size_t (Node::*count)() const) {
  std::size_t sum = 0;
  for (const auto& mesh : shape.getMeshWithHolesColl())
    if (mesh) sum += (*mesh.*count)();
  return sum;
}

}  // namespace

Shape3d::Shape3d(const Shape3d& other) : Base(other), _rowIntersections(other._rowIntersections) {
  _meshWithHolesColl.reserve(other._meshWithHolesColl.size());
  for (const auto& mesh : other._meshWithHolesColl)
    _meshWithHolesColl.push_back(mesh ? boost::make_shared<Node>(*mesh) : nullptr);
}

Shape3d::Shape3d(Shape3d&& other) noexcept = default;

Shape3d& Shape3d::operator=(const Shape3d& other) {
  if (this != &other) *this = Shape3d(other);
  return *this;
}

Shape3d& Shape3d::operator=(Shape3d&& other) noexcept = default;

Shape3d::~Shape3d() = default;

const RowIntersections& Shape3d::slice(omUInt64 z) const {
  const auto& slices = _rowIntersections.rowIntersectionsColl;
  const omUInt64 first = _rowIntersections.zOffset;
  if (z < first || z - first >= slices.size())
    logAndThrow(
        formatMessage<eEntityMessage>(eEntityMessage::eEM_InvalidZIndex, z, first, first + omUInt64{slices.size()}),
        __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return slices[static_cast<std::size_t>(z - first)];
}

RowIntersections::Row Shape3d::getRowIntersections(omUInt64 z, omUInt64 y) const {
  const RowIntersections& rows = slice(z);
  if (y < rows.getStartRow() || y >= rows.getEndRow())
    logAndThrow(
        formatMessage<eEntityMessage>(eEntityMessage::eEM_InvalidYIndex, y, rows.getStartRow(), rows.getEndRow()),
        __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return rows.getRow(y);
}

std::size_t Shape3d::getNbTotVertices() const { return sumOverMeshes(*this, &Node::getNbTotVertices); }
std::size_t Shape3d::getNbTotEdges() const { return sumOverMeshes(*this, &Node::getNbTotEdges); }
std::size_t Shape3d::getNbTotTriangles() const { return sumOverMeshes(*this, &Node::getNbTotTriangles); }
std::size_t Shape3d::getNbExteriorVertices() const { return sumOverMeshes(*this, &Node::getNbExteriorVertices); }
std::size_t Shape3d::getNbExteriorEdges() const { return sumOverMeshes(*this, &Node::getNbExteriorEdges); }
std::size_t Shape3d::getNbExteriorTriangles() const { return sumOverMeshes(*this, &Node::getNbExteriorTriangles); }

void Shape3d::clear() {
  clearRowIntersections();
  clearMeshWithHolesColl();
}

std::ostream& operator<<(std::ostream& stream, const Shape3d& shape) {
  return detail::printAddresses(stream, shape.getMeshWithHolesColl());
}

bool compare(const Shape3d& a, const Shape3d& b, omReal32 tolerance) {
  const auto& meshesOfA = a.getMeshWithHolesColl();
  const auto& meshesOfB = b.getMeshWithHolesColl();
  if (a.getRowIntersections() != b.getRowIntersections() || meshesOfA.size() != meshesOfB.size()) return false;
  for (std::size_t index = 0; index < meshesOfA.size(); ++index) {
    const Node* left = meshesOfA[index].get();
    const Node* right = meshesOfB[index].get();
    if (!left != !right || (left && !compare(*left, *right, tolerance))) return false;
  }
  return true;
}

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_LEVELS(, Shape3d, BaseGeometryEntity3d)
