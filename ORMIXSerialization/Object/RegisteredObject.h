#pragma once

#include <ORMIXSerialization/Object/VersionedLevel.h>

#include <type_traits>
#include <utility>

namespace ormix {

/// Gives the library access to the private functions `fields`, `validate`, `complete` and `adopt` of a class that
/// declares it a friend.
struct FieldAccess {
  /// Calls `visitor(key, field)` for each field, in archive order, until a call returns false.
  template <class Self, class Visitor>
  static bool visit(Self& self, Visitor& visitor) {
    return Self::fields(self, visitor);
  }

  /// The result of the class's `validate`; success when the class has none.
  template <class Self>
  static BoolResult validate(const Self& self) {
    return validateIfDefined(self, 0);
  }

  /// Makes what follows from the fields of an object that was read, by the class's `complete` if it has one.
  template <class Self>
  static void complete(Self& read) {
    completeIfDefined(read, 0);
  }

  /// Moves `read`, whose fields are complete, over `self`.
  template <class Self>
  static void adopt(Self& self, Self& read) {
    adoptOrMove(self, read, 0);
  }

  /// Whether the class has an `adopt`, and so no object of it is complete before that.
  template <class Self>
  static constexpr bool hasAdopt() {
    return decltype(adoptIfDefined<Self>(0))::value;
  }

 private:
  template <class Self>
  static auto completeIfDefined(Self& read, int) -> decltype(Self::complete(read)) {
    Self::complete(read);
  }
  template <class Self>
  static void completeIfDefined(Self&, long) {}
  template <class Self>
  static auto adoptIfDefined(int)
      -> decltype(Self::adopt(std::declval<Self&>(), std::declval<Self&>()), std::true_type());
  template <class Self>
  static std::false_type adoptIfDefined(long);
  template <class Self>
  static auto validateIfDefined(const Self& self, int) -> decltype(Self::validate(self)) {
    return Self::validate(self);
  }
  template <class Self>
  static BoolResult validateIfDefined(const Self&, long) {
    return {};
  }
  template <class Self>
  static auto adoptOrMove(Self& self, Self& read, int) -> decltype(Self::adopt(self, read)) {
    Self::adopt(self, read);
  }
  template <class Self>
  static void adoptOrMove(Self& self, Self& read, long) {
    self = std::move(read);
  }
};

/// The uniform part of a concrete class: creation, duplication, copying and serialization of its fields. `Self` must be
/// default-constructible and copyable, declare `FieldAccess` a friend, and list its fields once, in archive order:
/// \code
/// template <class S, class F>
/// static bool fields(S& self, F&& item) { return item("_centerPt", self._centerPt) && item("_radius", self._radius); }
/// \endcode
/// A class whose fields may be inconsistent with each other after reading also has
/// `static BoolResult validate(const Self&)`. If it fails, reading fails with its message, which should begin with the
/// key of the wrong field. A class that needs memory for what follows from its fields has
/// `static void complete(Self& read)`, which computes that before `read` is moved over an object, so that a failed
/// allocation changes nothing; or `static void adopt(Self& self, Self& read)`, which does both.
///
/// Assignment is defined by the class: it changes everything or, when it throws, nothing. A class with more than one
/// array therefore reserves memory in all of them first. The function bodies are in RegisteredObject.ipp, for the
/// source that instantiates the class.
template <class Self, class Base>
class __attribute__((visibility("default"))) RegisteredObject : public VersionedLevel<Self, Base> {
 public:
  /// A new default-constructed `Self`; the caller owns it.
  static BaseDynamicObject* createNewObject();
  /// The same as a shared pointer, with object and reference count in one allocation.
  static boost::shared_ptr<BaseDynamicObject> createSharedObject();

  /// As `createNewObject()`, of the class of this object.
  BaseDynamicObject* createNew() const override;
  /// As `createSharedObject()`, of the class of this object.
  boost::shared_ptr<BaseDynamicObject> createShared() const override;
  /// Always true.
  bool hasCopySupport() const override;
  /// A copy of this object; the caller owns it.
  BaseDynamicObject* duplicate() const override;
  /// The same as a shared pointer, with object and reference count in one allocation.
  boost::shared_ptr<BaseDynamicObject> duplicateShared() const override;
  /// Copies the base classes, then assigns `other`, which must be a `Self` (not checked).
  void copy(const BaseDynamicObject& other) override;
  /// Writes the class versions, then the fields in the order of `fields`.
  BoolResult write(BaseOArchive& archive) const override;
  /// Reads class versions and fields into a new object, validates it and moves it to this one; directly into this one
  /// while only the archive has it, see BaseIArchive::takeUnseen().
  /// \return failure, with the class and the key in the message; this object is then unchanged
  /// \throw ORMIXSerializationException when a newer version of the class has written the archive
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
