#include "pagehost/pages/page_splitter.h"

#include <gtest/gtest.h>

#include <string>

namespace rk::pagehost {
namespace {

std::string_view kind_name(PagePart::Kind kind) {
  constexpr std::string_view kNames[] = {"text",    "script", "value",  "directive", "file",
                                         "virtual", "block",  "object", "library",   "unclosed"};
  return kNames[static_cast<std::size_t>(kind)];
}

// Each part as KIND@LINE:COLUMN[text], directives and tags with their attributes behind.
std::string dump(std::string_view page) {
  std::string out;
  for (const PagePart& part : split_page(page)) {
    out += std::string(kind_name(part.kind)) + "@" + std::to_string(part.line) + ":" +
           std::to_string(part.column) + "[" + std::string(part.text) + "]";
    for (const auto& [name, value] : part.attributes) out += " " + name + "=" + value;
    out += "\n";
  }
  return out;
}

TEST(PageSplitter, TextScriptAndValuesComeInOrder) {
  EXPECT_EQ(dump("<p><% x = 1 %> and <%= x %></p>"),
            "text@1:1[<p>]\nscript@1:6[ x = 1 ]\ntext@1:15[ and ]\nvalue@1:23[ x ]\n"
            "text@1:28[</p>]\n");
}

TEST(PageSplitter, WhiteSpaceBetweenScriptsIsText) {
  EXPECT_EQ(dump("<%a%>\r\n<%b%>"), "script@1:3[a]\ntext@1:6[\r\n]\nscript@2:3[b]\n");
}

TEST(PageSplitter, KeepsTheFirstEndOfAScriptEvenInsideATextOrComment) {
  EXPECT_EQ(dump("<% s = \"%>\" %>"), "script@1:3[ s = \"]\ntext@1:11[\" %>]\n");
  EXPECT_EQ(dump("<% ' done %>x"), "script@1:3[ ' done ]\ntext@1:13[x]\n");
}

TEST(PageSplitter, BlanksMayStandBeforeTheEqualsOfAValue) {
  EXPECT_EQ(dump("<% = x %>"), "value@1:5[ x ]\n");
}

TEST(PageSplitter, DirectivesMayHaveBlanksAndLines) {
  EXPECT_EQ(dump("<%@ Language = \"VBScript\"\n CodePage=936 EnableSessionState='False'%>"),
            "directive@1:4[ Language = \"VBScript\"\n CodePage=936 EnableSessionState='False'] "
            "language=VBScript codepage=936 enablesessionstate=False\n");
}

TEST(PageSplitter, IncludesTakeQuotesOrNone) {
  EXPECT_EQ(dump("<!--#include file=\"a b.asp\"-->"), "file@1:1[a b.asp]\n");
  EXPECT_EQ(dump("<!-- #INCLUDE VIRTUAL = '/x/y.inc' -->"), "virtual@1:1[/x/y.inc]\n");
  EXPECT_EQ(dump("<!--#include file=conn.asp -->"), "file@1:1[conn.asp]\n");
}

TEST(PageSplitter, AnIncludeOfAnotherWordNamesNoFile) {
  EXPECT_EQ(dump("<!--#include path=\"x\"-->"), "file@1:1[]\n");
}

TEST(PageSplitter, OtherCommentsAreText) {
  EXPECT_EQ(dump("<!-- x --><!--#config -->"), "text@1:1[<!-- x --><!--#config -->]\n");
  EXPECT_EQ(dump("<!--<%x%>-->"), "text@1:1[<!--]\nscript@1:7[x]\ntext@1:10[-->]\n");
}

TEST(PageSplitter, BlocksOfTheServerLeaveThePage) {
  EXPECT_EQ(dump("a<script language=\"VBScript\" runat=\"Server\">Sub f\nEnd Sub</script>b"),
            "text@1:1[a]\nblock@1:45[Sub f\nEnd Sub] language=VBScript runat=Server\n"
            "text@2:17[b]\n");
}

TEST(PageSplitter, BlocksOfTheBrowserAreText) {
  const std::string page = "<script>if (a < b) x();</script>";
  EXPECT_EQ(dump(page), "text@1:1[" + page + "]\n");
}

TEST(PageSplitter, ScriptInsideABrowserBlockStillRuns) {
  EXPECT_EQ(dump("<script>var a=<%=x%>;</script>"),
            "text@1:1[<script>var a=]\nvalue@1:18[x]\ntext@1:21[;</script>]\n");
}

TEST(PageSplitter, ObjectsOfTheServerAreDeclared) {
  EXPECT_EQ(dump("<object runat=server id=d progid=\"Scripting.Dictionary\"></object>!"),
            "object@1:1[<object runat=server id=d progid=\"Scripting.Dictionary\"] runat=server "
            "id=d progid=Scripting.Dictionary\ntext@1:66[!]\n");
}

TEST(PageSplitter, AnOpeningWithoutItsEndIsSaid) {
  EXPECT_EQ(dump("a\n<% x"), "text@1:1[a\n]\nunclosed@2:1[<%]\n");
  EXPECT_EQ(dump("<!--#include file=\"x\""), "unclosed@1:1[<!--#include]\n");
  EXPECT_EQ(dump("<script runat=server>x"), "unclosed@1:1[<script runat=\"Server\">]\n");
}

TEST(PageSplitter, ColumnsCountCharacters) {
  EXPECT_EQ(dump("\xE4\xBD\xA0<%x%>"), "text@1:1[\xE4\xBD\xA0]\nscript@1:4[x]\n");
}

TEST(PageSplitter, TypeLibrariesAreSeen) {
  EXPECT_EQ(dump("<!--METADATA TYPE=\"typelib\" UUID=\"1\"-->"),
            "library@1:13[ TYPE=\"typelib\" UUID=\"1\"] type=typelib uuid=1\n");
}

TEST(PageSplitter, ACodePageIsReadBeforeTheTextIs) {
  EXPECT_EQ(code_page_directive("\xC4\xE3<%@ codepage=\"936\" language=vbscript %>"), 936);
  EXPECT_EQ(code_page_directive("<% codepage=936 %>"), 0);
}

}  // namespace
}  // namespace rk::pagehost
