#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix::geom {

/// Message domain of estimators: ids and texts. docs/messages.md says when each message occurs and what to do.
struct ORMIX_GEOMETRY_API eEstimationMessage {
  /// Tag whose run-time type name is the name of the domain in the catalogue.
  struct ORMIX_GEOMETRY_API domain {};

  /// Ids of the messages, in the order of `texts`.
  enum eId {
    eEsM_CircleRank,               ///< the points coincide or are collinear
    eEsM_CircleCostFunction,       ///< no points, or a point without two finite coordinates
    eEsM_EllipseRank,              ///< the points coincide, or nearly
    eEsM_EllipseNotAnEllipse,      ///< the best conic is not an ellipse, or not unique
    eEsM_EllipseNullRadius,        ///< the minor radius is 0
    eEsM_EllipsoidRank,            ///< the points coincide or are collinear
    eEsM_EllipsoidNotAnEllipsoid,  ///< the best quadric is not an ellipsoid, or not unique
    eEsM_EllipsoidNullRadius,      ///< the minor radius is 0
    eEsM_Homography2dRank,         ///< sources or targets coincide or are collinear
    eEsM_Homography3dRank,         ///< sources or targets coincide or are coplanar
    eEsM_IntersectionUndefined,    ///< parallel lines, or fewer than two
    eEsM_LineNoDirection,          ///< the points have no unique main direction
    eEsM_PlanNoDirection,          ///< the points have no unique normal direction
    eEsM_CollectionSizeMismatch,   ///< as many sources as targets are required
    eEsM_Rigid2dRank,              ///< sources or targets coincide, or nearly
    eEsM_Rigid3dRank,              ///< the pairs do not determine a rotation
    eEsM_Translation2dRank,        ///< sources or targets coincide, or nearly
    eEsM_Translation3dRank,        ///< sources or targets coincide, or nearly
    eEsM_Similarity2dRank,         ///< sources or targets coincide, or nearly
    eEsM_Similarity3dRank,         ///< the pairs do not determine a rotation
    eEsM_SphereRank,               ///< the points coincide, are collinear or coplanar
    eEsM_SphereCostFunction,       ///< no points, or a point without three finite coordinates
    eEsM_NoSuchParameter,          ///< a report has no parameter of that index or name
    eEsM_NoShape                   ///< a cylinder, cone, torus, line or circle of space, or arc was not found
  };

  /// The texts by id, with placeholders of Boost.Format; programs may match them, so they do not change.
  static constexpr std::array<MessageText, 24> texts{{
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
      {eEsM_NoSuchParameter, "The report has no parameter %s"},
      {eEsM_NoShape, "Can't fit %s to the samples (%s): %s"},
  }};

  /// The message catalogue of the library, "ORMIXGeometry".
  static LogMessageManager& manager();
};

}  // namespace ormix::geom
