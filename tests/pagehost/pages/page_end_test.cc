// The ends of a page that are no errors: its time, its memory, the server's stop. Nothing that a
// page traps errors with sees them, and nothing of the page runs behind them.
#include <gtest/gtest.h>

#include <string>

#include "pagehost/pages/page_host.h"
#include "tests/support/page_site.h"

namespace rk::pagehost {
namespace {

// Traps whatever can be trapped, here and in what it calls, and tells where it went on.
std::string trapping(std::string_view statements) {
  return "<% On Error Resume Next\nSub work\nOn Error Resume Next\n" + std::string(statements) +
         "\nApplication(\"inside\") = 1\nEnd Sub\nwork\nApplication(\"behind\") = Err.Number + 1\n"
         "Response.Write \"went on\" %>";
}

class PageEnds : public ::testing::Test {
 protected:
  void ends_with(std::string_view statements, std::string_view words) {
    site_.file("/a.asp", trapping(statements));
    const PageAnswer answer = site_.run("/a.asp");
    EXPECT_EQ(answer.status, 500);
    EXPECT_NE(answer.body.find(words), std::string::npos) << answer.body;
    EXPECT_EQ(answer.body.find("went on"), std::string::npos);
    EXPECT_TRUE(site_.host().application_value("inside").is_empty());
    EXPECT_TRUE(site_.host().application_value("behind").is_empty());
    ASSERT_EQ(site_.log.lines().size(), 1u);
    EXPECT_NE(site_.log.lines()[0].find(words), std::string::npos) << site_.log.lines()[0];
  }
  tests::PageSite site_;
};

TEST_F(PageEnds, ItsTime) {
  site_.options.page_time = std::chrono::seconds(0);
  ends_with("Do\nLoop", "Script timed out");
}

TEST_F(PageEnds, ItsMemory) {
  ends_with("Do\nResponse.Write String(1000000, \"x\")\nLoop", "Out of memory");
}

TEST_F(PageEnds, TheServersStop) {
  site_.host().end_running_pages();
  ends_with("Do\nLoop", "Script timed out");
}

TEST_F(PageEnds, ResponseEndIsSeenByNoTrapEither) {
  site_.file("/a.asp", trapping("Response.Write \"shown\"\nResponse.End"));
  EXPECT_EQ(site_.body("/a.asp"), "shown");
  EXPECT_TRUE(site_.host().application_value("inside").is_empty());
  EXPECT_TRUE(site_.host().application_value("behind").is_empty());
  EXPECT_TRUE(site_.log.lines().empty());
}

}  // namespace
}  // namespace rk::pagehost
