#pragma once

#include <ORMIXSerialization/Archive/CborDecoder.h>
#include <ORMIXSerialization/Archive/CborTags.h>

namespace ormix {

/// Decodes an element of a typed array with any element type and byte order.
/// \param bytes the `type.size` bytes of the element
/// \return the same number as if it were a data item of its own
CborToken decodeElement(const TypedArrayTag& type, const unsigned char* bytes);

}  // namespace ormix
