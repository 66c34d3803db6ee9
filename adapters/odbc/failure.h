// The border at which a driver's failures become errors of a page; the driver's words are kept.
// Pure functions over one handle: the thread that uses it.
#ifndef RK_ADAPTERS_ODBC_FAILURE_H_
#define RK_ADAPTERS_ODBC_FAILURE_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "value/script_error.h"

namespace rk::odbc {

enum class HandleKind : std::uint8_t { Environment, Connection, Statement };

// What a driver tells of the last call on a handle.
struct Diagnosis {
  std::string state;  // five characters; empty where it tells nothing
  std::string words;  // UTF-8
};

Diagnosis diagnose(HandleKind kind, void* handle);

// The number under which pages know a state ("42S02").
std::int32_t number_of_state(std::string_view state) noexcept;

// Whether the connection is lost, so that nobody may borrow it again.
bool is_lost_state(std::string_view state) noexcept;

[[noreturn]] void raise_failure(const Diagnosis& diagnosis);

// What a page sees where its time was over before the statement was done.
[[noreturn]] void raise_timeout();

// What the data source, or this adapter over it, cannot do; the text says what.
[[noreturn]] void raise_unsupported(std::string text);

inline constexpr std::int32_t kDataTypeMismatch = -2147217913;    // 80040E07
inline constexpr std::int32_t kIntegrityViolation = -2147217873;  // 80040E2F
inline constexpr std::int32_t kDataOverflow = -2147217833;        // 80040E57
inline constexpr std::int32_t kTableExists = -2147217857;         // 80040E3F

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_FAILURE_H_
