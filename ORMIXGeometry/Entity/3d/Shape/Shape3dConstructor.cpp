#include <ORMIXGeometry/Entity/3d/Shape/OpenVoxelComponents.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3dConstructor.h>
#include <ORMIXGeometry/Entity/MakeShapes.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <utility>

namespace ormix::geom {

struct Shape3dConstructor::State {
  eVoxelConnectivity connectivity;
  eShapeSurface surface;
  detail::OpenVoxelComponents components;

  Shape3dPtrColl shapes(std::vector<RowIntersections3d> regions) const {
    return detail::makeShapes(std::move(regions), [this](RowIntersections3d&& region) {
      return makeShape(std::move(region), surface, connectivity);
    });
  }
};

namespace {

std::string notInitialized() { return formatMessage<eEntityMessage>(eEntityMessage::eEM_Shape3dNotInitialized); }

}  // namespace

Shape3dConstructor::Shape3dConstructor(eVoxelConnectivity connectivity, eShapeSurface surface)
    : _state(new State{connectivity, surface, detail::OpenVoxelComponents(connectivity)}) {}
Shape3dConstructor::~Shape3dConstructor() = default;
Shape3dConstructor::Shape3dConstructor(Shape3dConstructor&&) noexcept = default;
Shape3dConstructor& Shape3dConstructor::operator=(Shape3dConstructor&&) noexcept = default;

BoolResult Shape3dConstructor::addSlice(omUInt64 z, const RowIntersections& slice) {
  return _state ? _state->components.addSlice(z, slice) : failure(notInitialized());
}

Shape3dPtrColl Shape3dConstructor::takeFinished() {
  if (!_state) logAndThrow(notInitialized(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return _state->shapes(_state->components.takeFinished());
}

Shape3dPtrColl Shape3dConstructor::finish() {
  if (!_state) logAndThrow(notInitialized(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  const std::unique_ptr<State> last = std::move(_state);
  return last->shapes(last->components.finish());
}

}  // namespace ormix::geom
