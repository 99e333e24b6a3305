#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix::geom {

/// Message domain of entities: ids and texts. docs/messages.md says when each message occurs and what to do.
struct ORMIX_GEOMETRY_API eEntityMessage {
  /// Tag whose run-time type name is the name of the domain in the catalogue.
  struct ORMIX_GEOMETRY_API domain {};

  /// Ids of the messages, in the order of `texts`.
  enum eId {
    eEM_RowRangesIntersect,          ///< runs of one row share pixels or do not ascend
    eEM_ExteriorMeshNotInitialized,  ///< not used yet
    eEM_HalfEdgeCannotTakeTriangle,  ///< a half-edge of the new triangle has a triangle already
    eEM_InvalidHalfEdgeIndex,        ///< half-edge index out of range
    eEM_HalfEdgeStartsNotLinked,     ///< no half-edge joins the two vertices
    eEM_InvalidPointIndex,           ///< not used yet
    eEM_InvalidRowIndex,             ///< row outside a set of pixels
    eEM_InvalidYIndex,               ///< row outside a slice of a set of voxels
    eEM_InvalidZIndex,               ///< slice outside a set of voxels
    eEM_InvalidTriangleIndex,        ///< triangle index out of range
    eEM_InvalidVertexIndex,          ///< vertex index out of range
    eEM_MeshFileNotWritten,          ///< the file of a mesh could not be opened or written
    eEM_MethodNotImplemented,        ///< not used yet
    eEM_NullPointer,                 ///< a null pointer instead of an entity
    eEM_ParabolaSegmentNotFound,     ///< no edge of a skeleton between two vertices is an arc
    eEM_PolygonMismatch,             ///< not used yet
    eEM_SimplificationFailed,        ///< the boundary of pixels cannot be simplified
    eEM_ShapeInternalError,          ///< not used yet
    eEM_Shape2dNotInitialized,       ///< a constructor of shapes is used after its end
    eEM_Shape3dNotInitialized,       ///< a constructor of spatial shapes is used after its end
    eEM_RowIndexMismatch,            ///< rows of an image do not ascend
    eEM_HalfEdgesNotLinked,          ///< two half-edges of one edge are not linked as opposite
    eEM_NoDirection,                 ///< the zero vector, or one that is not finite, as a direction
    eEM_ArcAngleNotFinite,           ///< an angle of an arc that is NaN or infinite
    eEM_WrongNbSides,                ///< a number of sides for a round surface that is out of range
    eEM_NoVolume                     ///< a mesh of a round solid without a volume
  };

  /// The texts by id, with placeholders of Boost.Format; programs may match them, so they do not change.
  static constexpr std::array<MessageText, 26> texts{{
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
      {eEM_NoDirection, "A direction must be finite and not the zero vector, [%g, %g, %g] was given"},
      {eEM_ArcAngleNotFinite, "The angles of an arc must be finite, %g and %g were given"},
      {eEM_WrongNbSides, "A round surface needs 3 to 4096 sides, %d were given"},
      {eEM_NoVolume, "A mesh of a solid of revolution needs a finite volume that is not 0"},
  }};

  /// The message catalogue of the library, "ORMIXGeometry".
  static LogMessageManager& manager();
};

}  // namespace ormix::geom
