// The ends of a page that are no errors: its time, its memory, the server's stop. Nothing that a
// page traps errors with sees them, and nothing of the page runs behind them.
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <string_view>

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

TEST_F(PageEnds, ItsTimeAbortsItsTransaction) {
  site_.options.page_time = std::chrono::seconds(0);
  site_.file("/a.asp",
             "<%@ Transaction=Required %><% Sub OnTransactionAbort\n"
             "Application(\"end\") = \"undone\"\nEnd Sub\nDo : Loop %>");
  EXPECT_NE(site_.body("/a.asp").find("Script timed out"), std::string::npos);
  EXPECT_EQ(site_.host().application_value("end").as_view(), "undone");
  EXPECT_NE(site_.log.lines().at(0).find("/a.asp:4"), std::string::npos) << site_.log.lines()[0];
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

// A page that calls what has no end, in many ways.
PageAnswer calling_endless(tests::PageSite& site, std::string_view statements) {
  site.options.page_time = std::chrono::seconds(0);
  site.file("/loop.asp", "<% On Error Resume Next\nDo\nLoop\nResponse.Write \"went on\" %>");
  site.file("/a.asp", trapping(statements) +
                          "<% Function turn\nOn Error Resume Next\nDo\nLoop\nEnd Function\n"
                          "Class Endless\nPrivate Sub Class_Terminate\nturn\nEnd Sub\n"
                          "Public Property Let Value(v)\nturn\nEnd Property\nEnd Class %>");
  return site.run("/a.asp");
}

// Wherever the page is when its time is over.
TEST(PageEndsInside, WhatItCalls) {
  for (const char* statements : {
           "Server.Execute \"loop.asp\"",
           "Server.Transfer \"loop.asp\"",
           "Execute \"Do\" & vbLf & \"Loop\"",
           "ExecuteGlobal \"On Error Resume Next\" & vbLf & \"Do\" & vbLf & \"Loop\"",
           "x = Eval(\"turn()\")",
           "Set f = GetRef(\"turn\")\nf",
           "Set o = New Endless\no.Value = 1",
           "x = Application.Contents(turn())",
       }) {
    tests::PageSite site;
    const PageAnswer answer = calling_endless(site, statements);
    EXPECT_EQ(answer.status, 500) << statements;
    EXPECT_NE(answer.body.find("Script timed out"), std::string::npos) << answer.body;
    EXPECT_EQ(answer.body.find("went on"), std::string::npos) << statements;
    EXPECT_TRUE(site.host().application_value("inside").is_empty()) << statements;
    EXPECT_TRUE(site.host().application_value("behind").is_empty()) << statements;
  }
}

// What lets an object go cannot fail; the page ends at its next loop or call, or at its end.
TEST(PageEndsInside, TheEndOfAnObject) {
  tests::PageSite site;
  const PageAnswer answer = calling_endless(
      site, "Set o = New Endless\nSet o = Nothing\nFor i = 1 To 2\nApplication(\"i\") = i\nNext");
  EXPECT_EQ(answer.status, 500);
  EXPECT_NE(answer.body.find("Script timed out"), std::string::npos) << answer.body;
  EXPECT_EQ(answer.body.find("went on"), std::string::npos);
  EXPECT_TRUE(site.host().application_value("behind").is_empty());
}

TEST_F(PageEnds, ItsTimeInAnEventOfItsSession) {
  site_.file("/global.asa",
             "<script language=VBScript runat=Server>\nSub Session_OnStart\n"
             "On Error Resume Next\nDo\nLoop\nEnd Sub\n</script>");
  site_.options.page_time = std::chrono::seconds(0);
  ends_with("x = 1", "Script timed out");
}

// What it held is there for others.
TEST_F(PageEnds, GivesBackItsLockAndItsSession) {
  site_.file("/a.asp", trapping("Session(\"n\") = 1\nApplication.Lock\nServer.ScriptTimeout = 1\n"
                                "clock.Pass\nDo\nLoop"));
  class Passing final : public Object {
   public:
    explicit Passing(tests::FixedClock& clock) : clock_(clock) {}
    std::string_view type_name() const override { return "Passing"; }
    MemberId member(std::string_view) const override { return 1; }
    Value invoke(MemberId, CallKind, Arguments) override {
      clock_.advance(std::chrono::seconds(2));
      return {};
    }

   private:
    tests::FixedClock& clock_;
  };
  site_.programs.add("Toy.Clock", [this](PageServices&) { return make_ref<Passing>(site_.clock); });
  site_.file("/global.asa",
             "<object runat=server scope=application id=clock progid=Toy.Clock></object>");
  const PageAnswer ended = site_.run("/a.asp");
  ASSERT_EQ(ended.status, 500) << ended.body;
  site_.file("/b.asp",
             "<% Application.Lock\nApplication(\"x\") = Session(\"n\")\nApplication.UnLock\n"
             "Response.Write Application(\"x\") %>");
  PageRequest request = tests::PageSite::request("/b.asp");
  const std::string set = tests::header_of(ended, "Set-Cookie");
  request.headers.emplace_back("Cookie", set.substr(0, set.find(';')));
  EXPECT_EQ(site_.host().run(request).body, "1");
}

}  // namespace
}  // namespace rk::pagehost
