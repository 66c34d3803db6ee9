// Every way in which the outside fails the services, and what a page sees of it: a text, or
// nothing at all. The end of a page is no failure and passes through all of them.
#include <gtest/gtest.h>

#include <functional>

#include "platform/page.h"
#include "services/daily_log.h"
#include "services/ini_settings.h"
#include "services/lookups.h"
#include "services/web_fetch.h"
#include "tests/support/failing_files.h"
#include "tests/support/fake_page.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/fixed_random.h"
#include "tests/support/recording_profile_strings.h"
#include "tests/support/toy_code_pages.h"
#include "value/script_error.h"

namespace rk::services {
namespace {

constexpr std::string_view kToday = "/site/log/2023-03-15.log";

// Fetches that do what a test says.
class ActingHttp final : public platform::Http {
 public:
  std::optional<std::string> body_of(std::string_view, const platform::HttpTimeouts&) override {
    return act();
  }
  std::function<std::optional<std::string>()> act;
};

class ServiceFailures : public testing::Test {
 protected:
  void write_log() { writelog(log_store, Value::text("a")); }
  std::string checked_domain() {
    return chDomainReg(web, endpoints, random, Value::text("a.example")).as_text().string();
  }
  std::string filing() {
    return Getbeian(web, endpoints, server, Value::text("1"), Value::text("a.example"))
        .as_text()
        .string();
  }

  tests::FailingFiles files;
  tests::FixedClock clock{45000.5};
  tests::ToyCodePages code_pages;
  tests::FixedRandom random;
  tests::FakeServer server;
  LogStore log_store{files, clock, code_pages, platform::kGb2312, "/site/log"};
  ActingHttp http;
  Web web{http, code_pages, platform::kGb2312};
  Endpoints endpoints{"http://a", "http://b", "http://c", "http://d"};
};

TEST_F(ServiceFailures, ALogThatCannotBeWrittenLosesTheLineAndKeepsTheOldOnes) {
  for (const KnownError* failure : tests::kFileFailures) {
    files.put(std::string(kToday), "old\r\n");
    files.write_failure = failure;
    EXPECT_NO_THROW(write_log()) << failure->text;
    files.write_failure = nullptr;
    EXPECT_EQ(files.read(kToday), "old\r\n") << failure->text;
  }
}

TEST_F(ServiceFailures, ALogThatCannotBeReadIsBegunAnew) {
  for (const KnownError* failure : tests::kFileFailures) {
    files.put(std::string(kToday), "old\r\n");
    files.read_failure = failure;
    EXPECT_NO_THROW(write_log()) << failure->text;
    files.read_failure = nullptr;
    EXPECT_EQ(files.read(kToday), "2023-03-15 12:00:00                  a\r\n") << failure->text;
  }
}

TEST_F(ServiceFailures, AFetchThatFailsInAnyWayReadsAs0119OrAs2) {
  const std::function<std::optional<std::string>()> failures[] = {
      [] { return std::nullopt; },
      []() -> std::optional<std::string> { raise(errors::kDeviceError); },
      []() -> std::optional<std::string> { raise(errors::kOutOfMemory); },
  };
  for (const auto& failure : failures) {
    http.act = failure;
    EXPECT_EQ(server_fetch(web, Value::text("http://a/")).as_view(), "0119");
    EXPECT_EQ(client_fetch(web, Value::text("http://a/")).as_view(), "0119");
    EXPECT_EQ(checked_domain(), "0119");
    EXPECT_EQ(filing(), "2");
  }
}

TEST_F(ServiceFailures, AnyBodyIsAnAnswerAndNoneRaises) {
  const std::string bodies[] = {"",
                                "\xC4",
                                "\xFF\xFE\xFD",
                                std::string(3, '\0'),
                                "document.frame.action=\"/",
                                "OnTrMouseOut(this)",
                                "\xEF\xBB\xBF中文"};
  for (const std::string& body : bodies) {
    http.act = [&] { return body; };
    EXPECT_NO_THROW(checked_domain());
    EXPECT_EQ(filing(), "2") << body;
  }
}

TEST_F(ServiceFailures, TheEndOfAPagePassesThroughEveryGuard) {
  http.act = []() -> std::optional<std::string> {
    throw platform::PageEnd{platform::PageEnd::Reason::TimedOut};
  };
  EXPECT_THROW(server_fetch(web, Value::text("http://a/")), platform::PageEnd);
  EXPECT_THROW(client_fetch(web, Value::text("http://a/")), platform::PageEnd);
  EXPECT_THROW(checked_domain(), platform::PageEnd);
  EXPECT_THROW(filing(), platform::PageEnd);
}

}  // namespace
}  // namespace rk::services
