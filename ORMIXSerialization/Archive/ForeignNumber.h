#pragma once

#include <ORMIXSerialization/Archive/CborDecoder.h>
#include <ORMIXSerialization/Archive/CborTags.h>

namespace ormix {

/// One element of a typed array of any type and byte order, as the number it would be on its own.
CborToken foreignNumber(const TypedArrayTag& type, const unsigned char* bytes);

}  // namespace ormix
