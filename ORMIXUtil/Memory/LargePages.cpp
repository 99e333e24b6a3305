#include <ORMIXUtil/Memory/LargePages.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace ormix {

void adviseLargePages([[maybe_unused]] const void* memory, [[maybe_unused]] std::size_t nbBytes) noexcept {
#if defined(MADV_HUGEPAGE)
  constexpr std::size_t leastBytes = std::size_t{4} << 20;
  if (nbBytes < leastBytes) return;
  // From the beginning of a page on: a block that has a mapping of its own begins just behind that, and the first large
  // page with it.
  const auto pageSize = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
  const auto address = reinterpret_cast<std::uintptr_t>(memory);
  const std::uintptr_t begin = address / pageSize * pageSize;
  // A system that refuses leaves the memory as it is.
  static_cast<void>(::madvise(reinterpret_cast<void*>(begin), address + nbBytes - begin, MADV_HUGEPAGE));
#endif
}

}  // namespace ormix
