#pragma once

#include <ORMIXSerialization/Object/BaseSerializationObject.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <string>

namespace ormix {

/// One level in the inheritance chain of a serializable class: its registered name, its version, and the section of an
/// archive that holds the version. `Self`, the class of the level, derives from this one and defines
/// - `static constexpr const char* s_className`, with its namespaces and without template arguments;
/// - `static constexpr omUInt32 s_classVersion`, if it is not 1;
/// - `static constexpr omUInt32 s_oldestClassVersion`, if archives of older versions cannot be read.
///
/// The function bodies are in VersionedLevel.ipp, for the source that instantiates the level.
template <class Self, class Base>
class __attribute__((visibility("default"))) VersionedLevel : public Base {
 public:
  /// The version written to archives, and the newest one that can be read.
  static constexpr omUInt32 s_classVersion = 1;
  /// The oldest version that can be read.
  static constexpr omUInt32 s_oldestClassVersion = 0;

  /// The registered name of `Self`, for example "ormix::geom::Circle2d<ormix::omReal64>": template arguments have the
  /// scalar names of ScalarTypes.h. Built by the first call; safe to call from several threads.
  static const std::string& getTypeName();
  /// `Self::s_classVersion`.
  static omUInt32 getVersion();

  /// `getTypeName()` of the most derived class.
  const std::string& getClassName() const override;
  /// Writes the levels of the base classes, then the version of this one.
  BoolResult write(BaseOArchive& archive) const override;
  /// Reads the levels of the base classes, then the version of this one.
  /// \return failure when a version is missing or too old
  /// \throw ORMIXSerializationException when a version is too new
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
