#include "adapters/odbc/link.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <array>
#include <cstdint>
#include <utility>

#include "adapters/odbc/failure.h"
#include "adapters/odbc/wide_text.h"

namespace rk::odbc {
namespace {

// A data source that does not answer is given up after so long: well within a page's time.
constexpr std::uintptr_t kLoginSeconds = 15;

// Attributes that are numbers travel as pointers.
SQLPOINTER as_pointer(std::uintptr_t number) {
  return reinterpret_cast<SQLPOINTER>(number);  // NOLINT(performance-no-int-to-ptr)
}

Dialect dialect_of(std::string_view name) {
  if (name.starts_with("PostgreSQL")) return Dialect::PostgreSql;
  if (name.starts_with("MariaDB") || name.starts_with("MySQL")) return Dialect::MySql;
  if (name.starts_with("Microsoft SQL Server")) return Dialect::SqlServer;
  if (name.starts_with("SQLite")) return Dialect::Sqlite;
  return Dialect::Other;
}

}  // namespace

Link::Link(void* environment, Canceller& canceller, std::string connection_string)
    : canceller_(canceller), connection_string_(std::move(connection_string)) {
  if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, environment, &handle_))) {
    raise_failure(diagnose(HandleKind::Environment, environment));
  }
  SQLSetConnectAttr(handle_, SQL_ATTR_LOGIN_TIMEOUT, as_pointer(kLoginSeconds), 0);
  std::vector<WideUnit> text = widen(connection_string_);
  const SQLRETURN code = SQLDriverConnectW(handle_, nullptr, text.data(), SQL_NTS, nullptr, 0,
                                           nullptr, SQL_DRIVER_NOPROMPT);
  if (!SQL_SUCCEEDED(code)) {
    const Diagnosis why = diagnose(HandleKind::Connection, handle_);
    SQLFreeHandle(SQL_HANDLE_DBC, handle_);
    // A page knows a connection that cannot be made by one number, whatever the driver's state.
    raise_database_error(errors::kSqlFailure, why.words.empty() ? "Cannot connect" : why.words);
  }
  read_traits();
}

Link::~Link() {
  SQLDisconnect(handle_);
  SQLFreeHandle(SQL_HANDLE_DBC, handle_);
}

void Link::read_traits() {
  engine_name_ = information(SQL_DBMS_NAME);
  dialect_ = dialect_of(engine_name_);
  quote_ = information(SQL_IDENTIFIER_QUOTE_CHAR);
  SQLUSMALLINT statements = 0;
  SQLGetInfoW(handle_, SQL_MAX_CONCURRENT_ACTIVITIES, &statements, sizeof statements, nullptr);
  one_at_a_time_ = statements == 1;
}

std::string Link::information(unsigned short kind) const {
  std::array<SQLWCHAR, 256> text{};
  SQLSMALLINT bytes = 0;
  const SQLRETURN code =
      SQLGetInfoW(handle_, kind, text.data(), static_cast<SQLSMALLINT>(sizeof text), &bytes);
  if (!SQL_SUCCEEDED(code) || bytes < 0) return {};
  std::size_t units = 0;
  while (units < text.size() - 1 && text[units] != 0) ++units;
  return narrow(text.data(), units);
}

std::string Link::quoted(const std::string& name) const {
  if (quote_.empty() || quote_ == " ") return name;
  std::string out = quote_;
  for (const char c : name) {
    if (c == quote_.front()) out += c;
    out += c;
  }
  return out + (quote_ == "[" ? "]" : quote_);
}

void Link::set_autocommit(bool on) {
  const SQLRETURN code =
      SQLSetConnectAttr(handle_, SQL_ATTR_AUTOCOMMIT,
                        as_pointer(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF), SQL_IS_UINTEGER);
  if (!SQL_SUCCEEDED(code)) raise_failure(diagnose(HandleKind::Connection, handle_));
}

void Link::begin() {
  set_autocommit(false);
}

void Link::end(short how) {
  if (!SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, handle_, how))) {
    const Diagnosis why = diagnose(HandleKind::Connection, handle_);
    lost_ = lost_ || is_lost_state(why.state);
    raise_failure(why);
  }
}

void Link::commit() {
  end(SQL_COMMIT);
  set_autocommit(true);
}

void Link::roll_back() noexcept {
  try {
    end(SQL_ROLLBACK);
    set_autocommit(true);
  } catch (const ScriptError&) {
    // Its server undoes what a connection that ends had not committed.
    lost_ = true;
  }
}

bool Link::is_alive() const noexcept {
  SQLUINTEGER dead = SQL_CD_FALSE;
  const SQLRETURN code =
      SQLGetConnectAttr(handle_, SQL_ATTR_CONNECTION_DEAD, &dead, sizeof dead, nullptr);
  return !SQL_SUCCEEDED(code) || dead != SQL_CD_TRUE;
}

}  // namespace rk::odbc
