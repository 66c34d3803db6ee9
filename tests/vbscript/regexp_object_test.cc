#include "vbscript/regexp_object.h"

#include <gtest/gtest.h>

#include "tests/vbscript/script_host.h"
#include "vbscript/interpreter.h"
#include "vbscript/program.h"
#include "vbscript/runtime_error.h"

namespace rk::vbscript::testing {
namespace {

// An expression finds its own pattern, letter by letter; its one group is the match's first unit.
// "?" matches the empty text everywhere, "(" is an error.
class Literal final : public platform::Regexp {
 public:
  explicit Literal(std::u16string pattern) : pattern_(std::move(pattern)) {}
  std::optional<platform::RegexpMatch> match(std::u16string_view subject,
                                             std::size_t from) const override {
    const bool empty = pattern_ == u"?";
    const std::size_t at = empty ? from : subject.find(pattern_, from);
    if (at == subject.npos) return std::nullopt;
    platform::RegexpMatch match;
    match.stretches.push_back(platform::RegexpMatch::Stretch{at, empty ? 0 : pattern_.size()});
    match.stretches.push_back(platform::RegexpMatch::Stretch{at, empty ? 0U : 1U});
    match.stretches.emplace_back();
    return match;
  }

 private:
  std::u16string pattern_;
};

class Literals final : public platform::Regexps {
 public:
  std::shared_ptr<const platform::Regexp> compile(std::u16string_view pattern,
                                                  platform::RegexpOptions) const override {
    if (pattern == u"(") raise(KnownError{5020, "Expected ')' in regular expression"});
    return std::make_shared<Literal>(std::u16string(pattern));
  }
};

std::vector<std::string> printed(const std::string& script) {
  const Literals literals;
  ScriptHost host;
  host.changeable_services().regexps = &literals;
  Interpreter interpreter(compile_script("a.vbs", "Set r = New RegExp\n" + script), host);
  interpreter.run();
  return host.printed();
}

using Lines = std::vector<std::string>;

TEST(RegExpObject, ExecuteAnswersTheFirstMatchUnlessGlobal) {
  EXPECT_EQ(printed("r.Pattern = \"ab\"\nPrint r.Execute(\"abab\").Count\n"
                    "r.Global = True\nPrint r.Execute(\"abab\").Count"),
            (Lines{"1", "2"}));
}

TEST(RegExpObject, AReplacingProcedureMayAssignAnotherPattern) {
  EXPECT_EQ(printed("Function made(m, g, none, at, all)\nr.Pattern = \"zz\"\nmade = \"-\"\n"
                    "End Function\nr.Pattern = \"ab\"\nr.Global = True\n"
                    "Print r.Replace(\"abab\", GetRef(\"made\")), r.Test(\"zz\")"),
            (Lines{"-- True"}));
}

TEST(RegExpObject, ASearchWhileThePatternIsReadKeepsNothingOfTheOldOne) {
  EXPECT_EQ(printed("Class P\nPublic Default Property Get V\nr.Test \"a\"\nV = \"b\"\n"
                    "End Property\nEnd Class\nr.Pattern = \"a\"\nr.Pattern = New P\n"
                    "Print r.Test(\"a\"), r.Test(\"b\")"),
            (Lines{"False True"}));
}

TEST(RegExpObject, AMatchTellsItsPlaceAndGroups) {
  EXPECT_EQ(printed("r.Pattern = \"ab\"\nSet m = r.Execute(\"中ab\")(0)\n"
                    "Print m, m.Value, m.FirstIndex, m.Length, m.SubMatches.Count\n"
                    "Print m.SubMatches(0), IsEmpty(m.SubMatches(1))"),
            (Lines{"ab ab 1 2 2", "a True"}));
}

TEST(RegExpObject, ForEachWalksMatches) {
  EXPECT_EQ(printed("r.Pattern = \"a\" : r.Global = True\n"
                    "For Each m In r.Execute(\"axa\")\ns = s & m.FirstIndex\nNext\nPrint s"),
            (Lines{"02"}));
}

TEST(RegExpObject, ReplacementsNameTheMatchAndItsGroups) {
  EXPECT_EQ(printed("r.Pattern = \"ab\"\nPrint r.Replace(\"xaby\", \"[$1|$&|$$|$`|$'|$2|$9]\")"),
            (Lines{"x[a|ab|$|x|y||$9]y"}));
}

TEST(RegExpObject, AFunctionMayReplace) {
  EXPECT_EQ(
      printed("Function Up(match, group, unset, at, text)\nUp = UCase(match) & at\nEnd Function\n"
              "r.Pattern = \"ab\" : r.Global = True\nPrint r.Replace(\"abxab\", GetRef(\"Up\"))"),
      (Lines{"AB0xAB3"}));
}

TEST(RegExpObject, EmptyMatchesGoOn) {
  EXPECT_EQ(printed("r.Pattern = \"?\" : r.Global = True\nPrint r.Replace(\"ab\", \"-\")"),
            (Lines{"-a-b-"}));
}

TEST(RegExpObject, PropertiesAreReadBack) {
  EXPECT_EQ(printed("r.Pattern = \"x\" : r.IgnoreCase = True\n"
                    "Print r.Pattern, r.IgnoreCase, r.Global, r.Multiline"),
            (Lines{"x True False False"}));
}

TEST(RegExpObject, AWrongPatternFailsWhereItIsUsed) {
  EXPECT_EQ(printed("On Error Resume Next\nr.Pattern = \"(\"\nPrint Err.Number\nx = r.Test(\"a\")\n"
                    "Print Err.Number"),
            (Lines{"0", "5020"}));
}

TEST(RegExpObject, ItIsRefusedWithoutAnEngine) {
  ScriptHost host;
  Interpreter interpreter(compile_script("a.vbs", "Set r = New RegExp"), host);
  try {
    interpreter.run();
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 429);
  }
}

}  // namespace
}  // namespace rk::vbscript::testing
