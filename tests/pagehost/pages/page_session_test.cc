// Sessions as visitors and pages see them.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "pagehost/pages/page_host.h"
#include "pagehost/pages/request.h"
#include "tests/support/page_site.h"

namespace rk::pagehost {
namespace {

using namespace std::chrono_literals;
using tests::header_of;

class PageSessions : public ::testing::Test {
 protected:
  PageSessions() {
    site_.file("/count.asp", "<% Session(\"n\") = Session(\"n\") + 1 %><%= Session(\"N\") %>");
  }
  // What a visitor sends back.
  static std::string cookie_of(const PageAnswer& answer) {
    const std::string set = header_of(answer, "Set-Cookie");
    return set.substr(0, set.find(';'));
  }
  PageAnswer run_as(const std::string& cookie, std::string_view address) {
    PageRequest request = tests::PageSite::request(address);
    if (!cookie.empty()) request.headers.emplace_back("Cookie", cookie);
    return site_.host().run(request);
  }
  tests::PageSite site_;
};

TEST_F(PageSessions, AVisitorComesBackByTheCookie) {
  const PageAnswer first = run_as("", "/count.asp");
  EXPECT_EQ(first.body, "1");
  const std::string set = header_of(first, "Set-Cookie");
  EXPECT_NE(set.find("; HttpOnly"), std::string::npos);
  EXPECT_NE(set.find("; SameSite=Lax"), std::string::npos);
  const PageAnswer second = run_as(cookie_of(first), "/count.asp");
  EXPECT_EQ(second.body, "2");
  EXPECT_EQ(header_of(second, "Set-Cookie"), "");
  EXPECT_EQ(run_as("", "/count.asp").body, "1");
}

TEST_F(PageSessions, APageThatDoesNotLookAtItMakesNone) {
  site_.file("/plain.asp", "x");
  EXPECT_EQ(header_of(run_as("", "/plain.asp"), "Set-Cookie"), "");
}

TEST_F(PageSessions, AMadeUpIdentifierIsNotAdopted) {
  const std::string made_up = std::string(kSessionCookie) + "=0123456789ABCDEF0123456789ABCDEF";
  const PageAnswer answer = run_as(made_up, "/count.asp");
  EXPECT_EQ(answer.body, "1");
  EXPECT_NE(cookie_of(answer), made_up);
}

TEST_F(PageSessions, TheSessionsCookieIsNotAmongThePagesCookies) {
  site_.file("/c.asp", "<%= Request.Cookies.Count %>");
  EXPECT_EQ(run_as(std::string(kSessionCookie) + "=1; a=2", "/c.asp").body, "1");
}

TEST_F(PageSessions, AbandonEndsItWithThePage) {
  site_.file("/bye.asp", "<% Session.Abandon %><%= Session(\"n\") %>");
  const std::string cookie = cookie_of(run_as("", "/count.asp"));
  EXPECT_EQ(run_as(cookie, "/bye.asp").body, "1");
  EXPECT_EQ(run_as(cookie, "/count.asp").body, "1");
}

TEST_F(PageSessions, ItsTimeIsCountedFromTheLastPage) {
  const std::string cookie = cookie_of(run_as("", "/count.asp"));
  site_.clock.advance(19min);
  EXPECT_EQ(run_as(cookie, "/count.asp").body, "2");
  site_.clock.advance(20min);
  EXPECT_EQ(run_as(cookie, "/count.asp").body, "1");
}

TEST_F(PageSessions, ItsEventsRunAtTheirTimes) {
  site_.file("/global.asa",
             "<script language=VBScript runat=Server>\n"
             "Sub Session_OnStart\nSession(\"name\") = \"guest\"\n"
             "Application(\"visitors\") = Application(\"visitors\") + 1\nEnd Sub\n"
             "Sub Session_OnEnd\nApplication(\"last\") = Session(\"name\")\n"
             "Application(\"visitors\") = Application(\"visitors\") - 1\nEnd Sub\n</script>");
  site_.file("/a.asp",
             "<%= Session(\"name\") & Application(\"visitors\") & Application(\"last\") %>");
  EXPECT_EQ(run_as("", "/a.asp").body, "guest1");
  EXPECT_EQ(run_as("", "/a.asp").body, "guest2");
  site_.clock.advance(20min);
  site_.host().sweep_sessions();
  EXPECT_EQ(run_as("", "/a.asp").body, "guest1guest");
}

TEST_F(PageSessions, APageWithoutASessionCannotUseOne) {
  site_.file("/a.asp", "<%@ EnableSessionState=False %><% Session(\"a\") = 1 %>");
  EXPECT_EQ(run_as("", "/a.asp").status, 500);
}

TEST_F(PageSessions, ARequestWaitsForItsSessionsTurnAndHoldsNoThread) {
  const std::string cookie = cookie_of(run_as("", "/count.asp"));
  PageRequest request = tests::PageSite::request("/count.asp");
  request.headers.emplace_back("Cookie", cookie);
  std::vector<SessionTurn> turns;
  const auto keep = [&](SessionTurn turn) { turns.push_back(std::move(turn)); };
  ASSERT_TRUE(site_.host().admit(request, keep));
  ASSERT_TRUE(site_.host().admit(request, keep));
  ASSERT_EQ(turns.size(), 1u);
  EXPECT_EQ(site_.host().run(request, std::move(turns[0])).body, "2");
  ASSERT_EQ(turns.size(), 2u) << "the page's end calls who waits";
  EXPECT_EQ(site_.host().run(request, std::move(turns[1])).body, "3");
}

TEST_F(PageSessions, APageWithoutASessionHoldsNobodysTurn) {
  // Runs while the page does: what asks for the turn then has it.
  bool free = false;
  site_.file("/off.asp", "<%@ EnableSessionState=False %><% Response.Flush %>x");
  const std::string cookie = cookie_of(run_as("", "/count.asp"));
  PageRequest off = tests::PageSite::request("/off.asp");
  PageRequest on = tests::PageSite::request("/count.asp");
  for (PageRequest* one : {&off, &on}) one->headers.emplace_back("Cookie", cookie);
  class Sink final : public AnswerSink {
   public:
    explicit Sink(std::function<void()> begun) : begun_(std::move(begun)) {}
    void wait_while(std::function<void()>) override {}
    void begin(const PageAnswer&) override { begun_(); }
    void write(std::string_view) override {}
    bool connected() override { return true; }

   private:
    std::function<void()> begun_;
  };
  Sink sink([&] { site_.host().admit(on, [&](const SessionTurn&) { free = true; }); });
  SessionTurn turn;
  site_.host().admit(off, [&](SessionTurn given) { turn = std::move(given); });
  site_.host().run(off, std::move(turn), &sink);
  EXPECT_TRUE(free);
  // Once it was read it does not wait for the session either.
  std::vector<SessionTurn> held;
  site_.host().admit(on, [&](SessionTurn given) { held.push_back(std::move(given)); });
  bool admitted = false;
  site_.host().admit(off, [&](const SessionTurn&) { admitted = true; });
  EXPECT_TRUE(admitted);
}

TEST_F(PageSessions, WhatOneVisitorKeepsIsBounded) {
  site_.file("/much.asp",
             "<% On Error Resume Next\ns = String(100000, \"x\")\nFor i = 1 To 200\n"
             "Session(\"k\" & i) = s\nIf Err.Number <> 0 Then Exit For\nNext\n"
             "Response.Write i & \" \" & Err.Number %>");
  EXPECT_EQ(run_as("", "/much.asp").body, "84 7");
}

// Holds more with every call.
class Bag final : public Object {
 public:
  std::string_view type_name() const override { return "Bag"; }
  MemberId member(std::string_view name) const override { return name == "Grow" ? 1 : kNoMember; }
  Value invoke(MemberId, CallKind, Arguments) override {
    bytes_ += std::size_t{5} << 20;
    return {};
  }
  void add_held(rk::HeldMemory& held) const override {
    held.bytes += bytes_;
    held.values.push_back(&own_);
  }

 private:
  std::size_t bytes_ = 0;
  Value own_ = Value::text("own");
};

TEST_F(PageSessions, ASessionWhoseObjectsGrowTooLargeEndsWithThePage) {
  site_.programs.add("Toy.Bag", [](PageServices&) { return make_ref<Bag>(); });
  site_.file("/start.asp",
             "<% Set Session(\"bag\") = Server.CreateObject(\"Toy.Bag\")\n"
             "Session(\"n\") = 1 %>");
  site_.file("/grow.asp",
             "<% If IsObject(Session(\"bag\")) Then Session(\"bag\").Grow %>"
             "<%= Session(\"n\") %>.");
  const std::string cookie = cookie_of(run_as("", "/start.asp"));
  EXPECT_EQ(run_as(cookie, "/grow.asp").body, "1.");
  EXPECT_EQ(run_as(cookie, "/grow.asp").body, "1.") << "5 MiB were not too many";
  EXPECT_EQ(run_as(cookie, "/grow.asp").body, ".") << "10 MiB were";
  ASSERT_EQ(site_.log.lines().size(), 1u);
  EXPECT_EQ(site_.log.lines()[0],
            "E /grow.asp: the session's objects hold 10 MiB, more than 8: the session ends");
}

TEST_F(PageSessions, ContentsAreWalkedAndRemoved) {
  site_.file("/a.asp",
             "<% Session(\"a\") = 1\nSession(\"B\") = 2\nFor Each k In Session.Contents\n"
             "Response.Write k & Session(k)\nNext\nSession.Contents.Remove \"A\"\n"
             "Response.Write Session.Contents.Count\nSession.Contents.RemoveAll\n"
             "Response.Write Session.Contents.Count & IsNumeric(Session.SessionID) %>");
  EXPECT_EQ(run_as("", "/a.asp").body, "a1B210True");
}

}  // namespace
}  // namespace rk::pagehost
