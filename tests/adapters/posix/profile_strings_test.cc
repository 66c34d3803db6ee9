#include "adapters/posix/profile_strings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>
#include <vector>

#include "adapters/posix/files.h"
#include "tests/support/failing_files.h"
#include "tests/support/toy_code_pages.h"

namespace rk::posix {
namespace {

class ProfileStringsTest : public ::testing::Test {
 protected:
  ProfileStringsTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "ini-XXXXXX").string();
    root_ = ::mkdtemp(pattern.data());
    files_ = std::make_unique<PosixFiles>(std::vector<std::string>{root_}, code_pages_);
    strings_ = std::make_unique<ProfileStrings>(*files_, root_);
  }
  ~ProfileStringsTest() override { std::filesystem::remove_all(root_); }

  std::string path(std::string_view name) const { return root_ + "/" + std::string(name); }

  tests::ToyCodePages code_pages_;
  std::string root_;
  std::unique_ptr<PosixFiles> files_;
  std::unique_ptr<ProfileStrings> strings_;
};

TEST_F(ProfileStringsTest, WhatIsWrittenIsRead) {
  EXPECT_TRUE(strings_->write("s", "k", "v", path("a.ini")));
  EXPECT_EQ(strings_->read("S", "K", 1024, path("A.INI")), "v");
}

TEST_F(ProfileStringsTest, AValueIsCutToTheBufferLessOne) {
  strings_->write("s", "k", "12345", path("a.ini"));
  EXPECT_EQ(strings_->read("s", "k", 4, path("a.ini")), "123");
}

TEST_F(ProfileStringsTest, AMissingFileReadsAsNothing) {
  EXPECT_EQ(strings_->read("s", "k", 1024, path("none.ini")), "");
  EXPECT_EQ(strings_->read("s", "k", 1024, ""), "");
}

TEST_F(ProfileStringsTest, DeletingInAMissingFileMakesNone) {
  strings_->write("s", "k", std::nullopt, path("none.ini"));
  EXPECT_FALSE(std::filesystem::exists(path("none.ini")));
}

TEST_F(ProfileStringsTest, AFileOutsideTheSiteIsNotReached) {
  EXPECT_FALSE(strings_->write("s", "k", "v", root_ + "/../outside.ini"));
  EXPECT_FALSE(strings_->write("s", "k", "v", ""));
}

TEST(ProfileStringsOfFailingFiles, AFailureIsSilentAndLeavesTheFileAsItWas) {
  tests::FailingFiles files;
  ProfileStrings strings(files, "/site");
  const std::string before = "[s]\r\nk=old\r\n";
  files.put("/site/a.ini", before);
  for (const KnownError* failure : tests::kFileFailures) {
    files.write_failure = failure;
    EXPECT_FALSE(strings.write("s", "k", "new", "/site/a.ini")) << failure->text;
    EXPECT_FALSE(strings.write("s", std::nullopt, "", "/site/a.ini")) << failure->text;
    files.write_failure = nullptr;
    EXPECT_EQ(files.read("/site/a.ini"), before) << failure->text;
  }
}

TEST(ProfileStringsOfFailingFiles, AFileThatCannotBeReadReadsAsNothingAndIsNotWritten) {
  tests::FailingFiles files;
  ProfileStrings strings(files, "/site");
  const std::string before = "[s]\r\nk=old\r\n";
  files.put("/site/a.ini", before);
  for (const KnownError* failure : tests::kFileFailures) {
    files.read_failure = failure;
    EXPECT_EQ(strings.read("s", "k", 1024, "/site/a.ini"), "") << failure->text;
    EXPECT_FALSE(strings.write("s", "k", "new", "/site/a.ini")) << failure->text;
    files.read_failure = nullptr;
    EXPECT_EQ(files.read("/site/a.ini"), before) << failure->text;
  }
}

TEST_F(ProfileStringsTest, WritersAtOnceLoseNothing) {
  constexpr int kKeys = 25;
  std::vector<std::thread> writers;
  for (int writer = 0; writer < 4; ++writer) {
    writers.emplace_back([this, writer] {
      ProfileStrings own(*files_, root_);  // as another process would: no mutex in common
      for (int i = 0; i < kKeys; ++i) {
        own.write("s", std::to_string(writer) + "." + std::to_string(i), "v", path("a.ini"));
      }
    });
  }
  for (std::thread& writer : writers) writer.join();
  for (int writer = 0; writer < 4; ++writer) {
    for (int i = 0; i < kKeys; ++i) {
      const std::string key = std::to_string(writer) + "." + std::to_string(i);
      EXPECT_EQ(strings_->read("s", key, 1024, path("a.ini")), "v") << key;
    }
  }
}

}  // namespace
}  // namespace rk::posix
