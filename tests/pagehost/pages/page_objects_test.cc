// Request, Response, Server and Application as scripts use them.
#include <gtest/gtest.h>

#include <string>

#include "pagehost/pages/page_host.h"
#include "tests/support/page_site.h"

namespace rk::pagehost {
namespace {

using tests::header_of;

class PageObjects : public ::testing::Test {
 protected:
  std::string written(std::string_view script, std::string_view query = "") {
    site_.file("/a.asp", "<%" + std::string(script) + "%>");
    return site_.body("/a.asp?" + std::string(query));
  }
  std::string posted(std::string_view script, std::string body,
                     std::string type = "application/x-www-form-urlencoded") {
    site_.file("/a.asp", "<%" + std::string(script) + "%>");
    PageRequest request = tests::PageSite::request("/a.asp?id=q");
    request.method = "POST";
    request.headers.emplace_back("Content-Type", std::move(type));
    request.headers.emplace_back("Cookie", "id=c; only=o; user=name=Ann&age=7");
    request.body = std::move(body);
    return site_.host().run(request).body;
  }
  tests::PageSite site_;
};

TEST_F(PageObjects, QueryValuesAreReadInAnyLetterCase) {
  EXPECT_EQ(
      written("Response.Write Request.QueryString(\"ID\") & Request(\"name\")", "id=7&name=a+b"),
      "7a b");
}

TEST_F(PageObjects, AMissingValueIsEmpty) {
  EXPECT_EQ(written("Response.Write IsEmpty(Request(\"x\")) & (Request(\"x\") = \"\") & "
                    "(Request.QueryString(\"x\") = \"\") & Request.QueryString(\"x\").Count"),
            "TrueTrueTrue0");
}

TEST_F(PageObjects, ANameOfSeveralValuesJoinsAndCounts) {
  EXPECT_EQ(written("Set v = Request.QueryString(\"a\")\nResponse.Write v & \"/\" & v.Count & v(2)"
                    "\nFor Each x In v\nResponse.Write \"-\" & x\nNext",
                    "a=1&b=2&a=3"),
            "1, 3/23-1-3");
}

TEST_F(PageObjects, CollectionsAreWalkedByName) {
  EXPECT_EQ(written("For Each k In Request.QueryString\nResponse.Write k & \"=\" & "
                    "Request.QueryString(k) & \";\"\nNext\nResponse.Write "
                    "Request.QueryString.Count & Request.QueryString.Key(2) & "
                    "Request.QueryString & Request.QueryString.Item(1)",
                    "a=1&b=2"),
            "a=1;b=2;2ba=1&b=21");
}

TEST_F(PageObjects, TheDefaultLookupGoesFromQueryToFormToCookiesToVariables) {
  EXPECT_EQ(posted("Response.Write Request(\"id\") & Request(\"f\") & Request(\"only\") & "
                   "Request(\"REQUEST_METHOD\")",
                   "id=form&f=F"),
            "qFoPOST");
}

TEST_F(PageObjects, CookiesHaveKeys) {
  EXPECT_EQ(posted("Response.Write Request.Cookies(\"user\")(\"Name\") & "
                   "Request.Cookies(\"user\").HasKeys & Request.Cookies(\"id\").HasKeys & "
                   "\"[\" & Request.Cookies(\"none\") & \"]\"",
                   ""),
            "AnnTrueFalse[]");
}

TEST_F(PageObjects, TheBodyIsReadAsBytes) {
  EXPECT_EQ(posted("b = Request.BinaryRead(Request.TotalBytes)\n"
                   "Response.Write LenB(b) & Chr(AscB(MidB(b, 2, 1)))",
                   "xyz", "multipart/form-data; boundary=q"),
            "3y");
}

TEST_F(PageObjects, ServerVariablesNameTheRequest) {
  EXPECT_EQ(written("Response.Write Request.ServerVariables(\"SCRIPT_NAME\") & \" \" & "
                    "Request.ServerVariables(\"HTTP_HOST\") & \" \" & "
                    "Request.ServerVariables(\"SERVER_NAME\") & \" \" & "
                    "Request.ServerVariables(\"query_string\") & \"[\" & "
                    "Request.ServerVariables(\"HTTP_REFERER\") & \"]\"",
                    "a=1"),
            "/a.asp shop.example:8080 shop.example a=1[]");
}

TEST_F(PageObjects, CookiesAreSet) {
  site_.file("/a.asp",
             "<% Response.Cookies(\"a\") = \"1\"\nResponse.Cookies(\"u\")(\"n\") = \"x y\"\n"
             "Response.Cookies(\"u\").Path = \"/shop\"\nResponse.Cookies(\"u\").Expires = "
             "#2030-01-02# %>");
  EXPECT_EQ(header_of(site_.run("/a.asp"), "Set-Cookie"),
            "a=1; path=/|u=n=x+y; expires=Wed, 02 Jan 2030 00:00:00 GMT; path=/shop|");
}

TEST_F(PageObjects, ARedirectHasAnAddressAndEndsThePage) {
  site_.file("/a.asp", "<% Response.Redirect \"b.asp?x=1\"\nResponse.Write \"no\" %>");
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(answer.status, 302);
  EXPECT_EQ(header_of(answer, "Location"), "b.asp?x=1|");
  EXPECT_EQ(answer.body.find(">no"), std::string::npos);
}

TEST_F(PageObjects, WhatWasNotSentIsEmpty) {
  site_.file("/a.asp",
             "<% Response.Write IsEmpty(Request.QueryString(\"none\")) & \" \" & "
             "IsEmpty(Request.Form(\"none\")) & \" \" & IsEmpty(Request(\"none\")) & \" \" & "
             "IsEmpty(Request.QueryString(\"a\")) & \" \" & "
             "Request.QueryString(\"none\").Count %>");
  EXPECT_EQ(site_.run("/a.asp?a=").body, "True True True False 0");
}

TEST_F(PageObjects, StatusTypeAndHeadersAreThePages) {
  site_.file("/a.asp",
             "<% Response.Buffer = True\nResponse.Status = \"410 Gone\"\n"
             "Response.ContentType = \"text/xml\"\nResponse.Charset = \"utf-8\"\n"
             "Response.AddHeader \"X-A\", \"1\"\nResponse.Expires = -1\n"
             "Response.CacheControl = \"no-cache\"\nResponse.Write \"gone\"\nResponse.Clear\n"
             "Response.Write \"x\" %>");
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(answer.status, 410);
  EXPECT_EQ(answer.reason, "Gone");
  EXPECT_EQ(header_of(answer, "Content-Type"), "text/xml; charset=utf-8|");
  EXPECT_EQ(header_of(answer, "X-A"), "1|");
  EXPECT_EQ(header_of(answer, "Cache-Control"), "no-cache|");
  EXPECT_EQ(header_of(answer, "Expires"), "Wed, 15 Mar 2023 11:59:00 GMT|");
  EXPECT_EQ(answer.body, "x");
}

TEST_F(PageObjects, BytesAreWrittenAsTheyAre) {
  EXPECT_EQ(posted("Response.BinaryWrite Request.BinaryRead(2)", "\xFFz", "image/gif"), "\xFFz");
}

TEST_F(PageObjects, TextsAreEncoded) {
  EXPECT_EQ(
      written("Response.Write Server.HTMLEncode(\"<a>\") & Server.URLEncode(\"a b/\xE4\xBD\xA0\")"),
      "&lt;a&gt;a+b%2F%E4%BD%A0");
}

TEST_F(PageObjects, APageReadsAndAnswersInItsOwnCodePage) {
  site_.file("/a.asp", "<%@ CodePage=936 %><%= Request(\"q\") & Server.URLEncode(\"\xC4\xE3\") %>");
  const PageAnswer answer = site_.run("/a.asp?q=%BA%C3");
  EXPECT_EQ(answer.body, "\xBA\xC3%C4%E3");
}

TEST_F(PageObjects, AChangedCodePageRulesRequestAndResponseFromThereOn) {
  EXPECT_EQ(written("Response.CodePage = 936\nResponse.Write Request(\"q\")", "q=%C4%E3"),
            "\xC4\xE3");
}

TEST_F(PageObjects, TheApplicationIsWalkedAndKeepsArrays) {
  EXPECT_EQ(written("Application.Lock\nApplication(\"a\") = Array(1, \"two\")\n"
                    "Application(\"b\") = 2\nApplication.UnLock\nx = Application(\"A\")\n"
                    "Response.Write x(1) & Application(\"a\")(0)\n"
                    "For Each k In Application.Contents\nResponse.Write k\nNext\n"
                    "Application.Contents.Remove \"a\"\n"
                    "Response.Write Application.Contents.Count"),
            "two1ab1");
}

TEST_F(PageObjects, ObjectsOfAPageDoNotGoIntoTheApplication) {
  EXPECT_EQ(written("On Error Resume Next\nSet Application(\"r\") = Request\n"
                    "Response.Write (Err.Number <> 0) & IsEmpty(Application(\"r\"))"),
            "TrueTrue");
}

TEST_F(PageObjects, AMemberThatIsNotThereIsAnError) {
  EXPECT_EQ(written("On Error Resume Next\nResponse.Nope 1\nResponse.Write Err.Number"), "438");
  EXPECT_EQ(written("On Error Resume Next\nx = Server.MapPath()\nResponse.Write Err.Number"),
            "450");
}

TEST_F(PageObjects, TheEventsOfATransactionAreCalledWhereThePageAsksForOne) {
  const std::string page =
      "<% Sub OnTransactionCommit\nResponse.Write \"held\"\nEnd Sub\n"
      "Sub OnTransactionAbort\nResponse.Write \"undone\"\nEnd Sub\n"
      "If Request(\"no\") <> \"\" Then ObjectContext.SetAbort Else ObjectContext.SetComplete %>";
  site_.file("/a.asp", "<%@ Transaction=Required Language=VBScript %>" + page);
  site_.file("/b.asp", page);
  EXPECT_EQ(site_.body("/a.asp"), "held");
  EXPECT_EQ(site_.body("/a.asp?no=1"), "undone");
  EXPECT_EQ(site_.body("/b.asp?no=1"), "");
}

TEST_F(PageObjects, TheLastErrorIsOfThePageThatWasExecuted) {
  site_.file("/inner.asp", "\n<% x = 1 / 0 %>");
  EXPECT_EQ(written("Set e = Server.GetLastError\nResponse.Write e.Number & \"[\" & e.File & "
                    "e.ASPCode & \"]\"\nOn Error Resume Next\nServer.Execute \"inner.asp\"\n"
                    "Set e = Server.GetLastError()\nResponse.Write e.Number & e.Description & "
                    "e.File & e.Line & e.ASPDescription"),
            "0[]\n11Division by zero/inner.asp2");
}

TEST_F(PageObjects, TheDirectivesLocaleIsAnswered) {
  site_.file("/a.asp",
             "<%@ LCID = 1033 %><%= Response.LCID %><% Response.LCID = 1028 %><%= "
             "Response.LCID %>");
  EXPECT_EQ(site_.body("/a.asp"), "10331028");
}

TEST_F(PageObjects, PicsIsAMethodAndAProperty) {
  site_.file("/a.asp", "<% Response.PICS \"a\"\nResponse.PICS = \"b\"\nResponse.Pics(\"c\") %>");
  EXPECT_EQ(header_of(site_.run("/a.asp"), "PICS-Label"), "a|b|c|");
}

TEST_F(PageObjects, CookiesOfTheResponseAreWalked) {
  EXPECT_EQ(written("Response.Cookies(\"a\") = 1\nResponse.Cookies(\"b\")(\"k\") = 2\n"
                    "For Each c In Response.Cookies\nResponse.Write c & \";\"\nNext\n"
                    "Response.Write Response.Cookies.Count & Response.Cookies.Key(2) & "
                    "Response.Cookies(\"b\").HasKeys"),
            "a;b;2bTrue");
}

TEST_F(PageObjects, TheRequestsLineIsAmongTheServerVariables) {
  EXPECT_EQ(written("For Each n In Array(\"HTTP_METHOD\", \"HTTP_URL\", \"CACHE_URL\", "
                    "\"SCRIPT_TRANSLATED\", \"HEADER_HOST\", \"UNMAPPED_REMOTE_USER\")\n"
                    "Response.Write Request.ServerVariables(n) & \" \"\nNext",
                    "x=%20"),
            "GET /a.asp?x=%20 http://shop.example:8080/a.asp?x=%20 /site/a.asp "
            "shop.example:8080  ");
}

TEST_F(PageObjects, ScriptTimeoutIsReadAndSet) {
  EXPECT_EQ(written("Response.Write Server.ScriptTimeout\nServer.ScriptTimeout = 7\n"
                    "Response.Write Server.ScriptTimeout"),
            "1807");
}

}  // namespace
}  // namespace rk::pagehost
