#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <string>
#include <unordered_map>

namespace ormix {

/// The class versions that an archive has written or read so far: each is stated once an archive, before the first
/// object of its class. The library only asks and adds, it never forgets one.
class ORMIX_SERIALIZATION_API ClassVersionRegistry {
 public:
  bool isClassVersionRegistred(const std::string& className) const;
  void registerClassVersion(const std::string& className, omUInt32 version);
  /// The registered version, 0 when the class has none.
  omUInt32 getRegisterClassVersion(const std::string& className) const;

 protected:
  ClassVersionRegistry() = default;
  ~ClassVersionRegistry() = default;

 private:
  std::unordered_map<std::string, omUInt32> _versions;
};

}  // namespace ormix
