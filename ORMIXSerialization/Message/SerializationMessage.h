#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix {

/// Texts about archives.
struct ORMIX_SERIALIZATION_API eORMIXSerializationMessage {
  struct ORMIX_SERIALIZATION_API domain {};

  enum eId {
    eSM_StreamNotReadable,
    eSM_StreamNotWritable,
    eSM_EmptyArchive,
    eSM_NotAnArchive,
    eSM_FormatTooRecent,
    eSM_KeyMismatch,
    eSM_KeyMissing,
    eSM_WrongKind,
    eSM_OutOfRange,
    eSM_Truncated,
    eSM_Malformed,
    eSM_UnreadEntry,
    eSM_TrailingData,
    eSM_TooDeep,
    eSM_InvalidText,
    eSM_DeclaredTooLong,
    eSM_ArrayShape,
    eSM_UnknownEnumerator,
    eSM_UnregisteredClass,
    eSM_WrongClass,
    eSM_NullPointer,
    eSM_SectionsOpen,
    eSM_NoSectionOpen,
    eSM_Closed,
    eSM_File,
    eSM_ClassVersionTooRecent,  ///< 25, known by its number to other libraries
    eSM_ClassVersionTooOld
  };

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

  /// The library's catalogue.
  static LogMessageManager& manager();
};

/// The text of a message with its placeholders filled in order.
template <class... Arguments>
std::string serializationMessage(eORMIXSerializationMessage::eId id, const Arguments&... arguments) {
  return formatMessage<eORMIXSerializationMessage>(id, arguments...);
}

}  // namespace ormix
