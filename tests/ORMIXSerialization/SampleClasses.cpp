#include "SampleClasses.h"

#include <ORMIXSerialization/Object/RegisteredObject.ipp>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <iomanip>
#include <limits>
#include <sstream>

namespace sample {

using namespace ormix;

BoolResult writeItem(BaseOArchive& archive, std::string_view key, const Vertex& value) {
  ArchiveSectionManager section(archive, key);
  archive.writeReal("x", value.x);
  archive.writeReal("y", value.y);
  return section.close();
}

BoolResult readItem(BaseIArchive& archive, std::string_view key, Vertex& value) {
  ArchiveSectionManager section(archive, key);
  Vertex read;
  archive.readReal("x", read.x);
  archive.readReal("y", read.y);
  BoolResult result = section.close();
  if (result) value = read;
  return result;
}

Tree sampleTree(int depth) {
  Tree tree;
  tree.flag = true;
  tree.tiny = -128;
  tree.big = std::numeric_limits<omUInt64>::max();
  tree.low = std::numeric_limits<omInt64>::min();
  tree.single = 0.1f;
  tree.name = "caf\xC3\xA9 \"quoted\"\n\x01";
  tree.numbers = {-2147483647 - 1, 0, 2147483647};
  tree.ring.kind = eK_Inner;
  tree.ring.pointColl = {{0, 0}, {10, 0.5}, {-1e-300, 1e300}};
  for (int branch = 0; branch < depth; ++branch)
    tree.branches.push_back(boost::make_shared<Tree>(sampleTree(depth - 1)));
  return tree;
}

std::string describe(const Tree& tree) {
  std::ostringstream text;
  text << std::setprecision(17) << tree.flag << ' ' << int{tree.tiny} << ' ' << tree.big << ' ' << tree.low << ' '
       << tree.single << ' ' << tree.name << " [";
  for (const omInt32 number : tree.numbers) text << number << ' ';
  text << "] " << toString(tree.ring.kind) << " [";
  for (const Vertex& vertex : tree.ring.pointColl) text << vertex.x << ',' << vertex.y << ' ';
  text << "] {";
  for (const auto& branch : tree.branches) text << describe(*branch);
  text << '}';
  return text.str();
}

namespace {
const DynamicRegistrator<Disc> g_discRegistrator;
const DynamicRegistrator<Ring> g_ringRegistrator;
const DynamicRegistrator<Tree> g_treeRegistrator;
}  // namespace

}  // namespace sample
