// Runs a fuzz target once on every file of the folders named, so that seeds and past crashes are
// tests of every ordinary run:
//   fuzz_replay_NAME RESULTS.json FOLDER...
// The name of a file is printed before it is fed, so that the last line names the one that crashes.
// A seed or a crash was written or found for a reason and counts as a test; a corpus, which the
// fuzzer gathered, counts as one.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::uint8_t> contents(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

int replay(const std::filesystem::path& folder) {
  if (!std::filesystem::is_directory(folder)) return 0;
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::puts(entry.path().c_str());
    std::fflush(stdout);
    const std::vector<std::uint8_t> bytes = contents(entry.path());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    ++count;
  }
  return count;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fputs("usage: fuzz_replay_NAME RESULTS.json FOLDER...\n", stderr);
    return 2;
  }
  int count = 0;
  for (int i = 2; i < argc; ++i) {
    const std::filesystem::path folder(argv[i]);
    const int fed = replay(folder);
    count += folder.filename() == "corpus" ? std::min(fed, 1) : fed;
  }
  std::ofstream(argv[1]) << "{\"passed\": " << count << ", \"failed\": 0, \"failures\": []}\n";
  return count == 0;
}
