#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <string_view>

namespace ormix {

class BaseIArchive;
class BaseOArchive;

/// Begins a section of an archive in the constructor and ends it in the destructor.
class ORMIX_SERIALIZATION_API ArchiveSectionManager {
 public:
  /// Begins a section under `key`; `getState` returns whether this succeeded.
  /// \param archive must outlive this object
  /// @{
  ArchiveSectionManager(BaseOArchive& archive, std::string_view key);
  ArchiveSectionManager(BaseIArchive& archive, std::string_view key);
  /// @}
  /// Ends the section unless `close` did. A failure remains in the archive, whose later operations return it.
  ~ArchiveSectionManager();

  /// The result of the constructor; after `close` that of ending the section.
  const BoolResult& getState() const { return _state; }
  /// Ends the section now. If it has ended already, or could not be begun, only returns `getState()`.
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
