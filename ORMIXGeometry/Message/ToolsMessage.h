#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix::geom {

/// Texts of the tools; none so far.
struct ORMIX_GEOMETRY_API eToolsMessage {
  struct ORMIX_GEOMETRY_API domain {};

  static constexpr std::array<MessageText, 0> texts{};

  /// The library's catalogue.
  static LogMessageManager& manager();
};

}  // namespace ormix::geom
