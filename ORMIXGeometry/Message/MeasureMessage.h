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
    eMM_MeasureFailed  ///< the measure does not support the entity, or a hole or mesh of it is null
  };

  /// The texts by id, with placeholders of Boost.Format; programs may match them, so they do not change.
  static constexpr std::array<MessageText, 1> texts{{
      {eMM_MeasureFailed, "Measure %s failed for geometry entity %s"},
  }};

  /// The message catalogue of the library, "ORMIXGeometry".
  static LogMessageManager& manager();
};

}  // namespace ormix::geom
