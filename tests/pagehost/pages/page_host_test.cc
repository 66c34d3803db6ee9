#include "pagehost/pages/page_host.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "pagehost/pages/tabled_object.h"
#include "platform/page.h"
#include "tests/support/page_site.h"

namespace rk::pagehost {
namespace {

using tests::header_of;

// A class as a storefront brings it: bound by OnStartPage, told of the page's end.
class Toy final : public TabledObject<Toy> {
 public:
  explicit Toy(std::vector<std::string>* events) : events_(events) {}
  std::string_view type_name() const override { return "Toy"; }
  static std::span<const Member<Toy>> members() {
    static constexpr Member<Toy> kMembers[] = {
        {"", nullptr},
        {"OnStartPage", &Toy::start, 1, 1},
        {"OnEndPage", &Toy::end},
        {"Host", &Toy::host},
        {"Greet", &Toy::greet, 1, 1},
        {"Count", &Toy::count},
        {"Map", &Toy::map, 1, 1},
        {"Stop", &Toy::stop},
    };
    return kMembers;
  }

 private:
  Value start(const Call& call) {
    auto* context = dynamic_cast<platform::ScriptingContext*>(call.at(0).as_object());
    response_ = context->response();
    server_ = context->server();
    request_ = context->request();
    application_ = context->application();
    events_->emplace_back("start");
    return {};
  }
  Value end(const Call&) {
    events_->emplace_back("end");
    response_->write("!");
    return {};
  }
  Value host(const Call&) { return request_->server_variable("http_host"); }
  Value greet(const Call& call) {
    response_->write("hello " + call.text(0));
    call.at(0) = Value::text("changed");
    return {};
  }
  Value count(const Call&) {
    application_->lock();
    const Value now = application_->value("count");
    application_->set_value("Count", Value::long_integer(now.is_empty() ? 1 : now.as_long() + 1));
    application_->unlock();
    return application_->value("COUNT");
  }
  Value map(const Call& call) { return Value::text(server_->map_path(call.text(0))); }
  Value stop(const Call&) {
    response_->end();
    return {};
  }

  std::vector<std::string>* events_;
  std::shared_ptr<platform::Response> response_;
  std::shared_ptr<platform::Server> server_;
  std::shared_ptr<platform::Request> request_;
  std::shared_ptr<platform::Application> application_;
};

class PageHostTest : public ::testing::Test {
 protected:
  PageHostTest() {
    site_.programs.add("Toy.Box", [this](PageServices&) { return make_ref<Toy>(&events_); });
  }
  std::vector<std::string> events_;
  tests::PageSite site_;
};

TEST_F(PageHostTest, TextStaysAndValuesAreWritten) {
  site_.file("/a.asp", "<p>\r\n<% x = 2 %>\r\n<%= x * 21 %>\r\n</p>");
  EXPECT_EQ(site_.body("/a.asp"), "<p>\r\n\r\n42\r\n</p>");
}

TEST_F(PageHostTest, AScriptBlockMayInclude) {
  site_.file("/inc/fn.inc",
             "Function Twice(n)\n<!-- #include virtual=\"/inc/body.inc\" -->\nEnd Function");
  site_.file("/inc/body.inc", "Twice = n * 2");
  site_.file("/a.asp",
             "<%= Twice(4) %><script runat=server>\nx = 1\n<!--#include file='INC\\fn.inc'-->\n"
             "Response.Write x + 1 / y\n</script>");
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_NE(answer.body.find("/a.asp, line 4"), std::string::npos) << answer.body;
  site_.file("/b.asp",
             "<script runat=server><!--#include file=\"inc/fn.inc\"--></script><%= Twice(4) %>");
  EXPECT_EQ(site_.body("/b.asp"), "8");
}

TEST_F(PageHostTest, AnIncludeOfABlockThatIsMissingOrGoesRoundIsAnError) {
  site_.file("/a.asp", "<script runat=server>\n<!--#include file='no.inc'-->\n</script>");
  site_.file("/b.asp", "<script runat=server><!--#include file='c.inc'--></script>");
  site_.file("/c.inc", "x = 1\n<!--#include file='C.inc'-->");
  EXPECT_EQ(site_.run("/a.asp").status, 500);
  EXPECT_EQ(site_.run("/b.asp").status, 500);
  const std::vector<std::string> lines = site_.log.lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], "E /a.asp:2: The include file was not found: 'no.inc'");
  EXPECT_EQ(lines[1], "E /c.inc:2: The file includes itself: 'C.inc'");
}

TEST_F(PageHostTest, AStatementMaySpanPageText) {
  site_.file("/a.asp", "<% For i = 1 To 3 %>[<%= i %>]<% Next %>");
  EXPECT_EQ(site_.body("/a.asp"), "[1][2][3]");
}

TEST_F(PageHostTest, ThePathMayBeInAnyLetterCase) {
  site_.file("/Shop/Index.asp", "here");
  EXPECT_EQ(site_.body("/shop/INDEX.ASP"), "here");
}

TEST_F(PageHostTest, APageThatIsNotThereIs404) {
  EXPECT_EQ(site_.run("/no.asp").status, 404);
  EXPECT_EQ(site_.run("/../etc/x.asp").status, 404);
}

TEST_F(PageHostTest, ThePageOfFriendlyAddressesRunsInPlaceOfA404) {
  site_.options.not_found = "/404.asp";
  site_.file("/404.asp", "<% Response.Status = \"404 Not Found\" %><%= Request.QueryString %>");
  const PageAnswer answer = site_.run("/plan/7.asp?a=1");
  EXPECT_EQ(answer.status, 404);
  EXPECT_EQ(answer.body, "404;http://shop.example:8080/plan/7.asp?a=1");
}

TEST_F(PageHostTest, ThePageOfFriendlyAddressesSeesTheBytesThatWereAskedFor) {
  site_.options.not_found = "/404.asp";
  site_.file("/404.asp", "<%= Request.ServerVariables(\"QUERY_STRING\") %>");
  PageRequest request = tests::PageSite::request("/item/other.asp");
  request.missed_address = "/item/%D6%D0?a=%CE%C4";
  EXPECT_EQ(site_.host().answer_not_found(request, {}, nullptr).body,
            "404;http://shop.example:8080/item/%D6%D0?a=%CE%C4");
}

TEST_F(PageHostTest, AChangedPageOrIncludeIsNoticed) {
  site_.file("/a.asp", "1<!--#include file=\"b.inc\"-->").file("/b.inc", "x");
  EXPECT_EQ(site_.body("/a.asp"), "1x");
  site_.file("/b.inc", "y");
  EXPECT_EQ(site_.body("/a.asp"), "1y");
  site_.file("/a.asp", "2<!--#include file=\"b.inc\"-->");
  EXPECT_EQ(site_.body("/a.asp"), "2y");
}

TEST_F(PageHostTest, AMissingIncludeThatAppearsIsNoticed) {
  site_.file("/a.asp", "<!--#include file=\"b.inc\"-->");
  EXPECT_EQ(site_.run("/a.asp").status, 500);
  site_.file("/b.inc", "here");
  EXPECT_EQ(site_.body("/a.asp"), "here");
}

TEST_F(PageHostTest, AnErrorNobodyTrapsIs500WithItsPlace) {
  site_.file("/a.asp", "text\n<% x = CInt(\"word\") %>");
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(answer.status, 500);
  EXPECT_NE(answer.body.find("800a000d"), std::string::npos) << answer.body;
  EXPECT_NE(answer.body.find("Type mismatch"), std::string::npos);
  EXPECT_NE(answer.body.find("/a.asp, line 2"), std::string::npos);
  ASSERT_EQ(site_.log.lines().size(), 1u);
  EXPECT_EQ(site_.log.lines()[0].rfind("E /a.asp:2: error 800a000d: Type mismatch", 0), 0u);
}

TEST_F(PageHostTest, ASyntaxErrorIsLoggedWithItsLineAndACaret) {
  site_.file("/a.asp", "<%\nIf x Then Then\n%>");
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(answer.status, 500);
  ASSERT_FALSE(site_.log.lines().empty());
  const std::string line = site_.log.lines()[0];
  EXPECT_NE(line.find("/a.asp:2:"), std::string::npos) << line;
  EXPECT_NE(line.find("If x Then Then\n"), std::string::npos);
  EXPECT_NE(line.find('^'), std::string::npos);
}

TEST_F(PageHostTest, AStrangerSeesNothingOfTheInside) {
  site_.file("/a.asp", "secret text<% Err.Raise 1000, \"src\", \"secret words\" %>");
  PageRequest request = tests::PageSite::request("/a.asp");
  request.remote_address = "203.0.113.9";
  const PageAnswer far = site_.host().run(request);
  EXPECT_EQ(far.status, 500);
  EXPECT_EQ(far.body.find("secret"), std::string::npos) << far.body;
  EXPECT_EQ(far.body.find("a.asp"), std::string::npos);
  request.remote_address = "127.0.0.1";
  request.headers.emplace_back("X-Forwarded-For", "203.0.113.9");
  EXPECT_EQ(site_.host().run(request).body.find("secret"), std::string::npos);
}

TEST_F(PageHostTest, AnErrorInAnIncludeNamesTheInclude) {
  site_.file("/a.asp", "<!--#include file=\"inc/b.asp\"-->")
      .file("/inc/b.asp", "\n\n<% y = 1 / 0 %>");
  EXPECT_NE(site_.body("/a.asp").find("/inc/b.asp, line 3"), std::string::npos);
}

TEST_F(PageHostTest, OnErrorResumeNextGoesOn) {
  EXPECT_EQ(site_.written("On Error Resume Next\nx = 1 / 0\nResponse.Write Err.Number"), "11");
}

TEST_F(PageHostTest, EndStopsThePageAndNoTrapSeesIt) {
  EXPECT_EQ(site_.written("On Error Resume Next\nResponse.Write 1\nResponse.End\nResponse.Write 2"),
            "1");
}

TEST_F(PageHostTest, ALoopWithoutEndIsEndedByTheTime) {
  site_.options.page_time = std::chrono::seconds(0);
  site_.file("/a.asp", "<% On Error Resume Next\nDo\nLoop %>");
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(answer.status, 500);
  EXPECT_NE(answer.body.find("Script timed out"), std::string::npos) << answer.body;
}

TEST_F(PageHostTest, EndingRunningPagesEndsThem) {
  site_.file("/a.asp", "<% Do\nLoop %>");
  site_.host().end_running_pages();
  EXPECT_NE(site_.body("/a.asp").find("Script timed out"), std::string::npos);
}

TEST_F(PageHostTest, RecursionWithoutEndIsAnErrorOfThePage) {
  const std::string body = site_.written("Sub f\nf\nEnd Sub\nf");
  EXPECT_NE(body.find("800a001c"), std::string::npos) << body;
}

TEST_F(PageHostTest, AClassIsBoundToThePageAndToldOfItsEnd) {
  EXPECT_EQ(site_.written("Set t = Server.CreateObject(\"toy.box\")\nn = \"you\"\n"
                          "t.Greet n\nResponse.Write \" \" & n & \" \" & t.Host"),
            "hello you changed shop.example:8080!");
  EXPECT_EQ(events_, (std::vector<std::string>{"start", "end"}));
}

TEST_F(PageHostTest, TheEndOfAPageInsideAClassEndsThePage) {
  EXPECT_EQ(site_.written("On Error Resume Next\nSet t = Server.CreateObject(\"Toy.Box\")\n"
                          "Response.Write 1\nt.Stop\nResponse.Write 2"),
            "1!");
}

TEST_F(PageHostTest, ClassesShareTheApplicationWithScript) {
  const std::string script =
      "Set t = Server.CreateObject(\"Toy.Box\")\nResponse.Write t.Count & Application(\"count\")";
  EXPECT_EQ(site_.written(script), "11!");
  EXPECT_EQ(site_.written(script), "22!");
}

TEST_F(PageHostTest, AnUnknownClassIsAnErrorAndItsNameIsLoggedOnce) {
  const std::string script =
      "On Error Resume Next\nSet m = Server.CreateObject(\"No.Such\")\n"
      "Response.Write Err.Number & Err.Description & IsObject(m)";
  EXPECT_EQ(site_.written(script), "-2147221005Invalid class stringFalse");
  site_.written(script);
  ASSERT_EQ(site_.log.lines().size(), 1u);
  EXPECT_EQ(site_.log.lines()[0], "N /written.asp:2: no class is served by the name 'No.Such'");
}

TEST_F(PageHostTest, TheLanguagesOwnCreateObjectHasItsOwnError) {
  EXPECT_EQ(site_.written("On Error Resume Next\nSet m = CreateObject(\"No.Such\")\n"
                          "Response.Write Err.Number"),
            "429");
}

TEST_F(PageHostTest, StartUpSetsTheApplication) {
  site_.file("/global.asa",
             "<script language=\"VBScript\" runat=\"Server\">\nSub Application_OnStart\n"
             "Application(\"Rk_ConnStr\") = \"Data Source=x.db\"\nEnd Sub\n</script>");
  EXPECT_EQ(site_.written("Response.Write Application(\"rk_connstr\")"), "Data Source=x.db");
}

TEST_F(PageHostTest, AFailingStartUpIsLoggedAndPagesRun) {
  site_.file("/global.asa",
             "<script runat=\"Server\" language=\"VBScript\">\nSub Application_OnStart\n"
             "x = 1 / 0\nEnd Sub\n</script>");
  EXPECT_EQ(site_.written("Response.Write 1"), "1");
  ASSERT_EQ(site_.log.lines().size(), 1u);
  EXPECT_NE(site_.log.lines()[0].find("/global.asa:3: error 800a000b"), std::string::npos);
}

TEST_F(PageHostTest, ServerExecuteRunsAPageInsideWithItsOwnIncludes) {
  site_.file("/a.asp", "<% Server.Execute \"sub/b.asp\" %>-a")
      .file("/sub/b.asp", "<!--#include file=\"c.inc\"--><%= x %>")
      .file("/sub/c.inc", "<% x = \"c\" %>");
  EXPECT_EQ(site_.body("/a.asp"), "c-a");
}

TEST_F(PageHostTest, ServerTransferDoesNotComeBack) {
  site_.file("/a.asp", "1<% Server.Transfer \"b.asp\" %>2").file("/b.asp", "b");
  EXPECT_EQ(site_.body("/a.asp"), "1b");
}

TEST_F(PageHostTest, AnErrorInAnExecutedPageNamesThatPage) {
  site_.file("/a.asp", "\n<% Server.Execute \"b.asp\" %>").file("/b.asp", "\n\n<% x = 1 / 0 %>");
  EXPECT_NE(site_.body("/a.asp").find("/b.asp, line 3"), std::string::npos);
}

TEST_F(PageHostTest, PagesThatExecuteThemselvesEnd) {
  site_.file("/a.asp", "<% Server.Execute \"a.asp\" %>");
  EXPECT_EQ(site_.run("/a.asp").status, 500);
}

TEST_F(PageHostTest, MapPathGoesByTheFolderOfThePage) {
  site_.file("/shop/a.asp", "<%= Server.MapPath(\"x.txt\") & \" \" & Server.MapPath(\"/\") %>");
  EXPECT_EQ(site_.body("/shop/a.asp"), "/site/shop/x.txt /site");
  site_.file("/b.asp", "<%= Server.MapPath(\"../x\") %>");
  EXPECT_EQ(site_.run("/b.asp").status, 500);
}

TEST_F(PageHostTest, TheSiteIsReadAsUtf8WhereItIsAll) {
  site_.file("/a.asp", "\xE4\xBD\xA0");
  EXPECT_EQ(site_.host().code_page(), platform::kUtf8);
  EXPECT_EQ(header_of(site_.run("/a.asp"), "Content-Type"), "text/html; charset=utf-8|");
}

TEST_F(PageHostTest, OneSourceOfAnotherCodePageMakesTheSiteAnsi) {
  site_.file("/a.asp", "<!--#include file=\"b.txt\"-->").file("/b.txt", "\xC4\xE3");
  EXPECT_EQ(site_.host().code_page(), platform::kGb2312);
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(answer.body, "\xC4\xE3");
  EXPECT_EQ(header_of(answer, "Content-Type"), "text/html; charset=gb2312|");
}

TEST_F(PageHostTest, ADeclaredObjectIsMadeWhenItIsUsed) {
  site_.file("/a.asp", "<object runat=server id=box progid=\"Toy.Box\"></object><%= box.Host %>");
  EXPECT_EQ(site_.body("/a.asp"), "shop.example:8080!");
}

TEST_F(PageHostTest, ADeclaredObjectOfAnUnknownClassIsAnErrorOfThePagesThatNameIt) {
  const std::string object = "<object runat=server id=mail progid=\"No.Such\"></object>";
  site_.file("/a.asp", object + "<% On Error Resume Next\nmail.Send %>x")
      .file("/b.asp", object + "b");
  EXPECT_EQ(site_.body("/b.asp"), "b");
  EXPECT_TRUE(site_.log.lines().empty());
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(answer.status, 500);
  EXPECT_NE(answer.body.find("Invalid class string"), std::string::npos) << answer.body;
  ASSERT_EQ(site_.log.lines().size(), 2u);
  EXPECT_EQ(site_.log.lines()[0], "N /a.asp: no class is served by the name 'No.Such'");
}

TEST_F(PageHostTest, AProcedureOfAnotherLanguageFailsAtItsCall) {
  site_.file("/a.asp",
             "<script language=JScript runat=server>function Total(a){}</script>"
             "<% Response.Write 1\nOn Error Resume Next\nx = Total(2)\n"
             "Response.Write Err.Description %>");
  EXPECT_EQ(site_.body("/a.asp"),
            "1'Total' stands in a script block of a language that is not served");
}

TEST_F(PageHostTest, ConstantsOfTheTypeLibraryAreThereWhereAskedFor) {
  site_.file("/a.asp", "<!--METADATA TYPE=\"typelib\" UUID=\"x\"--><%= adOpenStatic %>");
  EXPECT_EQ(site_.body("/a.asp"), "3");
}

TEST_F(PageHostTest, ATypeLibraryOfTheStartUpScriptIsEveryPages) {
  site_.file("/a.asp", "<%= adOpenStatic & adlockoptimistic & adNone %>");
  EXPECT_EQ(site_.body("/a.asp"), "");
  site_.stop();
  site_.file("/global.asa",
             "<!--METADATA TYPE=\"typelib\" NAME=\"x\" UUID=\"{0}\" VERSION=\"2.1\"-->\n"
             "<script language=VBScript runat=Server>\nSub Application_OnStart\n"
             "Application(\"c\") = adUseClient\nEnd Sub\n</script>");
  EXPECT_EQ(site_.body("/a.asp"), "33");
  site_.file("/b.asp", "<% Const adOpenStatic = 7 %><%= adOpenStatic & Application(\"c\") %>");
  EXPECT_EQ(site_.body("/b.asp"), "73");
}

TEST_F(PageHostTest, ManyThreadsRunPagesAtOnce) {
  constexpr int kThreads = 4;
  constexpr int kTimes = 50;
  site_.file("/a.asp",
             "<% Application.Lock\nApplication(\"n\") = Application(\"n\") + 1\n"
             "Application.UnLock\nApplication(\"t\") = Array(\"a\", \"b\")\n"
             "x = Application(\"t\")\nx(0) = x(0) & Request(\"q\")\nSession(\"s\") = x(0)\n"
             "Response.Write Session(\"s\") & Application(\"t\")(1) %>");
  EXPECT_EQ(site_.body("/a.asp?q=warm"), "awarmb");
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      const std::string own = std::to_string(i);
      for (int n = 0; n < kTimes; ++n) {
        if (site_.body("/a.asp?q=" + own) != "a" + own + "b") ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(site_.written("Response.Write Application(\"n\")"),
            std::to_string(1 + kThreads * kTimes));
}

}  // namespace
}  // namespace rk::pagehost
