// Every script of tests/vbscript/ as a test of its own, named by its path.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/vbscript/script_runner.h"

namespace rk::vbscript::testing {
namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

class ScriptFile : public ::testing::Test {
 public:
  explicit ScriptFile(fs::path path) : path_(std::move(path)) {}
  void TestBody() override {
    const std::string text = contents(path_);
    const Expectation expected = expectation_of(text);
    ASSERT_FALSE(expected.printed.empty() && expected.error.empty()) << path_ << " expects nothing";
    const Outcome outcome = run_script(text);
    EXPECT_EQ(outcome.printed, expected.printed);
    EXPECT_EQ(outcome.error, expected.error) << outcome.description << outcome.report;
  }

 private:
  fs::path path_;
};

bool register_scripts() {
  const fs::path root = fs::path(RK_SOURCE_DIR) / "tests/vbscript";
  std::vector<fs::path> paths;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (entry.path().extension() == ".vbs") paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  for (const fs::path& path : paths) {
    const std::string topic = "Scripts/" + path.parent_path().filename().string();
    ::testing::RegisterTest(topic.c_str(), path.stem().string().c_str(), nullptr, nullptr, __FILE__,
                            __LINE__,
                            [path]() -> ::testing::Test* { return new ScriptFile(path); });
  }
  return !paths.empty();
}

// Registered before main, as TEST() does; gtest has no other moment for it with its own main.
const bool kRegistered = register_scripts();

TEST(Scripts, AreFound) {
  EXPECT_TRUE(kRegistered);
}

}  // namespace
}  // namespace rk::vbscript::testing
