// Set_Tags beside the least that the work can cost: memmem for the places, memcpy for the bytes.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "site/tags.h"
#include "value/value.h"

namespace {

// A template file of about eight thousand bytes with a tag in every tenth line.
std::string template_file() {
  std::string file;
  for (int line = 0; line < 150; ++line) {
    file += "<div class=\"plan\"><span>虚拟主机</span><a href=\"/host/\">more</a></div>";
    file += line % 10 == 0 ? "{HostName}\r\n" : "\r\n";
  }
  return file;
}

void set_tags(benchmark::State& state) {
  const rk::Value file = rk::Value::text(template_file());
  const rk::Value content = rk::Value::text("经济型虚拟主机");
  for (auto _ : state) {
    rk::Value name = rk::Value::text("HostName");
    benchmark::DoNotOptimize(rk::site::Set_Tags(file, name, content));
  }
}

void set_tags_floor(benchmark::State& state) {
  const std::string file = template_file();
  const std::string_view tag = "{HostName}";
  const std::string_view content = "经济型虚拟主机";
  std::vector<std::size_t> places;
  for (auto _ : state) {
    places.clear();
    const char* at = file.data();
    const char* const end = file.data() + file.size();
    while (const void* found =
               memmem(at, static_cast<std::size_t>(end - at), tag.data(), tag.size())) {
      places.push_back(static_cast<std::size_t>(static_cast<const char*>(found) - file.data()));
      at = static_cast<const char*>(found) + tag.size();
    }
    const std::size_t size = file.size() + places.size() * (content.size() - tag.size());
    const std::unique_ptr<char[]> result(new char[size]);
    char* out = result.get();
    std::size_t from = 0;
    for (const std::size_t place : places) {
      std::memcpy(out, file.data() + from, place - from);
      out += place - from;
      std::memcpy(out, content.data(), content.size());
      out += content.size();
      from = place + tag.size();
    }
    std::copy(file.begin() + static_cast<std::ptrdiff_t>(from), file.end(), out);
    benchmark::DoNotOptimize(result.get());
    benchmark::ClobberMemory();
  }
}

BENCHMARK(set_tags);
BENCHMARK(set_tags_floor);

}  // namespace
