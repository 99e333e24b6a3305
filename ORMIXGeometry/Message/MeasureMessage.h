#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix::geom {

/// Texts about measures.
struct ORMIX_GEOMETRY_API eMeasureMessage {
  struct ORMIX_GEOMETRY_API domain {};

  enum eId { eMM_MeasureFailed };

  static constexpr std::array<MessageText, 1> texts{{
      {eMM_MeasureFailed, "Measure %s failed for geometry entity %s"},
  }};

  /// The library's catalogue.
  static LogMessageManager& manager();
};

}  // namespace ormix::geom
