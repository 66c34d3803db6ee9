// The page language: the loops, calls and texts that pages are made of, and how long a page takes
// to compile and to start.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "tests/vbscript/script_host.h"
#include "vbscript/interpreter.h"
#include "vbscript/limits.h"
#include "vbscript/program.h"

namespace {

using rk::vbscript::compile_script;
using rk::vbscript::Interpreter;
using rk::vbscript::testing::ScriptHost;

// As a page's thread, which asks once where its stack ends.
class BenchHost final : public ScriptHost {
 public:
  BenchHost() {
    static const std::uintptr_t kFloor = rk::vbscript::stack_floor_of_this_thread();
    changeable_services().stack_floor = kFloor;
    end_after(1 << 30);
  }
};

void run(benchmark::State& state, const std::string& script) {
  const auto program = compile_script("bench.vbs", script);
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

void language_appends(benchmark::State& state) {
  run(state,
      "s = \"\"\nFor i = 1 To " + std::to_string(state.range(0)) + "\ns = s & \"x...\"\nNext");
}
BENCHMARK(language_appends)->Arg(200000)->Arg(400000)->Unit(benchmark::kMillisecond);

void language_mid_walk(benchmark::State& state) {
  const std::string letter = state.range(0) == 0 ? "a" : "中";
  run(state, "s = String(200000, \"" + letter + "\")\nFor i = 1 To 200000\nx = Mid(s, i, 1)\nNext");
}
BENCHMARK(language_mid_walk)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

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
