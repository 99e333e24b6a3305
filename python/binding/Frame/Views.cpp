#include "Views.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace ormix::python {
namespace {

// How many arrays show the memory that begins at an address; entries of 0 are removed. Guarded by the interpreter lock.
// Never destroyed: arrays may live longer than the module.
std::unordered_map<const void*, std::size_t>& views() {
  static auto* const counts = new std::unordered_map<const void*, std::size_t>;
  return *counts;
}

// What the array holds: the owner, and the count as long as the array lives.
class View {
 public:
  View(boost::shared_ptr<const void> owner, const void* data) : _owner(std::move(owner)), _data(data) {
    if (_data != nullptr) ++views()[_data];
  }
  ~View() {
    const auto count = views().find(_data);
    if (count != views().end() && --count->second == 0) views().erase(count);
  }
  View(const View&) = delete;
  View& operator=(const View&) = delete;

 private:
  boost::shared_ptr<const void> _owner;
  const void* _data;
};

}  // namespace

template <class T>
py::array viewOf(boost::shared_ptr<const void> owner, T* data, const std::vector<py::ssize_t>& shape, Access access) {
  auto view = std::make_unique<View>(std::move(owner), data);
  const py::capsule capsule(view.get(), [](void* held) { delete static_cast<View*>(held); });
  view.release();
  py::array array(py::dtype::of<T>(), shape, data, capsule);
  if (access == Access::Read) array.attr("setflags")("write"_a = false);
  return array;
}

void requireNoView(const void* data, const char* what) {
  if (data != nullptr && views().count(data) != 0)
    throw py::buffer_error(
        std::string("the ") + what +
        " cannot be resized while an array shows them: delete that array first, or take a copy of it");
}

template py::array viewOf(boost::shared_ptr<const void>, omUInt8*, const std::vector<py::ssize_t>&, Access);
template py::array viewOf(boost::shared_ptr<const void>, omInt32*, const std::vector<py::ssize_t>&, Access);
template py::array viewOf(boost::shared_ptr<const void>, omUInt32*, const std::vector<py::ssize_t>&, Access);
template py::array viewOf(boost::shared_ptr<const void>, omReal32*, const std::vector<py::ssize_t>&, Access);
template py::array viewOf(boost::shared_ptr<const void>, omReal64*, const std::vector<py::ssize_t>&, Access);

}  // namespace ormix::python
