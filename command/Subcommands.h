#pragma once

#include <command/frame/Command.h>

/// \file
/// The subcommands, one source each.

namespace ormix::command {

Command measureCommand();
Command fitCommand();
Command formCommand();
Command inspectCommand();
Command convertCommand();
Command simplifyCommand();
Command viewCommand();
/// \param subcommands the names of all others
Command helpCommand(const std::vector<std::string_view>& subcommands);

}  // namespace ormix::command
