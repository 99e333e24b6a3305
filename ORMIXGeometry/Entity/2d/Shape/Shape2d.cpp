#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <ostream>
#include <utility>

namespace ormix::geom {

namespace {

using Node = PolygonWithHoles2d<omReal32>;

Shape2d::PolygonWithHolesColl copyOf(const Shape2d::PolygonWithHolesColl& polygons) {
  Shape2d::PolygonWithHolesColl copies;
  copies.reserve(polygons.size());
  for (const auto& polygon : polygons) copies.push_back(polygon ? boost::make_shared<Node>(*polygon) : nullptr);
  return copies;
}

omUInt32 sumOverPolygons(const Shape2d& shape, omUInt32 (Node::*count)() const) {
  omUInt32 sum = 0;
  for (const auto& polygon : shape.getPolygonWithHolesColl())
    if (polygon) sum += (*polygon.*count)();
  return sum;
}

}  // namespace

Shape2d::Shape2d(const Shape2d& other)
    : Base(other),
      _rowIntersections(other._rowIntersections),
      _polygonWithHolesColl(copyOf(other._polygonWithHolesColl)) {}

Shape2d::Shape2d(Shape2d&& other) noexcept = default;

Shape2d& Shape2d::operator=(const Shape2d& other) {
  if (this != &other) *this = Shape2d(other);
  return *this;
}

Shape2d& Shape2d::operator=(Shape2d&& other) noexcept = default;

Shape2d::~Shape2d() = default;

void Shape2d::setPolygonWithHolesColl(const PolygonWithHolesColl& polygons) {
  _polygonWithHolesColl = copyOf(polygons);
}

omUInt32 Shape2d::getNbTotPolygons() const { return sumOverPolygons(*this, &Node::getNbTotPolygons); }
omUInt32 Shape2d::getNbTotPoints() const { return sumOverPolygons(*this, &Node::getNbTotPoints); }

void Shape2d::clear() {
  clearRowIntersections();
  clearPolygonWithHolesColl();
}

std::ostream& operator<<(std::ostream& stream, const Shape2d& shape) {
  stream << '[';
  const char* separator = "";
  for (const auto& polygon : shape.getPolygonWithHolesColl()) {
    stream << separator;
    if (polygon)
      stream << *polygon;
    else
      stream << "null";
    separator = ", ";
  }
  return stream << ']';
}

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_LEVELS(, Shape2d, BaseGeometryEntity2d)
