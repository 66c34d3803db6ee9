#include "adapters/odbc/statement.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "adapters/odbc/failure.h"
#include "adapters/odbc/hooks.h"
#include "adapters/odbc/link.h"
#include "adapters/odbc/wide_text.h"
#include "value/array.h"
#include "value/conversions.h"
#include "value/dates.h"

namespace rk::odbc {
namespace {

// Units and bytes that a long value is read by at a time.
constexpr std::size_t kPieceUnits = 2048;
constexpr std::size_t kPieceBytes = 8192;
// A longer text or array of bytes is bound as a long one: engines draw the line about there.
constexpr std::size_t kLongUnits = 4000;

constexpr std::int64_t kLeastLong = -2147483648LL;
constexpr std::int64_t kGreatestLong = 2147483647LL;

Value integer_value(std::int64_t number) {
  if (number >= kLeastLong && number <= kGreatestLong) {
    return Value::long_integer(static_cast<std::int32_t>(number));
  }
  return Value::real(static_cast<double>(number));
}

Value decimal_value(std::string_view text, platform::ColumnType type) {
  if (type == platform::ColumnType::Currency) {
    const std::optional<std::int64_t> amount = parse_currency(text);
    if (amount) return Value::currency(*amount);
  }
  return Value::real(parse_number(text).value_or(0));
}

Value moment_value(const SQL_TIMESTAMP_STRUCT& given) {
  CalendarTime time;
  time.year = given.year;
  time.month = given.month;
  time.day = given.day;
  time.hour = given.hour;
  time.minute = given.minute;
  time.second = given.second;
  return Value::date(date_value(time));
}

Value time_value(const SQL_TIME_STRUCT& given) {
  CalendarTime time;
  time.hour = given.hour;
  time.minute = given.minute;
  time.second = given.second;
  return Value::date(date_value(time));
}

SQL_TIMESTAMP_STRUCT moment_of(double days) {
  const CalendarTime time = calendar_time(days);
  SQL_TIMESTAMP_STRUCT out{};
  out.year = static_cast<SQLSMALLINT>(time.year);
  out.month = static_cast<SQLUSMALLINT>(time.month);
  out.day = static_cast<SQLUSMALLINT>(time.day);
  out.hour = static_cast<SQLUSMALLINT>(time.hour);
  out.minute = static_cast<SQLUSMALLINT>(time.minute);
  out.second = static_cast<SQLUSMALLINT>(time.second);
  return out;
}

// "yyyy-mm-dd hh:mm:ss"
constexpr SQLULEN kMomentSize = 19;
// Of the widest Currency.
constexpr SQLULEN kCurrencyDigits = 19;
constexpr SQLSMALLINT kCurrencyDecimals = 4;

SQLWCHAR* wide_or_null(std::vector<WideUnit>& name) {
  return name.size() > 1 ? name.data() : nullptr;
}

}  // namespace

// A value in the form that the driver reads it in.
struct Statement::Bound {
  SQLSMALLINT c_type = SQL_C_CHAR;
  SQLSMALLINT sql_type = SQL_VARCHAR;
  SQLULEN size = 1;
  SQLSMALLINT decimals = 0;
  SQLPOINTER data = nullptr;
  SQLLEN bytes = 0;
  SQLLEN length = SQL_NULL_DATA;

  SQLINTEGER number = 0;
  double real = 0;
  unsigned char flag = 0;
  SQL_TIMESTAMP_STRUCT moment{};
  std::string narrow;
  std::vector<WideUnit> wide;

  explicit Bound(const Value& value) { hold(value); }

 private:
  void hold(const Value& value) {
    switch (value.kind()) {
      case Value::Kind::Empty:
      case Value::Kind::Null:
        return;
      case Value::Kind::Boolean:
        flag = value.as_boolean() ? 1 : 0;
        return set(SQL_C_BIT, SQL_BIT, &flag, sizeof flag, 1);
      case Value::Kind::Byte:
      case Value::Kind::Integer:
      case Value::Kind::Long:
        number = to_long(value);
        return set(SQL_C_SLONG, SQL_INTEGER, &number, sizeof number, 10);
      case Value::Kind::Single:
      case Value::Kind::Double:
        real = to_double(value);
        return set(SQL_C_DOUBLE, SQL_DOUBLE, &real, sizeof real, 15);
      case Value::Kind::Currency:
        narrow = currency_text(value.as_currency());
        set(SQL_C_CHAR, SQL_DECIMAL, narrow.data(), narrow.size(), kCurrencyDigits);
        decimals = kCurrencyDecimals;
        return;
      case Value::Kind::Date:
        moment = moment_of(value.as_date());
        return set(SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, &moment, sizeof moment, kMomentSize);
      case Value::Kind::Array:
        return set_bytes(value);
      default:
        return set_text(joined_text(value).view());
    }
  }
  void set(SQLSMALLINT c, SQLSMALLINT sql, SQLPOINTER at, std::size_t count, SQLULEN column_size) {
    c_type = c;
    sql_type = sql;
    data = at;
    bytes = static_cast<SQLLEN>(count);
    length = bytes;
    size = std::max<SQLULEN>(column_size, 1);
  }
  void set_text(std::string_view utf8) {
    wide = widen(utf8);
    const std::size_t units = wide.size() - 1;
    set(SQL_C_WCHAR, units > kLongUnits ? SQL_WLONGVARCHAR : SQL_WVARCHAR, wide.data(),
        units * sizeof(WideUnit), units);
  }
  void set_bytes(const Value& value) {
    if (!value.as_array().holds_bytes()) {
      raise_database_error(kDataTypeMismatch, "An array of values cannot be bound");
    }
    narrow = value.as_array().bytes();
    set(SQL_C_BINARY, narrow.size() > kLongUnits ? SQL_LONGVARBINARY : SQL_VARBINARY, narrow.data(),
        narrow.size(), narrow.size());
  }
};

Statement::Statement(Link& link, const PageHooks& hooks) : link_(link), hooks_(hooks) {
  if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, link_.handle(), &handle_))) {
    const Diagnosis why = diagnose(HandleKind::Connection, link_.handle());
    if (is_lost_state(why.state)) link_.note_lost();
    raise_failure(why);
  }
}

Statement::~Statement() {
  SQLFreeHandle(SQL_HANDLE_STMT, handle_);
}

void Statement::check_time() {
  if (!hooks_.expired || !hooks_.expired()) return;
  if (hooks_.end) hooks_.end();
  raise_timeout();
}

void Statement::check(short code) {
  if (SQL_SUCCEEDED(code) || code == SQL_NO_DATA) return;
  const Diagnosis why = diagnose(HandleKind::Statement, handle_);
  if (is_lost_state(why.state)) link_.note_lost();
  check_time();
  raise_failure(why);
}

template <class Call>
short Statement::watched(Call call) {
  check_time();
  const Canceller::Scope scope(link_.canceller(), handle_, hooks_.expired);
  return call();
}

void Statement::bind(const std::vector<Value>& values) {
  SQLFreeStmt(handle_, SQL_RESET_PARAMS);
  bound_.clear();
  for (const Value& value : values) {
    bound_.push_back(std::make_unique<Bound>(value));
    Bound& bound = *bound_.back();
    check(SQLBindParameter(handle_, static_cast<SQLUSMALLINT>(bound_.size()), SQL_PARAM_INPUT,
                           bound.c_type, bound.sql_type, bound.size, bound.decimals, bound.data,
                           bound.bytes, &bound.length));
  }
}

void Statement::run(std::string_view sql, const std::vector<Value>& values) {
  bind(values);
  std::vector<WideUnit> text = widen(sql);
  check(watched([&] { return SQLExecDirectW(handle_, text.data(), SQL_NTS); }));
  note_result();
}

void Statement::prepare(std::string_view sql) {
  std::vector<WideUnit> text = widen(sql);
  check(watched([&] { return SQLPrepareW(handle_, text.data(), SQL_NTS); }));
  describe_columns();
}

void Statement::run_prepared(const std::vector<Value>& values) {
  SQLFreeStmt(handle_, SQL_CLOSE);
  bind(values);
  check(watched([&] { return SQLExecute(handle_); }));
  note_result();
}

void Statement::list(List list, std::string_view table) {
  std::vector<WideUnit> name = widen(table);
  SQLWCHAR* named = wide_or_null(name);
  std::vector<WideUnit> kinds = widen("TABLE,VIEW");
  check(watched([&]() -> short {
    switch (list) {
      case List::Tables:
        return SQLTablesW(handle_, nullptr, 0, nullptr, 0, named, SQL_NTS, kinds.data(), SQL_NTS);
      case List::Columns:
        return SQLColumnsW(handle_, nullptr, 0, nullptr, 0, named, SQL_NTS, nullptr, 0);
      case List::Indexes:
        return SQLStatisticsW(handle_, nullptr, 0, nullptr, 0, named, SQL_NTS, SQL_INDEX_ALL,
                              SQL_QUICK);
      case List::PrimaryKeys:
        return SQLPrimaryKeysW(handle_, nullptr, 0, nullptr, 0, named, SQL_NTS);
      case List::ForeignKeys:
        break;
    }
    return SQLForeignKeysW(handle_, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0,
                           named, SQL_NTS);
  }));
  describe_columns();
}

void Statement::note_result() {
  describe_columns();
  SQLLEN rows = -1;
  if (!SQL_SUCCEEDED(SQLRowCount(handle_, &rows))) rows = -1;
  changed_ = rows;
}

bool Statement::find_rows() {
  std::int64_t total = std::max<std::int64_t>(changed_, 0);
  while (columns_.empty()) {
    const SQLRETURN code = watched([&] { return SQLMoreResults(handle_); });
    check(code);
    if (code == SQL_NO_DATA) {
      changed_ = total;
      return false;
    }
    note_result();
    if (columns_.empty()) total += std::max<std::int64_t>(changed_, 0);
  }
  changed_ = total;
  return true;
}

void Statement::describe_columns() {
  columns_.clear();
  SQLSMALLINT count = 0;
  if (!SQL_SUCCEEDED(SQLNumResultCols(handle_, &count))) return;
  for (SQLSMALLINT i = 0; i < count; ++i)
    columns_.push_back(described(static_cast<std::size_t>(i)));
}

Column Statement::described(std::size_t ordinal) {
  std::array<SQLWCHAR, 256> name{};
  SQLSMALLINT length = 0, type = 0, decimals = 0, nullable = 0;
  SQLULEN size = 0;
  const auto number = static_cast<SQLUSMALLINT>(ordinal + 1);
  check(SQLDescribeColW(handle_, number, name.data(), static_cast<SQLSMALLINT>(name.size()),
                        &length, &type, &size, &decimals, &nullable));
  Column column;
  column.name = narrow(name.data(), std::min(static_cast<std::size_t>(length), name.size() - 1));
  set_type(column, type, attribute(ordinal, SQL_DESC_TYPE_NAME), decimals);
  // What has no end of its own is told by sizes far beyond any declared one.
  constexpr SQLULEN kDeclaredSizes = 65536;
  if (column.type == platform::ColumnType::Text && size < kDeclaredSizes) {
    column.size = static_cast<std::int32_t>(size);
  }
  column.required = nullable == SQL_NO_NULLS;
  SQLLEN counter = SQL_FALSE;
  SQLColAttributeW(handle_, number, SQL_DESC_AUTO_UNIQUE_VALUE, nullptr, 0, nullptr, &counter);
  column.counter = counter == SQL_TRUE;
  column.base_table = attribute(ordinal, SQL_DESC_BASE_TABLE_NAME);
  column.base_column = attribute(ordinal, SQL_DESC_BASE_COLUMN_NAME);
  return column;
}

std::string Statement::attribute(std::size_t ordinal, unsigned short field) {
  std::array<SQLWCHAR, 256> text{};
  SQLSMALLINT bytes = 0;
  const SQLRETURN code =
      SQLColAttributeW(handle_, static_cast<SQLUSMALLINT>(ordinal + 1), field, text.data(),
                       static_cast<SQLSMALLINT>(sizeof text), &bytes, nullptr);
  if (!SQL_SUCCEEDED(code)) return {};
  std::size_t units = 0;
  while (units < text.size() - 1 && text[units] != 0) ++units;
  return narrow(text.data(), units);
}

bool Statement::next() {
  const SQLRETURN code = watched([&] { return SQLFetch(handle_); });
  check(code);
  return code != SQL_NO_DATA;
}

namespace {

// Reads a value in pieces; false where it is Null. `take` is given the units of a piece.
template <class Unit, std::size_t kUnits, class Take>
short read_pieces(void* statement, SQLUSMALLINT number, SQLSMALLINT c_type, std::size_t terminator,
                  bool& is_null, Take take) {
  std::array<Unit, kUnits> piece{};
  is_null = false;
  while (true) {
    SQLLEN left = 0;
    const SQLRETURN code = SQLGetData(statement, number, c_type, piece.data(),
                                      static_cast<SQLLEN>(sizeof piece), &left);
    if (code == SQL_NO_DATA) return SQL_SUCCESS;
    if (!SQL_SUCCEEDED(code)) return code;
    if (left == SQL_NULL_DATA) {
      is_null = true;
      return SQL_SUCCESS;
    }
    const std::size_t room = kUnits - terminator;
    const bool more = left == SQL_NO_TOTAL || static_cast<std::size_t>(left) > room * sizeof(Unit);
    take(piece.data(), more ? room : static_cast<std::size_t>(left) / sizeof(Unit));
    if (!more) return SQL_SUCCESS;
  }
}

}  // namespace

Value Statement::value(std::size_t ordinal) {
  const Column& column = columns_[ordinal];
  const auto number = static_cast<SQLUSMALLINT>(ordinal + 1);
  SQLLEN length = 0;
  const auto plain = [&](SQLSMALLINT c_type, auto& target) {
    check(SQLGetData(handle_, number, c_type, &target, sizeof target, &length));
    return length != SQL_NULL_DATA;
  };
  switch (column.fetch) {
    case Column::Fetch::Integer: {
      SQLBIGINT given = 0;
      return plain(SQL_C_SBIGINT, given) ? integer_value(given) : Value::null();
    }
    case Column::Fetch::Real: {
      double given = 0;
      return plain(SQL_C_DOUBLE, given) ? Value::real(given) : Value::null();
    }
    case Column::Fetch::Moment: {
      SQL_TIMESTAMP_STRUCT given{};
      return plain(SQL_C_TYPE_TIMESTAMP, given) ? moment_value(given) : Value::null();
    }
    case Column::Fetch::Time: {
      SQL_TIME_STRUCT given{};
      return plain(SQL_C_TYPE_TIME, given) ? time_value(given) : Value::null();
    }
    case Column::Fetch::Decimal: {
      std::array<char, 128> given{};
      if (!plain(SQL_C_CHAR, given)) return Value::null();
      return decimal_value(given.data(), column.type);
    }
    case Column::Fetch::Boolean: {
      std::array<char, 8> given{};
      if (!plain(SQL_C_CHAR, given)) return Value::null();
      const char first = given.front();
      return Value::boolean(first != '0' && first != 'f' && first != 'F' && first != 0);
    }
    case Column::Fetch::Bytes:
    case Column::Fetch::Text:
      break;
  }
  bool is_null = false;
  std::string out;
  if (column.fetch == Column::Fetch::Bytes) {
    check(read_pieces<char, kPieceBytes>(
        handle_, number, SQL_C_BINARY, 0, is_null,
        [&](const char* at, std::size_t count) { out.append(at, count); }));
    return is_null ? Value::null() : Value::array(Array::of_bytes(std::move(out)));
  }
  check(read_pieces<SQLWCHAR, kPieceUnits>(
      handle_, number, SQL_C_WCHAR, 1, is_null,
      [&](const SQLWCHAR* at, std::size_t count) { append_narrow(out, at, count); }));
  return is_null ? Value::null() : Value::text(out);
}

}  // namespace rk::odbc
