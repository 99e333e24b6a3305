#include <ORMIXUtil/HashSecret.h>

#include <chrono>
#include <cstdint>
#include <exception>
#include <random>

namespace ormix {
namespace {

omUInt64 drawSecret() noexcept {
  try {
    std::random_device device;
    return omUInt64{device()} << 32 | device();
  } catch (const std::exception&) {
    // Without a source of random numbers: where the process was put, and when.
    const omUInt64 place = reinterpret_cast<std::uintptr_t>(&drawSecret);
    const auto time = static_cast<omUInt64>(std::chrono::steady_clock::now().time_since_epoch().count());
    return time ^ place << 20;
  }
}

}  // namespace

omUInt64 hashSecret() noexcept {
  static const omUInt64 secret = drawSecret();
  return secret;
}

}  // namespace ormix
