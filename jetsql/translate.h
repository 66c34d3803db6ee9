// Jet SQL text -> SQLite's SQL text and the values that it is run with.
//
// Two stages, so that a repeated text is never parsed again:
//   1. shape() runs the lexer alone. It takes the literals out of the text and gives the rest as a
//      key: two texts of one key differ in nothing but the values of those literals.
//   2. translate() parses and types a text. Its answer holds for every text of the same key as
//      long as the schema stays the same; keep it (and the prepared statement) by that key.
// Literals are taken out only where a value may stand (Where, On, Having, Values, Set and arguments
// of functions there); those of a select list, Order By, Group By and Top stay in the key.
//
// Thread rule: pure functions; a Translation that is not written to may be shared by threads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "jetsql/schema.h"
#include "jetsql/sql_error.h"

namespace rk::jetsql {

// A value out of a text, or one to be bound. Date: `number` is days since 1899-12-30 with the time
// of day as the fraction (negative days: the time still counts forward). Boolean: `integer` is 0
// or 1.
struct Literal {
  enum class Kind : std::uint8_t { Null, Text, Integer, Double, Date, Boolean };
  Kind kind = Kind::Null;
  std::int64_t integer = 0;
  double number = 0;
  std::string text;  // UTF-8, quotes undone
};

struct Shape {
  std::string key;
  std::vector<Literal> literals;
};

// Never raises: a text that the lexer refuses is its own key, and translate() raises for it.
// `shape` is overwritten; its storage is used again.
void read_shape(std::string_view sql, Shape& shape);

// What is bound to the parameter ?1, ?2, ... of the SQLite texts: parameters[0] to ?1 and so on.
struct Parameter {
  enum class Source : std::uint8_t {
    Literal,  // shape.literals[index]
    Caller,   // the value a page bound to its "?" number `index` (from 0)
    Now,      // date and time of the run: one value for the whole statement
    Today,    // its date
    Clock     // its time of day
  };
  // How the value is changed to suit the column that it meets.
  enum class Conversion : std::uint8_t {
    None,           // a Date becomes its text, a Boolean -1 or 0
    Flag,           // met by a BOOLEAN column in a comparison: True and -1 become 1
    StoredFlag,     // stored into one: 0 or 1
    DateText,       // met by a DATETIME column: numbers and texts become a date's text
    StoredInteger,  // stored into an INTEGER: texts become numbers, halves go to the even number
    StoredNumber,   // stored into a REAL: texts become numbers
    StoredMoney,    // stored into a CURRENCY: texts become numbers, with four decimals at most
    StoredText      // stored into a TEXT: numbers, dates and Booleans become their text
  };
  Source source = Source::Literal;
  Conversion conversion = Conversion::None;
  bool negate = false;
  std::size_t index = 0;
};

// The value to bind, its kind one of Null, Text, Integer and Double. Raises kTypeMismatch where a
// text is no number or date and the column asks for one.
Literal bound_value(const Parameter& parameter, const Literal& given);

// `yyyy-mm-dd hh:mm:ss`, or `yyyy-mm-dd` at midnight: how a DATETIME column stores a date.
std::string date_text(double days);

struct OutputColumn {
  std::string name;  // as the page asks for it; "Expr1000" and on where the text gives none
  Type type = Type::Unknown;  // Unknown: go by the value
  std::string base_column;    // the column of Translation::table behind it, or empty
  // The column of any table of the file behind it, in a join too, or both empty.
  std::string origin_table, origin_column;
};

struct Translation {
  enum class Kind : std::uint8_t { Select, Insert, Update, Delete, SelectInto, Define };
  Kind kind = Kind::Select;
  bool reads() const { return kind == Kind::Select; }

  // A statement that writes: to be run in this order, in one transaction. For a Select it holds
  // one text, select_text(). Parameters are numbered through all texts of the translation: bind to
  // each statement those that it has (up to sqlite3_bind_parameter_count).
  std::vector<std::string> statements;
  std::vector<Parameter> parameters;

  // Number of "?" that the page has to bind.
  std::size_t caller_parameters = 0;

  // A Select over one table (no grouping, Distinct, Union or aggregate), or what a write writes to:
  // the table's own spelling. Of a join the one table whose rows come up once each at most, as
  // those of goods do where each is joined to its category. Else empty.
  std::string table;

  // Of a Select.
  std::vector<OutputColumn> columns;
  std::string row_key;     // expression of the row's number where `table` has one, else empty
  std::string count_text;  // select count(*) in its cheapest equal form, Top honoured
  // The whole select; with `keyed` row_key as one more column at the end (only where it is not
  // empty); with `windowed` only rows [offset, offset + count), where count is bound to parameter
  // number window_count and offset to window_offset (numbers from 1).
  std::string select_text(bool keyed, bool windowed) const;
  // The rows of a window counted from the last row on, the last one first: offset 0 begins with the
  // last row of all. Only where can_reverse(): the order must leave no two rows equal.
  std::string reversed_text(bool keyed) const;
  bool can_reverse() const { return !reversed_tail.empty(); }
  // Of a join with a row_key: the row whose key is bound to parameter number window_count(), keyed.
  std::string row_text() const { return head + "," + row_key + row_tail; }
  int window_count() const { return static_cast<int>(parameters.size()) + 1; }
  int window_offset() const { return static_cast<int>(parameters.size()) + 2; }

  // The parts that the texts join: head [, row_key] and a tail, then a limit.
  std::string head, tail, reversed_tail, limit, window_limit;
  std::string row_tail;  // empty where row_text() is not to be had
};

// Raises SqlError: kSyntaxError, kNoValueGiven, kNoSuchTable, kTypeMismatch.
Translation translate(std::string_view sql, const Schema& schema);

// Whether sql[begin, end), which came from outside, stands within one quoted text without closing
// it, or is exactly one number (a sign, digits, a decimal part, an exponent, blanks and tabs around
// it). Raises SqlError if not: kNoValueGiven where it is one bare word, else kSyntaxError. Where a
// text has several such parts, check them from left to right.
void check_outside(std::string_view sql, std::size_t begin, std::size_t end);

}  // namespace rk::jetsql
