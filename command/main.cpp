// ormix: measures, fits, inspects and converts geometry on a command line. Exit status: see eExit.
#include <ORMIXUtil/Version.h>
#include <command/Subcommands.h>
#include <command/frame/Arguments.h>
#include <command/frame/Errors.h>
#include <command/frame/Help.h>
#include <command/io/Rows.h>

#include <algorithm>
#include <csignal>
#include <iostream>

namespace ormix::command {

const std::vector<Command>& commands() {
  static const std::vector<Command> all = [] {
    std::vector<Command> made{measureCommand(), fitCommand(),      formCommand(), inspectCommand(),
                              convertCommand(), simplifyCommand(), viewCommand()};
    std::vector<std::string_view> names;
    for (const Command& command : made) names.push_back(command.name);
    made.push_back(helpCommand(names));
    return made;
  }();
  return all;
}

const std::vector<Option>& commonOptions() {
  static const std::vector<Option> options{{"help", 'h', eOptionKind::Flag, "", "print this text"}};
  return options;
}

const Command* findCommand(std::string_view name) {
  const auto found =
      std::find_if(commands().begin(), commands().end(), [&](const Command& command) { return command.name == name; });
  return found == commands().end() ? nullptr : &*found;
}

namespace {

int runCommand(const Command& command, const std::vector<std::string>& words) {
  const Arguments arguments(command, words);
  if (!arguments.has("help")) return command.run(arguments);
  printHelp(std::cout, command);
  flushOutput();
  return eE_Done;
}

int runProgram(const std::vector<std::string>& words) {
  if (words.empty()) {
    printHelp(std::cerr);
    return eE_Usage;
  }
  if (words[0] == "--help" || words[0] == "-h") {
    printHelp(std::cout);
    flushOutput();
    return eE_Done;
  }
  if (words[0] == "--version") {
    std::cout << "ormix " << getSDKStrVersion() << '\n';
    flushOutput();
    return eE_Done;
  }
  const Command* const command = findCommand(words[0]);
  if (!command) {
    std::cerr << "ormix: there is no subcommand \"" << words[0] << "\"; see \"ormix --help\"\n";
    return eE_Usage;
  }
  try {
    return runCommand(*command, {words.begin() + 1, words.end()});
  } catch (const UsageError& error) {
    std::cerr << "ormix " << command->name << ": " << error.what() << "; see \"ormix " << command->name
              << " --help\"\n";
    return eE_Usage;
  } catch (const OutputClosed&) {
    throw;
  } catch (const Interrupted&) {
    std::cerr << "ormix " << command->name << ": interrupted\n";
    return eE_Interrupted;
  } catch (const std::exception& error) {
    std::cerr << "ormix " << command->name << ": " << describe(error) << '\n';
    return eE_Failed;
  }
}

}  // namespace

}  // namespace ormix::command

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  std::signal(SIGPIPE, SIG_IGN);
  try {
    return ormix::command::runProgram({argv + 1, argv + argc});
  } catch (const ormix::command::OutputClosed&) {
    return ormix::command::eE_Done;  // a reader such as head has had enough
  } catch (const std::exception& error) {
    std::cerr << "ormix: " << ormix::command::describe(error) << '\n';
    return ormix::command::eE_Failed;
  }
}
