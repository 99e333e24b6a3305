#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

namespace ormix::benchmarks {
namespace {

/// Seconds of processor time of a process, in the program and in the system for it.
double processorTime(const rusage& usage) {
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Runs a program from its start to its end; the time of the row is the processor time of that process.
void startProgram(benchmark::State& state, const char* path) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  char* arguments[] = {const_cast<char*>(path), nullptr};
  char* environment[] = {nullptr};
  for (auto _ : state) {
    pid_t child = 0;
    int status = 0;
    rusage usage{};
    if (posix_spawn(&child, path, &actions, nullptr, arguments, environment) != 0 ||
        wait4(child, &status, 0, &usage) != child || status != 0) {
      state.SkipWithError("the program cannot be run");
      break;
    }
    state.SetIterationTime(processorTime(usage));
  }
  posix_spawn_file_actions_destroy(&actions);
}

BENCHMARK_CAPTURE(startProgram, one_circle, ORMIX_START_ONE_CIRCLE)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(startProgram, limit_nothing, ORMIX_START_NOTHING)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace ormix::benchmarks
