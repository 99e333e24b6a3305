#pragma once

#include <string_view>
#include <vector>

/// \file
/// What a subcommand is. Its options and examples are declared once, in its table: the command line is parsed by it,
/// and help texts, the manual page and completions are made of it.

namespace ormix::command {

class Arguments;

/// What the value of an option may be; values of any other kind are refused before a subcommand runs.
enum class eOptionKind {
  Flag,     ///< no value
  Text,     ///< any text
  File,     ///< a path
  Choice,   ///< one of the words of the placeholder, which `|` parts
  Real,     ///< a finite number
  Length,   ///< a finite number, not negative
  Count,    ///< a whole number from 1
  Seed,     ///< a whole number from 0, of 32 bits
  Spacing,  ///< one or two positive numbers, parted by a comma
};

/// An option "--name".
struct Option {
  std::string_view name;         ///< without the dashes
  char letter;                   ///< of the short form "-o"; 0 where there is none
  eOptionKind kind;              ///< what its value may be
  std::string_view placeholder;  ///< how help texts name the value; empty of a flag
  std::string_view help;         ///< what it does, a sentence without its full stop
};

/// A command line that is shown, and run by the tests in examples/data.
struct Example {
  std::string_view line;  ///< for a shell
  std::string_view help;  ///< what it does
};

/// A subcommand of the program.
struct Command {
  std::string_view name;                        ///< "measure"
  std::string_view operands;                    ///< as a usage line has them: "[FILE...]"
  std::string_view summary;                     ///< one line, without a full stop
  std::string_view description;                 ///< paragraphs, parted by empty lines
  std::vector<std::string_view> firstOperands;  ///< the words that the first operand may be; empty where any may
  std::vector<Option> options;                  ///< in the order of help texts
  std::vector<Example> examples;                ///< at least one
  int (*run)(const Arguments& arguments);       ///< answers an eExit
};

/// All of them, in the order of help texts.
const std::vector<Command>& commands();

/// Options that all subcommands have.
const std::vector<Option>& commonOptions();

/// The subcommand of this name, null where there is none.
const Command* findCommand(std::string_view name);

}  // namespace ormix::command
