#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix::geom {

/// Message domain of transforms: ids and texts. docs/messages.md says when each message occurs and what to do.
struct ORMIX_GEOMETRY_API eTransformMessage {
  /// Tag whose run-time type name is the name of the domain in the catalogue.
  struct ORMIX_GEOMETRY_API domain {};

  /// Ids of the messages, in the order of `texts`.
  enum eId {
    eTM_Point2dFailed,               ///< a planar point has no finite image
    eTM_Point3dFailed,               ///< a point of space has no finite image
    eTM_SelfIntersectionTable,       ///< vertices to simplify are not finite, or too many
    eTM_SelfIntersectionRefinement,  ///< edges to simplify cross each other
    eTM_TransformFailed,             ///< the entity is not supported, or has no image
    eTM_TransformNotSupported        ///< a transform of ORMIXMath without a counterpart for entities
  };

  /// The texts by id, with placeholders of Boost.Format; programs may match them, so they do not change.
  static constexpr std::array<MessageText, 6> texts{{
      {eTM_Point2dFailed, "Failed to apply %s transformation on point 2d with coordinates {%f, %f}"},
      {eTM_Point3dFailed, "Failed to apply %s transformation on point 3d with coordinates {%f, %f, %f}"},
      {eTM_SelfIntersectionTable,
       "Internal error while processing self intersection removal during simplification process : unable to build "
       "equivalence index table from polygonal approximation to input data"},
      {eTM_SelfIntersectionRefinement,
       "Internal error while processing self intersection removal during simplification process : unable to refine "
       "self intersecting segment for cross point {%f, %f}"},
      {eTM_TransformFailed, "Transform %s failed for geometry entity %s"},
      {eTM_TransformNotSupported,
       "Input geometric transformation %s is not yet supported for geometric entities transformation"},
  }};

  /// The message catalogue of the library, "ORMIXGeometry".
  static LogMessageManager& manager();
};

}  // namespace ormix::geom
