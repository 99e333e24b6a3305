#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/MeshWithHoles/PrintAddresses.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <ostream>
#include <utility>

namespace ormix::geom {

template <class T>
MeshWithHoles3d<T>::MeshWithHoles3d(const MeshWithHoles3d& other) = default;
template <class T>
MeshWithHoles3d<T>::MeshWithHoles3d(MeshWithHoles3d&& other) noexcept = default;
template <class T>
MeshWithHoles3d<T>& MeshWithHoles3d<T>::operator=(const MeshWithHoles3d& other) = default;
template <class T>
MeshWithHoles3d<T>& MeshWithHoles3d<T>::operator=(MeshWithHoles3d&& other) noexcept = default;
template <class T>
MeshWithHoles3d<T>::~MeshWithHoles3d() = default;

template <class T>
std::size_t MeshWithHoles3d<T>::getNbTotMesh() const {
  return sumOverNodes(*this, [](const MeshWithHoles3d&) { return std::size_t{1}; });
}

template <class T>
std::size_t MeshWithHoles3d<T>::getNbTotVertices() const {
  return sumOverNodes(*this, [](const MeshWithHoles3d& node) { return node.getNbExteriorVertices(); });
}

template <class T>
std::size_t MeshWithHoles3d<T>::getNbTotEdges() const {
  return sumOverNodes(*this, [](const MeshWithHoles3d& node) { return node.getNbExteriorEdges(); });
}

template <class T>
std::size_t MeshWithHoles3d<T>::getNbTotTriangles() const {
  return sumOverNodes(*this, [](const MeshWithHoles3d& node) { return node.getNbExteriorTriangles(); });
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const MeshWithHoles3d<T>& mesh) {
  stream << '[' << mesh.getExteriorMesh();
  if (mesh.hasHoles()) detail::printAddresses(stream << ", ", mesh.getMeshHoles());
  return stream << ']';
}

// Iterative, as everything that walks a tree.
template <class T>
bool compare(const MeshWithHoles3d<T>& a, const MeshWithHoles3d<T>& b, std::common_type_t<T> tolerance) {
  using Node = const MeshWithHoles3d<T>*;
  std::vector<std::pair<Node, Node>> pending{{&a, &b}};
  while (!pending.empty()) {
    const auto [left, right] = pending.back();
    pending.pop_back();
    if (left->getNbHoles() != right->getNbHoles() ||
        !compare(left->getExteriorMesh(), right->getExteriorMesh(), tolerance))
      return false;
    for (std::size_t hole = 0; hole < left->getNbHoles(); ++hole) {
      const Node leftHole = left->getMeshHoles()[hole].get();
      const Node rightHole = right->getMeshHoles()[hole].get();
      if (!leftHole != !rightHole) return false;
      if (leftHole) pending.emplace_back(leftHole, rightHole);
    }
  }
  return true;
}

template <class TOut, class TIn>
boost::shared_ptr<MeshWithHoles3d<TOut>> cast(const MeshWithHoles3d<TIn>& mesh) {
  auto result = boost::make_shared<MeshWithHoles3d<TOut>>();
  result->copyTree(mesh);
  return result;
}

#define ORMIX_GEOMETRY_INSTANTIATE_TREE_CAST(TOut, TIn) \
  template ORMIX_GEOMETRY_API boost::shared_ptr<MeshWithHoles3d<TOut>> cast<TOut>(const MeshWithHoles3d<TIn>&);
#define ORMIX_GEOMETRY_INSTANTIATE_TREE(T)                                                        \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const MeshWithHoles3d<T>&); \
  template ORMIX_GEOMETRY_API bool compare(const MeshWithHoles3d<T>&, const MeshWithHoles3d<T>&,  \
                                           std::common_type_t<T>);                                \
  ORMIX_GEOMETRY_INSTANTIATE_TREE_CAST(omInt32, T)                                                \
  ORMIX_GEOMETRY_INSTANTIATE_TREE_CAST(omUInt32, T)                                               \
  ORMIX_GEOMETRY_INSTANTIATE_TREE_CAST(omReal32, T)                                               \
  ORMIX_GEOMETRY_INSTANTIATE_TREE_CAST(omReal64, T)
ORMIX_GEOMETRY_INSTANTIATE_TREE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_TREE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_TREE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_TREE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_TREE
#undef ORMIX_GEOMETRY_INSTANTIATE_TREE_CAST

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, MeshWithHoles3d)
