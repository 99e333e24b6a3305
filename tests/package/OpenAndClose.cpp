// A program with nothing of ours opens and closes the geometry library, a thousand times in a row.
#include <dlfcn.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) return std::fputs("usage: ormix_open_and_close LIBRARY\n", stderr), 2;
  for (int round = 0; round < 1000; ++round) {
    void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (!library) return std::fprintf(stderr, "not opened: %s\n", dlerror()), 1;
    if (dlclose(library) != 0) return std::fprintf(stderr, "not closed: %s\n", dlerror()), 1;
    if (dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD)) return std::fputs("the library stays in the process\n", stderr), 1;
  }
}
