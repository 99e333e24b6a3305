#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix::geom {

/// Texts about estimations.
struct ORMIX_GEOMETRY_API eEstimationMessage {
  struct ORMIX_GEOMETRY_API domain {};

  enum eId {
    eEsM_CircleRank,
    eEsM_CircleCostFunction,
    eEsM_EllipseRank,
    eEsM_EllipseNotAnEllipse,
    eEsM_EllipseNullRadius,
    eEsM_EllipsoidRank,
    eEsM_EllipsoidNotAnEllipsoid,
    eEsM_EllipsoidNullRadius,
    eEsM_Homography2dRank,
    eEsM_Homography3dRank,
    eEsM_IntersectionUndefined,
    eEsM_LineNoDirection,
    eEsM_PlanNoDirection,
    eEsM_CollectionSizeMismatch,
    eEsM_Rigid2dRank,
    eEsM_Rigid3dRank,
    eEsM_Translation2dRank,
    eEsM_Translation3dRank,
    eEsM_Similarity2dRank,
    eEsM_Similarity3dRank,
    eEsM_SphereRank,
    eEsM_SphereCostFunction
  };

  static constexpr std::array<MessageText, 22> texts{{
      {eEsM_CircleRank, "Can't estimate circle 2d from cloud of points, insufficient matrix rank for estimation"},
      {eEsM_CircleCostFunction, "Can't initialize circle 2d cost function\n%s"},
      {eEsM_EllipseRank, "Can't estimate ellipse 2d from cloud of points, insufficient matrix rank for estimation"},
      {eEsM_EllipseNotAnEllipse,
       "Can't estimate ellipse 2d from cloud of points, estimation does not lead to an ellipse representation"},
      {eEsM_EllipseNullRadius, "Ellipse radius should not be null"},
      {eEsM_EllipsoidRank, "Can't estimate ellipsoid 3d from cloud of points, insufficient matrix rank for estimation"},
      {eEsM_EllipsoidNotAnEllipsoid,
       "Can't estimate ellipsoid 3d from cloud of points, estimation does not lead to an ellipsoid representation"},
      {eEsM_EllipsoidNullRadius, "Ellipsoid radius should not be null"},
      {eEsM_Homography2dRank,
       "Invalid matrix rank %d for homography 2d linear system while expecting at least %d rank"},
      {eEsM_Homography3dRank,
       "Invalid matrix rank %d for homography 3d linear system while expecting at least %d rank"},
      {eEsM_IntersectionUndefined, "Can't estimate intersection point 2d, this point is undefined"},
      // "priviledge" is intended: the texts are matched by existing log filters.
      {eEsM_LineNoDirection, "Can't estimate line 2d from cloud of points, no priviledge direction among cloud"},
      {eEsM_PlanNoDirection, "Can't estimate plan 3d from cloud of points, no priviledge direction among cloud"},
      {eEsM_CollectionSizeMismatch, "First collection of points size %d mismatch with second one size %d"},
      {eEsM_Rigid2dRank, "Can't estimate rigid transformation 2d, insufficient matrix rank for estimation"},
      {eEsM_Rigid3dRank, "Can't estimate rigid transformation 3d, insufficient matrix rank for estimation"},
      {eEsM_Translation2dRank, "Can't estimate translation transformation 2d, insufficient matrix rank for estimation"},
      {eEsM_Translation3dRank, "Can't estimate translation transformation 3d, insufficient matrix rank for estimation"},
      {eEsM_Similarity2dRank, "Can't estimate similarity transformation 2d, insufficient matrix rank for estimation"},
      {eEsM_Similarity3dRank, "Can't estimate similarity transformation 3d, insufficient matrix rank for estimation"},
      {eEsM_SphereRank, "Can't estimate sphere 3d from cloud of points, insufficient matrix rank for estimation"},
      {eEsM_SphereCostFunction, "Can't initialize sphere 3d cost function\n%s"},
  }};

  /// The library's catalogue.
  static LogMessageManager& manager();
};

}  // namespace ormix::geom
