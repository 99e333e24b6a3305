#pragma once

#include <ORMIXUtil/ScalarTypes.h>
#include <command/frame/Arguments.h>

#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace ormix::command {

/// A number, a text, a yes or no; a number that is not finite is unknown.
using RowValue = std::variant<omReal64, omUInt64, omInt64, bool, std::string>;

/// Named values of one entity, region or file, in order.
class Row {
 public:
  /// Adds a value; numbers that are not finite are left out.
  Row& add(std::string key, RowValue value);
  /// Adds the coordinates of a point, "key_x", "key_y" and, of three, "key_z".
  Row& addPoint(const std::string& key, std::initializer_list<omReal64> coordinates);

  const std::vector<std::pair<std::string, RowValue>>& values() const { return _values; }

 private:
  std::vector<std::pair<std::string, RowValue>> _values;
};

/// The options of subcommands that print rows: --format and --fields.
const std::vector<Option>& rowOptions();

/// Prints rows on the standard output. JSON lines are printed at once. Tables and CSV are printed at the end, when
/// their columns are known: those that any row has, in the order in which they first occur.
class RowPrinter {
 public:
  /// By the row options: a table where the standard output is a terminal, else JSON lines, unless --format says
  /// otherwise.
  explicit RowPrinter(const Arguments& arguments);

  /// \throw OutputClosed when nobody reads them, OutputFailed when they cannot be written; in the end DataError when no
  /// row had a field of --fields
  /// @{
  void print(const Row& row);
  void finish();
  /// @}

 private:
  Row chosen(const Row& row);
  void printTable() const;
  void printCsv() const;
  /// The names of the columns of all rows.
  std::vector<std::string> columns() const;

  std::string _format;
  std::vector<std::string> _fields;  ///< all when empty
  std::set<std::string> _missing;    ///< fields that no row had
  std::size_t _nbRows = 0;
  std::vector<Row> _rows;
};

/// The shortest text from which the same number is read; "nan", "inf" and "-inf" for what is not finite.
std::string textOf(omReal64 number);

/// Flushes the standard output.
/// \throw OutputClosed, OutputFailed as RowPrinter
void flushOutput();

}  // namespace ormix::command
