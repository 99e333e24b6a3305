#pragma once

#include "Binding.h"

/// \file
/// Calls beside other Python threads. A call that may take long releases the interpreter lock, so that other threads
/// may run, which may ask for a change of an object that the call reads. Therefore such calls hold one lock of the
/// process together (`Reading`), and whatever changes an object waits until none of them runs (`Changing`).

namespace ormix::python {

/// While it lives, the interpreter lock is released and no object changes. For `py::call_guard<Reading>()`: arguments
/// are converted before, results after it.
class Reading {
 public:
  Reading();
  ~Reading();
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

 private:
  py::gil_scoped_release _release;
};

/// While it lives, no `Reading` does: for setters and other functions that change an object. They keep the interpreter
/// lock and should be short.
/// \throw py::buffer_error (BufferError) in a callback of a call that reads, where waiting for that call would never end
class Changing {
 public:
  Changing();
  ~Changing();
  Changing(const Changing&) = delete;
  Changing& operator=(const Changing&) = delete;
};

/// The guard of functions that may take long.
using LongCall = py::call_guard<Reading>;
/// The guard of functions that change an object.
using ChangingCall = py::call_guard<Changing>;

}  // namespace ormix::python
