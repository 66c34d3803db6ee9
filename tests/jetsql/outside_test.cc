// What came from outside stays within one quoted text or is one number: by hand, and by thousands
// of hostile values in every text that takes one.
#include <gtest/gtest.h>

#include "jetsql/lexer.h"
#include "tests/jetsql/engine.h"
#include "tests/jetsql/storefront_texts.h"

namespace rk::jetsql {
namespace {

// The text before and behind the place of a value.
struct Place {
  std::string before, behind;
};

// Every text that the storefront builds with a value out of the request.
const std::vector<Place>& places() {
  static const std::vector<Place> all = {
      {"Select [AgentUser],[AgentDomain] From Rk_AgentSet Where [AgentDomain] Like '%", "%'"},
      {"Select Top 20 [Id],[HostName] From [Rk_HostList] Where [ProClass]=", " Order By [Id] Desc"},
      {"Select [Id],[HostName] From [Rk_HostList] Where [ProClass]=", " Order By [Id] Desc"},
      {"Select Top 20 [aa].[Id],[aa].[HostName] From [Rk_HostList] As [aa],[Rk_AgentPriceSet] As "
       "[bb] "
       "Where [bb].[ProClass]=",
       " And [aa].[AgentS]=1 And [aa].[Id]=[bb].[MastId] And [bb].[PriceType]='Host' Order By "
       "[aa].[Id] "
       "Desc"},
      {"Select [Id],[DbName],[db_MaxSize],[lg_MaxSize],[Price] From [Rk_SqlList] Where [freesql]=0 "
       "And "
       "[ProClass]=",
       " Order By [Id] Desc"},
      {"Select [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] Where [freesql]=False And "
       "[ProClass]=",
       " Order By [Id] Desc"},
      {"Select [aa].[Id] From [Rk_MailList] As [aa],[Rk_AgentPriceSet] As [bb] Where "
       "[aa].[freemail]=0 "
       "And [bb].[ProClass]=",
       " And [aa].[AgentS]=1 And [aa].[Id]=[bb].[MastId] And [bb].[PriceType]='Mail' Order By "
       "[aa].[Id] "
       "Desc"},
      {"Select * From [Rk_HostList] Where [ID]=", " And [AgentS]=1"},
      {"Select * From [Rk_HostList] Where [ID]=", ""},
      {"Select [ChildStr],[ItemName],[ServDay],[id],[Info] From [Rk_ShopItem] Where [ParentID]=0 "
       "And "
       "sysType='RkHost' And [AgentUser]='ann' And [Id]=",
       " Order By [Id]"},
      {"Select * From Rk_ShopList Where Id=", ""},
      {"select * From Rk_News where type='",
       "' And ([AgentUser]='' Or [AgentUser] Is Null) order by Id"},
      {"select * From Rk_News Where type='", "' And (AgentUser='ann' Or EveryOne=1) order by Id"},
      {"Select * From [Rk_Success] Where [succlass] like'%",
       "%' And ([AgentUser]='' Or [AgentUser] Is Null) Order By [Id] Desc"},
  };
  return all;
}

// The number of the error that a value raises at a place, 0 where it is taken.
long refusal(const Place& place, const std::string& value) {
  const std::string sql = place.before + value + place.behind;
  try {
    check_outside(sql, place.before.size(), place.before.size() + value.size());
  } catch (const SqlError& error) {
    return error.number();
  }
  return 0;
}

struct Case {
  const char* value;
  long number;
};

TEST(Outside, ANumberIsTakenAndNothingElseWhereANumberStands) {
  const Place place{"Select * From t Where Id=", " And b=1"};
  const Case cases[] = {
      {"5", 0},
      {"0", 0},
      {"-5", 0},
      {"+5", 0},
      {" 5", 0},
      {"5\t", 0},
      {"\t 5 \t", 0},
      {"1.5", 0},
      {"-1.5e3", 0},
      {"1e5", 0},
      {"1E-5", 0},
      {"007", 0},
      {"", kSyntaxError},
      {" ", kSyntaxError},
      {"abc", kNoValueGiven},
      {"Id", kNoValueGiven},
      {"  abc\t", kNoValueGiven},
      {"\xE8\x8B\xB9", kNoValueGiven},
      {"Null", kNoValueGiven},
      {"True", kNoValueGiven},
      {"[Id]", kSyntaxError},
      {"a.b", kSyntaxError},
      {"5 Or 1=1", kSyntaxError},
      {"5\tOr\t1=1", kSyntaxError},
      {"5,6", kSyntaxError},
      {"5, 6", kSyntaxError},
      {"5;", kSyntaxError},
      {"5--", kSyntaxError},
      {"5/*", kSyntaxError},
      {"--5", kSyntaxError},
      {"- 5", kSyntaxError},
      {"+-5", kSyntaxError},
      {"'5'", kSyntaxError},
      {"\"5\"", kSyntaxError},
      {"(5)", kSyntaxError},
      {"#2026-1-1#", kSyntaxError},
      {"5 Union Select 1", kSyntaxError},
      {"1=1", kSyntaxError},
      {"0x5", kSyntaxError},
      {"&H5", kSyntaxError},
      {"5e", kSyntaxError},
      {"5.5.5", kSyntaxError},
      {".", kSyntaxError},
      {"1e999", kSyntaxError},
      {"5\n", kSyntaxError},
      {"5\r\n", kSyntaxError},
      {"5\v", kSyntaxError},
      {"\xEF\xBC\x95", kNoValueGiven},
      {"Select", kNoValueGiven},
      {"And", kNoValueGiven},
      {"?", kSyntaxError},
      {"@@identity", kSyntaxError},
      {"Now()", kSyntaxError},
      {"1+1", kSyntaxError},
  };
  for (const Case& one : cases) EXPECT_EQ(refusal(place, one.value), one.number) << one.value;
  EXPECT_EQ(refusal(place, std::string("5\0", 2)), kSyntaxError);
}

TEST(Outside, AQuotedTextTakesWhatDoesNotCloseIt) {
  const Place place{"Select * From t Where a Like '%", "%' And b=1"};
  for (const char* value : {"", "shop", "a b", "\"", "--", "/*", ";", "[x", "]", "#", "%", "''",
                            "a''b", "''''", "1 Or 1=1", "\t\r\n", "\\", "`", "\xE8\x8B\xB9"}) {
    EXPECT_EQ(refusal(place, value), 0) << value;
  }
  for (const char* value :
       {"'", "a'", "'a", "a'b", "'''", "a''b'c", "' Or '1'='1", "x' Union Select 1"}) {
    EXPECT_EQ(refusal(place, value), kSyntaxError) << value;
  }
}

TEST(Outside, TheOtherQuoteClosesNothing) {
  const Place place{"Select * From t Where a=\"", "\""};
  EXPECT_EQ(refusal(place, "it's"), 0);
  EXPECT_EQ(refusal(place, "a\"b"), kSyntaxError);
}

TEST(Outside, ANumberMustStandAlone) {
  EXPECT_EQ(refusal({"Select * From t Where a=b", ""}, "5"), kSyntaxError);
  EXPECT_EQ(refusal({"Select * From t Where a=1", ""}, "5"), kSyntaxError);
  EXPECT_EQ(refusal({"Select * From t Where a=5-", ""}, "-5"), kSyntaxError);
  EXPECT_EQ(refusal({"Select * From t Where a=", "5"}, "5"), kSyntaxError);
  EXPECT_EQ(refusal({"Select * From t Where a=", ".5"}, "5"), kSyntaxError);
  EXPECT_EQ(refusal({"Select * From t Where a In (", ")"}, "5"), 0);
}

TEST(Outside, ANameOrADateIsNoPlaceForIt) {
  EXPECT_EQ(refusal({"Select * From t Order By [", "]"}, "5"), kSyntaxError);
  EXPECT_EQ(refusal({"Select * From t Where a=#", "#"}, "5"), kSyntaxError);
  EXPECT_EQ(refusal({"Select * From t Where a=1 -- ", ""}, "5"), kSyntaxError);
}

// A generator that gives the same values in every run.
class Dice {
 public:
  std::size_t roll(std::size_t sides) {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<std::size_t>(state_ >> 33U) % sides;
  }

 private:
  std::uint64_t state_ = 20260305;
};

std::vector<std::string> hostile_values() {
  const std::string pieces[] = {"'",
                                "''",
                                "\"",
                                "\"\"",
                                "--",
                                "/*",
                                "*/",
                                ";",
                                "#",
                                "[",
                                "]",
                                "`",
                                "(",
                                ")",
                                ",",
                                "=",
                                "<>",
                                "+",
                                "-",
                                ".",
                                "%",
                                "_",
                                "*",
                                "?",
                                "@",
                                "!",
                                "\\",
                                "&",
                                "|",
                                "\t",
                                "\n",
                                "\r",
                                " ",
                                "0",
                                "1",
                                "5",
                                "12",
                                "1.5",
                                "1e3",
                                "e",
                                "Or",
                                "And",
                                "Not",
                                "Union",
                                "Select",
                                "From",
                                "Where",
                                "Null",
                                "True",
                                "Like",
                                "Id",
                                "[Id]",
                                "AgentS",
                                "In",
                                "Exists",
                                "Delete",
                                "Drop",
                                "Top",
                                "Is",
                                "x",
                                "1=1",
                                "'a'",
                                "1,2",
                                "1, 2",
                                "Now()",
                                "Rk_Pay",
                                "Rk_HostList",
                                "\xE8\x8B\xB9",
                                "\xFF",
                                std::string(1, '\0'),
                                "\x01",
                                "\x1F",
                                "' Or '1'='1",
                                "1 Or 1=1",
                                "5\tOr\t1=1",
                                "0 Union Select [AgentUser],[AgentDomain] From [Rk_AgentSet]",
                                "' Union Select 1,2 From [Pay] '"};
  std::vector<std::string> values(std::begin(pieces), std::end(pieces));
  Dice dice;
  while (values.size() < 6000) {
    std::string value;
    for (std::size_t left = 1 + dice.roll(6); left > 0; --left) {
      value += pieces[dice.roll(std::size(pieces))];
      if (dice.roll(3) == 0) value += dice.roll(2) == 0 ? ' ' : '\t';
    }
    values.push_back(value);
  }
  return values;
}

// The tokens of a text but for the values of its literals.
std::string skeleton(const std::string& sql) {
  Shape shape;
  read_shape(sql, shape);
  return shape.key;
}

TEST(Outside, WhatIsTakenChangesNothingButOneValue) {
  Engine engine(storefront_database());
  const std::vector<std::string> values = hostile_values();
  std::size_t taken = 0;
  for (const Place& place : places()) {
    const bool quoted = place.before.back() == '%' || place.before.back() == '\'';
    const std::string harmless = place.before + (quoted ? "x" : "7") + place.behind;
    const std::string whole_skeleton = skeleton(harmless);
    const std::size_t columns = engine.run(harmless).translation.columns.size();
    for (const std::string& value : values) {
      if (refusal(place, value) != 0) continue;
      ++taken;
      const std::string sql = place.before + value + place.behind;
      Shape shape;
      read_shape(sql, shape);
      if (quoted) {
        // One more text of the same place, and it holds the whole value, doubled quotes undone.
        EXPECT_EQ(shape.key, whole_skeleton) << sql;
        std::string inside;
        for (std::size_t i = 0; i < value.size(); ++i) {
          inside += value[i];
          if (value[i] == '\'') ++i;
        }
        bool found = false;
        for (const Literal& literal : shape.literals) {
          found = found || literal.text.find(inside) != std::string::npos;
        }
        EXPECT_TRUE(found) << sql;
      }
      const Engine::Run run = engine.run(sql);
      EXPECT_EQ(run.translation.columns.size(), columns) << sql;
      EXPECT_TRUE(run.translation.reads()) << sql;
    }
  }
  EXPECT_GT(taken, 1000U);
}

TEST(Outside, WhatIsRefusedIsRefusedWithOneOfTwoNumbers) {
  std::size_t refused = 0;
  for (const Place& place : places()) {
    for (const std::string& value : hostile_values()) {
      const long number = refusal(place, value);
      if (number == 0) continue;
      ++refused;
      EXPECT_TRUE(number == kSyntaxError || number == kNoValueGiven) << value;
    }
  }
  EXPECT_GT(refused, 1000U);
}

}  // namespace
}  // namespace rk::jetsql
