#include <ORMIXSerialization/Object/RegisteredObject.ipp>

namespace ormix::detail {

namespace {
constexpr std::string_view s_classPrefix = "Class ";
}

// An outer object finds the inner one's prefix and leaves the message as it is.
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
