#include <ORMIXSerialization/Archive/ArchiveSectionManager.h>
#include <ORMIXSerialization/Archive/BaseIArchive.h>
#include <ORMIXSerialization/Archive/BaseOArchive.h>

#include <exception>

namespace ormix {

ArchiveSectionManager::ArchiveSectionManager(BaseOArchive& archive, std::string_view key)
    : _output(&archive), _state(archive.beginSection(key)), _open(static_cast<bool>(_state)) {}

ArchiveSectionManager::ArchiveSectionManager(BaseIArchive& archive, std::string_view key)
    : _input(&archive), _state(archive.beginSection(key)), _open(static_cast<bool>(_state)) {}

ArchiveSectionManager::~ArchiveSectionManager() {
  try {
    close();
  } catch (const std::exception&) {
    // Only std::bad_alloc is possible, while a message was composed; the archive keeps its failed state.
  }
}

BoolResult ArchiveSectionManager::close() {
  if (!_open) return _state;
  _open = false;
  _state = _output ? _output->endSection() : _input->endSection();
  return _state;
}

}  // namespace ormix
