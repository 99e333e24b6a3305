#include <command/frame/Arguments.h>
#include <command/frame/Errors.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iostream>
#include <new>

namespace ormix::command {

namespace {

/// Sets a number from the whole of a text.
template <class Number>
bool parse(std::string_view text, Number& number) {
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && rest == end && !text.empty();
}

bool parseFinite(std::string_view text, omReal64& number) { return parse(text, number) && std::isfinite(number); }

bool parseSpacing(std::string_view text, std::pair<omReal64, omReal64>& spacing) {
  const std::size_t comma = text.find(',');
  const bool isParsed = parseFinite(text.substr(0, comma), spacing.first) &&
                        parseFinite(comma == text.npos ? text : text.substr(comma + 1), spacing.second);
  return isParsed && spacing.first > 0 && spacing.second > 0;
}

bool isChoice(std::string_view choices, std::string_view word) {
  if (word.empty() || word.find('|') != word.npos) return false;
  return ('|' + std::string(choices) + '|').find('|' + std::string(word) + '|') != std::string::npos;
}

/// What a value should have been; empty when it is right.
std::string expected(const Option& option, const std::string& value) {
  omReal64 real = 0;
  omUInt64 count = 0;
  std::pair<omReal64, omReal64> spacing;
  switch (option.kind) {
    case eOptionKind::Choice: {
      std::string choices(option.placeholder);
      std::replace(choices.begin(), choices.end(), '|', ' ');
      return isChoice(option.placeholder, value) ? "" : "one of " + choices;
    }
    case eOptionKind::Real:
      return parseFinite(value, real) ? "" : "a number";
    case eOptionKind::Length:
      return parseFinite(value, real) && real >= 0 ? "" : "a number from 0 on";
    case eOptionKind::Count:
      return parse(value, count) && count > 0 ? "" : "a whole number from 1 on";
    case eOptionKind::Seed:
      return parse(value, count) && count <= 0xFFFFFFFFu ? "" : "a whole number from 0 to 4294967295";
    case eOptionKind::Spacing:
      return parseSpacing(value, spacing) ? "" : "one or two positive numbers, parted by a comma";
    case eOptionKind::File:
      return value.empty() ? "a path" : "";
    case eOptionKind::Flag:
    case eOptionKind::Text:
      break;
  }
  return "";
}

const Option* findOption(const Command& command, std::string_view name) {
  for (const std::vector<Option>* options : {&command.options, &commonOptions()})
    for (const Option& option : *options)
      if (name.size() == 1 ? option.letter == name[0] : option.name == name) return &option;
  return nullptr;
}

}  // namespace

Arguments::Arguments(const Command& command, const std::vector<std::string>& words) : _command(&command) {
  bool hasOptions = true;
  for (auto word = words.begin(); word != words.end(); ++word) {
    if (!hasOptions || word->size() < 2 || (*word)[0] != '-') {
      _operands.push_back(*word);
      continue;
    }
    if (*word == "--") {
      hasOptions = false;
      continue;
    }
    const bool isLong = (*word)[1] == '-';
    const std::size_t equals = isLong ? word->find('=') : word->size() > 2 ? 2 : word->npos;
    const std::string name = isLong ? word->substr(2, equals == word->npos ? equals : equals - 2) : word->substr(1, 1);
    const std::string shown = isLong ? "--" + name : "-" + name;
    const Option* const option = name.size() == 1 && isLong ? nullptr : findOption(command, name);
    if (!option) throw UsageError("there is no option " + shown);
    std::string value;
    if (option->kind == eOptionKind::Flag) {
      if (equals != word->npos) throw UsageError("option " + shown + " takes no value");
    } else if (equals != word->npos) {
      value = word->substr(isLong ? equals + 1 : equals);
    } else if (++word != words.end()) {
      value = *word;
    } else {
      throw UsageError("option " + shown + " needs a value");
    }
    const std::string wanted = expected(*option, value);
    if (!wanted.empty()) throw UsageError("option " + shown + " is \"" + value + "\", not " + wanted);
    _values.emplace_back(option->name, value);
  }
}

std::vector<std::string> Arguments::inputs(std::size_t first) const {
  if (_operands.size() > first) return {_operands.begin() + static_cast<std::ptrdiff_t>(first), _operands.end()};
  if (::isatty(STDIN_FILENO)) throw UsageError("no file is named, and the standard input is a terminal");
  return {"-"};
}

const std::string* Arguments::find(std::string_view option) const {
  const auto found =
      std::find_if(_values.rbegin(), _values.rend(), [&](const auto& value) { return value.first == option; });
  return found == _values.rend() ? nullptr : &found->second;
}

std::string Arguments::text(std::string_view option, std::string_view otherwise) const {
  const std::string* const value = find(option);
  return value ? *value : std::string(otherwise);
}

omReal64 Arguments::real(std::string_view option, omReal64 otherwise) const {
  if (const std::string* const value = find(option)) parse(*value, otherwise);
  return otherwise;
}

omUInt64 Arguments::count(std::string_view option, omUInt64 otherwise) const {
  if (const std::string* const value = find(option)) parse(*value, otherwise);
  return otherwise;
}

std::pair<omReal64, omReal64> Arguments::spacing(std::string_view option) const {
  std::pair<omReal64, omReal64> spacing{1, 1};
  if (const std::string* const value = find(option)) parseSpacing(*value, spacing);
  return spacing;
}

int Arguments::forEachInput(const std::vector<std::string>& inputs,
                            const std::function<void(const std::string&)>& use) const {
  for (const std::string& input : inputs) try {
      use(input);
    } catch (const ProgramEnd&) {
      throw;
    } catch (const std::exception& error) {
      complain(input, describe(error));
    }
  return _hasComplained ? eE_Failed : eE_Done;
}

void Arguments::complain(const std::string& file, const std::string& text) const {
  _hasComplained = true;
  std::cout.flush();
  std::cerr << "ormix " << _command->name << ": " << (file == "-" ? "standard input" : file) << ": " << text << '\n';
}

std::string describe(const std::exception& error) {
  if (dynamic_cast<const std::bad_alloc*>(&error)) return "not enough memory";
  return error.what();
}

}  // namespace ormix::command
