#include "app/console_log.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace rk::app {
namespace {

std::string written(std::FILE* file) {
  std::array<char, 512> bytes{};
  std::rewind(file);
  return std::string(bytes.data(), std::fread(bytes.data(), 1, bytes.size(), file));
}

TEST(ConsoleLog, AnEventIsOneLineAndItsFurtherLinesAreIndented) {
  EXPECT_EQ(log_text("one\ntwo\n"), "one\n    two");
  EXPECT_EQ(log_text("a\tb"), "a\tb");
}

TEST(ConsoleLog, ControlsThatAVisitorSentReachNoTerminal) {
  EXPECT_EQ(log_text("a\x1B[0m\rb\x7F"), "a\\x1b[0m\\x0db\\x7f");
  EXPECT_EQ(log_text("中"), "中");
}

TEST(ConsoleLog, ErrorsAreMarkedAndRemembered) {
  std::FILE* file = std::tmpfile();
  ASSERT_NE(file, nullptr);
  ConsoleLog log(ConsoleLog::Style::Plain, file);
  log.note("noted");
  EXPECT_FALSE(log.had_errors());
  log.error("failed");
  EXPECT_TRUE(log.had_errors());
  EXPECT_EQ(written(file), "rkclient: noted\nrkclient: error: failed\n");
  std::fclose(file);
}

TEST(ConsoleLog, ATimedEventBeginsWithItsTime) {
  std::FILE* file = std::tmpfile();
  ASSERT_NE(file, nullptr);
  ConsoleLog log(ConsoleLog::Style::Timed, file);
  log.note("noted");
  const std::string line = written(file);
  EXPECT_EQ(line.size(), std::string("2026-01-02 03:04:05 noted\n").size()) << line;
  EXPECT_EQ(line[4], '-');
  EXPECT_TRUE(line.ends_with(" noted\n"));
  std::fclose(file);
}

}  // namespace
}  // namespace rk::app
