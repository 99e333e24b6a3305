#pragma once

#include <ORMIXSerialization/Archive/ArchiveFormat.h>
#include <ORMIXSerialization/Object/BaseSerializationObject.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <iosfwd>
#include <string>
#include <vector>

/// \file
/// Reading and writing of objects whose class is not known in advance: the key of each is the registered name of its
/// class, by which it is created when read.

namespace ormix {

/// An object of any serializable class.
using SerializationObjectPtr = boost::shared_ptr<BaseSerializationObject>;
/// Objects in the order of an archive.
using SerializationObjectPtrColl = std::vector<SerializationObjectPtr>;

/// Writes the object as one entry of an open archive, under the registered name of its class.
ORMIX_SERIALIZATION_API BoolResult writeObject(BaseOArchive& archive, const BaseSerializationObject& object);
/// Reads the next entry of an open archive as an object, which is created by the factory of dynamic objects.
/// \return the object, or a null pointer and a message: the section or archive has no more entries, the class is not
///         registered or not serializable, or reading the object has failed
/// \throw ORMIXSerializationException when a newer version of the class has written the archive
ORMIX_SERIALIZATION_API ProcessingResult<SerializationObjectPtr> readObject(BaseIArchive& archive);

/// Writes one object, or several in order, as an archive to a stream and flushes it. The stream must be open in binary
/// mode. Linear in the data.
/// \return failure when an object is null or cannot be written, and when the stream has failed (a full disk, say)
/// @{
ORMIX_SERIALIZATION_API BoolResult save(std::ostream& stream, const BaseSerializationObject& object,
                                        eArchiveFormat format = eArchiveFormat::Cbor);
ORMIX_SERIALIZATION_API BoolResult saveAll(std::ostream& stream, const SerializationObjectPtrColl& objects,
                                           eArchiveFormat format = eArchiveFormat::Cbor);
/// @}

/// Writes one object, or several in order, to a file: JSON if the path ends in ".json", else CBOR. A file that exists
/// is replaced only when the new one is complete and on the disk. Two kinds of files are written in place instead, and
/// are incomplete when the program is killed: what is not a regular file (a device, a pipe), and a file beside which no
/// temporary file can be created (no permission in the folder, or too long a name).
/// \return failure with the path in the message; a file that existed is then unchanged, unless it is written in place
/// @{
ORMIX_SERIALIZATION_API BoolResult save(const std::string& path, const BaseSerializationObject& object);
ORMIX_SERIALIZATION_API BoolResult saveAll(const std::string& path, const SerializationObjectPtrColl& objects);
/// @}

/// Reads the only object of an archive, in either format, from a stream in binary mode or from a file. Linear in the
/// data.
/// \throw ORMIXSerializationException after the error is logged, with the path of a file in the message: when the data
///        cannot be read, are not an archive, are followed by other data, or hold other than exactly one object
/// @{
ORMIX_SERIALIZATION_API SerializationObjectPtr load(std::istream& stream);
ORMIX_SERIALIZATION_API SerializationObjectPtr load(const std::string& path);
/// @}

/// Reads all objects of an archive in order, possibly none; otherwise as `load`.
/// \throw ORMIXSerializationException as `load`; no objects are returned when one of them cannot be read
/// @{
ORMIX_SERIALIZATION_API SerializationObjectPtrColl loadAll(std::istream& stream);
ORMIX_SERIALIZATION_API SerializationObjectPtrColl loadAll(const std::string& path);
/// @}

}  // namespace ormix
