#include "pagehost/http/access_log.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace rk::http {
namespace {

TEST(AccessLog, ALineIsInTheCombinedFormat) {
  AccessRecord record;
  record.address = "127.0.0.1";
  record.time = 784111777;
  record.request_line = "GET /a HTTP/1.1";
  record.status = 200;
  record.bytes = 12;
  record.user_agent = "Browser";
  const std::string line = combined_line(record);
  EXPECT_TRUE(line.starts_with("127.0.0.1 - - ["));
  EXPECT_TRUE(line.ends_with("] \"GET /a HTTP/1.1\" 200 12 \"-\" \"Browser\"\n")) << line;
}

TEST(AccessLog, WhatAVisitorSentCannotBreakTheLine) {
  AccessRecord record;
  record.user_agent = "a\"b\\c\n\x1B[0m";
  const std::string line = combined_line(record);
  EXPECT_TRUE(line.ends_with("\"a\\x22b\\x5cc\\x0a\\x1b[0m\"\n")) << line;
}

TEST(AccessLog, AMovedFileIsLeftAtReopening) {
  std::string folder = ::testing::TempDir() + "rk-log-XXXXXX";
  ASSERT_NE(::mkdtemp(folder.data()), nullptr);
  const std::string path = folder + "/access.log";
  const auto lines = [](const std::string& file) {
    std::ifstream in(file);
    std::string text;
    int count = 0;
    while (std::getline(in, text)) ++count;
    return count;
  };
  {
    AccessLog log(path);
    EXPECT_TRUE(log.is_on());
    log.write({});
    ASSERT_EQ(std::rename(path.c_str(), (path + ".1").c_str()), 0);
    log.write({});
    log.reopen();
    log.write({});
  }
  EXPECT_EQ(lines(path + ".1"), 2);
  EXPECT_EQ(lines(path), 1);
  std::remove(path.c_str());
  std::remove((path + ".1").c_str());
  std::remove(folder.c_str());
}

TEST(AccessLog, WithoutAFileNothingIsWritten) {
  AccessLog log("");
  EXPECT_FALSE(log.is_on());
  log.write({});
  EXPECT_THROW(AccessLog("/nowhere/at/all.log"), std::system_error);
}

}  // namespace
}  // namespace rk::http
