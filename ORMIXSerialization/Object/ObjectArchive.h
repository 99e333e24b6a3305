#pragma once

#include <ORMIXSerialization/Archive/ArchiveFormat.h>
#include <ORMIXSerialization/Object/BaseSerializationObject.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <iosfwd>
#include <string>
#include <vector>

/// \file
/// Objects whose class the reader does not know beforehand: each stands in the archive under the name of its class.

namespace ormix {

using SerializationObjectPtr = boost::shared_ptr<BaseSerializationObject>;
using SerializationObjectPtrColl = std::vector<SerializationObjectPtr>;

/// \name One object in an archive that has been opened.
/// @{
/// Writes the object as one entry under the name of its class.
ORMIX_SERIALIZATION_API BoolResult writeObject(BaseOArchive& archive, const BaseSerializationObject& object);
/// Reads the next entry as an object, created through the factory; a null pointer with a message when that fails.
ORMIX_SERIALIZATION_API ProcessingResult<SerializationObjectPtr> readObject(BaseIArchive& archive);
/// @}

/// \name Objects to a stream or a file.
/// A file is JSON when its path ends in ".json", else CBOR. An older file at the path is replaced only when the new one
/// is complete and on the disk. Written directly, and so torn where the program is killed, are what is not a regular
/// file (a device, a pipe) and a file beside which no other can be made.
/// @{
ORMIX_SERIALIZATION_API BoolResult save(std::ostream& stream, const BaseSerializationObject& object,
                                        eArchiveFormat format = eArchiveFormat::Cbor);
ORMIX_SERIALIZATION_API BoolResult saveAll(std::ostream& stream, const SerializationObjectPtrColl& objects,
                                           eArchiveFormat format = eArchiveFormat::Cbor);
ORMIX_SERIALIZATION_API BoolResult save(const std::string& path, const BaseSerializationObject& object);
ORMIX_SERIALIZATION_API BoolResult saveAll(const std::string& path, const SerializationObjectPtrColl& objects);
/// @}

/// \name Objects from a stream or a file, in either format.
/// \throw ORMIXSerializationException after logging it: what cannot be read (named by its path), an archive that holds
///        something else, anything that follows, for `load` other than exactly one object
/// @{
ORMIX_SERIALIZATION_API SerializationObjectPtr load(std::istream& stream);
ORMIX_SERIALIZATION_API SerializationObjectPtrColl loadAll(std::istream& stream);
ORMIX_SERIALIZATION_API SerializationObjectPtr load(const std::string& path);
ORMIX_SERIALIZATION_API SerializationObjectPtrColl loadAll(const std::string& path);
/// @}

}  // namespace ormix
