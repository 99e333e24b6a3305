#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix::geom {

/// Texts about entities.
struct ORMIX_GEOMETRY_API eEntityMessage {
  struct ORMIX_GEOMETRY_API domain {};

  enum eId {
    eEM_RowRangesIntersect,
    eEM_ExteriorMeshNotInitialized,
    eEM_HalfEdgeCannotTakeTriangle,
    eEM_InvalidHalfEdgeIndex,
    eEM_HalfEdgeStartsNotLinked,
    eEM_InvalidPointIndex,
    eEM_InvalidRowIndex,
    eEM_InvalidYIndex,
    eEM_InvalidZIndex,
    eEM_InvalidTriangleIndex,
    eEM_InvalidVertexIndex,
    eEM_MeshFileNotWritten,
    eEM_MethodNotImplemented,
    eEM_NullPointer,
    eEM_ParabolaSegmentNotFound,
    eEM_PolygonMismatch,
    eEM_SimplificationFailed,
    eEM_ShapeInternalError,
    eEM_Shape2dNotInitialized,
    eEM_Shape3dNotInitialized,
    eEM_RowIndexMismatch,
    eEM_HalfEdgesNotLinked
  };

  static constexpr std::array<MessageText, 22> texts{{
      {eEM_RowRangesIntersect,
       "Can't add row intersection with row range [%d, %d[ to existing row range [%d, %d[, ranges should not "
       "intersect"},
      {eEM_ExteriorMeshNotInitialized, "Exterior mesh has not been initialized"},
      {eEM_HalfEdgeCannotTakeTriangle, "Half edge with index %d cannot be associated to a new triangle"},
      {eEM_InvalidHalfEdgeIndex, "Half edge with index %d is not valid given half edge collection size %d"},
      {eEM_HalfEdgeStartsNotLinked, "Starting points of half edges %d and %d are not linked by an half edge"},
      {eEM_InvalidPointIndex, "Invalid point index, out of bounds"},
      {eEM_InvalidRowIndex, "Invalid row index %d for shape with starting row index %d and ending row index %d"},
      {eEM_InvalidYIndex, "Invalid y index %d for shape with starting y index %d and ending y index %d"},
      {eEM_InvalidZIndex, "Invalid z index %d for shape with starting z index %d and ending z index %d"},
      {eEM_InvalidTriangleIndex, "Triangle with index %d is not valid given triangle collection size %d"},
      {eEM_InvalidVertexIndex, "Vertex with index %d is not valid given vertex collection size %d"},
      {eEM_MeshFileNotWritten, "Failed to write mesh 3d data to file %s"},
      {eEM_MethodNotImplemented, "Method %s is not implemented"},
      {eEM_NullPointer, "Input shared pointer should not be null"},
      {eEM_ParabolaSegmentNotFound,
       "Parabola segment starting with point %d and ending with point %d has not been found"},
      {eEM_PolygonMismatch, "Polygon to set mismatch with segment already set polygon"},
      {eEM_SimplificationFailed, "Polygon simplification failed while processing shape 2d construction"},
      // "interal" is intended: the texts are matched by existing log filters.
      {eEM_ShapeInternalError, "Shape 2d constructor has encountered an interal error"},
      {eEM_Shape2dNotInitialized, "Shape 2d constructor has not been initialized"},
      {eEM_Shape3dNotInitialized, "Shape 3d constructor has not been initialized"},
      // The two spaces before "shape" are intended.
      {eEM_RowIndexMismatch,
       "Row index mismatch for shapes merge, main shape row index = %d should be lower or equal to new  shape row "
       "index = %d"},
      {eEM_HalfEdgesNotLinked, "Half edges with indexes %d and %d should be linked"},
  }};

  /// The library's catalogue.
  static LogMessageManager& manager();
};

}  // namespace ormix::geom
