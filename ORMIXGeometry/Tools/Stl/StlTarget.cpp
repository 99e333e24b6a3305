#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/Tools/Stl/StlTarget.h>
#include <ORMIXSerialization/Archive/FileTarget.h>

namespace ormix::geom::detail {

BoolResult meshFileNotWritten(const std::string& path, const std::string& why) {
  return failure(formatMessage<eEntityMessage>(eEntityMessage::eEM_MeshFileNotWritten, path) +
                 (why.empty() ? "" : ": " + why));
}

BoolResult saveStl(const std::string& path, const std::function<void(std::ostream&)>& write) {
  FileTarget target(path);
  if (!target.open()) return meshFileNotWritten(path);
  write(target.stream());
  return target.stream() && target.commit() ? BoolResult() : meshFileNotWritten(path);
}

}  // namespace ormix::geom::detail
