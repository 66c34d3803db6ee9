#include "adapters/odbc/failure.h"

#include <sql.h>
#include <sqlext.h>

#include <array>

#include "adapters/odbc/wide_text.h"

namespace rk::odbc {
namespace {

SQLSMALLINT type_of(HandleKind kind) {
  switch (kind) {
    case HandleKind::Environment:
      return SQL_HANDLE_ENV;
    case HandleKind::Connection:
      return SQL_HANDLE_DBC;
    case HandleKind::Statement:
      break;
  }
  return SQL_HANDLE_STMT;
}

struct StateNumber {
  std::string_view state;  // or the class of states that begin so
  std::int32_t number;
};

// The first that fits counts. Drivers pass their engine's own states through where ODBC has none
// (42P01, 42703 and 57014 are PostgreSQL's).
constexpr StateNumber kNumbers[] = {
    {"42S02", errors::kSqlMissingTable},
    {"S0002", errors::kSqlMissingTable},
    {"42P01", errors::kSqlMissingTable},
    {"42S22", errors::kSqlMissingColumn},
    {"S0022", errors::kSqlMissingColumn},
    {"42703", errors::kSqlMissingColumn},
    {"07001", errors::kSqlMissingColumn},
    {"07002", errors::kSqlMissingColumn},
    {"42S01", kTableExists},
    {"S0001", kTableExists},
    {"42P07", kTableExists},
    {"42804", kDataTypeMismatch},
    {"42", errors::kSqlSyntax},
    {"37", errors::kSqlSyntax},
    {"22003", kDataOverflow},
    {"22005", kDataTypeMismatch},
    {"22007", kDataTypeMismatch},
    {"22008", kDataTypeMismatch},
    {"22018", kDataTypeMismatch},
    {"22P02", kDataTypeMismatch},
    {"07006", kDataTypeMismatch},
    {"23", kIntegrityViolation},
    {"HYT", errors::kSqlTimeout},
    {"S1T00", errors::kSqlTimeout},
    {"57014", errors::kSqlTimeout},
    {"HY008", errors::kSqlTimeout},
};

}  // namespace

Diagnosis diagnose(HandleKind kind, void* handle) {
  Diagnosis found;
  std::array<SQLWCHAR, 6> state{};
  std::array<SQLWCHAR, 1024> words{};
  SQLINTEGER native = 0;
  SQLSMALLINT length = 0;
  const SQLRETURN code =
      SQLGetDiagRecW(type_of(kind), handle, 1, state.data(), &native, words.data(),
                     static_cast<SQLSMALLINT>(words.size()), &length);
  if (!SQL_SUCCEEDED(code)) return found;
  const auto units = std::min<std::size_t>(static_cast<std::size_t>(length), words.size() - 1);
  found.state = narrow(state.data(), state.size() - 1);
  found.words = narrow(words.data(), units);
  return found;
}

std::int32_t number_of_state(std::string_view state) noexcept {
  for (const StateNumber& known : kNumbers) {
    if (state.starts_with(known.state)) return known.number;
  }
  return errors::kSqlFailure;
}

bool is_lost_state(std::string_view state) noexcept {
  // 57P0x: the server is going down; 25: the state of the transaction is not known any more.
  return state.starts_with("08") || state.starts_with("57P") || state.starts_with("25");
}

void raise_failure(const Diagnosis& diagnosis) {
  raise_database_error(
      number_of_state(diagnosis.state),
      diagnosis.words.empty() ? "The driver failed and told no reason" : diagnosis.words);
}

void raise_timeout() {
  raise_database_error(errors::kSqlTimeout,
                       "The page's time was over before the database answered");
}

void raise_unsupported(std::string text) {
  raise_database_error(errors::kFeatureNotAvailable.number, std::move(text));
}

}  // namespace rk::odbc
