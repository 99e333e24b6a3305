#include <ORMIXSerialization/Archive/CreatedClasses.h>
#include <ORMIXSerialization/Object/BaseSerializationObject.h>
#include <ORMIXUtil/Object/DynamicObjectFactory.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <typeinfo>
#include <utility>

namespace ormix::detail {

namespace {

/// A class whose objects have been created before.
struct CreatedClass {
  std::string name;
  DynamicObjectFactory::CreateShared creator = nullptr;
  /// The class of the objects, if it is known to derive from BaseSerializationObject.
  const std::type_info* serializable = nullptr;
};

using ObjectPtr = boost::shared_ptr<BaseSerializationObject>;

/// The object as a serializable one, null when it is none. Searching its base classes is much slower than creating it.
ObjectPtr toSerializable(boost::shared_ptr<BaseDynamicObject> object, CreatedClass& objectClass) {
  if (!object) return nullptr;
  const std::type_info& type = typeid(*object);
  if (&type == objectClass.serializable) return boost::static_pointer_cast<BaseSerializationObject>(std::move(object));
  ObjectPtr readable = boost::dynamic_pointer_cast<BaseSerializationObject>(object);
  const bool isAtBase = readable && static_cast<BaseDynamicObject*>(readable.get()) == object.get();
  if (isAtBase) objectClass.serializable = &type;
  return readable;
}

}  // namespace

struct CreatedClasses::Places {
  static constexpr std::size_t s_nbPlaces = 64;
  std::array<CreatedClass, s_nbPlaces> classes;
  omUInt64 nbUnregistered = 0;
  const BaseSerializationObject* unseen = nullptr;

  /// Names mostly differ in their length or in the middle, between a namespace and the type of the coordinates. Where
  /// they do not, they share a place, and the later one takes it.
  static std::size_t placeOf(const std::string& name) {
    omUInt64 bits = 0;
    const std::size_t size = name.size();
    std::memcpy(&bits, name.data() + (size > sizeof bits ? (size - sizeof bits) / 2 : 0), std::min(size, sizeof bits));
    return static_cast<std::size_t>(((bits + size) * 0x9E3779B97F4A7C15u) >> 58);
  }
};

CreatedClasses::CreatedClasses() = default;
CreatedClasses::~CreatedClasses() = default;

boost::shared_ptr<BaseSerializationObject> CreatedClasses::create(const std::string& className) {
  const DynamicObjectFactory& factory = DynamicObjectFactory::getInstance();
  const omUInt64 nbUnregistered = factory.getNbUnregistered();
  if (!_places || _places->nbUnregistered != nbUnregistered) {
    _places = std::make_unique<Places>();
    _places->nbUnregistered = nbUnregistered;
  }
  CreatedClass& place = _places->classes[Places::placeOf(className)];
  if (!place.creator || place.name != className) {
    const DynamicObjectFactory::CreateShared creator = factory.getSharedCreator(className);
    place = {className, creator, nullptr};
  }
  return toSerializable(place.creator(), place);
}

void CreatedClasses::setUnseen(const BaseSerializationObject* object) noexcept {
  if (_places) _places->unseen = object;
}

bool CreatedClasses::takeUnseen(const BaseSerializationObject& object) noexcept {
  if (!_places || _places->unseen != &object) return false;
  _places->unseen = nullptr;
  return true;
}

}  // namespace ormix::detail
