#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <memory>
#include <string>
#include <unordered_map>

namespace ormix {

/// The class versions that an archive has written or read so far: an archive contains each once, before the first
/// object of the class. Versions are only added, never removed. Look-up and insertion take constant time on average.
class ORMIX_SERIALIZATION_API ClassVersionRegistry {
 public:
  /// Whether the archive contains the version of the class already.
  bool isClassVersionRegistred(const std::string& className) const;
  /// Stores the version of a class; replaces a version stored before.
  void registerClassVersion(const std::string& className, omUInt32 version);
  /// The registered version, 0 when the class has none.
  omUInt32 getRegisterClassVersion(const std::string& className) const;

  /// Whether `registerWithBases` was called for the class: one question where each of its base classes would take one.
  bool isRegisteredWithBases(const std::string& className) const;
  /// Says that the versions of the class and of all its base classes are registered. Nothing is remembered where
  /// another class has taken the place of this one.
  void registerWithBases(const std::string& className);

 protected:
  ClassVersionRegistry();
  ~ClassVersionRegistry();

 private:
  using Versions = std::unordered_map<std::string, omUInt32>;
  /// Registered versions by the address of the name that they were registered with. Every object asks for the versions
  /// of its classes, mostly by the same strings: comparing one is faster than a hash. A name that is not found so, as
  /// another string has its place or it was registered from another address, is looked up among all.
  struct KnownNames;

  const Versions::value_type* find(const std::string& className) const;

  Versions _versions;
  std::unique_ptr<KnownNames> _knownNames;
};

}  // namespace ormix
