#pragma once

#include <stdexcept>
#include <string>

namespace ormix::command {

/// How a program ends.
enum eExit {
  eE_Done = 0,          ///< everything was done
  eE_Failed = 1,        ///< something was wrong with data; the rest was done
  eE_Usage = 2,         ///< the command line was wrong; nothing was done
  eE_Interrupted = 130  ///< stopped by the user, as shells report it
};

/// What is wrong with data: a file that cannot be read, a mesh that cannot be simplified.
class DataError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// What ends the program, whichever input it is at.
class ProgramEnd {};

/// What is wrong with the command line.
class UsageError : public std::runtime_error, public ProgramEnd {
  using std::runtime_error::runtime_error;
};

/// The user has interrupted a long computation.
class Interrupted : public std::exception, public ProgramEnd {};

/// The standard output cannot be written.
class OutputFailed : public std::runtime_error, public ProgramEnd {
  using std::runtime_error::runtime_error;
};

/// Nobody reads the output any more.
class OutputClosed : public std::exception, public ProgramEnd {};

}  // namespace ormix::command
