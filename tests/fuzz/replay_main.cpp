// Runs a fuzz target over the files of the folders (or the files) named on the command line, without libFuzzer: seeds
// and inputs that once failed are tested wherever the tests are built.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void replay(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  std::printf("%s\n", path.c_str());
  std::fflush(stdout);
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  std::size_t count = 0;
  for (int at = 1; at < argc; ++at) {
    if (!fs::is_directory(argv[at])) {
      replay(argv[at]);
      ++count;
      continue;
    }
    for (const auto& entry : fs::recursive_directory_iterator(argv[at])) {
      if (!entry.is_regular_file()) continue;
      replay(entry.path());
      ++count;
    }
  }
  std::printf("%zu inputs\n", count);
  return count == 0;  // a folder without seeds is a mistake in the test
}
