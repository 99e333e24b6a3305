#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix::geom {

/// Texts about transforms.
struct ORMIX_GEOMETRY_API eTransformMessage {
  struct ORMIX_GEOMETRY_API domain {};

  enum eId {
    eTM_Point2dFailed,
    eTM_Point3dFailed,
    eTM_SelfIntersectionTable,
    eTM_SelfIntersectionRefinement,
    eTM_TransformFailed,
    eTM_TransformNotSupported
  };

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

  /// The library's catalogue.
  static LogMessageManager& manager();
};

}  // namespace ormix::geom
