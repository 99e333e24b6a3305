#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/LabelledRows.h>
#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>
#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <vector>

namespace ormix::geom {

using Shape2dPtr = boost::shared_ptr<Shape2d>;   ///< shared pointer to a shape
using Shape2dPtrColl = std::vector<Shape2dPtr>;  ///< shapes, none of them null

/// The shape of a set of pixels: the pixels, and the polygons that bound its connected parts, one for each, in the
/// order of traceContours(). Linear in the runs.
/// \param tolerance of the polygons, in pixels: 0 for the exact boundary, else that of SimplifyTransform2d. Each shape is
/// simplified by itself, so that neighbours need not share their border any more
/// \throw ORMIXGeometryException, logged, where a coordinate is above 16,777,216, the largest up to which omReal32
/// holds every whole number, and where polygons cannot be simplified, as by a negative tolerance
ORMIX_GEOMETRY_API Shape2dPtr makeShape(RowIntersections pixels, ePixelConnectivity connectivity = ePC_8,
                                        omReal64 tolerance = 0);

/// The connected regions of a set of pixels or of a mask, in the order of their first pixels, row by row. Linear in the
/// runs, and in the pixels of a mask.
/// \throw ORMIXGeometryException, logged, as makeShape(), and where toRowIntersections() refuses the mask
/// @{
ORMIX_GEOMETRY_API Shape2dPtrColl labelShapes(const RowIntersections& pixels, ePixelConnectivity connectivity = ePC_8,
                                              omReal64 tolerance = 0);
template <class T>
Shape2dPtrColl labelShapes(const MaskView<T>& mask, ePixelConnectivity connectivity = ePC_8, omReal64 tolerance = 0) {
  return labelShapes(toRowIntersections(mask), connectivity, tolerance);
}
/// @}

/// One shape for each label of an image of labels, in ascending order of the labels; 0 is the background. The pixels of
/// a label need not be connected; the connectivity tells its parts apart. Linear in the pixels and in what
/// labelledRows() says.
/// \throw ORMIXGeometryException, logged, as makeShape() and labelledRows()
/// @{
ORMIX_GEOMETRY_API Shape2dPtrColl shapesOfLabels(std::vector<LabelledRows> labels,
                                                 ePixelConnectivity connectivity = ePC_8, omReal64 tolerance = 0);
template <class T>
Shape2dPtrColl shapesOfLabels(const MaskView<T>& labels, ePixelConnectivity connectivity = ePC_8,
                              omReal64 tolerance = 0) {
  return shapesOfLabels(labelledRows(labels), connectivity, tolerance);
}
/// @}

}  // namespace ormix::geom
