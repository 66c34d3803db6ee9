// The functions where they refuse what they are given, or meet the edge of their range; what they
// answer otherwise stands in rows/functions.test.
#include "jetsql/functions.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "jetsql/numbers.h"
#include "jetsql/sql_error.h"

namespace rk::jetsql {
namespace {

Argument text(std::string_view value) {
  Argument made;
  made.kind = Argument::Kind::Text;
  made.text = value;
  return made;
}

Argument whole(std::int64_t value) {
  Argument made;
  made.kind = Argument::Kind::Integer;
  made.integer = value;
  return made;
}

Argument real(double value) {
  Argument made;
  made.kind = Argument::Kind::Real;
  made.real = value;
  return made;
}

Argument blob() {
  Argument made;
  made.kind = Argument::Kind::Blob;
  return made;
}

const Function& named(std::string_view name) {
  for (const Function& function : functions()) {
    if (name == function.name) return function;
  }
  throw std::runtime_error("no such function");
}

// The answer as a text; "error NUMBER" where it raises.
std::string answer(std::string_view name, const std::vector<Argument>& arguments) {
  try {
    Answer made;
    named(name).call(arguments, made);
    switch (made.kind) {
      case Argument::Kind::Integer:
        return std::to_string(made.integer);
      case Argument::Kind::Real:
        return number_text(made.real);
      case Argument::Kind::Text:
        return made.text;
      default:
        return "Null";
    }
  } catch (const SqlError& error) {
    return "error " + std::to_string(error.number());
  }
}

const std::string kMismatch = "error " + std::to_string(kTypeMismatch);
const std::string kTooLarge = "error " + std::to_string(kOverflow);
const std::string kInvalid = "error " + std::to_string(kUnspecified);

TEST(Functions, RefuseATextThatIsNoNumberOrDate) {
  EXPECT_EQ(answer("jet_number", {text("x")}), kMismatch);
  EXPECT_EQ(answer("jet_integer", {text("")}), kMismatch);
  EXPECT_EQ(answer("jet_date", {text("2026-02-30")}), kMismatch);
  EXPECT_EQ(answer("jet_year", {text("x")}), kMismatch);
  EXPECT_EQ(answer("jet_add", {text("x"), whole(1)}), kMismatch);
  EXPECT_EQ(answer("jet_text", {blob()}), kMismatch);
}

TEST(Functions, RefuseToDivideByNothing) {
  for (const char* name : {"jet_divide", "jet_quotient", "jet_modulo"}) {
    EXPECT_EQ(answer(name, {whole(1), whole(0)}), kInvalid) << name;
  }
}

TEST(Functions, OverflowWhereNoNumberHoldsTheAnswer) {
  EXPECT_EQ(answer("jet_power", {whole(10), whole(1000)}), kTooLarge);
  EXPECT_EQ(answer("jet_exp", {whole(1000)}), kTooLarge);
  EXPECT_EQ(answer("jet_divide", {real(1e300), real(1e-300)}), kTooLarge);
  EXPECT_EQ(answer("jet_integer", {real(1e300)}), kTooLarge);
  EXPECT_EQ(answer("jet_dateadd", {text("yyyy"), whole(9000), text("2026-1-1")}), kTooLarge);
  EXPECT_EQ(answer("jet_date", {real(1e10)}), kTooLarge);
}

TEST(Functions, RefuseWhatTheirRangeDoesNotHold) {
  EXPECT_EQ(answer("jet_left", {text("a"), whole(-1)}), kInvalid);
  EXPECT_EQ(answer("jet_mid", {text("a"), whole(0)}), kInvalid);
  EXPECT_EQ(answer("jet_sqr", {whole(-1)}), kInvalid);
  EXPECT_EQ(answer("jet_log", {whole(0)}), kInvalid);
  EXPECT_EQ(answer("jet_asc", {text("")}), kInvalid);
  EXPECT_EQ(answer("jet_chr", {whole(70000)}), kInvalid);
  EXPECT_EQ(answer("jet_space", {whole(2000000)}), kInvalid);
  EXPECT_EQ(answer("jet_round", {real(1.5), whole(-1)}), kInvalid);
  EXPECT_EQ(answer("jet_dateadd", {text("x"), whole(1), text("2026-1-1")}), kInvalid);
  EXPECT_EQ(answer("jet_dateadd", {text("d"), real(1e18), text("2026-1-1")}), kInvalid);
  EXPECT_EQ(answer("jet_monthname", {whole(13)}), kInvalid);
  EXPECT_EQ(answer("jet_instr", {whole(0), text("a"), text("a")}), kInvalid);
}

TEST(Functions, AnswerNullForANull) {
  for (const Function& function : functions()) {
    const std::string_view name = function.name;
    const int count = function.arity < 0 ? 3 : function.arity;
    const std::vector<Argument> nulls(static_cast<std::size_t>(count));
    const std::string expected = name == "jet_isnumeric" || name == "jet_isdate" ? "0"
                                 : name == "jet_format"                          ? ""
                                                                                 : "Null";
    EXPECT_EQ(answer(name, nulls), expected) << name;
  }
}

TEST(Functions, HoldTheirWordAtTheEdgeOfWholeNumbers) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(answer("jet_add", {whole(kMost), whole(1)}), "9.22337203685478E+18");
  EXPECT_EQ(answer("jet_modulo", {whole(kLeast), whole(-1)}), "0");
  EXPECT_EQ(answer("jet_quotient", {whole(kLeast), whole(-1)}), kTooLarge);
  EXPECT_EQ(answer("jet_abs", {whole(kLeast)}), "9.22337203685478E+18");
}

TEST(Functions, HaveNamesOfTheirOwn) {
  for (const Function& function : functions()) {
    EXPECT_EQ(&named(function.name), &function) << function.name;
    EXPECT_EQ(std::string_view(function.name).substr(0, 4), "jet_");
  }
}

TEST(Functions, KeepALoneHalfOfAPair) {
  const std::string half = answer("jet_left", {text("\xF0\x9F\x98\x80"), whole(1)});
  EXPECT_EQ(half, "\xED\xA0\xBD");
  EXPECT_EQ(answer("jet_len", {text(half)}), "1");
}

}  // namespace
}  // namespace rk::jetsql
