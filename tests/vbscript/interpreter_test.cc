#include "vbscript/interpreter.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include "tests/vbscript/script_host.h"
#include "vbscript/limits.h"
#include "vbscript/program.h"
#include "vbscript/runtime_error.h"

namespace rk::vbscript::testing {
namespace {

using Kind = SourcePiece::Kind;

Source page(std::vector<SourcePiece> pieces) {
  Source source;
  source.files = {"/a.asp", "/b.inc"};
  source.pieces = std::move(pieces);
  return source;
}

std::string written(const Source& source) {
  ScriptHost host;
  Interpreter interpreter(compile(source), host);
  interpreter.run();
  return host.written();
}

TEST(Interpreter, WritesPageTextAndExpressions) {
  EXPECT_EQ(written(page(
                {{Kind::Literal, "<b>"}, {Kind::Expression, " 1 + 2 "}, {Kind::Literal, "</b>"}})),
            "<b>3</b>");
}

TEST(Interpreter, AStatementSpansPieces) {
  EXPECT_EQ(written(page({{Kind::Script, "If 1 = 2 Then"},
                          {Kind::Literal, "no"},
                          {Kind::Script, "Else"},
                          {Kind::Literal, "yes"},
                          {Kind::Script, "End If"}})),
            "yes");
}

TEST(Interpreter, ALoopRepeatsPageText) {
  EXPECT_EQ(written(page({{Kind::Script, "For i = 1 To 3"},
                          {Kind::Literal, "x"},
                          {Kind::Expression, "i"},
                          {Kind::Script, "Next"}})),
            "x1x2x3");
}

TEST(Interpreter, BlankPageTextMayStandBeforeTheFirstCase) {
  EXPECT_EQ(written(page({{Kind::Script, "Select Case 1"},
                          {Kind::Literal, "\r\n"},
                          {Kind::Script, "Case 1"},
                          {Kind::Literal, "one"},
                          {Kind::Script, "End Select"}})),
            "one");
}

TEST(Interpreter, AProcedureWritesPageTextWhereItIsCalled) {
  EXPECT_EQ(
      written(page(
          {{Kind::Script, "Sub S"}, {Kind::Literal, "in"}, {Kind::Script, "End Sub : S : S"}})),
      "inin");
}

TEST(Interpreter, NullIsWrittenAsNothing) {
  EXPECT_EQ(written(page({{Kind::Expression, "Null"}})), "");
}

TEST(Interpreter, AnErrorTellsFileAndLineOfItsPiece) {
  ScriptHost host;
  const Source source =
      page({{Kind::Script, "x = 1\ny = 2\n", 0, 3, 1}, {Kind::Script, "\n\nz = 1 / 0", 1, 7, 1}});
  Interpreter interpreter(compile(source), host);
  try {
    interpreter.run();
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.path(), "/b.inc");
    EXPECT_EQ(error.line(), 9);
    EXPECT_EQ(error.number(), 11);
    EXPECT_EQ(error.source(), "Microsoft VBScript runtime error");
  }
}

TEST(Interpreter, AnErrorTellsTheNameItIsAbout) {
  ScriptHost host;
  Interpreter interpreter(compile_script("a.vbs", "Option Explicit\nmissing = 1"), host);
  try {
    interpreter.run();
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.description(), "Variable is undefined");
    EXPECT_EQ(error.text(), "Variable is undefined: 'missing'");
  }
}

TEST(Interpreter, CallsAProcedureByItsName) {
  ScriptHost host;
  Interpreter interpreter(compile_script("a.vbs", "Function Add(a, b)\nAdd = a + b\nEnd Function"),
                          host);
  Value a = Value::integer(2);
  Value b = Value::integer(3);
  Value* const arguments[] = {&a, &b};
  EXPECT_TRUE(interpreter.defines("ADD"));
  EXPECT_FALSE(interpreter.defines("Subtract"));
  EXPECT_EQ(to_long(interpreter.call("add", arguments)), 5);
}

TEST(Interpreter, AProcedureChangesTheCallersVariable) {
  ScriptHost host;
  Interpreter interpreter(compile_script("a.vbs", "Sub Inc(n)\nn = n + 1\nEnd Sub"), host);
  Value n = Value::integer(1);
  Value* const arguments[] = {&n};
  interpreter.call("Inc", arguments);
  EXPECT_EQ(to_long(n), 2);
}

TEST(Interpreter, CallingNothingRaisesTypeMismatch) {
  ScriptHost host;
  Interpreter interpreter(compile_script("a.vbs", ""), host);
  try {
    interpreter.call("NoSuch", {});
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 13);
  }
}

TEST(Interpreter, TheEndOfThePageGoesThroughEveryTrap) {
  ScriptHost host;
  host.end_after(3);
  Interpreter interpreter(
      compile_script("a.vbs", "On Error Resume Next\nDo\nx = 1 / 0\nLoop\nPrint 1"), host);
  EXPECT_THROW(interpreter.run(), platform::PageEnd);
  EXPECT_TRUE(host.printed().empty());
}

// Each of these gathers without end, so a page that is not stopped never comes back.
std::string end_of_gathering(const std::string& script) {
  ScriptHost host;
  host.end_after(1 << 30);
  Interpreter interpreter(compile_script("a.vbs", "On Error Resume Next\n" + script + "\nPrint 1"),
                          host);
  try {
    interpreter.run();
  } catch (const platform::PageEnd& end) {
    if (end.reason != platform::PageEnd::Reason::OutOfMemory) return "another end";
    return host.printed().empty() ? "out of memory" : "went on";
  }
  return "no end";
}

TEST(Interpreter, APageThatGathersTextsEndsWithoutItsTrap) {
  EXPECT_EQ(end_of_gathering("Dim kept(2000)\ns = String(16000000, \"x\")\n"
                             "For i = 0 To 2000\nkept(i) = s & i\nNext"),
            "out of memory");
}

TEST(Interpreter, APageThatGathersObjectsEndsWithoutItsTrap) {
  EXPECT_EQ(end_of_gathering("Class Node\nPublic Behind\nPublic a(20000)\nEnd Class\n"
                             "Set top = New Node\nDo\nSet n = New Node\n"
                             "Set n.Behind = top\nSet top = n\nLoop"),
            "out of memory");
}

// A component that keeps what it is called with.
class Keeper final : public Object {
 public:
  std::string_view type_name() const override { return "Keeper"; }
  MemberId member(std::string_view) const override { return 0; }
  Value invoke(MemberId, CallKind, Arguments arguments) override {
    kept_.push_back(*arguments[0]);
    return Value();
  }
  void add_held(HeldMemory& held) const override {
    for (const Value& value : kept_) held.values.push_back(&value);
  }

 private:
  std::vector<Value> kept_;
};

TEST(Interpreter, APageWhoseComponentGathersTextsEndsToo) {
  class Host final : public ScriptHost {
   public:
    Value create_object(std::string_view) override { return Value::object(make_ref<Keeper>()); }
  };
  Host host;
  Interpreter interpreter(
      compile_script("a.vbs",
                     "Set k = CreateObject(\"Keeper\")\ns = String(16000000, \"x\")\n"
                     "For i = 0 To 2000\nk.Add s & i\nNext"),
      host);
  EXPECT_THROW(interpreter.run(), platform::PageEnd);
}

TEST(Interpreter, AnEndlessRecursionOfEmptyProceduresEnds) {
  ScriptHost host;
  Interpreter interpreter(compile_script("a.vbs", "Sub S\nS\nEnd Sub\nS"), host);
  try {
    interpreter.run();
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 28);
  }
}

// The error number with which a script ends on a thread of the named stack size, or 0.
int error_on_a_page_thread(const std::string& text) {
  struct Task {
    const std::string& text;
    int number = 0;
  } task{text};
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, kPageThreadStackBytes);
  pthread_t thread;
  const auto body = [](void* argument) -> void* {
    auto& of = *static_cast<Task*>(argument);
    ScriptHost host;
    Interpreter interpreter(compile_script("a.vbs", of.text), host);
    try {
      interpreter.run();
    } catch (const RuntimeError& error) {
      of.number = error.number();
    }
    return nullptr;
  };
  EXPECT_EQ(pthread_create(&thread, &attributes, body, &task), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  return task.number;
}

TEST(Interpreter, ThousandsOfNestedCallsFitAPageThread) {
  EXPECT_EQ(
      error_on_a_page_thread(
          "Function D(n)\nIf n = 0 Then D = 0 Else D = D(n - 1) + 1\nEnd Function\nx = D(1500)"),
      0);
}

TEST(Interpreter, RecursionOnAPageThreadEndsOutOfStack) {
  EXPECT_EQ(error_on_a_page_thread("Sub S\nS\nEnd Sub\nS"), 28);
  EXPECT_EQ(error_on_a_page_thread("Class C\nSub S\nSet x = New C\nx.S\nEnd Sub\nEnd Class\n"
                                   "Set y = New C\ny.S"),
            28);
  EXPECT_EQ(error_on_a_page_thread("Sub S\nExecute \"S\"\nEnd Sub\nS"), 28);
  EXPECT_EQ(
      error_on_a_page_thread(
          "Function F\nF = Eval(\"G()\")\nEnd Function\nFunction G\nG = F()\nEnd Function\nx = F"),
      28);
}

TEST(Interpreter, ArraysDeepInOneAnotherGoWithoutADeepStack) {
  EXPECT_EQ(error_on_a_page_thread("a = 0\nFor i = 1 To 300000\na = Array(a)\nNext\na = 0"), 0);
}

TEST(Interpreter, OneProgramServesManyRuns) {
  const auto program = compile_script("a.vbs", "n = n + 1 : Print n");
  for (int i = 0; i < 3; ++i) {
    ScriptHost host;
    Interpreter interpreter(program, host);
    interpreter.run();
    EXPECT_EQ(host.printed(), std::vector<std::string>{"1"});
  }
}

TEST(Interpreter, AnObjectKeptBeyondTheRunCanNoLongerBeCalled) {
  Value kept;
  {
    ScriptHost host;
    Interpreter interpreter(
        compile_script(
            "a.vbs", "Class C\nPublic N\nEnd Class\nFunction Make\nSet Make = New C\nEnd Function"),
        host);
    kept = interpreter.call("Make", {});
  }
  ASSERT_TRUE(kept.is_object());
  EXPECT_EQ(kept.as_object()->member("N"), kNoMember);
  EXPECT_THROW(kept.as_object()->invoke(1, CallKind::Get, {}), ScriptError);
}

TEST(Interpreter, AProcedureKeptBeyondTheRunCanNoLongerBeCalled) {
  Value kept;
  {
    ScriptHost host;
    Interpreter interpreter(compile_script("a.vbs",
                                           "Function F\nF = 1\nEnd Function\nFunction Make\nSet "
                                           "Make = GetRef(\"F\")\nEnd Function"),
                            host);
    kept = interpreter.call("Make", {});
    EXPECT_EQ(to_long(kept.as_object()->invoke(kDefaultMember, CallKind::Get, {})), 1);
  }
  EXPECT_THROW(kept.as_object()->invoke(kDefaultMember, CallKind::Get, {}), ScriptError);
}

TEST(Interpreter, PlaceIsTheStatementThatRuns) {
  class Asking final : public ScriptHost {
   public:
    void write(const Value&) override { place = interpreter->place(); }
    using ScriptHost::write;
    Interpreter* interpreter = nullptr;
    SourcePlace place;
  };
  Asking host;
  const Source source =
      page({{Kind::Script, "x = 1\n", 0, 1, 1}, {Kind::Expression, "x", 1, 12, 5}});
  Interpreter interpreter(compile(source), host);
  host.interpreter = &interpreter;
  interpreter.run();
  EXPECT_EQ(host.place.file, 1);
  EXPECT_EQ(host.place.line, 12);
}

}  // namespace
}  // namespace rk::vbscript::testing
