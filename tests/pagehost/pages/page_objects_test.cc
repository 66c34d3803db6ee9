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

TEST_F(PageObjects, APageThatDiesAbortsItsTransaction) {
  const auto page = [&](std::string_view transaction, std::string_view death) {
    site_.file("/a.asp", "<%@ Transaction=" + std::string(transaction) +
                             " %><% Sub OnTransactionCommit\nApplication(\"end\") = \"held\"\n"
                             "End Sub\nSub OnTransactionAbort\nApplication(\"end\") = \"undone\"\n"
                             "End Sub\nApplication(\"end\") = \"none\"\n" +
                             std::string(death) + " %>");
    const auto answer = site_.run("/a.asp");
    return std::to_string(answer.status) + written("Response.Write Application(\"end\")");
  };
  EXPECT_EQ(page("Required", "x = 1 / 0"), "500undone");
  EXPECT_EQ(page("Requires_New", "y.z"), "500undone");
  EXPECT_EQ(page("Required", "On Error Resume Next\nx = 1 / 0"), "200held");
  EXPECT_EQ(page("Supported", "x = 1 / 0"), "500none");
  EXPECT_EQ(page("Bogus", "x = 1 / 0"), "500none") << "the page does not run";
}

TEST_F(PageObjects, TheAbortOfAPageThatDiedChangesNothingInItsAnswer) {
  site_.file("/a.asp",
             "<%@ Transaction=Required %><% Sub OnTransactionAbort\nCLng \"x\"\nEnd Sub\n"
             "x = 1 / 0 %>");
  EXPECT_NE(site_.run("/a.asp").body.find("800a000b"), std::string::npos);
}

TEST_F(PageObjects, TheLastErrorIsOfThePageThatWasExecuted) {
  site_.file("/inner.asp", "\n<% x = 1 / 0 %>");
  EXPECT_EQ(written("Set e = Server.GetLastError\nResponse.Write e.Number & \"[\" & e.File & "
                    "e.ASPCode & \"]\"\nOn Error Resume Next\nServer.Execute \"inner.asp\"\n"
                    "Set e = Server.GetLastError()\nResponse.Write e.Number & e.Description & "
                    "e.File & e.Line & e.ASPDescription"),
            "0[]\n-2146828277Division by zero/inner.asp2");
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

TEST_F(PageObjects, ACookieThatThePageSetsIsReadBackAtOnce) {
  EXPECT_EQ(posted("Response.Cookies(\"id\") = \"new\"\nResponse.Cookies(\"fresh\") = \"f x\"\n"
                   "Response.Write Request.Cookies(\"ID\") & Request.Cookies(\"fresh\") & "
                   "Response.Cookies(\"id\") & Request(\"fresh\") & Request.Cookies.Count\n"
                   "Response.Cookies(\"id\") = \"again\"\nResponse.Write Request.Cookies(\"id\")",
                   ""),
            "newf xnewf x4again");
}

TEST_F(PageObjects, AKeyThatThePageSetsIsReadBackBesideThoseThatCame) {
  site_.file("/a.asp",
             "<% Response.Cookies(\"user\")(\"Age\") = 8\nResponse.Cookies(\"user\")(\"x\") = 1\n"
             "Response.Write Request.Cookies(\"user\")(\"age\") & Request.Cookies(\"user\")(\"x\") "
             "& Request.Cookies(\"user\")(\"name\") & Response.Cookies(\"user\")(\"name\") %>");
  PageRequest request = tests::PageSite::request("/a.asp");
  request.headers.emplace_back("Cookie", "user=name=Ann&age=7");
  const PageAnswer answer = site_.host().run(request);
  EXPECT_EQ(answer.body, "81AnnAnn");
  EXPECT_EQ(header_of(answer, "Set-Cookie"), "user=name=Ann&age=8&x=1; path=/|");
}

TEST_F(PageObjects, ReadingACookieOfTheResponseSetsNone) {
  site_.file("/a.asp",
             "<% Response.Write Response.Cookies(\"a\") & Response.Cookies(\"a\").HasKeys %>");
  const PageAnswer answer = site_.run("/a.asp");
  EXPECT_EQ(answer.body, "False");
  EXPECT_EQ(header_of(answer, "Set-Cookie"), "");
}

TEST_F(PageObjects, AllCookiesAreEndedByWalkingThoseOfTheResponse) {
  site_.file("/a.asp",
             "<% For Each c In Response.Cookies\n"
             "Response.Cookies(c).Expires = #2000-01-02#\nNext %>");
  PageRequest request = tests::PageSite::request("/a.asp");
  request.headers.emplace_back("Cookie", "a=1; b=k=2");
  EXPECT_EQ(header_of(site_.host().run(request), "Set-Cookie"),
            "a=1; expires=Sun, 02 Jan 2000 00:00:00 GMT; path=/|"
            "b=k=2; expires=Sun, 02 Jan 2000 00:00:00 GMT; path=/|");
}

TEST_F(PageObjects, ACookieWithKeysReadsAsAQueryString) {
  site_.file("/a.asp", "<%@ CodePage=936 %><%= Request.Cookies(\"k\") & Request(\"k\")(\"b\") %>");
  PageRequest request = tests::PageSite::request("/a.asp");
  request.headers.emplace_back("Cookie", "k=a=x&b=%C4%E3");
  EXPECT_EQ(site_.host().run(request).body, "a=x&b=%C4%E3\xC4\xE3");
  EXPECT_EQ(
      written("Response.Cookies(\"k\")(\"a\") = \"x y\"\n"
              "Response.Cookies(\"k\")(\"b\") = \"&\"\nResponse.Write Request.Cookies(\"k\")"),
      "a=x+y&b=%26");
}

TEST_F(PageObjects, ABodyIsReadAsAFormOrAsBytes) {
  const std::string trap = "On Error Resume Next\n";
  const std::string told =
      "Response.Write Err.Number & \" \" & (Err.Description <> \"\") & \";\"\n"
      "Err.Clear\n";
  EXPECT_EQ(posted(trap + "x = Request.Form(\"a\")\nb = Request.BinaryRead(3)\n" + told +
                       "Response.Write IsEmpty(b) & x & Request.TotalBytes & Request.Form(\"a\")",
                   "a=1"),
            "-2147467259 True;True131");
  EXPECT_EQ(posted(trap + "b = Request.BinaryRead(1)\nx = Request.Form(\"a\")\n" + told +
                       "n = Request.Form.Count\n" + told + "x = Request.Form\n" + told +
                       "x = Request(\"a\")\n" + told +
                       "Response.Write Request(\"id\") & Request.TotalBytes & "
                       "LenB(Request.BinaryRead(9))",
                   "a=1"),
            "-2147467259 True;-2147467259 True;-2147467259 True;-2147467259 True;q32");
}

TEST_F(PageObjects, TheDefaultLookupReadsTheFormOnlyWhereTheQueryStringHasNoSuchName) {
  EXPECT_EQ(posted("x = Request(\"id\")\nResponse.Write x & LenB(Request.BinaryRead(9))", "a=1"),
            "q3");
  EXPECT_EQ(posted("On Error Resume Next\nx = Request(\"none\")\nb = Request.BinaryRead(9)\n"
                   "Response.Write Err.Number",
                   "a=1"),
            "-2147467259");
}

TEST_F(PageObjects, ARequestWithoutABodyMayBeReadBothWays) {
  EXPECT_EQ(written("x = Request.Form(\"a\") & Request(\"a\")\n"
                    "Response.Write IsEmpty(Request.BinaryRead(Request.TotalBytes)) & "
                    "Request.Form.Count"),
            "True0");
}

TEST_F(PageObjects, AServerVariableIsAListOfOneValue) {
  EXPECT_EQ(written("Set v = Request.ServerVariables(\"REQUEST_METHOD\")\n"
                    "Response.Write v & v.Count & v.Item & v(1) & TypeName(v) & VarType(v)\n"
                    "Response.Write Request.ServerVariables(\"HTTP_NONE\").Count & "
                    "IsEmpty(Request.ServerVariables(\"HTTP_NONE\")) & "
                    "(Request.ServerVariables(\"HTTP_NONE\") = \"\")"),
            "GET1GETGETIStringList80TrueTrue");
}

TEST_F(PageObjects, ServerVariablesAreWalkedByName) {
  site_.file("/a.asp",
             "<% For Each n In Request.ServerVariables\nIf n = \"HTTP_X_FOO\" Or n = \"URL\" Then "
             "Response.Write n & \"=\" & Request.ServerVariables(n) & \";\"\nNext\n"
             "Response.Write Request.ServerVariables(\"HEADER_X-Foo\") %>");
  PageRequest request = tests::PageSite::request("/a.asp");
  request.headers.emplace_back("X-Foo", "bar");
  EXPECT_EQ(site_.host().run(request).body, "URL=/a.asp;HTTP_X_FOO=bar;bar");
}

TEST_F(PageObjects, TheTypeOfAValueOfTheRequestIsThatOfItsText) {
  EXPECT_EQ(
      written("Response.Write VarType(Request.QueryString(\"a\")) & VarType(Request(\"a\")) & "
              "VarType(Request.QueryString(\"none\")) & VarType(Request.Cookies(\"none\"))",
              "a=1"),
      "8808");
}

TEST_F(PageObjects, NullIsNoTextToEncode) {
  for (const char* operation : {"HTMLEncode", "URLEncode", "URLPathEncode"}) {
    EXPECT_EQ(written(std::string("On Error Resume Next\nx = Server.") + operation +
                      "(Null)\nResponse.Write Err.Number & Server." + operation +
                      "(Empty) & Server." + operation + "(12)"),
              "1312")
        << operation;
  }
}

TEST_F(PageObjects, MapPathTakesPathsOfTheSiteOnly) {
  EXPECT_EQ(written("On Error Resume Next\nFor Each p In Array(\"a*b\", \"a?b\", \"c:\\x\", "
                    "\"D:/x\", \"a<b\")\nErr.Clear\nx = Server.MapPath(p)\n"
                    "Response.Write (Err.Number = -2147467259) & \" \"\nNext\n"
                    "Response.Write Server.MapPath(\"a b.txt\")"),
            "True True True True True /site/a b.txt");
}

TEST_F(PageObjects, ExecuteAndTransferTakeNoQueryString) {
  site_.file("/b.asp", "b");
  EXPECT_EQ(written("On Error Resume Next\nServer.Execute \"b.asp?a=1\"\n"
                    "Response.Write Err.Number & \" \"\nErr.Clear\n"
                    "Server.Transfer \"b.asp?a=1\"\nResponse.Write Err.Number & \" \"\n"
                    "Server.Execute \"b.asp\""),
            "-2147467259 -2147467259 b");
}

TEST_F(PageObjects, AnAddressIsEncodedInTheCodePage) {
  site_.file("/a.asp", "<%@ CodePage=936 %><%= Server.URLPathEncode(\"/a b/\xC4\xE3?x=1\") %>");
  EXPECT_EQ(site_.body("/a.asp"), "/a%20b/%C4%E3?x=1");
  EXPECT_EQ(written("Response.Write Server.URLPathEncode(\"\xE4\xBD\xA0\")"), "%E4%BD%A0");
}

TEST_F(PageObjects, WhatStandsBehindThePagesNameIsItsPathInformation) {
  site_.file("/a.asp",
             "<% For Each n In Array(\"SCRIPT_NAME\", \"URL\", \"PATH_INFO\", "
             "\"PATH_TRANSLATED\", \"SCRIPT_TRANSLATED\", \"HTTP_URL\")\n"
             "Response.Write Request.ServerVariables(n) & \" \"\nNext %>"
             "<%= Server.MapPath(\"x\") %>");
  PageRequest request = tests::PageSite::request("/a.asp?q=1");
  EXPECT_EQ(site_.host().run(request).body,
            "/a.asp /a.asp /a.asp /site/a.asp /site/a.asp /a.asp?q=1 /site/x");
  request.path_info = "/a.asp/7.html";
  EXPECT_EQ(site_.host().run(request).body,
            "/a.asp /a.asp /a.asp/7.html /site/a.asp/7.html /site/a.asp /a.asp/7.html?q=1 /site/x");
}

}  // namespace
}  // namespace rk::pagehost
