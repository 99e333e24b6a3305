#pragma once

#include <ORMIXSerialization/Object/VersionedLevel.h>

#include <utility>

namespace ormix {

/// Reaches the private `fields`, `validate` and `adopt` of a class that befriends it.
struct FieldAccess {
  template <class Self, class Visitor>
  static bool visit(Self& self, Visitor& visitor) {
    return Self::fields(self, visitor);
  }

  /// Good where the class has no `validate`.
  template <class Self>
  static BoolResult validate(const Self& self) {
    return validateIfAsked(self, 0);
  }

  /// Moves `read`, whose fields are complete, over `self`.
  template <class Self>
  static void adopt(Self& self, Self& read) {
    adoptIfAsked(self, read, 0);
  }

 private:
  template <class Self>
  static auto validateIfAsked(const Self& self, int) -> decltype(Self::validate(self)) {
    return Self::validate(self);
  }
  template <class Self>
  static BoolResult validateIfAsked(const Self&, long) {
    return {};
  }
  template <class Self>
  static auto adoptIfAsked(Self& self, Self& read, int) -> decltype(Self::adopt(self, read)) {
    Self::adopt(self, read);
  }
  template <class Self>
  static void adoptIfAsked(Self& self, Self& read, long) {
    self = std::move(read);
  }
};

/// The uniform part of a concrete class: creation, duplication, copying, and the archive of its fields. `Self` is
/// default-constructible and copyable, befriends `FieldAccess` and names its fields once, in archive order:
/// \code
/// template <class S, class F>
/// static bool fields(S& self, F&& item) { return item("_centerPt", self._centerPt) && item("_radius", self._radius); }
/// \endcode
/// Where fields that were read one by one may contradict each other, it has `static BoolResult validate(const Self&)`
/// too, whose failure, a text that begins with the key of the field at fault, is that of the read. Where memory is
/// needed for what follows from the fields, it has `static void adopt(Self& self, Self& read)`, which makes that in
/// `read` before it moves it over `self`, so that running out of memory changes nothing.
///
/// Assigning one `Self` to another is the class's own: it changes all or, when it throws, nothing. A class with more
/// than one array therefore makes room in all of them first. The bodies are in RegisteredObject.ipp, for the source
/// that instantiates the class.
template <class Self, class Base>
class __attribute__((visibility("default"))) RegisteredObject : public VersionedLevel<Self, Base> {
 public:
  /// A new default-constructed `Self`; the caller owns it.
  static BaseDynamicObject* createNewObject();
  /// The same in one allocation with its counter.
  static boost::shared_ptr<BaseDynamicObject> createSharedObject();

  BaseDynamicObject* createNew() const override;
  boost::shared_ptr<BaseDynamicObject> createShared() const override;
  bool hasCopySupport() const override;
  BaseDynamicObject* duplicate() const override;
  boost::shared_ptr<BaseDynamicObject> duplicateShared() const override;
  void copy(const BaseDynamicObject& other) override;
  BoolResult write(BaseOArchive& archive) const override;
  BoolResult read(BaseIArchive& archive) override;

 protected:
  RegisteredObject() = default;
  RegisteredObject(const RegisteredObject&) = default;
  RegisteredObject(RegisteredObject&&) = default;
  RegisteredObject& operator=(const RegisteredObject&) = default;
  RegisteredObject& operator=(RegisteredObject&&) = default;
  ~RegisteredObject() override = default;
};

}  // namespace ormix
