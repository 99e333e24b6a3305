#include "Calls.h"

#include <shared_mutex>

namespace ormix::python {
namespace {

std::shared_mutex s_objects;
// How many `Reading` this thread holds: a callback of a long call may make another one.
thread_local int s_readings = 0;

}  // namespace

Reading::Reading() {
  if (s_readings++ == 0) s_objects.lock_shared();
}

Reading::~Reading() {
  if (--s_readings == 0) s_objects.unlock_shared();
}

Changing::Changing() {
  if (s_readings > 0) throw py::buffer_error("an object cannot be changed by a callback of a call that reads objects");
  if (s_objects.try_lock()) return;
  py::gil_scoped_release release;
  s_objects.lock();
}

Changing::~Changing() { s_objects.unlock(); }

}  // namespace ormix::python
