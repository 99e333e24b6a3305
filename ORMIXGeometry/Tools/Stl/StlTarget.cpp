#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/Tools/Stl/StlTarget.h>
#include <ORMIXSerialization/Archive/FileTarget.h>

namespace ormix::geom {

BoolResult saveStl(const std::string& path, const std::function<void(std::ostream&)>& write) {
  const auto notWritten = [&path] {
    return failure(formatMessage<eEntityMessage>(eEntityMessage::eEM_MeshFileNotWritten, path));
  };
  FileTarget target(path);
  if (!target.open()) return notWritten();
  write(target.stream());
  return target.stream() && target.commit() ? BoolResult() : notWritten();
}

}  // namespace ormix::geom
