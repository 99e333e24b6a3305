#include <ORMIXGeometry/Entity/2d/Shape/OpenComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/Shape2dConstructor.h>
#include <ORMIXGeometry/Entity/MakeShapes.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <utility>

namespace ormix::geom {

struct Shape2dConstructor::State {
  ePixelConnectivity connectivity;
  omReal64 tolerance;
  detail::OpenComponents components;

  Shape2dPtrColl shapes(std::vector<RowIntersections> regions) const {
    return detail::makeShapes(std::move(regions), [this](RowIntersections&& region) {
      return makeShape(std::move(region), connectivity, tolerance);
    });
  }
};

namespace {

std::string notInitialized() { return formatMessage<eEntityMessage>(eEntityMessage::eEM_Shape2dNotInitialized); }

}  // namespace

Shape2dConstructor::Shape2dConstructor(ePixelConnectivity connectivity, omReal64 tolerance)
    : _state(new State{connectivity, tolerance, detail::OpenComponents(connectivity)}) {}
Shape2dConstructor::~Shape2dConstructor() = default;
Shape2dConstructor::Shape2dConstructor(Shape2dConstructor&&) noexcept = default;
Shape2dConstructor& Shape2dConstructor::operator=(Shape2dConstructor&&) noexcept = default;

BoolResult Shape2dConstructor::addRow(omUInt64 y, const RowIntersections::RunColl& runs) {
  return addRow(y, RowIntersections::Row(runs.data(), runs.data() + runs.size()));
}

BoolResult Shape2dConstructor::addRow(omUInt64 y, const RowIntersections::Row& runs) {
  return _state ? _state->components.addRow(y, runs) : failure(notInitialized());
}

Shape2dPtrColl Shape2dConstructor::takeFinished() {
  if (!_state) logAndThrow(notInitialized(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return _state->shapes(_state->components.takeFinished());
}

Shape2dPtrColl Shape2dConstructor::finish() {
  if (!_state) logAndThrow(notInitialized(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  const std::unique_ptr<State> last = std::move(_state);
  return last->shapes(last->components.finish());
}

}  // namespace ormix::geom
