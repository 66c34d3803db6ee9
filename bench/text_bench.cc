// How a text is held: UTF-8 with a kept length and cursor (what value/text.h does) beside a
// two-form text (bytes of Latin-1 where all units fit, else 16-bit units), on the work that pages
// and regions do. The figures stand in docs/performance.md.
#include <benchmark/benchmark.h>

#include <string>
#include <string_view>

#include "value/text.h"

namespace {

using rk::Text;

// As much of a two-form text as the comparison needs: one of the two strings is in use.
class TwoForm {
 public:
  explicit TwoForm(std::string_view utf8) {
    if (rk::is_ascii(utf8)) {
      narrow_ = utf8;
    } else {
      wide_ = Text(utf8).units();
    }
  }
  std::size_t length() const { return wide_.empty() ? narrow_.size() : wide_.size(); }
  TwoForm mid(std::size_t start, std::size_t count) const {
    TwoForm piece;
    if (wide_.empty()) {
      piece.narrow_ = narrow_.substr(start, count);
    } else {
      piece.wide_ = wide_.substr(start, count);
    }
    return piece;
  }
  void append(const TwoForm& more) {
    if (wide_.empty() && more.wide_.empty()) {
      narrow_ += more.narrow_;
      return;
    }
    if (wide_.empty()) wide_.assign(narrow_.begin(), narrow_.end());
    if (more.wide_.empty()) {
      wide_.append(more.narrow_.begin(), more.narrow_.end());
    } else {
      wide_ += more.wide_;
    }
  }
  void write(std::string& response) const {
    if (wide_.empty()) {
      response += narrow_;
    } else {
      for (const char16_t unit : wide_) rk::append_unit(response, unit);
    }
  }

 private:
  TwoForm() = default;
  std::string narrow_;
  std::u16string wide_;
};

std::string repeated(std::string_view piece, std::size_t times) {
  std::string text;
  for (std::size_t i = 0; i < times; ++i) text += piece;
  return text;
}

const std::string& chinese() {
  static const std::string text = repeated("虚拟主机", 50000);
  return text;
}
const std::string& ascii() {
  static const std::string text = repeated("host", 50000);
  return text;
}

template <class T>
void walk(benchmark::State& state, const std::string& utf8, bool backwards) {
  const T text{std::string_view(utf8)};
  const std::size_t length = text.length();
  for (auto _ : state) {
    std::size_t seen = 0;
    for (std::size_t i = 0; i < length; ++i) {
      seen += text.mid(backwards ? length - 1 - i : i, 1).length();
    }
    benchmark::DoNotOptimize(seen);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(length));
}

// A region: a template and twenty rows of Chinese text that go to the response.
template <class T>
void region(benchmark::State& state) {
  const std::string head = repeated("<div class=\"plan\">虚拟主机</div>\r\n", 100);
  const std::string row = "<li>经济型虚拟主机 300MB Access/Sql 无限制</li>\r\n";
  for (auto _ : state) {
    T out{std::string_view(head)};
    for (int i = 0; i < 20; ++i) out.append(T{std::string_view(row)});
    std::string response;
    if constexpr (std::is_same_v<T, Text>) {
      response += out.view();
    } else {
      out.write(response);
    }
    benchmark::DoNotOptimize(response);
  }
}

void walk_utf8(benchmark::State& state, const std::string& text, bool backwards) {
  walk<Text>(state, text, backwards);
}
void walk_two_form(benchmark::State& state, const std::string& text, bool backwards) {
  walk<TwoForm>(state, text, backwards);
}

BENCHMARK_CAPTURE(walk_utf8, chinese_forwards, chinese(), false);
BENCHMARK_CAPTURE(walk_two_form, chinese_forwards, chinese(), false);
BENCHMARK_CAPTURE(walk_utf8, chinese_backwards, chinese(), true);
BENCHMARK_CAPTURE(walk_two_form, chinese_backwards, chinese(), true);
BENCHMARK_CAPTURE(walk_utf8, ascii_forwards, ascii(), false);
BENCHMARK_CAPTURE(walk_two_form, ascii_forwards, ascii(), false);
BENCHMARK(region<Text>);
BENCHMARK(region<TwoForm>);

}  // namespace
