#pragma once

#include <command/io/Contents.h>
#include <command/io/Pictures.h>

#include <optional>
#include <string>

namespace ormix::command {

/// --to, which names an output format.
const Option& toOption();

/// The output format that --to names, else the extension of --output.
/// \throw UsageError when neither does
std::string outputFormatOf(const Arguments& arguments);

/// Writes contents in a format of --to: archives (cbor, json, jsonl), meshes (stl, stl-ascii, obj, ply, ply-ascii,
/// off), texts (rings, points), pictures (svg) and masks (png).
/// \param size of a mask, see writeMask()
/// \throw DataError
void writeContents(const std::string& path, const std::string& format, const Contents& contents,
                   const std::optional<std::pair<std::size_t, std::size_t>>& size = {});

}  // namespace ormix::command
