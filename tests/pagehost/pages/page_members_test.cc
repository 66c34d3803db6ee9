// Members of the intrinsic objects that pages use less often, and what lives in sessions and in the
// application by declaration.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "pagehost/pages/page_host.h"
#include "pagehost/pages/tabled_object.h"
#include "tests/support/page_site.h"

namespace rk::pagehost {
namespace {

using tests::header_of;

// Counts its calls, so that who kept it can be told from who made it anew.
class Counter final : public TabledObject<Counter> {
 public:
  std::string_view type_name() const override { return "Counter"; }
  static std::span<const Member<Counter>> members() {
    static constexpr Member<Counter> kMembers[] = {{"Next", &Counter::next}};
    return kMembers;
  }

 private:
  Value next(const Call&) { return Value::long_integer(++count_); }
  std::int32_t count_ = 0;
};

class PageMembers : public ::testing::Test {
 protected:
  PageMembers() {
    site_.programs.add("Toy.Counter", [](PageServices&) { return make_ref<Counter>(); });
  }
  std::string written(std::string_view script, std::string_view query = "") {
    site_.file("/a.asp", "<%" + std::string(script) + "%>");
    return site_.body("/a.asp?" + std::string(query));
  }
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

// ---- Request

TEST_F(PageMembers, EveryServerVariableThatIsListedAnswers) {
  site_.file("/a.asp",
             "<% For Each n In Request.ServerVariables\n"
             "If Request.ServerVariables(n).Count <> 1 Then Response.Write n & \";\"\nNext %>ok");
  EXPECT_EQ(site_.body("/a.asp"), "ok");
}

TEST_F(PageMembers, ServerVariablesTellOfBothEndsAndOfTheSite) {
  site_.file(
      "/shop/a.asp",
      "<% For Each n In Array(\"LOCAL_ADDR\", \"REMOTE_ADDR\", \"REMOTE_PORT\", "
      "\"SERVER_PORT\", \"SERVER_PORT_SECURE\", \"HTTPS\", \"SERVER_PROTOCOL\", "
      "\"APPL_PHYSICAL_PATH\", \"PATH_TRANSLATED\", \"GATEWAY_INTERFACE\", \"CONTENT_TYPE\", "
      "\"CONTENT_LENGTH\", \"APPL_MD_PATH\", \"AUTH_USER\")\n"
      "Response.Write Request.ServerVariables(n) & \"|\"\nNext %>");
  PageRequest request = tests::PageSite::request("/shop/a.asp");
  request.local_address = "10.0.0.1";
  request.local_port = 8443;
  request.remote_address = "10.0.0.2";
  request.remote_port = 4711;
  request.secure = true;
  request.body = "abc";
  request.headers.emplace_back("Content-Type", "text/x");
  EXPECT_EQ(site_.host().run(request).body,
            "10.0.0.1|10.0.0.2|4711|8443|1|on|HTTP/1.1|/site/|/site/shop/a.asp|CGI/1.1|text/x|3|"
            "/LM/W3SVC/1/ROOT||");
}

TEST_F(PageMembers, AllHeadersComeAsOneTextInTwoForms) {
  site_.file("/a.asp",
             "<%= Request.ServerVariables(\"ALL_HTTP\") & \"/\" & "
             "Request.ServerVariables(\"ALL_RAW\") %>");
  PageRequest request = tests::PageSite::request("/a.asp");
  request.headers.emplace_back("X-One", "1");
  EXPECT_EQ(site_.host().run(request).body,
            "HTTP_HOST:shop.example:8080\nHTTP_X_ONE:1\n/Host: shop.example:8080\r\nX-One: 1\r\n");
}

TEST_F(PageMembers, ThereIsNeverAClientCertificate) {
  EXPECT_EQ(written("Response.Write Request.ClientCertificate.Count & "
                    "\"[\" & Request.ClientCertificate(\"Subject\") & \"]\" & "
                    "IsEmpty(Request.ClientCertificate(\"Flags\"))\n"
                    "For Each n In Request.ClientCertificate\nResponse.Write n\nNext"),
            "0[]True");
}

TEST_F(PageMembers, CollectionsAreReadByPlaceAndTellTheirNames) {
  EXPECT_EQ(written("Set q = Request.QueryString\n"
                    "Response.Write q.Count & q.Key(2) & q.Item(2) & q(1) & q.Item(\"B\")(2) & "
                    "q(\"b\").Item(1) & \" \" & q",
                    "a=1&b=2&b=3"),
            "2b2, 3132 a=1&b=2&b=3");
  EXPECT_EQ(written("On Error Resume Next\nx = Request.QueryString(3)\nResponse.Write Err.Number "
                    "& \" \"\nErr.Clear\nx = Request.QueryString(\"a\")(2)\n"
                    "Response.Write Err.Number",
                    "a=1"),
            "9 9");
}

TEST_F(PageMembers, BinaryReadTellsHowMuchItReadAndGoesOn) {
  site_.file("/a.asp",
             "<% n = 2\nb = Request.BinaryRead(n)\nResponse.Write n & AscB(b) & \" \"\nn = 9\n"
             "b = Request.BinaryRead(n)\nResponse.Write n & AscB(b) & \" \"\n"
             "b = Request.BinaryRead(n)\nResponse.Write n & TypeName(b) & Request.TotalBytes %>");
  PageRequest request = tests::PageSite::request("/a.asp");
  request.method = "POST";
  request.body = "ABC";
  EXPECT_EQ(site_.host().run(request).body, "265 167 0Empty3");
}

// ---- Response

TEST_F(PageMembers, ExpiresAbsoluteIsATimeAndExpiresMinutes) {
  site_.file("/a.asp",
             "<% Response.ExpiresAbsolute = #2030-01-02 03:04:05#\n"
             "Response.Write Response.ExpiresAbsolute %>");
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(header_of(answer, "Expires"), "Wed, 02 Jan 2030 03:04:05 GMT|");
  EXPECT_EQ(answer.body, "2030-01-02 03:04:05");
  site_.file("/b.asp", "<% Response.Expires = 10\nResponse.Write Response.Expires %>");
  EXPECT_EQ(site_.body("/b.asp"), "10");
}

TEST_F(PageMembers, WhatThePageAppendsGoesToTheAccessLog) {
  site_.file("/a.asp", "<% Response.AppendToLog \"one \"\nResponse.AppendToLog \"two\" %>");
  EXPECT_EQ(site_.run("/a.asp").log_note, "one two");
}

TEST_F(PageMembers, WithoutAVisitorOnTheLineThePageGoesOn) {
  EXPECT_EQ(written("Response.Write Response.IsClientConnected"), "True");
}

// One answer in the end, which is the one that a visitor would have seen.
TEST_F(PageMembers, WithoutAVisitorAFlushCountsAllTheSame) {
  site_.file("/a.asp",
             "<% On Error Resume Next\nResponse.Write Response.Buffer\n"
             "Response.Cookies(\"a\") = 1\nResponse.Flush\nResponse.Write \"dropped\"\n"
             "Response.Clear\nResponse.Cookies(\"b\") = 1\nResponse.Write Err.Number\n"
             "Response.Redirect \"/b\"\nResponse.Status = \"404 x\"\nResponse.Flush\n"
             "On Error Goto 0\nx = 1 / 0 %>");
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(answer.status, 500) << "so that who runs it sees that it failed";
  EXPECT_FALSE(answer.streamed);
  EXPECT_TRUE(answer.body.starts_with("True-2147467259<html>")) << answer.body;
  EXPECT_NE(answer.body.find("Division by zero"), std::string::npos);
  EXPECT_EQ(header_of(answer, "Set-Cookie"), "a=1; path=/|");
}

TEST_F(PageMembers, ARedirectKeepsCookiesAndHeaders) {
  site_.file("/a.asp",
             "<% Response.Cookies(\"a\") = 1\nResponse.AddHeader \"X-A\", \"b\"\n"
             "Response.Redirect \"/b.asp\" %>");
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(answer.status, 302);
  EXPECT_EQ(header_of(answer, "Set-Cookie"), "a=1; path=/|");
  EXPECT_EQ(header_of(answer, "X-A"), "b|");
}

TEST_F(PageMembers, LocaleAndCodePageAreAnsweredAsTheyWereSet) {
  EXPECT_EQ(written("Response.LCID = 1033\nResponse.CodePage = 936\n"
                    "Response.Write Response.LCID & \" \" & Response.CodePage & \" \" & Now"),
            "1033 936 2023-03-15 12:00:00");
  EXPECT_EQ(written("Session.LCID = 1033\nResponse.Write Session.LCID"), "1033");
}

TEST_F(PageMembers, ASessionsCodePageRulesItsLaterPages) {
  const std::string cookie =
      (site_.file("/set.asp", "<% Session.CodePage = 936 %>"), cookie_of(site_.run("/set.asp")));
  site_.file("/get.asp", "<%= Session.CodePage & Request(\"q\") %>");
  const PageAnswer answer = run_as(cookie, "/get.asp?q=%C4%E3");
  EXPECT_EQ(answer.body, "936\xC4\xE3");
  EXPECT_EQ(header_of(answer, "Content-Type"), "text/html; charset=gb2312|");
  EXPECT_EQ(run_as("", "/get.asp?q=%E4%BD%A0").body, "65001\xE4\xBD\xA0");
}

// ---- Server

TEST_F(PageMembers, AnExecutedPageOfAnotherFolderHasThatFolderForItsOwn) {
  site_.file("/a.asp", "<% x = 1\nServer.Execute \"sub/b.asp\"\nResponse.Write x %>")
      .file("/sub/b.asp", "<!--#include file=\"c.inc\"--><% Server.Execute \"d.asp\" %>")
      .file("/sub/c.inc", "<% x = 2\nResponse.Write \"c\" & Request(\"q\") %>")
      .file("/sub/d.asp", "<!--#include virtual=\"/top.inc\"-->d")
      .file("/top.inc", "<% Response.Write Request.ServerVariables(\"SCRIPT_NAME\") %>");
  EXPECT_EQ(site_.body("/a.asp?q=7"), "c7/a.aspd1");
}

TEST_F(PageMembers, ATransferToAnotherFolderKeepsTheRequestAndWhatWasWritten) {
  site_.file("/a.asp", "1<% Response.Cookies(\"c\") = 1\nServer.Transfer \"/Sub/B.asp\" %>2")
      .file("/sub/b.asp",
            "<!--#include file=\"c.inc\"--><%= Request.QueryString(\"q\") & Request.Form(\"f\") %>")
      .file("/sub/c.inc", "c");
  PageRequest request = tests::PageSite::request("/a.asp?q=7");
  request.method = "POST";
  request.headers.emplace_back("Content-Type", "application/x-www-form-urlencoded");
  request.body = "f=8";
  const PageAnswer answer = site_.host().run(request);
  EXPECT_EQ(answer.body, "1c78");
  EXPECT_EQ(header_of(answer, "Set-Cookie"), "c=1; path=/|");
}

TEST_F(PageMembers, AnEndInAnExecutedPageEndsTheWholePage) {
  site_.file("/b.asp", "b<% Response.End %>c");
  EXPECT_EQ(written("Server.Execute \"b.asp\"\nResponse.Write \"behind\""), "b");
}

TEST_F(PageMembers, AnErrorInAnExecutedPageMayBeTrappedAndIsTold) {
  site_.file("/b.asp", "<%\n\nx = CLng(\"x\") %>");
  EXPECT_EQ(written("On Error Resume Next\nServer.Execute \"b.asp\"\nSet e = Server.GetLastError\n"
                    "Response.Write Err.Number & e.Number & e.File & e.Line & "
                    "(e.Description <> \"\") & (e.Category <> \"\") & \"[\" & e.ASPCode & \"]\""),
            "13-2146828275/b.asp3TrueTrue[]");
  EXPECT_EQ(written("Set e = Server.GetLastError\nResponse.Write e.Number & e.File & e.Line"),
            "00");
}

TEST_F(PageMembers, APageThatIsNotThereCannotBeExecuted) {
  EXPECT_EQ(written("On Error Resume Next\nServer.Execute \"none.asp\"\nResponse.Write Err.Number"),
            "-2147467259");
  EXPECT_EQ(written("On Error Resume Next\nServer.Transfer \"../none.asp\"\n"
                    "Response.Write Err.Number"),
            "-2147467259");
}

// ---- Session

TEST_F(PageMembers, ASessionKeepsArraysAndObjects) {
  site_.file("/put.asp",
             "<% Dim a(1)\na(0) = \"x\"\nSession(\"a\") = a\na(0) = \"changed\"\n"
             "Set Session(\"c\") = Server.CreateObject(\"Toy.Counter\")\nSession(\"c\").Next %>");
  site_.file("/get.asp",
             "<% a = Session(\"a\")\nResponse.Write a(0) & Session(\"a\")(0) & UBound(a) & "
             "Session(\"c\").Next & IsObject(Session(\"c\")) %>");
  const std::string cookie = cookie_of(site_.run("/put.asp"));
  EXPECT_EQ(run_as(cookie, "/get.asp").body, "xx12True");
  EXPECT_EQ(run_as(cookie, "/get.asp").body, "xx13True");
}

TEST_F(PageMembers, ASessionsTimeIsItsOwn) {
  site_.file("/set.asp", "<% Session.Timeout = 60\nSession(\"n\") = 1 %>");
  site_.file("/get.asp", "<%= Session.Timeout & Session(\"n\") %>");
  const std::string cookie = cookie_of(site_.run("/set.asp"));
  site_.clock.advance(std::chrono::minutes(59));
  EXPECT_EQ(run_as(cookie, "/get.asp").body, "601");
  site_.clock.advance(std::chrono::minutes(60));
  EXPECT_EQ(run_as(cookie, "/get.asp").body, "20");
  EXPECT_EQ(written("On Error Resume Next\nSession.Timeout = 0\nResponse.Write Err.Number\n"
                    "Err.Clear\nSession.Timeout = 1441\nResponse.Write Err.Number & "
                    "Session.Timeout"),
            "5520");
}

TEST_F(PageMembers, ASessionsNumberIsATextOfDigitsThatStays) {
  site_.file("/id.asp", "<%= TypeName(Session.SessionID) & Session.SessionID %>");
  const PageAnswer first = site_.run("/id.asp");
  EXPECT_TRUE(first.body.starts_with("String")) << first.body;
  EXPECT_EQ(first.body.find_first_not_of("0123456789", 6), std::string::npos) << first.body;
  EXPECT_EQ(run_as(cookie_of(first), "/id.asp").body, first.body);
  EXPECT_NE(site_.run("/id.asp").body, first.body);
}

TEST_F(PageMembers, ContentsAreReadByNameAndPlace) {
  EXPECT_EQ(written("Session(\"a\") = 1\nSession.Contents(\"b\") = 2\n"
                    "Response.Write Session.Contents(\"A\") & Session.Contents(2) & "
                    "Session.Contents.Key(1) & Session.Contents.Item(\"b\")\n"
                    "Session.Contents.Remove 1\nResponse.Write Session.Contents.Count & "
                    "IsEmpty(Session(\"a\"))"),
            "12a21True");
  EXPECT_EQ(written("Application(\"a\") = 1\nApplication.Contents(\"b\") = 2\n"
                    "Response.Write Application.Contents(1) & Application.Contents.Key(2)\n"
                    "Application.Contents.Remove \"A\"\nResponse.Write Application.Contents.Count\n"
                    "Application.Contents.RemoveAll\nResponse.Write Application.Contents.Count"),
            "1b10");
}

TEST_F(PageMembers, AnAbandonedSessionIsThereToThePagesEndAndThenEndsWithItsEvent) {
  site_.file("/global.asa",
             "<script language=VBScript runat=Server>\nSub Session_OnEnd\n"
             "Application(\"end\") = Session(\"n\") & \"!\"\nEnd Sub\n</script>");
  site_.file("/bye.asp",
             "<% Session(\"n\") = 1\nSession.Abandon\nSession(\"n\") = Session(\"n\") + 1\n"
             "Response.Write Session(\"n\") & Application(\"end\") %>");
  EXPECT_EQ(site_.body("/bye.asp"), "2");
  EXPECT_EQ(site_.host().application_value("end").as_view(), "2!");
}

TEST_F(PageMembers, TheSessionsCookieIsSecureWhereTheRequestWas) {
  site_.file("/a.asp", "<% Session(\"n\") = 1 %>");
  PageRequest request = tests::PageSite::request("/a.asp");
  EXPECT_EQ(header_of(site_.host().run(request), "Set-Cookie").find("; Secure"), std::string::npos);
  request.secure = true;
  EXPECT_NE(header_of(site_.host().run(request), "Set-Cookie").find("; Secure"), std::string::npos);
}

TEST_F(PageMembers, ARedirectAtTheSessionsStartKeepsThePageFromRunning) {
  site_.file("/global.asa",
             "<script language=VBScript runat=Server>\nSub Session_OnStart\n"
             "If Request.ServerVariables(\"SCRIPT_NAME\") <> \"/in.asp\" Then "
             "Response.Redirect \"/in.asp\"\nEnd Sub\n</script>");
  site_.file("/a.asp", "<% Application(\"ran\") = 1 %>x").file("/in.asp", "in");
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(answer.status, 302);
  EXPECT_TRUE(site_.host().application_value("ran").is_empty());
  EXPECT_EQ(run_as(cookie_of(answer), "/a.asp").body, "x") << "it began only once";
}

// ---- what global.asa declares

TEST_F(PageMembers, DeclaredObjectsLiveAsLongAsTheirScope) {
  site_.file("/global.asa",
             "<object runat=Server scope=Session id=mine progid=\"Toy.Counter\"></object>\r\n"
             "<OBJECT RUNAT=\"server\" SCOPE=\"Application\" ID=\"Ours\" PROGID='Toy.Counter'>"
             "</OBJECT>\n<object runat=server id=pages scope=page progid=Toy.Counter></object>");
  site_.file("/a.asp", "<%= mine.Next & ours.Next & Mine.Next %>");
  const PageAnswer first = site_.run("/a.asp");
  EXPECT_EQ(first.body, "112");
  EXPECT_EQ(run_as(cookie_of(first), "/a.asp").body, "324");
  EXPECT_EQ(run_as("", "/a.asp").body, "132");
}

TEST_F(PageMembers, StaticObjectsAreThoseThatWereDeclared) {
  site_.file("/global.asa",
             "<object runat=Server scope=Session id=mine progid=\"Toy.Counter\"></object>"
             "<object runat=Server scope=Application id=ours progid=\"Toy.Counter\"></object>"
             "<object runat=Server scope=Application id=more progid=\"Toy.Counter\"></object>");
  EXPECT_EQ(written("For Each n In Session.StaticObjects\nResponse.Write n & \" \"\nNext\n"
                    "For Each n In Application.StaticObjects\nResponse.Write n & \" \"\nNext\n"
                    "Response.Write Application.StaticObjects.Count & "
                    "Application.StaticObjects(\"OURS\").Next & "
                    "Session.StaticObjects.Item(\"mine\").Next & Session.StaticObjects.Key(1)"),
            "mine ours more 211mine");
}

TEST_F(PageMembers, TheStartUpScriptMapsPathsAndReadsNoRequest) {
  site_.file("/global.asa",
             "<script language=VBScript runat=Server>\nSub Application_OnStart\n"
             "Application(\"Rk_ConnStr\") = \"Data Source=\" & Server.MapPath(\"data/x.mdb\")\n"
             "Application(\"q\") = \"[\" & Request(\"q\") & \"]\"\nEnd Sub\n</script>");
  EXPECT_EQ(written("Response.Write Application(\"Rk_ConnStr\") & Application(\"q\")", "q=1"),
            "Data Source=/site/data/x.mdb[]");
}

}  // namespace
}  // namespace rk::pagehost
