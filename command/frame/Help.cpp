#include <ORMIXUtil/Version.h>
#include <command/frame/Help.h>

#include <algorithm>
#include <ostream>

namespace ormix::command {

namespace {

constexpr std::size_t s_lineWidth = 80;

/// Breaks a text at blanks; lines but the first are indented, and empty lines kept.
/// \param column how many characters stand in the first line
void printWrapped(std::ostream& out, std::string_view text, std::size_t column, std::size_t indent) {
  bool beginsLine = true;
  const auto breakLine = [&] {
    out << '\n';
    column = 0;
    beginsLine = true;
  };
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(" \n"), text.size());
    if (end > 0 && !beginsLine && column + 1 + end > s_lineWidth) breakLine();
    if (end > 0) {
      const std::size_t nbBlanks = !beginsLine ? 1 : column < indent ? indent - column : 0;
      out << std::string(nbBlanks, ' ') << text.substr(0, end);
      column += nbBlanks + end;
      beginsLine = false;
    }
    if (end < text.size() && text[end] == '\n') breakLine();
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  out << '\n';
}

/// "-o, --output FILE".
std::string nameOf(const Option& option) {
  std::string name = option.letter ? std::string("-") + option.letter + ", " : std::string("    ");
  name.append("--").append(option.name);
  if (!option.placeholder.empty()) name.append(" ").append(option.placeholder);
  return name;
}

void printOptions(std::ostream& out, const std::vector<Option>& options) {
  constexpr std::size_t column = 28;
  for (const Option& option : options) {
    const std::string name = "  " + nameOf(option);
    out << name;
    if (name.size() + 2 > column)
      out << '\n' << std::string(column, ' ');
    else
      out << std::string(column - name.size(), ' ');
    printWrapped(out, option.help, column, column);
  }
}

}  // namespace

void printHelp(std::ostream& out) {
  out << "ormix: " << s_programSummary << "\n\nusage: ormix SUBCOMMAND [OPTION...] [FILE...]\n\nsubcommands:\n";
  for (const Command& command : commands()) {
    out << "  " << command.name << std::string(12 - command.name.size(), ' ');
    printWrapped(out, command.summary, 14, 14);
  }
  out << "\n\"ormix SUBCOMMAND --help\" has the options of each, with examples; \"ormix --version\"\nprints the "
         "version.\n";
}

void printHelp(std::ostream& out, const Command& command) {
  out << "ormix " << command.name << ": ";
  printWrapped(out, command.summary, 8 + command.name.size(), 0);
  out << "\nusage: ormix " << command.name << " [OPTION...] " << command.operands << "\n\n";
  printWrapped(out, command.description, 0, 0);
  out << "\noptions:\n";
  printOptions(out, command.options);
  printOptions(out, commonOptions());
  out << "\nexamples:\n";
  for (const Example& example : command.examples) {
    out << "  " << example.line << "\n      ";
    printWrapped(out, example.help, 6, 6);
  }
}

void printExamples(std::ostream& out) {
  for (const Command& command : commands())
    for (const Example& example : command.examples) out << example.line << '\n';
}

std::vector<std::string> choicesOf(const Option& option) {
  std::vector<std::string> choices;
  std::string_view rest = option.placeholder;
  while (!rest.empty()) {
    const std::size_t bar = rest.find('|');
    choices.emplace_back(rest.substr(0, bar));
    rest.remove_prefix(bar == rest.npos ? rest.size() : bar + 1);
  }
  return choices;
}

}  // namespace ormix::command
