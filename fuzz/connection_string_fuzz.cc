// Connection strings, which pages write: whatever the bytes, there is an answer or one error.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "adapters/sqlite/connection_string.h"
#include "value/script_error.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    if (rk::sqlite::parse_connection_string(text).data_source.empty()) std::abort();
  } catch (const rk::ScriptError& error) {
    if (error.number() != rk::errors::kSqlFailure || error.description().empty()) std::abort();
  }
  return 0;
}
