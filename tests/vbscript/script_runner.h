// Runs a script of tests/vbscript/ and compares what it does with what its lines say.
//
// A line that prints ends in `' expect: TEXT`; the texts are expected in the order of the lines.
// The line of an error that ends the script ends in `' error: NUMBER`, or any line says
// `' error: NUMBER line N`. A script that does not compile says `' syntax error: NUMBER line N
// column C`. Scripts have Print, which prints its arguments joined by blanks (Null as "Null"), and
// Toy, an object of the host.
#ifndef RK_TESTS_VBSCRIPT_SCRIPT_RUNNER_H_
#define RK_TESTS_VBSCRIPT_SCRIPT_RUNNER_H_

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/page.h"
#include "tests/vbscript/script_host.h"
#include "vbscript/interpreter.h"
#include "vbscript/program.h"
#include "vbscript/runtime_error.h"
#include "vbscript/syntax_error.h"

namespace rk::vbscript::testing {

struct Outcome {
  std::vector<std::string> printed;
  std::string error;  // "13 line 4", "syntax 1002 line 1 column 5", or empty
  std::string description;
  std::string report;  // of a syntax error
};

struct Expectation {
  std::vector<std::string> printed;
  std::string error;
};

inline Outcome run_script(std::string_view text) {
  Outcome outcome;
  try {
    const auto program = compile_script("test.vbs", std::string(text));
    ScriptHost host;
    Interpreter interpreter(program, host);
    try {
      interpreter.run();
      interpreter.finish();
    } catch (const RuntimeError& error) {
      outcome.error = std::to_string(error.number()) + " line " + std::to_string(error.line());
      outcome.description = error.text();
    } catch (const platform::PageEnd&) {
      outcome.error = "page end";
    }
    outcome.printed = host.printed();
  } catch (const SyntaxError& error) {
    outcome.error = "syntax " + std::to_string(error.number()) + " line " +
                    std::to_string(error.line()) + " column " + std::to_string(error.column());
    outcome.report = error.report();
  }
  return outcome;
}

inline std::optional<std::string> behind(std::string_view line, std::string_view mark) {
  const std::size_t at = line.rfind(mark);
  if (at == line.npos) return std::nullopt;
  std::string_view rest = line.substr(at + mark.size());
  while (!rest.empty() && (rest.back() == ' ' || rest.back() == '\r')) rest.remove_suffix(1);
  if (!rest.empty() && rest.front() == ' ') rest.remove_prefix(1);
  return std::string(rest);
}

inline Expectation expectation_of(std::string_view text) {
  Expectation expectation;
  int number = 0;
  for (std::size_t at = 0; at <= text.size();) {
    ++number;
    const std::size_t end = std::min(text.find('\n', at), text.size());
    const std::string_view line = text.substr(at, end - at);
    if (const auto printed = behind(line, "' expect:")) expectation.printed.push_back(*printed);
    if (const auto syntax = behind(line, "' syntax error:")) {
      expectation.error = "syntax " + *syntax;
    } else if (const auto error = behind(line, "' error:")) {
      const bool has_line = error->find("line") != std::string::npos;
      expectation.error = has_line ? *error : *error + " line " + std::to_string(number);
    }
    at = end + 1;
  }
  return expectation;
}

}  // namespace rk::vbscript::testing

#endif  // RK_TESTS_VBSCRIPT_SCRIPT_RUNNER_H_
