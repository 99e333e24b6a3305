#include <command/Subcommands.h>
#include <command/frame/Arguments.h>
#include <command/frame/Errors.h>
#include <command/frame/Help.h>
#include <command/io/Rows.h>

#include <iostream>

namespace ormix::command {

namespace {

int run(const Arguments& arguments) {
  if (arguments.operands().size() > 1) throw UsageError("one subcommand at most can be named");
  if (arguments.has("man")) {
    printManualPage(std::cout);
  } else if (arguments.has("completion")) {
    printCompletion(std::cout, arguments.text("completion"));
  } else if (arguments.has("examples")) {
    printExamples(std::cout);
  } else if (arguments.operands().empty()) {
    printHelp(std::cout);
  } else {
    const Command* const command = findCommand(arguments.operands().front());
    if (!command) throw UsageError("there is no subcommand \"" + arguments.operands().front() + '"');
    printHelp(std::cout, *command);
  }
  flushOutput();
  return eE_Done;
}

}  // namespace

Command helpCommand(const std::vector<std::string_view>& subcommands) {
  return {
      "help",
      "[SUBCOMMAND]",
      "what the program and its subcommands do",
      "Prints what the program does, or a subcommand; the manual page, or a script for a shell that completes command "
      "lines.",
      subcommands,
      {{"man", 0, eOptionKind::Flag, "", "print the manual page"},
       {"completion", 0, eOptionKind::Choice, "bash|zsh|fish", "print the script by which a shell completes words"},
       {"examples", 0, eOptionKind::Flag, "", "print the command lines of all examples"}},
      {{"ormix help measure", "The same as \"ormix measure --help\""},
       {"ormix help --man > ormix.1", "The manual page; \"man ./ormix.1\" shows it"},
       {"eval \"$(ormix help --completion bash)\"", "Words are completed in this shell"}},
      run};
}

}  // namespace ormix::command
