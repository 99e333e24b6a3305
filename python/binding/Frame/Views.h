#pragma once

#include "Binding.h"

#include <ORMIXUtil/ScalarTypes.h>

#include <vector>

/// \file
/// Arrays of numpy over memory of the library, without a copy. An array keeps the object alive whose memory it shows.
/// While there is one, that memory must stay where it is: what would move it raises BufferError, as `bytearray` does.

namespace ormix::python {

/// Whether numbers of a view may be changed.
enum class Access { Read, Write };

/// An array over `data`, C-contiguous.
/// \param owner the object that owns the memory, kept alive by the array
template <class T>
py::array viewOf(boost::shared_ptr<const void> owner, T* data, const std::vector<py::ssize_t>& shape,
                 Access access = Access::Write);

/// \throw py::buffer_error (BufferError) if an array shows the memory that begins at `data`
/// \param what names it for the message: "points"
void requireNoView(const void* data, const char* what);

}  // namespace ormix::python
