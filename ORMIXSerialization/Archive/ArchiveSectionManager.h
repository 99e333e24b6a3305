#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <string_view>

namespace ormix {

class BaseIArchive;
class BaseOArchive;

/// A section of an archive, open as long as this object lives.
class ORMIX_SERIALIZATION_API ArchiveSectionManager {
 public:
  /// Opens the section that bears `key`; `getState` tells whether that went well.
  ArchiveSectionManager(BaseOArchive& archive, std::string_view key);
  ArchiveSectionManager(BaseIArchive& archive, std::string_view key);
  /// Closes the section; a failure of that is seen in the archive's own state.
  ~ArchiveSectionManager();

  /// How opening went, and after `close` how closing went.
  const BoolResult& getState() const { return _state; }
  /// Closes the section now. A second call, or one after a failed opening, answers the state.
  BoolResult close();

  ArchiveSectionManager(const ArchiveSectionManager&) = delete;
  ArchiveSectionManager& operator=(const ArchiveSectionManager&) = delete;

 private:
  BaseOArchive* _output = nullptr;
  BaseIArchive* _input = nullptr;
  BoolResult _state;
  bool _open;
};

}  // namespace ormix
