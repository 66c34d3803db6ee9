// The page language: the loops, calls and texts that pages are made of, and how long a page takes
// to compile and to start. bench/language measures the same algorithms in other languages.
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <string>

#include "pagehost/components/dictionary.h"
#include "tests/vbscript/script_host.h"
#include "vbscript/interpreter.h"
#include "vbscript/limits.h"
#include "vbscript/program.h"

namespace {

using rk::Value;
using rk::vbscript::compile_script;
using rk::vbscript::Interpreter;
using rk::vbscript::testing::ScriptHost;

// As a page's thread, which asks once where its stack ends. Scripts find the object that
// CreateObject makes for them, and the long texts of their measures.
class BenchHost final : public ScriptHost {
 public:
  BenchHost() {
    static const std::uintptr_t kFloor = rk::vbscript::stack_floor_of_this_thread();
    changeable_services().stack_floor = kFloor;
    end_after(1 << 30);
  }
  Value create_object(std::string_view) override {
    return Value::object(rk::make_ref<rk::pagehost::Dictionary>());
  }
};

// Runs the Sub "Measured" alone on the clock, behind what stands outside of it. It assigns x, which
// is emptied off the clock.
void run(benchmark::State& state, const std::string& before, const std::string& measured) {
  const auto program = compile_script("bench.vbs", before + "\nSub Measured\n" + measured +
                                                       "\nEnd Sub\nSub Forget\nx = 0\nEnd Sub");
  BenchHost host;
  Interpreter interpreter(program, host);
  interpreter.run();
  for (auto _ : state) {
    interpreter.call("Measured", {});
    state.PauseTiming();
    interpreter.call("Forget", {});
    state.ResumeTiming();
  }
}

// Runs a whole page.
void run(benchmark::State& state, const std::string& page) {
  const auto program = compile_script("bench.vbs", page);
  for (auto _ : state) {
    BenchHost host;
    Interpreter interpreter(program, host);
    interpreter.run();
  }
}

void language_loop(benchmark::State& state) {
  run(state, "x = 0\nFor i = 1 To 1000000\nx = x + 1\nNext");
}
BENCHMARK(language_loop)->Unit(benchmark::kMillisecond);

void language_fib_24(benchmark::State& state) {
  run(state,
      "Function fib(n)\nIf n < 2 Then\nfib = n\nElse\nfib = fib(n-1) + fib(n-2)\nEnd If\n"
      "End Function\nx = fib(24)");
}
BENCHMARK(language_fib_24)->Unit(benchmark::kMillisecond);

void language_array(benchmark::State& state) {
  run(state,
      "Dim a()\nReDim a(1000000)\nFor i = 1 To 1000000\na(i) = i\nNext\n"
      "s = 0\nFor i = 1 To 1000000\ns = s + a(i)\nNext");
}
BENCHMARK(language_array)->Unit(benchmark::kMillisecond);

void language_nested_loops(benchmark::State& state) {
  run(state, "n = 0\nFor i = 1 To 1000\nFor j = 1 To 1000\nn = n + j\nNext\nNext");
}
BENCHMARK(language_nested_loops)->Unit(benchmark::kMillisecond);

void language_methods(benchmark::State& state) {
  run(state,
      "Class C\nPrivate n\nPublic Sub Add(k)\nn = n + k\nEnd Sub\nEnd Class\n"
      "Set o = New C\nFor i = 1 To 300000\no.Add i\nNext");
}
BENCHMARK(language_methods)->Unit(benchmark::kMillisecond);

void language_dictionary(benchmark::State& state) {
  run(state,
      "Set d = CreateObject(\"Scripting.Dictionary\")\n"
      "For i = 1 To 200000\nd(\"k\" & i) = i\nNext\n"
      "n = 0\nFor i = 1 To 200000\nn = n + d(\"k\" & i)\nNext");
}
BENCHMARK(language_dictionary)->Unit(benchmark::kMillisecond);

void language_dictionary_numbers(benchmark::State& state) {
  run(state,
      "Set d = CreateObject(\"Scripting.Dictionary\")\n"
      "For i = 1 To 200000\nd(i) = i\nNext\n"
      "n = 0\nFor i = 1 To 200000\nn = n + d(i)\nNext");
}
BENCHMARK(language_dictionary_numbers)->Unit(benchmark::kMillisecond);

void appends(benchmark::State& state, int count) {
  run(state, "s = \"\"\nFor i = 1 To " + std::to_string(count) + "\ns = s & \"x...\"\nNext");
}
void language_appends_200000(benchmark::State& state) {
  appends(state, 200000);
}
BENCHMARK(language_appends_200000)->Unit(benchmark::kMillisecond);
void language_appends_400000(benchmark::State& state) {
  appends(state, 400000);
}
BENCHMARK(language_appends_400000)->Unit(benchmark::kMillisecond);

// --- long texts -------------------------------------------------------------------------------

constexpr std::size_t kLongText = 10'000'000;
// Bytes that a part takes in an array beside its letters: the value and the head of its text.
constexpr std::size_t kPartBytes = 56;

// `text`, 10 MB of lines that "|" ends, and `parts`, its lines.
std::string lines_of(std::size_t letters) {
  return "x = 0\ntext = \"\"\nline = String(" + std::to_string(letters - 1) +
         ", \"x\") & \"|\"\nFor i = 1 To " + std::to_string(kLongText / letters) +
         "\ntext = text & line\nNext\nparts = Split(text, \"|\")\n";
}
constexpr std::size_t kParagraph = 1000;
constexpr std::size_t kShortLine = 100;

// What reading half and writing half of so many bytes costs at least.
void copy(benchmark::State& state, std::size_t bytes) {
  const std::string from(bytes / 2, 'x');
  std::string to(bytes / 2, 'y');
  for (auto _ : state) {
    std::memcpy(to.data(), from.data(), from.size());
    benchmark::DoNotOptimize(to.data());
    benchmark::ClobberMemory();
  }
}
void language_replace_10_mb_floor(benchmark::State& state) {
  copy(state, 2 * kLongText + 3 * kLongText / kParagraph);
}
BENCHMARK(language_replace_10_mb_floor)->Unit(benchmark::kMillisecond);
void language_split_10_mb_floor(benchmark::State& state) {
  copy(state, 2 * kLongText + kPartBytes * kLongText / kParagraph);
}
BENCHMARK(language_split_10_mb_floor)->Unit(benchmark::kMillisecond);
void language_split_10_mb_short_lines_floor(benchmark::State& state) {
  copy(state, 2 * kLongText + kPartBytes * kLongText / kShortLine);
}
BENCHMARK(language_split_10_mb_short_lines_floor)->Unit(benchmark::kMillisecond);

void language_replace_10_mb(benchmark::State& state) {
  run(state, lines_of(kParagraph), "x = Replace(text, \"|\", \"<br>\")");
}
BENCHMARK(language_replace_10_mb)->Unit(benchmark::kMillisecond);

void language_split_10_mb(benchmark::State& state) {
  run(state, lines_of(kParagraph), "x = Split(text, \"|\")");
}
BENCHMARK(language_split_10_mb)->Unit(benchmark::kMillisecond);

void language_join_10_mb(benchmark::State& state) {
  run(state, lines_of(kParagraph), "x = Join(parts, \"|\")");
}
BENCHMARK(language_join_10_mb)->Unit(benchmark::kMillisecond);

// The same with a hundred thousand short lines, where making the parts takes the most.
void language_replace_10_mb_short_lines(benchmark::State& state) {
  run(state, lines_of(kShortLine), "x = Replace(text, \"|\", \"<br>\")");
}
BENCHMARK(language_replace_10_mb_short_lines)->Unit(benchmark::kMillisecond);

void language_split_10_mb_short_lines(benchmark::State& state) {
  run(state, lines_of(kShortLine), "x = Split(text, \"|\")");
}
BENCHMARK(language_split_10_mb_short_lines)->Unit(benchmark::kMillisecond);

void language_join_10_mb_short_lines(benchmark::State& state) {
  run(state, lines_of(kShortLine), "x = Join(parts, \"|\")");
}
BENCHMARK(language_join_10_mb_short_lines)->Unit(benchmark::kMillisecond);

// --- walks ------------------------------------------------------------------------------------

void mid_walk(benchmark::State& state, const std::string& letter, const std::string& way) {
  run(state, "s = String(200000, \"" + letter + "\")\nFor i = " + way + "\nx = Mid(s, i, 1)\nNext");
}
constexpr const char* kForwards = "1 To 200000";
constexpr const char* kBackwards = "200000 To 1 Step -1";

void language_mid_ascii(benchmark::State& state) {
  mid_walk(state, "a", kForwards);
}
BENCHMARK(language_mid_ascii)->Unit(benchmark::kMillisecond);
void language_mid_chinese(benchmark::State& state) {
  mid_walk(state, "中", kForwards);
}
BENCHMARK(language_mid_chinese)->Unit(benchmark::kMillisecond);
void language_mid_ascii_backwards(benchmark::State& state) {
  mid_walk(state, "a", kBackwards);
}
BENCHMARK(language_mid_ascii_backwards)->Unit(benchmark::kMillisecond);
void language_mid_chinese_backwards(benchmark::State& state) {
  mid_walk(state, "中", kBackwards);
}
BENCHMARK(language_mid_chinese_backwards)->Unit(benchmark::kMillisecond);

// Bytes as pages read them out of an upload.
void byte_walk(benchmark::State& state, int bytes) {
  const std::string size = std::to_string(bytes);
  run(state, "s = String(" + std::to_string(bytes / 2) + ", ChrW(&H4E2D))\nFor i = 1 To " + size +
                 "\nn = n + AscB(MidB(s, i, 1))\nNext");
}
void language_bytes_5_mb(benchmark::State& state) {
  byte_walk(state, 5'000'000);
}
BENCHMARK(language_bytes_5_mb)->Unit(benchmark::kMillisecond);
void language_bytes_2_5_mb(benchmark::State& state) {
  byte_walk(state, 2'500'000);
}
BENCHMARK(language_bytes_2_5_mb)->Unit(benchmark::kMillisecond);

// --- pages ------------------------------------------------------------------------------------

std::string page_of_3000_lines() {
  std::string text;
  for (int i = 0; i < 600; ++i) {
    text += "If total > " + std::to_string(i) + " Then\n  total = total + price(\"item" +
            std::to_string(i) + "\") * 2\nElse\n  name = \"n\" & total & \"<br>\"\nEnd If\n";
  }
  return text;
}

void language_compile_3000_lines(benchmark::State& state) {
  const std::string text = page_of_3000_lines();
  for (auto _ : state) benchmark::DoNotOptimize(compile_script("page.asp", text));
}
BENCHMARK(language_compile_3000_lines)->Unit(benchmark::kMillisecond);

void language_start(benchmark::State& state) {
  const auto program = compile_script("page.asp", page_of_3000_lines() + "\nSub S\nEnd Sub");
  for (auto _ : state) {
    BenchHost host;
    Interpreter interpreter(program, host);
    interpreter.call("S", {});
  }
}
BENCHMARK(language_start)->Unit(benchmark::kMicrosecond);

}  // namespace
