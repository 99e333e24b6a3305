#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/Contours.h>
#include <ORMIXGeometry/Entity/2d/Shape/LabelShapes.h>
#include <ORMIXGeometry/Entity/MakeShapes.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Transform/2d/SimplifyTransform2d.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <utility>

namespace ormix::geom {

Shape2dPtr makeShape(RowIntersections pixels, ePixelConnectivity connectivity, omReal64 tolerance) {
  const auto shape = boost::make_shared<Shape2d>();
  shape->getPolygonWithHolesColl() = traceContours<omReal32>(pixels, connectivity);
  shape->getRowIntersections() = std::move(pixels);
  if (tolerance != 0 && !SimplifyTransform2d(tolerance).applyInSitu(*shape))
    logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_SimplificationFailed), __PRETTY_FUNCTION__, __FILE__,
                __LINE__);
  return shape;
}

Shape2dPtrColl labelShapes(const RowIntersections& pixels, ePixelConnectivity connectivity, omReal64 tolerance) {
  return detail::makeShapes(connectedComponents(pixels, connectivity), [&](RowIntersections&& region) {
    return makeShape(std::move(region), connectivity, tolerance);
  });
}

Shape2dPtrColl shapesOfLabels(std::vector<LabelledRows> labels, ePixelConnectivity connectivity, omReal64 tolerance) {
  return detail::makeShapes(std::move(labels), [&](LabelledRows&& label) {
    return makeShape(std::move(label.rows), connectivity, tolerance);
  });
}

}  // namespace ormix::geom
