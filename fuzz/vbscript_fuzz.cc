// Any text as a script: it compiles or is refused with a place, and what compiles runs into no more
// than an error of the language or the end of its time.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/page.h"
#include "tests/vbscript/script_host.h"
#include "value/script_error.h"
#include "vbscript/interpreter.h"
#include "vbscript/program.h"

namespace {

// A script of a page has minutes; here it has as many looks at the time as keep an input short.
constexpr int kLooks = 20;
// Longer inputs find nothing that shorter ones do not.
constexpr std::size_t kLongest = 4096;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kLongest) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    const auto program = rk::vbscript::compile_script("fuzz.vbs", std::string(text));
    rk::vbscript::testing::ScriptHost host;
    host.end_after(kLooks);
    rk::vbscript::Interpreter interpreter(program, host);
    interpreter.run();
    interpreter.finish();
  } catch (const rk::ScriptError&) {
    // Refused or failed, as a page may be.
  } catch (const rk::platform::PageEnd&) {
    // Out of time.
  }
  return 0;
}
