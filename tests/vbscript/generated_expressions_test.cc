// Generated expressions: what the compiled form answers beside a walk over the tree that was meant,
// and the text of a parsed tree, which parses to the same tree again.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "tests/plain/expression.h"
#include "tests/vbscript/script_runner.h"
#include "vbscript/parser.h"

namespace rk::vbscript {
namespace {

using plain::Term;

// What `v0 = EXPRESSION` leaves in v0: its kind and text, or the number of its error.
std::string compiled_answer(const Term& term) {
  std::string script;
  for (std::size_t i = 0; i < plain::variables().size(); ++i) {
    script += "v" + std::to_string(i) + " = " + plain::variables()[i].literal + "\n";
  }
  script += "v0 = " + plain::source_of(term) + "\nPrint TypeName(v0), v0\n";
  const testing::Outcome outcome = testing::run_script(script);
  if (outcome.error.empty()) return outcome.printed.at(0);
  return "error " + outcome.error.substr(0, outcome.error.find(' '));
}

Source source_of_text(const std::string& text) {
  Source source;
  source.files.emplace_back("generated");
  source.pieces.emplace_back().text = text;
  return source;
}

std::string printed_tree(const std::string& text) {
  const Source source = source_of_text(text);
  const std::unique_ptr<SyntaxTree> tree = Parser(source).expression_alone();
  return plain::text_of(*tree, *tree->body.front()->value);
}

TEST(GeneratedExpressions, AnswerWhatTheTreeThatWasMeantAnswers) {
  EXPECT_TRUE(rc::check([](const std::vector<std::uint8_t>& choices) {
    const Term term = plain::term_of(choices);
    RC_LOG() << plain::source_of(term);
    RC_ASSERT(compiled_answer(term) == plain::answer_of(term));
  }));
}

TEST(GeneratedExpressions, PrintedTreesParseToThemselves) {
  EXPECT_TRUE(rc::check([](const std::vector<std::uint8_t>& choices) {
    const std::string once = printed_tree(plain::source_of(plain::term_of(choices)));
    RC_ASSERT(printed_tree(once) == once);
  }));
}

TEST(GeneratedExpressions, PrintsWithAsFewBracketsAsTheMeaningNeeds) {
  EXPECT_EQ(printed_tree("-v1 ^ 2 + v2 & v3 = v4"), "((((-(v1 ^ 2)) + v2) & v3) = v4)");
}

}  // namespace
}  // namespace rk::vbscript
