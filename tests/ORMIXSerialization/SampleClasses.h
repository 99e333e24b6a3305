#pragma once

// Classes with the frame's four levels, as the family's libraries build theirs.

#include <ORMIXSerialization/ORMIXSerialization.h>

#include <string>
#include <vector>

namespace sample {

/// Two packed coordinates.
struct Vertex {
  ormix::omReal64 x = 0;
  ormix::omReal64 y = 0;
  friend bool operator==(const Vertex& a, const Vertex& b) { return a.x == b.x && a.y == b.y; }
};
/// A point is archived as a section with "x" and "y".
ormix::BoolResult writeItem(ormix::BaseOArchive& archive, std::string_view key, const Vertex& value);
ormix::BoolResult readItem(ormix::BaseIArchive& archive, std::string_view key, Vertex& value);

enum eKind : int { eK_Outer, eK_Inner };

}  // namespace sample

namespace ormix {
template <>
struct PackedCoordinates<sample::Vertex> {
  using Scalar = omReal64;
  static constexpr std::size_t nbColumns = 2;
};
template <>
struct EnumerationNames<sample::eKind> {
  static constexpr std::string_view typeName = "eKind";
  static constexpr std::array<std::string_view, 2> names{"eK_Outer", "eK_Inner"};
};
}  // namespace ormix

namespace sample {

class Level0 : public ormix::VersionedLevel<Level0, ormix::BaseObjectWithSkeleton> {
 public:
  static constexpr const char* s_className = "sample::Level0";
};
class Level1 : public ormix::VersionedLevel<Level1, Level0> {
 public:
  static constexpr const char* s_className = "sample::Level1";
};
template <class T>
class Level2 : public ormix::VersionedLevel<Level2<T>, Level1> {
 public:
  static constexpr const char* s_className = "sample::Level2";
};

class Disc : public ormix::RegisteredObject<Disc, Level2<ormix::omReal64>> {
 public:
  static constexpr const char* s_className = "sample::Disc";
  Disc() = default;
  Disc(Vertex center, ormix::omReal64 size) : _centerPt(center), _radius(size) {}
  const Vertex& center() const { return _centerPt; }
  ormix::omReal64 radius() const { return _radius; }

 private:
  friend struct ormix::FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_centerPt", self._centerPt) && item("_radius", self._radius);
  }
  Vertex _centerPt;
  ormix::omReal64 _radius = 0;
};

class Ring : public ormix::RegisteredObject<Ring, Level2<ormix::omReal64>> {
 public:
  static constexpr const char* s_className = "sample::Ring";
  eKind kind = eK_Outer;
  std::vector<Vertex> pointColl;

 private:
  friend struct ormix::FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_kind", self.kind) && item("_pointColl", self.pointColl);
  }
};

/// Every kind of field, and objects inside objects.
class Tree : public ormix::RegisteredObject<Tree, Level1> {
 public:
  static constexpr const char* s_className = "sample::Tree";
  bool flag = false;
  ormix::omInt8 tiny = 0;
  ormix::omUInt64 big = 0;
  ormix::omInt64 low = 0;
  ormix::omReal32 single = 0;
  std::string name;
  std::vector<ormix::omInt32> numbers;
  Ring ring;
  std::vector<boost::shared_ptr<Tree>> branches;

 private:
  friend struct ormix::FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("flag", self.flag) && item("tiny", self.tiny) && item("big", self.big) && item("low", self.low) &&
           item("single", self.single) && item("name", self.name) && item("numbers", self.numbers) &&
           item("ring", self.ring) && item("branches", self.branches);
  }
};

/// A tree whose fields all differ from their defaults, with branches down to `depth`.
Tree sampleTree(int depth);
/// Everything of a tree, with all digits.
std::string describe(const Tree& tree);

}  // namespace sample
