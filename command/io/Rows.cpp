#include <command/frame/Errors.h>
#include <command/io/Rows.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iostream>
#include <unordered_map>
#include <unordered_set>

namespace ormix::command {

namespace {

/// The number of bytes of the character of UTF-8 that begins a text; 0 where none does.
std::size_t utf8Length(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  const std::size_t length = first < 0x80 ? 1 : first >= 0xC2 && first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if ((first >= 0x80 && first < 0xC2) || first > 0xF4 || text.size() < length) return 0;
  omUInt32 character = length == 1 ? first : first & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((text[i] & 0xC0) != 0x80) return 0;
    character = character << 6 | (text[i] & 0x3F);
  }
  const bool isTooShort = (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
  const bool isSurrogate = character >= 0xD800 && character < 0xE000;
  return isTooShort || isSurrogate || character > 0x10FFFF ? 0 : length;
}

/// A text in JSON's quotes. Bytes that are not UTF-8, as names of files may have, become the character U+FFFD.
std::string quotedJson(std::string_view text) {
  std::string json = "\"";
  while (!text.empty()) {
    const std::size_t length = utf8Length(text);
    const char c = text[0];
    if (length == 0) {
      json += "\\ufffd";
    } else if (c == '"' || c == '\\') {
      json += '\\';
      json += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      constexpr const char* digits = "0123456789abcdef";
      json += std::string("\\u00") + digits[c >> 4] + digits[c & 15];
    } else {
      json += text.substr(0, length);
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return json + '"';
}

std::string quotedCsv(const std::string& text) {
  if (text.find_first_of(",\"\n") == text.npos) return text;
  std::string csv = "\"";
  for (const char c : text) csv += c == '"' ? std::string("\"\"") : std::string(1, c);
  return csv + '"';
}

/// The exact text of a value, without quotes.
std::string plainTextOf(const RowValue& value) {
  if (const auto* real = std::get_if<omReal64>(&value)) return textOf(*real);
  if (const auto* count = std::get_if<omUInt64>(&value)) return std::to_string(*count);
  if (const auto* integer = std::get_if<omInt64>(&value)) return std::to_string(*integer);
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? "true" : "false";
  return std::get<std::string>(value);
}

/// A value as a person reads it: reals with six digits, control characters left out.
std::string shownTextOf(const RowValue& value) {
  if (const auto* real = std::get_if<omReal64>(&value)) {
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), *real, std::chars_format::general, 6);
    return {digits.data(), end.ptr};
  }
  std::string text = plainTextOf(value);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  return text;
}

/// The width of a text in a terminal, one column a character of UTF-8.
std::size_t widthOf(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string jsonOf(const Row& row) {
  std::string line;
  for (const auto& [key, value] : row.values()) {
    line += line.empty() ? "{" : ",";
    line += quotedJson(key) + ':';
    line += std::holds_alternative<std::string>(value) ? quotedJson(std::get<std::string>(value)) : plainTextOf(value);
  }
  return line.empty() ? "{}" : line + '}';
}

std::string csvOf(const std::vector<std::string>& names) {
  std::string line;
  for (const std::string& name : names) line += (line.empty() ? "" : ",") + quotedCsv(name);
  return line;
}

/// The values of these columns; nothing where there is none.
std::string csvOf(const Row& row, const std::vector<std::string>& columns) {
  std::string line;
  for (const std::string& column : columns) {
    if (&column != &columns.front()) line += ',';
    const auto value = std::find_if(row.values().begin(), row.values().end(),
                                    [&](const auto& candidate) { return candidate.first == column; });
    if (value != row.values().end()) line += quotedCsv(plainTextOf(value->second));
  }
  return line;
}

}  // namespace

std::string textOf(omReal64 number) {
  if (std::isnan(number)) return "nan";
  if (std::isinf(number)) return number > 0 ? "inf" : "-inf";
  std::array<char, 32> digits;
  return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

Row& Row::add(std::string key, RowValue value) {
  const auto* const real = std::get_if<omReal64>(&value);
  if (!real || std::isfinite(*real)) _values.emplace_back(std::move(key), std::move(value));
  return *this;
}

Row& Row::addPoint(const std::string& key, std::initializer_list<omReal64> coordinates) {
  const char* axis = "xyz";
  for (const omReal64 coordinate : coordinates) add(key + '_' + *axis++, coordinate);
  return *this;
}

const std::vector<Option>& rowOptions() {
  static const std::vector<Option> options{
      {"format", 'f', eOptionKind::Choice, "table|jsonl|csv",
       "how results are printed; a table on a terminal and JSON lines elsewhere when not given"},
      {"fields", 0, eOptionKind::Text, "KEYS", "print only these keys, parted by commas, in this order"}};
  return options;
}

RowPrinter::RowPrinter(const Arguments& arguments)
    : _format(arguments.text("format", ::isatty(STDOUT_FILENO) ? "table" : "jsonl")) {
  std::string fields = arguments.text("fields");
  for (std::size_t comma; !fields.empty(); fields.erase(0, comma == fields.npos ? comma : comma + 1)) {
    comma = fields.find(',');
    _fields.push_back(fields.substr(0, comma));
    _missing.insert(_fields.back());
  }
}

Row RowPrinter::chosen(const Row& row) {
  if (_fields.empty()) return row;
  Row wanted;
  for (const std::string& field : _fields)
    for (const auto& [key, value] : row.values())
      if (key == field) {
        wanted.add(key, value);
        _missing.erase(key);
      }
  return wanted;
}

void RowPrinter::print(const Row& row) {
  ++_nbRows;
  Row wanted = chosen(row);
  if (_format == "jsonl") {
    std::cout << jsonOf(wanted) << '\n';
  } else if (_format == "csv" && !_fields.empty()) {
    if (_nbRows == 1) std::cout << csvOf(_fields) << '\n';
    std::cout << csvOf(wanted, _fields) << '\n';
  } else {
    _rows.push_back(std::move(wanted));
    return;
  }
  // A line is seen as soon as it is known, and a closed pipe noticed.
  flushOutput();
}

void RowPrinter::finish() {
  if (!_rows.empty() && _format == "csv") printCsv();
  if (!_rows.empty() && _format == "table") printTable();
  flushOutput();
  if (_nbRows > 0 && !_missing.empty()) throw DataError("no result has the key \"" + *_missing.begin() + '"');
}

std::vector<std::string> RowPrinter::columns() const {
  std::vector<std::string> columns;
  std::unordered_set<std::string> known;
  for (const std::string& field : _fields)
    if (_missing.count(field) == 0) columns.push_back(field);
  if (!_fields.empty()) return columns;
  for (const Row& row : _rows)
    for (const auto& [key, value] : row.values())
      if (known.insert(key).second) columns.push_back(key);
  return columns;
}

void RowPrinter::printCsv() const {
  const std::vector<std::string> names = columns();
  std::cout << csvOf(names) << '\n';
  for (const Row& row : _rows) std::cout << csvOf(row, names) << '\n';
}

void RowPrinter::printTable() const {
  const std::vector<std::string> names = columns();
  // One row is read better downwards.
  if (_rows.size() == 1) {
    std::size_t width = 0;
    for (const std::string& column : names) width = std::max(width, widthOf(column));
    for (const auto& [key, value] : _rows[0].values())
      std::cout << key << std::string(width - widthOf(key) + 2, ' ') << shownTextOf(value) << '\n';
    return;
  }
  struct Cell {
    std::string text;
    bool isNumber = false;
  };
  std::vector<std::vector<Cell>> cells;
  std::vector<std::size_t> widths;
  std::unordered_map<std::string, std::size_t> indices;
  for (const std::string& column : names) {
    indices.emplace(column, widths.size());
    widths.push_back(widthOf(column));
  }
  for (const Row& row : _rows) {
    std::vector<Cell>& line = cells.emplace_back(names.size());
    for (const auto& [key, value] : row.values()) {
      const std::size_t index = indices.at(key);
      line[index] = {shownTextOf(value), !std::holds_alternative<std::string>(value)};
      widths[index] = std::max(widths[index], widthOf(line[index].text));
    }
  }
  const auto print = [&](const std::vector<Cell>& line) {
    std::string text;
    for (std::size_t index = 0; index < line.size(); ++index) {
      const std::string gap(widths[index] - widthOf(line[index].text), ' ');
      if (index > 0) text += "  ";
      text += line[index].isNumber ? gap + line[index].text : line[index].text + gap;
    }
    text.erase(text.find_last_not_of(' ') + 1);
    std::cout << text << '\n';
  };
  std::vector<Cell> head;
  for (std::size_t index = 0; index < names.size(); ++index)
    head.push_back({names[index], std::any_of(cells.begin(), cells.end(),
                                              [index](const auto& line) { return line[index].isNumber; })});
  print(head);
  for (const auto& line : cells) print(line);
}

void flushOutput() {
  if (std::cout) errno = 0;
  const int before = std::cout ? 0 : EIO;
  if (std::cout.flush()) return;
  // Which of the writes has failed, and why, the stream does not say.
  pollfd output{STDOUT_FILENO, 0, 0};
  if (errno == EPIPE || (::poll(&output, 1, 0) > 0 && (output.revents & POLLERR) != 0)) throw OutputClosed();
  throw OutputFailed(std::string("the output cannot be written") +
                     (before == 0 && errno != 0 ? std::string(": ") + std::strerror(errno) : ""));
}

}  // namespace ormix::command
