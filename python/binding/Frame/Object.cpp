#include "Object.h"

#include "Calls.h"
#include "Errors.h"
#include "Pictures.h"
#include "Print.h"

#include <ORMIXSerialization/Archive/ArchiveFormat.h>
#include <ORMIXSerialization/Object/ObjectArchive.h>
#include <ORMIXUtil/Object/DynamicObjectFactory.h>

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>
#include <boost/iostreams/device/array.hpp>
#include <boost/iostreams/device/back_inserter.hpp>
#include <boost/iostreams/stream.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <sstream>

namespace ormix::python {
namespace {

using Object = BaseSerializationObject;
using ObjectPtr = SerializationObjectPtr;

std::string archiveOf(const Object& object, eArchiveFormat format) {
  std::string bytes;
  boost::iostreams::stream<boost::iostreams::back_insert_device<std::string>> stream(bytes);
  check(save(stream, object, format), object.getClassName());
  return bytes;
}

py::bytes toBytes(const Object& object) {
  std::string bytes;
  {
    const Reading reading;
    bytes = archiveOf(object, eArchiveFormat::Cbor);
  }
  return bytes;
}

ObjectPtr fromBytes(const py::bytes& archive) {
  const std::string_view bytes = archive;
  const Reading reading;
  boost::iostreams::stream<boost::iostreams::array_source> stream(bytes.data(), bytes.size());
  return load(stream);
}

ObjectPtr copyOf(const Object& object) {
  return boost::dynamic_pointer_cast<BaseSerializationObject>(object.duplicateShared());
}

// Equal archives: the same class and the same bits in all fields.
bool isEqual(const Object& a, const Object& b) {
  if (&a == &b) return true;
  return a.getClassName() == b.getClassName() &&
         archiveOf(a, eArchiveFormat::Cbor) == archiveOf(b, eArchiveFormat::Cbor);
}

// As the base class of pybind11 makes an object, but TypeError where there is no class to make one of: pybind11 2.10
// ends the process then, which pickling with an old protocol leads to.
PyObject* newObject(PyTypeObject* type, PyObject* arguments, PyObject* keywords) {
  if (!py::detail::all_type_info(type).empty()) return py::detail::pybind11_object_new(type, arguments, keywords);
  PyErr_Format(PyExc_TypeError, "there are no objects of %.200s", type->tp_name);
  return nullptr;
}

}  // namespace

void bindObjects(py::module_& module) {
  reinterpret_cast<PyTypeObject*>(py::detail::get_internals().instance_base)->tp_new = &newObject;
  module.attr("_families") = py::dict();

  py::class_<Object, ObjectPtr> object(
      module, "Object", "An object of a registered class: it is copied, compared, pickled and archived.");
  object.def_property_readonly("class_name", &Object::getClassName, "The registered name of the class, as in archives.")
      .def("copy", &copyOf, "A copy that shares nothing with the object.")
      .def("__copy__", &copyOf)
      .def(
          "__deepcopy__", [](const Object& self, const py::dict&) { return copyOf(self); }, "memo"_a)
      .def("__eq__", &isEqual, py::is_operator(),
           "Whether the classes are the same and all fields, bit for bit. Linear in the data.")
      .def("__repr__", &print)
      .def("to_bytes", &toBytes, "The object as a CBOR archive.")
      .def(
          "to_json", [](const Object& self) { return archiveOf(self, eArchiveFormat::Json); }, LongCall(),
          "The object as a JSON archive.")
      .def(
          "save",
          [](const Object& self, const std::filesystem::path& path) {
            const BoolResult result = [&] {
              const Reading reading;
              return save(path.string(), self);
            }();
            check(result, self.getClassName());
          },
          "path"_a,
          "Write the object to a file: JSON if its name ends in '.json', else CBOR.\n\n"
          "A file that exists is replaced when the new one is complete.");
  object.attr("__hash__") = py::none();  // objects change

  py::class_<geom::BaseGeometryEntity, Object, boost::shared_ptr<geom::BaseGeometryEntity>>(
      module, "Entity", "A geometric entity of the plane or of space.");
  py::class_<geom::BaseGeometryEntity2d, geom::BaseGeometryEntity, boost::shared_ptr<geom::BaseGeometryEntity2d>>(
      module, "Entity2d", "An entity of the plane. Notebooks show it as a picture.")
      .def("_repr_svg_", py::overload_cast<const geom::BaseGeometryEntity2d&>(&picture));
  py::class_<geom::BaseGeometryEntity3d, geom::BaseGeometryEntity, boost::shared_ptr<geom::BaseGeometryEntity3d>>(
      module, "Entity3d", "An entity of space. Notebooks show meshes as a picture.")
      .def("_repr_svg_", py::overload_cast<const geom::BaseGeometryEntity3d&>(&picture));

  module.def("from_bytes", &fromBytes, "archive"_a, "The object of an archive in memory, CBOR or JSON.");
  module.def(
      "load", [](const std::filesystem::path& path) { return load(path.string()); }, "path"_a, LongCall(),
      "The only object of an archive file, CBOR or JSON, of the class that was saved.");
  module.def(
      "load_all", [](const std::filesystem::path& path) { return loadAll(path.string()); }, "path"_a, LongCall(),
      "All objects of an archive file, in order.");
  module.def(
      "save_all",
      [](const std::filesystem::path& path, const SerializationObjectPtrColl& objects) {
        const BoolResult result = [&] {
          const Reading reading;
          return saveAll(path.string(), objects);
        }();
        check(result);
      },
      "path"_a, "objects"_a, "Write objects in order to one archive file.");
  module.def(
      "create",
      [](const std::string& className) {
        return boost::dynamic_pointer_cast<Object>(DynamicObjectFactory::getInstance().createShared(className));
      },
      "class_name"_a, "A new object of the class with this registered name.");
  module.def(
      "class_names", [] { return DynamicObjectFactory::getInstance().getRegisteredNames(); },
      "The names of all registered classes, sorted.");
}

}  // namespace ormix::python
