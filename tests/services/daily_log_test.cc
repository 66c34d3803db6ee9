#include "services/daily_log.h"

#include <gtest/gtest.h>

#include "tests/support/fixed_clock.h"
#include "tests/support/memory_files.h"
#include "tests/support/toy_code_pages.h"

namespace rk::services {
namespace {

const std::string kBlanks(18, ' ');

class DailyLog : public ::testing::Test {
 protected:
  void write(std::string_view message) { writelog(store, Value::text(message)); }
  std::string today() const { return files.read("/site/log/2023-03-15.log"); }

  tests::MemoryFiles files;
  tests::FixedClock clock{45000.5};
  tests::ToyCodePages code_pages;
  LogStore store{files, clock, code_pages, platform::kGb2312, "/site/log"};
};

TEST_F(DailyLog, TwoMessagesOfANewDayAreTwoLines) {
  write("a");
  write("b");
  EXPECT_EQ(today(),
            "2023-03-15 12:00:00" + kBlanks + "a\r\n2023-03-15 12:00:00" + kBlanks + "b\r\n");
}

TEST_F(DailyLog, EachDayHasItsFile) {
  write("a");
  clock.set(45001.25);
  write("b");
  EXPECT_EQ(files.read("/site/log/2023-03-16.log"), "2023-03-16 06:00:00" + kBlanks + "b\r\n");
}

TEST_F(DailyLog, KeepsOnlyAnEmptyLineInAFileThatWasEmpty) {
  files.put("/site/log/2023-03-15.log", "");
  write("lost");
  EXPECT_EQ(today(), "\r\n");
  write("kept");
  EXPECT_EQ(today(), "\r\n2023-03-15 12:00:00" + kBlanks + "kept\r\n");
}

TEST_F(DailyLog, LinesAreOfTheAnsiCodePageAndOldBytesPassUnread) {
  files.put("/site/log/2023-03-15.log", "\xFF\xFE old\r\n");
  write("中文");
  EXPECT_EQ(today(), "\xFF\xFE old\r\n2023-03-15 12:00:00" + kBlanks + "\xD6\xD0\xCE\xC4\r\n");
}

TEST_F(DailyLog, ANullMessageIsALineWithoutOne) {
  writelog(store, Value::null());
  EXPECT_EQ(today(), "2023-03-15 12:00:00" + kBlanks + "\r\n");
}

TEST_F(DailyLog, AMessageIsWrittenAsItStands) {
  write("one\r\ntwo");
  EXPECT_EQ(today(), "2023-03-15 12:00:00" + kBlanks + "one\r\ntwo\r\n");
}

}  // namespace
}  // namespace rk::services
