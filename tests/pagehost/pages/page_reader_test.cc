#include "pagehost/pages/page_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/memory_files.h"
#include "tests/support/toy_code_pages.h"

namespace rk::pagehost {
namespace {

class Reader : public ::testing::Test {
 protected:
  PageSource read(std::string_view path, int code_page = platform::kUtf8) {
    return PageReader(files_, pages_, "/site").page(path, code_page);
  }
  // The pieces as they would run, script between marks.
  static std::string joined(const PageSource& source) {
    std::string out;
    for (const auto& piece : source.source.pieces) {
      using Kind = vbscript::SourcePiece::Kind;
      if (piece.kind == Kind::Literal) out += piece.text;
      if (piece.kind == Kind::Script) out += "{" + piece.text + "}";
      if (piece.kind == Kind::Expression) out += "{=" + piece.text + "}";
    }
    return out;
  }
  static std::string report(const PageSource& source) {
    return source.failure ? source.failure->report : "";
  }

  tests::MemoryFiles files_;
  tests::ToyCodePages pages_;
};

TEST_F(Reader, PutsIncludesWhereTheyStand) {
  files_.put(
      "/site/shop/index.asp",
      "A<!--#include file=\"..\\INC\\Top.asp\"-->B<!--#include virtual=\"/inc/end.inc\"-->C");
  files_.put("/site/inc/top.asp", "top<!--#include file=\"deep.asp\"-->");
  files_.put("/site/inc/deep.asp", "<%deep%>");
  files_.put("/site/inc/end.inc", "end");
  EXPECT_EQ(joined(read("/shop/index.asp")), "Atop{deep}BendC");
}

TEST_F(Reader, PiecesKnowTheirFileAndLine) {
  files_.put("/site/a.asp", "\n<!--#include file=\"b.asp\"-->");
  files_.put("/site/b.asp", "\n\n<%x%>");
  const PageSource source = read("/a.asp");
  const auto& piece = source.source.pieces.back();
  EXPECT_EQ(source.source.files[static_cast<std::size_t>(piece.file)], "/b.asp");
  EXPECT_EQ(piece.line, 3);
}

TEST_F(Reader, AFileMayBeIncludedTwice) {
  files_.put("/site/a.asp", "<!--#include file=\"b.asp\"--><!--#include file=\"b.asp\"-->");
  files_.put("/site/b.asp", "b");
  EXPECT_EQ(joined(read("/a.asp")), "bb");
}

TEST_F(Reader, ACycleIsToldWithFileAndLine) {
  files_.put("/site/a.asp", "<!--#include file=\"b.asp\"-->");
  files_.put("/site/b.asp", "\n<!--#include file=\"A.asp\"-->");
  EXPECT_EQ(report(read("/a.asp")), "/b.asp:2: The file includes itself: 'A.asp'");
}

TEST_F(Reader, AMissingIncludeIsToldWithFileAndLine) {
  files_.put("/site/a.asp", "\n\n<!--#include file=\"gone.asp\"-->");
  const PageSource source = read("/a.asp");
  EXPECT_EQ(report(source), "/a.asp:3: The include file was not found: 'gone.asp'");
  ASSERT_EQ(source.files.size(), 2u);
  EXPECT_EQ(source.files[1].physical_path, "/site/gone.asp");
  EXPECT_FALSE(source.files[1].stamp.has_value());
}

TEST_F(Reader, AnIncludeOutOfTheSiteIsRefused) {
  files_.put("/site/a.asp", "<!--#include file=\"../secret.asp\"-->");
  files_.put("/secret.asp", "secret");
  EXPECT_EQ(report(read("/a.asp")),
            "/a.asp:1: The include file leads out of the site: "
            "'../secret.asp'");
}

TEST_F(Reader, IncludesThatDoubleEnd) {
  for (int i = 0; i < 30; ++i) {
    const std::string next = "<!--#include file=\"" + std::to_string(i + 1) + ".asp\"-->";
    files_.put("/site/" + std::to_string(i) + ".asp", next + next);
  }
  files_.put("/site/30.asp", "x");
  EXPECT_NE(report(read("/0.asp")).find("Too many include files"), std::string::npos);
}

TEST_F(Reader, BlocksOfThePagesLanguageRunBehindTheRest) {
  files_.put("/site/a.asp",
             "<script runat=server language=vbscript>\nSub f\nEnd Sub</script><%f%>");
  EXPECT_EQ(joined(read("/a.asp")), "{f}{\nSub f\nEnd Sub}");
}

TEST_F(Reader, BlocksOfOtherLanguagesAreLeftOutByName) {
  files_.put("/site/a.asp", "<script runat=server language=JScript>function Total(a) { }</script>");
  const PageSource source = read("/a.asp");
  EXPECT_EQ(joined(source), "");
  EXPECT_EQ(source.left_out, std::vector<std::string>{"total"});
}

TEST_F(Reader, AHidingCommentInABlockIsNoScript) {
  files_.put("/site/a.asp", "<script runat=server><!--\nx\n--></script>");
  EXPECT_EQ(joined(read("/a.asp")), "{    \nx\n   }");
}

TEST_F(Reader, ScriptWritesItsOwnEndWithABackslash) {
  files_.put("/site/a.asp", "<% s = \"width=100%\\>\" %>");
  EXPECT_EQ(joined(read("/a.asp")), "{ s = \"width=100%>\" }");
}

TEST_F(Reader, SourcesAreReadByTheCodePage) {
  files_.put("/site/a.asp", "\xC4\xE3");
  EXPECT_EQ(joined(read("/a.asp", platform::kGb2312)), "\xE4\xBD\xA0");
}

TEST_F(Reader, ADirectiveRulesThePageAndItsIncludes) {
  files_.put("/site/a.asp", "<%@ CodePage=936 %><!--#include file=\"b.inc\"-->");
  files_.put("/site/b.inc", "\xC4\xE3");
  const PageSource source = read("/a.asp");
  EXPECT_EQ(joined(source), "\xE4\xBD\xA0");
  EXPECT_EQ(source.code_page, 936);
}

TEST_F(Reader, APageWithItsIncludesHasOneDirective) {
  files_.put("/site/a.asp", "<%@ CodePage=936 %>\n<%@ Language=VBScript %>");
  files_.put("/site/b.asp", "<%@ CodePage=936 %><!--#include file=\"b.inc\"-->");
  files_.put("/site/b.inc", "<%@ CodePage=936 %>");
  EXPECT_EQ(read("/a.asp").failure.value_or(PageFailure()).report,
            "/a.asp:2: A second <%@ directive");
  EXPECT_EQ(read("/b.asp").failure.value_or(PageFailure()).path, "/b.inc");
}

TEST_F(Reader, ATransactionHasFiveWords) {
  const auto read_with = [&](const std::string& word) {
    files_.put("/site/a.asp", "<%@ Transaction=" + word + " %>");
    return read("/a.asp");
  };
  EXPECT_TRUE(read_with("REQUIRES_NEW").in_transaction);
  for (const char* word : {"Supported", "Not_Supported", "Disabled"}) {
    EXPECT_FALSE(read_with(word).in_transaction);
    EXPECT_FALSE(read_with(word).failure.has_value());
  }
  EXPECT_TRUE(read_with("Bogus").failure.has_value());
}

TEST_F(Reader, AByteOrderMarkIsNoTextAndRulesItsFile) {
  files_.put("/site/a.asp", "\xEF\xBB\xBF\xE4\xBD\xA0");
  EXPECT_EQ(joined(read("/a.asp", platform::kGb2312)), "\xE4\xBD\xA0");
}

TEST_F(Reader, BytesThatTheCodePageLacksAreNoted) {
  files_.put("/site/a.asp", "a\n\xFFz");
  const PageSource source = read("/a.asp", platform::kGb2312);
  EXPECT_EQ(source.notes,
            std::vector<std::string>{"/a.asp:2: bytes that code page 936 does not have"});
}

TEST_F(Reader, ASessionMayBeRefused) {
  files_.put("/site/a.asp", "<%@ EnableSessionState=False %>");
  EXPECT_FALSE(read("/a.asp").session_enabled);
}

TEST_F(Reader, APageOfAnotherLanguageIsRefused) {
  files_.put("/site/a.asp", "<%@ Language=JScript %>");
  EXPECT_EQ(report(read("/a.asp")), "/a.asp:1: The language of this page is not served: JScript");
}

TEST_F(Reader, ObjectsAreDeclaredWithTheirScope) {
  files_.put("/site/a.asp", "<object runat=server scope=Application id=d progid=Toy.Box></object>");
  const PageSource source = read("/a.asp");
  ASSERT_EQ(source.objects.size(), 1u);
  EXPECT_EQ(source.objects[0].id, "d");
  EXPECT_EQ(source.objects[0].program_identifier, "Toy.Box");
  EXPECT_EQ(source.objects[0].scope, ObjectDeclaration::Scope::Application);
}

TEST_F(Reader, AStartUpScriptHasNoPageText) {
  files_.put("/site/global.asa", "text <script language=VBScript runat=Server>Sub a</script> more");
  const PageSource source =
      PageReader(files_, pages_, "/site").start_up_script("/global.asa", platform::kUtf8);
  EXPECT_EQ(joined(source), "{Sub a}");
}

}  // namespace
}  // namespace rk::pagehost
