// Generated programs: what the compiled form prints beside a walk over the statements that were
// meant.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "tests/plain/program.h"
#include "tests/vbscript/script_runner.h"

namespace rk::vbscript {
namespace {

std::vector<std::string> printed(const std::string& script) {
  const testing::Outcome outcome = testing::run_script(script);
  std::vector<std::string> lines = outcome.printed;
  if (!outcome.error.empty()) {
    lines.push_back("error " + outcome.error.substr(0, outcome.error.find(' ')));
  }
  return lines;
}

TEST(GeneratedPrograms, PrintWhatTheWalkOverTheirStatementsPrints) {
  EXPECT_TRUE(rc::check([] {
    const auto byte = rc::gen::inRange<std::uint8_t>(0, 255);
    const auto choices = *rc::gen::resize(400, rc::gen::container<std::vector<std::uint8_t>>(byte));
    const plain::Program program = plain::program_of(choices);
    const std::string script = plain::source_of(program);
    RC_LOG() << script;
    RC_CLASSIFY(plain::lines_of(program).size() > 30, "prints more than thirty lines");
    RC_ASSERT(printed(script) == plain::lines_of(program));
  }));
}

}  // namespace
}  // namespace rk::vbscript
