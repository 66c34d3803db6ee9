#include "services/web_fetch.h"

#include <gtest/gtest.h>

#include "tests/support/scripted_http.h"
#include "tests/support/toy_code_pages.h"

namespace rk::services {
namespace {

class WebFetch : public ::testing::Test {
 protected:
  tests::ScriptedHttp http;
  tests::ToyCodePages code_pages;
  Web web{http, code_pages, platform::kGb2312};
};

TEST_F(WebFetch, ABodyIsDecodedFromTheAnsiCodePage) {
  http.answers = {"A\xC4\xE3", "A\xC4\xE3"};
  EXPECT_EQ(server_fetch(web, Value::text("http://a/")).as_view(), "A你");
  EXPECT_EQ(client_fetch(web, Value::text("http://a/")).as_view(), "A你");
}

TEST_F(WebFetch, NoAnswerReadsAs0119FromBoth) {
  EXPECT_EQ(server_fetch(web, Value::text("http://no.such.host/")).as_view(), "0119");
  EXPECT_EQ(client_fetch(web, Value::text("http://no.such.host/")).as_view(), "0119");
}

TEST_F(WebFetch, AnEmptyBodyIsAnAnswer) {
  http.answers = {""};
  EXPECT_EQ(client_fetch(web, Value::text("http://a/")).as_view(), "");
}

TEST_F(WebFetch, TheServersFetchHasFiftySecondsAPhaseAndTheClientsNone) {
  server_fetch(web, Value::text("http://a/"));
  EXPECT_EQ(http.last_timeouts.resolve, std::chrono::milliseconds(50000));
  EXPECT_EQ(http.last_timeouts.receive, std::chrono::milliseconds(50000));
  client_fetch(web, Value::text("http://a/"));
  EXPECT_FALSE(http.last_timeouts.connect.has_value());
}

TEST_F(WebFetch, AnAddressThatIsNoTextReadsAs0119) {
  EXPECT_EQ(server_fetch(web, Value::null()).as_view(), "0119");
  EXPECT_TRUE(http.addresses.empty());
}

}  // namespace
}  // namespace rk::services
