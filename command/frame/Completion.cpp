#include <command/frame/Help.h>

#include <ostream>

namespace ormix::command {

namespace {

std::string joined(const std::vector<std::string>& words, const char* separator = " ") {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : separator) + word;
  return text;
}

std::vector<std::string> namesOfCommands() {
  std::vector<std::string> names;
  for (const Command& command : commands()) names.emplace_back(command.name);
  return names;
}

std::vector<Option> allOptionsOf(const Command& command) {
  std::vector<Option> options = command.options;
  options.insert(options.end(), commonOptions().begin(), commonOptions().end());
  return options;
}

std::vector<std::string> textsOf(const std::vector<std::string_view>& words) { return {words.begin(), words.end()}; }

/// A text between quotes of shells.
std::string quoted(std::string_view text) {
  std::string result = "'";
  for (const char c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return result + '\'';
}

void printBash(std::ostream& out) {
  out << "# bash completion of ormix, made by \"ormix help --completion bash\"\n"
         "_ormix() {\n"
         "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} words=\n"
         "  COMPREPLY=()\n"
         "  if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
         "    words='"
      << joined(namesOfCommands())
      << " --help --version'\n"
         "  else\n"
         "    case ${COMP_WORDS[1]} in\n";
  for (const Command& command : commands()) {
    out << "      " << command.name << ")\n        case $previous in\n";
    std::string all;
    for (const Option& option : allOptionsOf(command)) {
      all.append(" --").append(option.name);
      if (option.kind == eOptionKind::Flag) continue;
      out << "          --" << option.name;
      if (option.letter) out << "|-" << option.letter;
      if (option.kind == eOptionKind::Choice)
        out << ") words='" << joined(choicesOf(option)) << "' ;;\n";
      else
        out << ") return ;;\n";
    }
    out << "          *)\n            case $current in\n              -*) words='" << all.substr(1) << "' ;;\n";
    if (!command.firstOperands.empty())
      out << "              *) [ \"$COMP_CWORD\" -ne 2 ] || words='" << joined(textsOf(command.firstOperands))
          << "' ;;\n";
    out << "            esac ;;\n        esac ;;\n";
  }
  out << "    esac\n"
         "  fi\n"
         "  [ -z \"$words\" ] || COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
         "}\n"
         "complete -o default -F _ormix ormix\n";
}

void printZsh(std::ostream& out) {
  const auto escaped = [](std::string_view text) {
    std::string result;
    for (const char c : text) result += (c == '[' || c == ']' || c == ':' ? "\\" : "") + std::string(1, c);
    return result;
  };
  out << "#compdef ormix\n# zsh completion of ormix, made by \"ormix help --completion zsh\"\n"
         "if (( CURRENT == 2 )); then\n  local -a subcommands=(\n";
  for (const Command& command : commands())
    out << "    " << quoted(std::string(command.name) + ":" + escaped(command.summary)) << '\n';
  out << "  )\n  _describe subcommand subcommands\n  return\nfi\nlocal subcommand=$words[2]\nshift words\n(( CURRENT-- "
         "))\n"
         "case $subcommand in\n";
  for (const Command& command : commands()) {
    out << "  " << command.name << ")\n    _arguments";
    for (const Option& option : allOptionsOf(command)) {
      const std::string help = "[" + escaped(option.help) + "]";
      const std::string value = option.kind == eOptionKind::Flag     ? ""
                                : option.kind == eOptionKind::Choice ? ":value:(" + joined(choicesOf(option)) + ")"
                                : option.kind == eOptionKind::File   ? ":file:_files"
                                                                     : ":" + std::string(option.placeholder) + ": ";
      out << " \\\n      " << quoted("--" + std::string(option.name) + help + value);
      if (option.letter) out << " \\\n      " << quoted("-" + std::string(1, option.letter) + help + value);
    }
    if (!command.firstOperands.empty())
      out << " \\\n      " << quoted("1:word:(" + joined(textsOf(command.firstOperands)) + ")");
    out << " \\\n      '*:file:_files' ;;\n";
  }
  out << "esac\n";
}

void printFish(std::ostream& out) {
  out << "# fish completion of ormix, made by \"ormix help --completion fish\"\n";
  for (const Command& command : commands()) {
    out << "complete -c ormix -n __fish_use_subcommand -f -a " << command.name << " -d " << quoted(command.summary)
        << '\n';
    const std::string begin = "complete -c ormix -n '__fish_seen_subcommand_from " + std::string(command.name) + "'";
    for (const Option& option : allOptionsOf(command)) {
      out << begin << " -l " << option.name;
      if (option.letter) out << " -s " << option.letter;
      if (option.kind == eOptionKind::Choice)
        out << " -x -a " << quoted(joined(choicesOf(option)));
      else if (option.kind != eOptionKind::Flag)
        out << (option.kind == eOptionKind::File ? " -r" : " -x");
      out << " -d " << quoted(option.help) << '\n';
    }
    if (!command.firstOperands.empty())
      out << begin << " -a " << quoted(joined(textsOf(command.firstOperands))) << '\n';
  }
}

}  // namespace

void printCompletion(std::ostream& out, const std::string& shell) {
  if (shell == "bash") printBash(out);
  if (shell == "zsh") printZsh(out);
  if (shell == "fish") printFish(out);
}

}  // namespace ormix::command
