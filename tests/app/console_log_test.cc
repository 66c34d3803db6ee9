#include "app/console_log.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

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

TEST(ConsoleLog, OnOneLineAnEventKeepsItsSourceAndLosesItsPointer) {
  EXPECT_EQ(log_line("/a.asp:2:11: error 1024: Expected statement\n  If x Then Then\n        ^"),
            "/a.asp:2:11: error 1024: Expected statement | If x Then Then");
  EXPECT_EQ(log_line("one\x1B\n\n"), "one\\x1b");
}

TEST(ConsoleLog, AFileIsAppendedToAndOpenedAnewOnceItWasMovedAway) {
  std::string folder = ::testing::TempDir() + "rk-log-XXXXXX";
  ASSERT_NE(::mkdtemp(folder.data()), nullptr);
  const std::string path = folder + "/errors";
  const auto contents = [](const std::string& file) {
    std::ifstream in(file);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  };
  ConsoleLog(ConsoleLog::Style::Plain, path).note("before");
  {
    ConsoleLog log(ConsoleLog::Style::Plain, path);
    log.note("one");
    std::filesystem::rename(path, path + ".1");
    log.note("two");
    log.reopen();
    log.note("three");
  }
  EXPECT_EQ(contents(path + ".1"), "rkclient: before\nrkclient: one\nrkclient: two\n");
  EXPECT_EQ(contents(path), "rkclient: three\n");
  EXPECT_THROW(ConsoleLog(ConsoleLog::Style::Plain, folder), std::system_error);
  std::filesystem::remove_all(folder);
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
