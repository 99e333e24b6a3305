#pragma once

#include <ORMIXMath/Estimation/ProgressCallback.h>

#include <csignal>
#include <string>

namespace ormix::command {

/// As long as one exists, an interrupt from the keyboard (SIGINT) does not end the program, and progress() stops the
/// computation that calls it.
class InterruptScope {
 public:
  InterruptScope();
  ~InterruptScope();
  InterruptScope(const InterruptScope&) = delete;
  InterruptScope& operator=(const InterruptScope&) = delete;

  /// Tells of interrupts, and draws a bar on the standard error where that is a terminal.
  /// \param what stands before the bar
  ProgressCallback progress(const std::string& what);
  /// Removes the bar.
  /// \throw Interrupted when there was an interrupt
  void finish();

 private:
  void clearBar();

  struct sigaction _before {};
  bool _isBarDrawn = false;
};

}  // namespace ormix::command
