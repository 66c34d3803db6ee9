// A start-up script that changes while pages are served.
#include "pagehost/pages/application_life.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "pagehost/pages/page_host.h"
#include "tests/support/page_site.h"
#include "value/conversions.h"

namespace rk::pagehost {
namespace {

using namespace std::chrono_literals;
using tests::header_of;

// Something that is served at its page's first flush.
class AtFlush final : public AnswerSink {
 public:
  explicit AtFlush(std::function<void()> work) : work_(std::move(work)) {}
  void wait_while(std::function<void()>) override {}
  void begin(const PageAnswer&) override { work_(); }
  void write(std::string_view bytes) override { sent += bytes; }
  bool connected() override { return true; }
  std::string sent;

 private:
  std::function<void()> work_;
};

class ChangedStartUp : public ::testing::Test {
 protected:
  ChangedStartUp() {
    // Says what happens, by being asked for by that name.
    for (const char* event : {"start", "end", "leave1", "leave2"}) {
      site_.programs.add(std::string("Toy.") + event, [this, event](PageServices& page) {
        const std::lock_guard held(mutex_);
        const Value seen = page.context()->application()->value("seen");
        events_.push_back(event + joined_text(seen).string());
        return page.context();
      });
    }
    site_.file("/global.asa", script("1"));
    site_.file("/a.asp", "<%= Application(\"v\") & Application(\"old\") %>");
    site_.file("/s.asp", "<% Session(\"n\") = Session(\"n\") + 1 %><%= Session(\"n\") %>");
  }

  static std::string script(const std::string& value) {
    return "<script language=VBScript runat=Server>\nSub Application_OnStart\n"
           "Server.CreateObject \"Toy.start\"\nApplication(\"v\") = \"" +
           value +
           "\"\nEnd Sub\n"
           "Sub Application_OnEnd\nServer.CreateObject \"Toy.end\"\nEnd Sub\n"
           "Sub Session_OnEnd\nServer.CreateObject \"Toy.leave\" & Session(\"n\")\nEnd Sub\n"
           "</script>";
  }
  // Long enough for the next page to look.
  void later() { site_.clock.advance(1s); }
  std::string events() {
    std::string out;
    for (const std::string& event : events_) out += event + " ";
    return out;
  }
  static std::string cookie_of(const PageAnswer& answer) {
    const std::string set = header_of(answer, "Set-Cookie");
    return set.substr(0, set.find(';'));
  }
  PageAnswer run_as(const std::string& cookie, std::string_view address) {
    PageRequest request = tests::PageSite::request(address);
    request.headers.emplace_back("Cookie", cookie);
    return site_.host().run(request);
  }

  std::mutex mutex_;
  std::vector<std::string> events_;
  tests::PageSite site_;
};

TEST_F(ChangedStartUp, StartsTheApplicationAnew) {
  site_.file("/set.asp", "<% Application(\"old\") = 1 : Application(\"seen\") = \"x\" %>");
  EXPECT_EQ(site_.body("/a.asp"), "1");
  site_.body("/set.asp");
  const std::string cookie = cookie_of(site_.run("/s.asp"));
  EXPECT_EQ(site_.body("/a.asp"), "11");
  site_.file("/global.asa", script("2"));
  later();
  EXPECT_EQ(site_.body("/a.asp"), "2") << "variables of before are gone";
  EXPECT_EQ(events(), "start leave1x endx start ") << "each event at its time, and once";
  EXPECT_EQ(run_as(cookie, "/s.asp").body, "1") << "sessions of before are gone";
  later();
  EXPECT_EQ(site_.body("/a.asp"), "2");
  EXPECT_EQ(events_.size(), 4u) << "nothing changed since";
}

TEST_F(ChangedStartUp, TheConnectionStringIsTheNewOne) {
  const auto start = [](const std::string& text) {
    return "<script language=VBScript runat=Server>\nSub Application_OnStart\n"
           "Application(\"Rk_ConnStr\") = \"" +
           text + "\"\nEnd Sub\n</script>";
  };
  site_.file("/global.asa", start("Data Source=a.db"));
  EXPECT_EQ(site_.host().application_value("rk_connstr").as_view(), "Data Source=a.db");
  site_.file("/global.asa", start("Data Source=b.db"));
  later();
  site_.run("/a.asp");
  EXPECT_EQ(site_.host().application_value("rk_connstr").as_view(), "Data Source=b.db");
}

TEST_F(ChangedStartUp, AnIncludeOfItCounts) {
  site_.file("/global.asa",
             "<script language=VBScript runat=Server>\nSub Application_OnStart\n"
             "<!--#include file=\"inc/start.inc\"-->\nEnd Sub\n</script>");
  site_.file("/inc/start.inc", "Application(\"v\") = 1");
  EXPECT_EQ(site_.body("/a.asp"), "1");
  site_.file("/inc/start.inc", "Application(\"v\") = 2");
  later();
  EXPECT_EQ(site_.body("/a.asp"), "2");
}

TEST_F(ChangedStartUp, OneThatComesOrGoesIsAChange) {
  site_.files.remove("/site/global.asa");
  EXPECT_EQ(site_.body("/a.asp"), "");
  site_.file("/global.asa", script("1"));
  later();
  EXPECT_EQ(site_.body("/a.asp"), "1");
  site_.files.remove("/site/global.asa");
  later();
  EXPECT_EQ(site_.body("/a.asp"), "");
  EXPECT_EQ(events(), "start end ");
}

TEST_F(ChangedStartUp, OneThatDoesNotCompileIsShownAndTriedAgainWhenItChanges) {
  EXPECT_EQ(site_.body("/a.asp"), "1");
  site_.file("/global.asa", "<script language=VBScript runat=Server>\nSub If\n</script>");
  later();
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(answer.status, 500);
  EXPECT_NE(answer.body.find("/global.asa, line 2"), std::string::npos) << answer.body;
  EXPECT_EQ(events(), "start end ");
  later();
  EXPECT_EQ(site_.run("/a.asp").status, 500);
  site_.file("/global.asa", script("3"));
  later();
  EXPECT_EQ(site_.body("/a.asp"), "3");
}

TEST_F(ChangedStartUp, OneThatDoesNotCompileAtTheStartIsShownToo) {
  site_.file("/global.asa", "<script language=VBScript runat=Server>\nSub If\n</script>");
  EXPECT_EQ(site_.run("/a.asp").status, 500);
  site_.file("/global.asa", script("1"));
  later();
  EXPECT_EQ(site_.body("/a.asp"), "1");
}

TEST_F(ChangedStartUp, FilesAreNotLookedAtByEveryPage) {
  EXPECT_EQ(site_.body("/a.asp"), "1");
  later();
  EXPECT_EQ(site_.body("/a.asp"), "1") << "this one looked";
  site_.file("/global.asa", script("2"));
  EXPECT_EQ(site_.body("/a.asp"), "1");
  later();
  EXPECT_EQ(site_.body("/a.asp"), "2");
}

TEST_F(ChangedStartUp, PagesInProgressAreWaitedFor) {
  site_.file("/long.asp",
             "<% Response.Flush\nApplication(\"seen\") = \"-long\"\nResponse.Write "
             "Application(\"v\") %>");
  site_.host();
  std::thread other;
  std::string body;
  AtFlush sink([&] {
    site_.file("/global.asa", script("2"));
    later();
    other = std::thread([&] { body = site_.body("/a.asp"); });
  });
  const PageAnswer answer =
      site_.host().run(tests::PageSite::request("/long.asp"), SessionTurn(), &sink);
  other.join();
  EXPECT_EQ(sink.sent + answer.body, "1") << "in the life that it began in";
  EXPECT_EQ(body, "2");
  EXPECT_EQ(events(), "start end-long start ");
}

// A page that fetches a page of its own site would wait for the change, and the change for it.
TEST_F(ChangedStartUp, APageThatCannotEndBeforeKeepsItsApplication) {
  site_.options.longest_drain = 0ms;
  site_.file("/long.asp",
             "<% n = Session(\"n\")\nSession(\"n\") = n + 1\nResponse.Flush\n"
             "Response.Write Application(\"v\") & Session(\"n\") %>");
  std::string body;
  AtFlush sink([&] {
    site_.file("/global.asa", script("2"));
    later();
    body = site_.body("/a.asp");
  });
  const std::string cookie = cookie_of(site_.run("/s.asp"));
  PageRequest request = tests::PageSite::request("/long.asp");
  request.headers.emplace_back("Cookie", cookie);
  SessionTurn turn;
  site_.host().admit(request, [&](SessionTurn given) { turn = std::move(given); });
  EXPECT_EQ(site_.host().run(request, std::move(turn), &sink).body, "12");
  EXPECT_EQ(body, "2");
  EXPECT_EQ(events(), "start end start ");
  site_.host().sweep_sessions();
  EXPECT_EQ(events(), "start end start leave2 ") << "its session ends when it is free";
  EXPECT_EQ(run_as(cookie, "/s.asp").body, "1");
}

// Or the end would wait for that page, and every page for the end.
TEST_F(ChangedStartUp, ThatPageHoldsUpTheEndByNoLock) {
  site_.options.longest_drain = 0ms;
  site_.file("/global.asa",
             "<script language=VBScript runat=Server>\nSub Application_OnEnd\nApplication.Lock\n"
             "Application(\"seen\") = \"!\"\nServer.CreateObject \"Toy.end\"\nEnd Sub\n</script>");
  site_.file("/long.asp",
             "<% Application.Lock\nResponse.Flush\nApplication(\"x\") = 1\n"
             "Application.UnLock\nResponse.Write Application(\"x\") %>");
  std::string body;
  AtFlush sink([&] {
    site_.file("/global.asa", script("2"));
    later();
    body = site_.body("/a.asp");
  });
  EXPECT_EQ(site_.host().run(tests::PageSite::request("/long.asp"), SessionTurn(), &sink).body,
            "1");
  EXPECT_EQ(body, "2");
  EXPECT_EQ(events(), "end! start ");
}

// The turn was given before the change, and the page comes behind it.
TEST_F(ChangedStartUp, AWaitingRequestOfASessionOfBeforeHasNone) {
  const std::string cookie = cookie_of(site_.run("/s.asp"));
  PageRequest request = tests::PageSite::request("/s.asp");
  request.headers.emplace_back("Cookie", cookie);
  std::vector<SessionTurn> turns;
  const auto keep = [&](SessionTurn turn) { turns.push_back(std::move(turn)); };
  ASSERT_TRUE(site_.host().admit(request, keep));
  ASSERT_TRUE(site_.host().admit(request, keep));
  site_.file("/global.asa", script("2"));
  later();
  EXPECT_EQ(site_.body("/a.asp"), "2");
  ASSERT_EQ(turns.size(), 1u);
  EXPECT_EQ(site_.host().run(request, std::move(turns[0])).body, "1");
  ASSERT_EQ(turns.size(), 2u) << "who waits behind it is called all the same";
  EXPECT_EQ(site_.host().run(request, std::move(turns[1])).body, "1");
  site_.host().sweep_sessions();
  EXPECT_EQ(events(), "start end start leave1 ");
}

TEST_F(ChangedStartUp, ManyRequestsAtOnceStartItOnce) {
  constexpr int kThreads = 8;
  site_.run("/s.asp");
  EXPECT_EQ(site_.body("/a.asp"), "1");
  for (int round = 2; round < 6; ++round) {
    site_.file("/global.asa", script(std::to_string(round)));
    later();
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
      threads.emplace_back([&] {
        for (int n = 0; n < 20; ++n) site_.run("/s.asp");
        if (site_.body("/a.asp") == std::to_string(round)) ++right;
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(right, kThreads);
  }
  const auto starts = std::count_if(events_.begin(), events_.end(),
                                    [](const auto& event) { return event == "start"; });
  EXPECT_EQ(starts, 5);
}

TEST_F(ChangedStartUp, ObjectsOfTheApplicationAreMadeAnew) {
  site_.programs.add("Toy.Box", [this](PageServices& page) {
    events_.emplace_back("box");
    return page.context();
  });
  const std::string object =
      "<object runat=server scope=application id=box progid=\"Toy.Box\"></object>";
  site_.file("/global.asa", object + script("1"));
  site_.file("/o.asp", "<%= IsObject(box) %>");
  EXPECT_EQ(site_.body("/o.asp"), "True");
  EXPECT_EQ(site_.body("/o.asp"), "True");
  site_.file("/global.asa", object + script("2"));
  later();
  EXPECT_EQ(site_.body("/o.asp"), "True");
  EXPECT_EQ(events(), "start box end start box ");
}

}  // namespace
}  // namespace rk::pagehost
