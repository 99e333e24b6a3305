#include <ORMIXSerialization/Archive/ClassVersionRegistry.h>

#include <array>
#include <cstdint>

namespace ormix {

struct ClassVersionRegistry::KnownNames {
  static constexpr unsigned s_nbBits = 8;
  struct Place {
    const Versions::value_type* version;
    bool isWithBases;
  };
  std::array<Place, std::size_t{1} << s_nbBits> places{};

  /// The place of a name by its address, spread by a multiplication (Fibonacci hashing).
  static std::size_t placeOf(const std::string& name) {
    const auto address = static_cast<omUInt64>(reinterpret_cast<std::uintptr_t>(&name));
    return static_cast<std::size_t>((address * 0x9E3779B97F4A7C15u) >> (64 - s_nbBits));
  }
};

ClassVersionRegistry::ClassVersionRegistry() = default;
ClassVersionRegistry::~ClassVersionRegistry() = default;

const ClassVersionRegistry::Versions::value_type* ClassVersionRegistry::find(const std::string& className) const {
  if (_knownNames) {
    const Versions::value_type* known = _knownNames->places[KnownNames::placeOf(className)].version;
    if (known && known->first == className) return known;
  }
  const auto found = _versions.find(className);
  return found == _versions.end() ? nullptr : &*found;
}

bool ClassVersionRegistry::isClassVersionRegistred(const std::string& className) const {
  return find(className) != nullptr;
}

void ClassVersionRegistry::registerClassVersion(const std::string& className, omUInt32 version) {
  if (!_knownNames) _knownNames = std::make_unique<KnownNames>();
  const auto entry = _versions.insert_or_assign(className, version).first;
  _knownNames->places[KnownNames::placeOf(className)] = {&*entry, false};
}

bool ClassVersionRegistry::isRegisteredWithBases(const std::string& className) const {
  if (!_knownNames) return false;
  const KnownNames::Place& known = _knownNames->places[KnownNames::placeOf(className)];
  return known.isWithBases && known.version->first == className;
}

void ClassVersionRegistry::registerWithBases(const std::string& className) {
  if (!_knownNames) return;
  KnownNames::Place& known = _knownNames->places[KnownNames::placeOf(className)];
  known.isWithBases = known.version && known.version->first == className;
}

omUInt32 ClassVersionRegistry::getRegisterClassVersion(const std::string& className) const {
  const Versions::value_type* found = find(className);
  return found ? found->second : 0;
}

}  // namespace ormix
