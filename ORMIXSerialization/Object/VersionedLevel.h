#pragma once

#include <ORMIXSerialization/Object/BaseSerializationObject.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <string>

namespace ormix {

/// One level of a chain of serializable classes: its registered name, its version and its section in an archive. `Self`
/// (the class of the level, deriving from this) states `static constexpr const char* s_className`, with its namespaces
/// and without template arguments, and may state `static constexpr omUInt32 s_classVersion` where it is not 1, and
/// `s_oldestClassVersion`, below which archives are refused. The bodies are in VersionedLevel.ipp, for the source that
/// instantiates the level.
template <class Self, class Base>
class __attribute__((visibility("default"))) VersionedLevel : public Base {
 public:
  static constexpr omUInt32 s_classVersion = 1;
  static constexpr omUInt32 s_oldestClassVersion = 0;

  /// The registered name: for a template the argument is spelled with the family's scalar name.
  static const std::string& getTypeName();
  static omUInt32 getVersion();

  const std::string& getClassName() const override;
  BoolResult write(BaseOArchive& archive) const override;
  BoolResult read(BaseIArchive& archive) override;

 protected:
  VersionedLevel() = default;
  VersionedLevel(const VersionedLevel&) = default;
  VersionedLevel(VersionedLevel&&) = default;
  VersionedLevel& operator=(const VersionedLevel&) = default;
  VersionedLevel& operator=(VersionedLevel&&) = default;
  ~VersionedLevel() override = default;
};

}  // namespace ormix
