#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/Contours.h>
#include <ORMIXGeometry/Entity/2d/Shape/LabelShapes.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <utility>

namespace ormix::geom {

Shape2dPtr makeShape(RowIntersections pixels, ePixelConnectivity connectivity) {
  const auto shape = boost::make_shared<Shape2d>();
  shape->getPolygonWithHolesColl() = traceContours<omReal32>(pixels, connectivity);
  shape->getRowIntersections() = std::move(pixels);
  return shape;
}

Shape2dPtrColl labelShapes(const RowIntersections& pixels, ePixelConnectivity connectivity) {
  std::vector<RowIntersections> regions = connectedComponents(pixels, connectivity);
  Shape2dPtrColl shapes;
  shapes.reserve(regions.size());
  for (RowIntersections& region : regions) shapes.push_back(makeShape(std::move(region), connectivity));
  return shapes;
}

Shape2dPtrColl shapesOfLabels(std::vector<LabelledRows> labels, ePixelConnectivity connectivity) {
  Shape2dPtrColl shapes;
  shapes.reserve(labels.size());
  for (LabelledRows& label : labels) shapes.push_back(makeShape(std::move(label.rows), connectivity));
  return shapes;
}

}  // namespace ormix::geom
