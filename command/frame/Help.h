#pragma once

#include <command/frame/Command.h>

#include <iosfwd>
#include <string>

/// \file
/// Texts that are made of the tables of the subcommands.

namespace ormix::command {

/// What the program is, in one line, without a full stop.
inline constexpr std::string_view s_programSummary = "measures, fits, inspects and converts geometry";

/// What `ormix --help` prints.
void printHelp(std::ostream& out);
/// What `ormix SUBCOMMAND --help` prints.
void printHelp(std::ostream& out, const Command& command);
/// The manual page ormix(1), for man.
void printManualPage(std::ostream& out);
/// The script by which a shell completes command lines.
/// \param shell bash, zsh or fish
void printCompletion(std::ostream& out, const std::string& shell);
/// The examples of all help texts, a line each.
void printExamples(std::ostream& out);

/// The words of the placeholder of a choice.
std::vector<std::string> choicesOf(const Option& option);

}  // namespace ormix::command
