#include "jetsql/parser.h"

#include <gtest/gtest.h>

#include "jetsql/lexer.h"
#include "tests/jetsql/engine.h"

namespace rk::jetsql {
namespace {

std::string repeated(const std::string& text, int count) {
  std::string made;
  for (int i = 0; i < count; ++i) made += text;
  return made;
}

long refusal(const std::string& sql) {
  try {
    parse(sql);
  } catch (const SqlError& error) {
    return error.number();
  }
  return 0;
}

std::string in_brackets(int depth) {
  return "select " + repeated("(", depth) + "1" + repeated(")", depth);
}

// One level is that of the select, one that of its output.
TEST(Parser, TakesBracketsAsDeepAsItsLimitAndNoDeeper) {
  EXPECT_EQ(refusal(in_brackets(kMaxNesting - 2)), 0);
  EXPECT_EQ(refusal(in_brackets(kMaxNesting - 1)), kSyntaxError);
  EXPECT_EQ(refusal(in_brackets(100000)), kSyntaxError);
}

TEST(Parser, TakesChainsAsLongAsItsLimitAndNoLonger) {
  const auto chain = [](int operators) {
    return "select 1 from t where a=1" + repeated(" or a=1", operators);
  };
  EXPECT_EQ(refusal(chain(kMaxHeight - 2)), 0);
  EXPECT_EQ(refusal(chain(kMaxHeight - 1)), kSyntaxError);
  EXPECT_EQ(refusal(chain(20000)), kSyntaxError);
}

TEST(Parser, BoundsEveryOtherNesting) {
  EXPECT_EQ(refusal("select " + repeated("-", 1) + repeated("not ", 100000) + "1"), kSyntaxError);
  EXPECT_EQ(refusal("select " + repeated("- ", 100000) + "1"), kSyntaxError);
  EXPECT_EQ(refusal("select " + repeated("len(", 100000)), kSyntaxError);
  EXPECT_EQ(refusal("select * from " + repeated("(", 100000)), kSyntaxError);
  EXPECT_EQ(refusal(repeated("(", 100000) + "select 1"), kSyntaxError);
  EXPECT_EQ(refusal(repeated("select * from (", 100000)), kSyntaxError);
  EXPECT_EQ(refusal("select * from a" + repeated(" inner join a on a.b=a.b", 100000)),
            kSyntaxError);
  EXPECT_EQ(refusal("select " + repeated("1 in (", 100000)), kSyntaxError);
  EXPECT_EQ(refusal("select " + repeated("exists (select ", 100000)), kSyntaxError);
}

TEST(Parser, TheEngineTakesWhatIsJustWithinTheLimit) {
  Engine engine(file_text(std::string(RK_SOURCE_DIR) + "/tests/jetsql/shop.sql"));
  EXPECT_EQ(engine.run(in_brackets(kMaxNesting - 2)).rows.size(), 1U);
  const std::string chain = "select id from goods where id=1";
  EXPECT_EQ(engine.run(chain + repeated(" or id=2", kMaxHeight - 2)).rows.size(), 2U);
  EXPECT_EQ(engine.run(chain + repeated(" and id=1", kMaxHeight - 2)).rows.size(), 1U);
  EXPECT_EQ(engine.run("select 1" + repeated("+1", kMaxHeight - 1)).rows.at(0),
            std::to_string(kMaxHeight));
  EXPECT_EQ(engine.run("select " + repeated("(1+", 20) + "1" + repeated(")", 20)).rows.at(0), "21");
}

TEST(Parser, RefusesATextPastTheLongest) {
  const std::string most = "select 1" + std::string(kMaxTextBytes - 8, ' ');
  EXPECT_EQ(refusal(most), 0);
  EXPECT_EQ(refusal(most + " "), kSyntaxError);
}

TEST(Parser, NamesThePlaceOfTheTrouble) {
  const std::string sql = "select id from goods where id=1 frm x";
  try {
    parse(sql);
    FAIL();
  } catch (const SqlError& error) {
    EXPECT_EQ(error.position(), sql.find("frm"));
  }
}

// Each step stands for two of the one before: the text would double and double again.
TEST(Parser, RefusesNamesThatGrowWithoutBound) {
  Engine engine(file_text(std::string(RK_SOURCE_DIR) + "/tests/jetsql/shop.sql"));
  std::string sql = "select id as a0";
  for (int i = 1; i < 40; ++i) {
    sql +=
        ",a" + std::to_string(i - 1) + "+a" + std::to_string(i - 1) + " as a" + std::to_string(i);
  }
  EXPECT_THROW(engine.run(sql + " from goods"), SqlError);
}

}  // namespace
}  // namespace rk::jetsql
