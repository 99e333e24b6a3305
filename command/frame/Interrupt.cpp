#include <command/frame/Errors.h>
#include <command/frame/Interrupt.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iostream>

namespace ormix::command {

namespace {

volatile std::sig_atomic_t g_isInterrupted = 0;

void noteInterrupt(int) { g_isInterrupted = 1; }

/// "part.stl [#####     ]  50 %", as wide as the terminal allows.
std::string barOf(const std::string& what, omReal64 fraction) {
  winsize size{};
  const std::size_t width = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
  const std::string end = std::to_string(static_cast<int>(100 * fraction)) + " %";
  const std::size_t nbOthers = what.size() + end.size() + 5;
  if (width < nbOthers + 10) return end;
  const std::size_t length = std::min<std::size_t>(width - nbOthers, 40);
  const auto nbDone = static_cast<std::size_t>(fraction * static_cast<omReal64>(length));
  return what + " [" + std::string(nbDone, '#') + std::string(length - nbDone, ' ') + "] " + end;
}

}  // namespace

InterruptScope::InterruptScope() {
  g_isInterrupted = 0;
  struct sigaction action {};
  action.sa_handler = noteInterrupt;
  ::sigaction(SIGINT, nullptr, &_before);
  // Who started the program in the background may have it ignored.
  if (_before.sa_handler != SIG_IGN) ::sigaction(SIGINT, &action, nullptr);
}

InterruptScope::~InterruptScope() {
  clearBar();
  ::sigaction(SIGINT, &_before, nullptr);
}

void InterruptScope::clearBar() {
  if (_isBarDrawn) std::cerr << "\r\x1b[K" << std::flush;
  _isBarDrawn = false;
}

ProgressCallback InterruptScope::progress(const std::string& what) {
  using Clock = std::chrono::steady_clock;
  const bool isTerminal = ::isatty(STDERR_FILENO) != 0;
  return [this, what, isTerminal, next = Clock::now() + std::chrono::milliseconds(300)](omReal64 fraction) mutable {
    if (g_isInterrupted) return false;
    if (!isTerminal || Clock::now() < next) return true;
    next = Clock::now() + std::chrono::milliseconds(100);
    std::cerr << '\r' << barOf(what, std::clamp<omReal64>(fraction, 0, 1)) << "\x1b[K" << std::flush;
    _isBarDrawn = true;
    return true;
  };
}

void InterruptScope::finish() {
  clearBar();
  if (g_isInterrupted) throw Interrupted();
}

}  // namespace ormix::command
