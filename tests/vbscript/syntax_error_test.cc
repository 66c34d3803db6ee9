#include "vbscript/syntax_error.h"

#include <gtest/gtest.h>

#include "vbscript/limits.h"
#include "vbscript/program.h"

namespace rk::vbscript {
namespace {

std::string report_of(const Source& source) {
  try {
    compile(source);
  } catch (const SyntaxError& error) {
    return error.report();
  }
  return "compiles";
}

std::string report_of(std::string text) {
  Source source;
  source.files = {"/shop/index.asp"};
  source.pieces = {{SourcePiece::Kind::Script, std::move(text)}};
  return report_of(source);
}

TEST(SyntaxError, ShowsTheLineWithACaret) {
  EXPECT_EQ(report_of("x = 1\ny = (2 + 3\nz = 4"),
            "/shop/index.asp:2:11: error 1006: Expected ')'\n"
            "y = (2 + 3\n"
            "          ^");
}

TEST(SyntaxError, KeepsTabsUnderTabs) {
  EXPECT_EQ(report_of("\tx = 1 2"),
            "/shop/index.asp:1:8: error 1025: Expected end of statement\n"
            "\tx = 1 2\n"
            "\t      ^");
}

TEST(SyntaxError, CountsCharactersNotBytes) {
  EXPECT_EQ(report_of("价格 = 1 ?"),
            "/shop/index.asp:1:8: error 1032: Invalid character\n"
            "价格 = 1 ?\n"
            "       ^");
}

TEST(SyntaxError, TellsTheFileAndLineOfThePiece) {
  Source source;
  source.files = {"/a.asp", "/inc/b.inc"};
  source.pieces = {{SourcePiece::Kind::Script, "x = 1\r\n", 0, 1, 1},
                   {SourcePiece::Kind::Script, "\r\nDim 5\r\n", 1, 20, 3}};
  EXPECT_EQ(report_of(source),
            "/inc/b.inc:21:5: error 1010: Expected identifier\n"
            "Dim 5\n"
            "    ^");
}

TEST(SyntaxError, TellsTheColumnInAPieceThatBeginsInsideALine) {
  Source source;
  source.files = {"/a.asp"};
  source.pieces = {{SourcePiece::Kind::Expression, " 1 + ", 0, 4, 10}};
  EXPECT_EQ(report_of(source),
            "/a.asp:4:14: error 1023: Expected expression\n"
            " 1 + \n"
            "    ^");
}

std::string nested(int depth) {
  return "x = " + std::string(static_cast<std::size_t>(depth), '(') + "1" +
         std::string(static_cast<std::size_t>(depth), ')');
}

TEST(SyntaxError, BracketsMayNestUpToTheLimit) {
  EXPECT_EQ(report_of(nested(kMaxNesting - 2)), "compiles");
  EXPECT_NE(report_of(nested(kMaxNesting)).find("error 1001"), std::string::npos);
}

TEST(SyntaxError, ChainsOfOperatorsHaveNoLimit) {
  std::string text = "x = 1";
  for (int i = 0; i < 100000; ++i) text += " + 1";
  EXPECT_EQ(report_of(text), "compiles");
  text = "x = \"a\"";
  for (int i = 0; i < 100000; ++i) text += " & 1";
  EXPECT_EQ(report_of(text), "compiles");
}

TEST(SyntaxError, ChainsOfMembersEndAtTheirLimit) {
  std::string text = "x = a";
  for (int i = 0; i < kMaxLinks + 2; ++i) text += ".b";
  EXPECT_NE(report_of(text).find("error 1001"), std::string::npos);
}

TEST(SyntaxError, NamesEndAtTheirLimit) {
  EXPECT_EQ(report_of(std::string(kMaxNameLength, 'a') + " = 1"), "compiles");
  EXPECT_NE(report_of(std::string(kMaxNameLength + 1, 'a') + " = 1").find("error 1030"),
            std::string::npos);
}

}  // namespace
}  // namespace rk::vbscript
