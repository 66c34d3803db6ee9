// The services' work on files: the daily log's rewrite beside a plain copy of the file, and a key
// out of a large INI file beside a plain look at its bytes.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "adapters/codepage/code_pages.h"
#include "adapters/posix/files.h"
#include "adapters/posix/profile_strings.h"
#include "platform/clock.h"
#include "services/daily_log.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLogBytes = 10'000'000;
constexpr int kIniLines = 100'000;

class NoonClock final : public rk::platform::Clock {
 public:
  double now() const override { return 45000.5; }
  std::chrono::steady_clock::time_point steady() const override { return {}; }
};

class Folder {
 public:
  Folder() {
    std::string pattern = (fs::temp_directory_path() / "bench-services-XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
  }
  ~Folder() { fs::remove_all(path_); }
  std::string file(const std::string& name) const { return path_ + "/" + name; }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

void fill_log(const std::string& file) {
  std::string text;
  while (text.size() < kLogBytes)
    text += "2023-03-15 12:00:00                  order 1234 paid\r\n";
  std::ofstream(file, std::ios::binary) << text;
}

std::string whole(const std::string& file) {
  std::string bytes(fs::file_size(file), '\0');
  const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    const ssize_t count = ::read(descriptor, bytes.data() + filled, bytes.size() - filled);
    if (count <= 0) break;
    filled += static_cast<std::size_t>(count);
  }
  ::close(descriptor);
  return bytes;
}

void writelog_10mb(benchmark::State& state) {
  const Folder folder;
  const rk::codepage::IcuCodePages code_pages;
  rk::posix::PosixFiles files({folder.path()}, code_pages);
  const NoonClock clock;
  const rk::services::LogStore store{files, clock, code_pages, rk::platform::kGb2312,
                                     folder.path()};
  fill_log(folder.file("2023-03-15.log"));
  for (auto _ : state) rk::services::writelog(store, rk::Value::text("order 1235 paid"));
}
BENCHMARK(writelog_10mb)->Unit(benchmark::kMillisecond)->UseRealTime();

// Read whole, written whole to a new file.
void writelog_10mb_floor(benchmark::State& state) {
  const Folder folder;
  fill_log(folder.file("log"));
  for (auto _ : state) {
    const std::string bytes = whole(folder.file("log"));
    const int copy =
        ::open(folder.file("copy").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    std::size_t written = 0;
    while (written < bytes.size()) {
      const ssize_t count = ::write(copy, bytes.data() + written, bytes.size() - written);
      if (count <= 0) break;
      written += static_cast<std::size_t>(count);
    }
    ::close(copy);
  }
}
BENCHMARK(writelog_10mb_floor)->Unit(benchmark::kMillisecond)->UseRealTime();

void fill_ini(const std::string& file) {
  std::ofstream out(file, std::ios::binary);
  for (int line = 0; line < kIniLines; ++line) {
    if (line % 100 == 0)
      out << "[section " << line / 100 << "]\r\n";
    else
      out << "key" << line << " = value of line " << line << "\r\n";
  }
}

void ini_key_of_100000_lines(benchmark::State& state) {
  const Folder folder;
  const rk::codepage::IcuCodePages code_pages;
  rk::posix::PosixFiles files({folder.path()}, code_pages);
  rk::posix::ProfileStrings strings(files, folder.path());
  const std::string file = folder.file("shop.ini");
  fill_ini(file);
  for (auto _ : state) {
    benchmark::DoNotOptimize(strings.read("section 999", "key99999", 1024, file));
  }
}
BENCHMARK(ini_key_of_100000_lines)->Unit(benchmark::kMillisecond)->UseRealTime();

// The file's bytes, and one look at each line's first.
void ini_key_of_100000_lines_floor(benchmark::State& state) {
  const Folder folder;
  fill_ini(folder.file("shop.ini"));
  for (auto _ : state) {
    const std::string bytes = whole(folder.file("shop.ini"));
    int headers = 0;
    for (std::size_t at = 0; at < bytes.size();) {
      headers += bytes[at] == '[';
      at = bytes.find('\n', at) + 1;
    }
    benchmark::DoNotOptimize(headers);
  }
}
BENCHMARK(ini_key_of_100000_lines_floor)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
