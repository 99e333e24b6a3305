#include <ORMIXSerialization/Object/RegisteredObject.ipp>

namespace ormix::detail {

namespace {
constexpr std::string_view s_classPrefix = "Class ";
}

// The innermost object adds the prefix; the objects that contain it find the prefix and return the message unchanged.
BoolResult failedField(const std::string& className, const BoolResult& result) {
  const std::string& message = result.getMessage();
  if (message.compare(0, s_classPrefix.size(), s_classPrefix) == 0) return result;
  std::string text(s_classPrefix);
  text += className;
  text += ": ";
  text += message;
  return failure(std::move(text));
}

void nameFailedField(const std::string& className, BoolResult& result) { result = failedField(className, result); }

}  // namespace ormix::detail
