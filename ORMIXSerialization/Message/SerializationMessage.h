#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix {

/// Message domain of archives: ids and texts. docs/messages.md says when each message occurs and what to do.
struct ORMIX_SERIALIZATION_API eORMIXSerializationMessage {
  /// Tag whose run-time type name is the name of the domain in the catalogue.
  struct ORMIX_SERIALIZATION_API domain {};

  /// Ids of the messages, in the order of `texts`.
  enum eId {
    eSM_StreamNotReadable,      ///< the stream has failed before or while reading
    eSM_StreamNotWritable,      ///< the stream has failed before or while writing
    eSM_EmptyArchive,           ///< no bytes to read
    eSM_NotAnArchive,           ///< the format is not recognised, or the header is missing
    eSM_FormatTooRecent,        ///< the archive format is newer than this library
    eSM_KeyMismatch,            ///< the next entry has another key
    eSM_KeyMissing,             ///< no entry is left in the section
    eSM_WrongKind,              ///< the value is of another kind
    eSM_OutOfRange,             ///< a number does not fit into its type
    eSM_Truncated,              ///< the data end inside an entry
    eSM_Malformed,              ///< the data violate the syntax of the format
    eSM_UnreadEntry,            ///< a section or archive is closed before its end
    eSM_TrailingData,           ///< bytes after the end of the archive
    eSM_TooDeep,                ///< more than 1,000 nested sections
    eSM_InvalidText,            ///< a key or a text is not valid UTF-8
    eSM_DeclaredTooLong,        ///< a declared length exceeds the remaining data
    eSM_ArrayShape,             ///< a numeric array has other dimensions than required
    eSM_UnknownEnumerator,      ///< a name or value that the enumeration does not have
    eSM_UnregisteredClass,      ///< a class without a creator in the factory
    eSM_WrongClass,             ///< an object of a class that the field does not allow
    eSM_NullPointer,            ///< a null pointer among the objects to write
    eSM_SectionsOpen,           ///< closed before all sections were ended
    eSM_NoSectionOpen,          ///< a section is ended that was not begun
    eSM_Closed,                 ///< written to after it was closed
    eSM_File,                   ///< prefix of the other messages when a file is concerned
    eSM_ClassVersionTooRecent,  ///< class version newer than this library; id 25 is known to other libraries
    eSM_ClassVersionTooOld      ///< class version no longer supported
  };

  /// The texts by id, with placeholders of Boost.Format; programs may match them, so they do not change.
  static constexpr std::array<MessageText, 27> texts{{
      {eSM_StreamNotReadable, "The archive's stream cannot be read"},
      {eSM_StreamNotWritable, "The archive cannot be written to its stream"},
      {eSM_EmptyArchive, "The archive is empty"},
      {eSM_NotAnArchive, "The data are not an archive of this family: %s"},
      {eSM_FormatTooRecent, "The archive has format version %d, the newest known is %d"},
      {eSM_KeyMismatch, "Key \"%s\" was wanted, \"%s\" was found"},
      {eSM_KeyMissing, "Key \"%s\" was wanted, the section has no more entries"},
      {eSM_WrongKind, "Key \"%s\": %s was wanted, %s was found"},
      {eSM_OutOfRange, "Key \"%s\": %s is out of range for %s"},
      {eSM_Truncated, "Key \"%s\": the archive ends too early"},
      {eSM_Malformed, "Key \"%s\": the archive is malformed, %s"},
      {eSM_UnreadEntry, "The section ends with an entry that nobody has read, key \"%s\""},
      {eSM_TrailingData, "Something follows the end of the archive"},
      {eSM_TooDeep, "Key \"%s\": sections are nested deeper than %d levels"},
      {eSM_InvalidText, "Key \"%s\": the text is not valid UTF-8"},
      {eSM_DeclaredTooLong, "Key \"%s\": %d bytes are declared, only %d remain"},
      {eSM_ArrayShape, "Key \"%s\": rows of %d numbers were wanted, %s"},
      {eSM_UnknownEnumerator, "Key \"%s\": \"%s\" is not an enumerator of %s"},
      {eSM_UnregisteredClass, "Key \"%s\": class \"%s\" is not registered in the dynamic object factory"},
      {eSM_WrongClass, "Key \"%s\": an object of class \"%s\" cannot stand here"},
      {eSM_NullPointer, "Key \"%s\": a null pointer cannot be archived"},
      {eSM_SectionsOpen, "The archive was closed with %d sections open"},
      {eSM_NoSectionOpen, "No section is open"},
      {eSM_Closed, "The archive is closed"},
      {eSM_File, "File \"%s\": %s"},
      {eSM_ClassVersionTooRecent, "Class %s was archived with version %d, the newest known is %d"},
      {eSM_ClassVersionTooOld, "Class %s: Key \"version\": %d is older than %d, the oldest known"},
  }};

  /// The library's message catalogue, in which the texts are registered.
  static LogMessageManager& manager();
};

/// The text of a message with its placeholders replaced by the arguments, in order.
template <class... Arguments>
std::string serializationMessage(eORMIXSerializationMessage::eId id, const Arguments&... arguments) {
  return formatMessage<eORMIXSerializationMessage>(id, arguments...);
}

}  // namespace ormix
