#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix::geom {

/// Message domain of the tools; it has no messages yet.
struct ORMIX_GEOMETRY_API eToolsMessage {
  /// Tag whose run-time type name is the name of the domain in the catalogue.
  struct ORMIX_GEOMETRY_API domain {};

  static constexpr std::array<MessageText, 0> texts{};  ///< the texts by id

  /// The message catalogue of the library, "ORMIXGeometry".
  static LogMessageManager& manager();
};

}  // namespace ormix::geom
