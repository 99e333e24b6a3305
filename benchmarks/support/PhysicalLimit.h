#pragma once

#include <ORMIXUtil/ScalarTypes.h>
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

namespace ormix::benchmarks {

/// Reads every byte once with nothing else to wait for: what no algorithm over the same data can beat.
inline omUInt64 readAll(const void* data, std::size_t nbBytes) {
  constexpr std::size_t nbWords = 8;
  omUInt64 folded[nbWords] = {};
  const char* at = static_cast<const char*>(data);
  for (; nbBytes >= sizeof folded; nbBytes -= sizeof folded, at += sizeof folded) {
    omUInt64 words[nbWords];
    std::memcpy(words, at, sizeof words);
    for (std::size_t w = 0; w < nbWords; ++w) folded[w] ^= words[w];
  }
  omUInt64 result = 0;
  for (const omUInt64 word : folded) result ^= word;
  for (; nbBytes > 0; --nbBytes, ++at) result ^= static_cast<unsigned char>(*at);
  return result;
}

/// The row that the others are compared with: reading the input.
template <class T>
void measureReading(benchmark::State& state, const std::vector<T>& data) {
  for (auto _ : state) benchmark::DoNotOptimize(readAll(data.data(), data.size() * sizeof(T)));
}

/// Reads and writes every word once, for what changes its data in place; a rest of less than a word is left out.
template <class T>
void measureRewriting(benchmark::State& state, std::vector<T>& data) {
  omUInt64 nothing = 0;
  benchmark::DoNotOptimize(nothing);
  char* const begin = reinterpret_cast<char*>(data.data());
  const std::size_t nbWords = data.size() * sizeof(T) / sizeof nothing;
  for (auto _ : state) {
    for (std::size_t w = 0; w < nbWords; ++w) {
      omUInt64 word;
      std::memcpy(&word, begin + w * sizeof word, sizeof word);
      word ^= nothing;
      std::memcpy(begin + w * sizeof word, &word, sizeof word);
    }
    benchmark::ClobberMemory();
  }
}

}  // namespace ormix::benchmarks
