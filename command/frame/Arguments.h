#pragma once

#include <ORMIXUtil/ScalarTypes.h>
#include <command/frame/Command.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ormix::command {

/// The options and operands of one call, checked against the table of its subcommand.
class Arguments {
 public:
  /// Takes apart what stands behind the name of the subcommand: "--name VALUE", "--name=VALUE", "-n VALUE", "-nVALUE";
  /// "-" is an operand, and everything behind "--".
  /// \throw UsageError
  Arguments(const Command& command, const std::vector<std::string>& words);

  const Command& command() const { return *_command; }
  /// What is no option, in order.
  const std::vector<std::string>& operands() const { return _operands; }
  /// The operands from `first` on; "-", the standard input, where there are none.
  /// \throw UsageError where there are none and the standard input is a terminal
  std::vector<std::string> inputs(std::size_t first = 0) const;

  /// Whether an option was given.
  bool has(std::string_view option) const { return find(option) != nullptr; }
  /// The value of an option, of the last one where it was given several times; `otherwise` where it was not given.
  /// @{
  std::string text(std::string_view option, std::string_view otherwise = "") const;
  omReal64 real(std::string_view option, omReal64 otherwise) const;
  omUInt64 count(std::string_view option, omUInt64 otherwise) const;
  std::pair<omReal64, omReal64> spacing(std::string_view option) const;
  /// @}

  /// Calls `use` with each input. What is thrown is said on the standard error, and the next input is used.
  /// \return eE_Failed when there was a complaint, else eE_Done
  int forEachInput(const std::vector<std::string>& inputs, const std::function<void(const std::string&)>& use) const;
  /// Says on the standard error what is wrong with a file: "ormix measure: FILE: text".
  void complain(const std::string& file, const std::string& text) const;

 private:
  const std::string* find(std::string_view option) const;

  const Command* _command;
  std::vector<std::pair<std::string_view, std::string>> _values;
  std::vector<std::string> _operands;
  mutable bool _hasComplained = false;
};

/// What the texts of an exception are for a person.
std::string describe(const std::exception& error);

}  // namespace ormix::command
