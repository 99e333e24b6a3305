#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix::geom {

/// Message domain of measures: ids and texts.
struct ORMIX_GEOMETRY_API eMeasureMessage {
  /// Tag whose run-time type name is the name of the domain in the catalogue.
  struct ORMIX_GEOMETRY_API domain {};

  /// Ids of the messages, in the order of `texts`.
  enum eId {
    eMM_MeasureFailed,  ///< the measure does not support the entity, or a hole or mesh of it is null, or its moments
                        ///< are not finite
    eMM_MomentOrder,    ///< a moment of an order that is not computed
    eMM_NoMass,         ///< a moment relative to the centroid, where the mass is 0
    eMM_NoEllipse,      ///< an equivalent ellipse of masses of both signs
    eMM_HuMomentIndex   ///< an invariant that does not exist
  };

  /// The texts by id, with placeholders of Boost.Format; programs may match them, so they do not change.
  static constexpr std::array<MessageText, 5> texts{{
      {eMM_MeasureFailed, "Measure %s failed for geometry entity %s"},
      {eMM_MomentOrder, "Moment (%d, %d) is not available, the sum of both must be at most %d"},
      {eMM_NoMass, "Moments of mass 0 have no centroid, no central and no normalized moments"},
      {eMM_NoEllipse, "Moments of mass %g and principal second moments %g and %g have no equivalent ellipse"},
      {eMM_HuMomentIndex, "Hu moment %d is not available, the index must be less than %d"},
  }};

  /// The message catalogue of the library, "ORMIXGeometry".
  static LogMessageManager& manager();
};

}  // namespace ormix::geom
