#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <ostream>
#include <utility>

namespace ormix::geom {

template <class T>
PolygonWithHoles2d<T>::PolygonWithHoles2d(const PolygonWithHoles2d& other) = default;
template <class T>
PolygonWithHoles2d<T>::PolygonWithHoles2d(PolygonWithHoles2d&& other) noexcept = default;
template <class T>
PolygonWithHoles2d<T>& PolygonWithHoles2d<T>::operator=(const PolygonWithHoles2d& other) = default;
template <class T>
PolygonWithHoles2d<T>& PolygonWithHoles2d<T>::operator=(PolygonWithHoles2d&& other) noexcept = default;
template <class T>
PolygonWithHoles2d<T>::~PolygonWithHoles2d() = default;

template <class T>
omUInt32 PolygonWithHoles2d<T>::getNbTotPolygons() const {
  return static_cast<omUInt32>(sumOverNodes(*this, [](const PolygonWithHoles2d&) { return std::size_t{1}; }));
}

template <class T>
omUInt32 PolygonWithHoles2d<T>::getNbTotPoints() const {
  return static_cast<omUInt32>(
      sumOverNodes(*this, [](const PolygonWithHoles2d& node) { return node.getNbExteriorPoints(); }));
}

namespace {

constexpr const char* s_endOfNode = "]]";

template <class T>
void printOpening(std::ostream& stream, const PolygonWithHoles2d<T>& node) {
  stream << "[exterior=" << node.getExteriorPolygon() << ", holes=[";
}

}  // namespace

template <class T>
std::ostream& operator<<(std::ostream& stream, const PolygonWithHoles2d<T>& polygon) {
  // The nodes that are open and how many of their holes are printed.
  std::vector<std::pair<const PolygonWithHoles2d<T>*, std::size_t>> path{{&polygon, 0}};
  printOpening(stream, polygon);
  while (!path.empty()) {
    auto& [node, nbPrinted] = path.back();
    if (nbPrinted == node->getNbHoles()) {
      stream << s_endOfNode;
      path.pop_back();
      continue;
    }
    if (nbPrinted > 0) stream << ", ";
    const auto* hole = node->getPolygonHoles()[nbPrinted++].get();
    if (!hole) {
      stream << "null";
    } else {
      printOpening(stream, *hole);
      path.emplace_back(hole, 0);
    }
  }
  return stream;
}

template <class TOut, class TIn>
PolygonWithHoles2d<TOut> cast(const PolygonWithHoles2d<TIn>& polygon) {
  PolygonWithHoles2d<TOut> result;
  result.copyTree(polygon);
  return result;
}

template <class TOut, class TIn>
void cast(const PolygonWithHoles2d<TIn>& polygon, PolygonWithHoles2d<TOut>& result) {
  result = cast<TOut>(polygon);
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(PolygonWithHoles2d)
ORMIX_GEOMETRY_INSTANTIATE_CASTS(PolygonWithHoles2d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, PolygonWithHoles2d)
