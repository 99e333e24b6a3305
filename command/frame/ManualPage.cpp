#include <ORMIXUtil/Version.h>
#include <command/frame/Help.h>

#include <ostream>

namespace ormix::command {

namespace {

/// A text as roff reads it: hyphens that may be copied, choices that may be broken, and no line
/// that begins as a request.
std::string roffOf(std::string_view text) {
  std::string roff;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool beginsLine = i == 0 || text[i - 1] == '\n';
    if (beginsLine && (text[i] == '.' || text[i] == '\'')) roff += "\\&";
    if (text[i] == '\\')
      roff += "\\e";
    else if (text[i] == '-')
      roff += "\\-";
    else if (text[i] == '|')
      roff += "|\\:";
    else if (text[i] == '\n' && i + 1 < text.size() && text[i + 1] == '\n') {
      roff += "\n.PP\n";
      ++i;
    } else
      roff += text[i];
  }
  return roff;
}

void printOption(std::ostream& out, const Option& option) {
  out << ".TP\n";
  if (option.letter) out << "\\fB\\-" << option.letter << "\\fR, ";
  out << "\\fB\\-\\-" << roffOf(option.name) << "\\fR";
  if (!option.placeholder.empty()) out << " \\fI" << roffOf(option.placeholder) << "\\fR";
  out << '\n' << roffOf(option.help) << ".\n";
}

}  // namespace

void printManualPage(std::ostream& out) {
  out << ".TH ORMIX 1 \"\" \"ORMIX " << getSDKStrVersion() << "\" \"User commands\"\n"
      << ".SH NAME\normix \\- " << roffOf(s_programSummary) << "\n.SH SYNOPSIS\n"
      << ".B ormix\n\\fISUBCOMMAND\\fR [\\fIOPTION\\fR...] [\\fIFILE\\fR...]\n.SH DESCRIPTION\n"
      << "Each subcommand reads files, or the standard input where none is named or the name is \\-, and recognises "
         "their\n"
         "formats by their contents. What is wrong with a file is said on the standard error, and the next file is "
         "read.\n";
  for (const Command& command : commands()) {
    out << ".SS ormix " << command.name << " [\\fIOPTION\\fR...] " << roffOf(command.operands) << '\n'
        << roffOf(command.description) << '\n';
    for (const Option& option : command.options) printOption(out, option);
  }
  out << ".SH OPTIONS\nOf all subcommands:\n";
  for (const Option& option : commonOptions()) printOption(out, option);
  out << ".TP\n\\fB\\-\\-version\\fR\nWithout a subcommand: print the version.\n"
      << ".SH \"EXIT STATUS\"\n.TP\n.B 0\nAll was done.\n.TP\n.B 1\nSomething was wrong with a file; the others were "
         "done.\n"
      << ".TP\n.B 2\nThe command line was wrong; nothing was done.\n"
      << ".TP\n.B 130\nInterrupted; what was being written is as it was before.\n.SH EXAMPLES\n";
  for (const Command& command : commands())
    for (const Example& example : command.examples)
      out << ".TP\n\\fB" << roffOf(example.line) << "\\fR\n" << roffOf(example.help) << ".\n";
}

}  // namespace ormix::command
