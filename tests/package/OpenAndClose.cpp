// A program with nothing of ours opens and closes the geometry library, many times in a row.
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
  if (argc != 3) return std::fputs("usage: ormix_open_and_close LIBRARY TIMES\n", stderr), 2;
  for (int round = std::atoi(argv[2]); round > 0; --round) {
    void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (!library) return std::fprintf(stderr, "not opened: %s\n", dlerror()), 1;
    if (dlclose(library) != 0) return std::fprintf(stderr, "not closed: %s\n", dlerror()), 1;
    if (dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD)) return std::fputs("the library stays in the process\n", stderr), 1;
  }
}
