#include "vbscript/syntax_error.h"

#include "vbscript/runtime_error.h"

namespace rk::vbscript {

SyntaxError::SyntaxError(const KnownError& known, Place place)
    : ScriptError(known.number, std::string(known.text), std::string(kCompilationSource)),
      place_(std::move(place)) {}

std::string SyntaxError::report() const {
  std::string report = path() + ":" + std::to_string(line()) + ":" + std::to_string(column()) +
                       ": error " + std::to_string(number()) + ": " + description() + "\n";
  report += source_line();
  report += '\n';
  // Tabs stay tabs under tabs, so that the caret stands below its character in any viewer.
  int left = place_.indent;
  for (const char c : source_line()) {
    if (left == 0) break;
    if ((static_cast<unsigned char>(c) & 0xC0) == 0x80) continue;
    report += c == '\t' ? '\t' : ' ';
    --left;
  }
  report.append(static_cast<std::size_t>(left), ' ');
  report += '^';
  return report;
}

}  // namespace rk::vbscript
