// Writes the samples of the tests, one object of every class, as seeds into <folder>/cbor and <folder>/json. What is
// there already stays: the tests read it as the archive that an older version wrote.

#include <ORMIXSerialization/ORMIXSerialization.h>

#include <cstdio>
#include <filesystem>

#include "ORMIXSerialization/SampleClasses.h"
#include "support/SampleObjects.h"

namespace {

using namespace ormix;

bool writeSeed(const std::string& folder, const std::string& name, const BaseSerializationObject& object) {
  std::string file = name;
  for (char& c : file)
    if (c == ':' || c == '<' || c == '>' || c == ' ') c = '_';
  for (const char* format : {"cbor", "json"}) {
    // A seed has no ending; the format is chosen by one that is taken off again.
    const std::string path = folder + "/" + format + "/" + file;
    if (std::filesystem::exists(path)) continue;
    const std::string written = path + "." + format;
    if (const BoolResult saved = save(written, object); !saved) {
      std::fprintf(stderr, "%s\n", saved.getMessage().c_str());
      return false;
    }
    std::filesystem::rename(written, path);
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return std::fprintf(stderr, "usage: make_seeds <folder>\n"), 2;
  sample::Ring ring;
  ring.pointColl = {{0, 0}, {10, 0}, {5, 8.5}};
  for (const samples::ClassCase& each : samples::classCases(samples::AllClasses()))
    if (!writeSeed(argv[1], each.name, *each.makeSample())) return 1;
  return writeSeed(argv[1], "sample_Tree", sample::sampleTree(1)) && writeSeed(argv[1], "sample_Ring", ring) ? 0 : 1;
}
