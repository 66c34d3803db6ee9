#include "adapters/posix/files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "value/script_error.h"

namespace rk::posix {
namespace {

namespace fs = std::filesystem;

// Knows one character of 936, and that 65001 has no byte FF.
class OneCharacterPages final : public platform::CodePages {
 public:
  bool supports(int) const override { return true; }
  std::string to_utf8(std::string_view bytes, int code_page,
                      std::optional<std::size_t>* first_bad) const override {
    if (code_page == 936) return bytes == "\xD6\xD0" ? "中" : "other";
    std::string text(bytes);
    const std::size_t bad = text.find('\xFF');
    if (bad == std::string::npos) return text;
    *first_bad = bad;
    return text.replace(bad, 1, "\xEF\xBF\xBD");
  }
  std::string from_utf8(std::string_view utf8, int) const override { return std::string(utf8); }
};

class FilesTest : public ::testing::Test {
 protected:
  FilesTest() {
    std::string pattern = ::testing::TempDir() + "rk-files-XXXXXX";
    base_ = ::mkdtemp(pattern.data());
    site_ = base_ + "/site";
    fs::create_directories(site_ + "/Template/Blue");
    fs::create_directories(base_ + "/sitelike");
    put(base_ + "/secret.txt", "secret");
    put(base_ + "/sitelike/x.txt", "near");
  }
  ~FilesTest() override { fs::remove_all(base_); }

  static void put(const std::string& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }
  static std::string content(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  PosixFiles files(TextDecoding decoding = {}) {
    return PosixFiles({site_}, pages_, std::move(decoding));
  }
  template <typename Call>
  static int number_of(Call call) {
    try {
      call();
    } catch (const ScriptError& error) {
      return error.number();
    }
    return 0;
  }

  OneCharacterPages pages_;
  std::string base_;
  std::string site_;
};

TEST_F(FilesTest, AFileIsFoundInAnyLetterCaseAndWithBackslashes) {
  put(site_ + "/Template/Blue/Menu.html", "menu");
  PosixFiles site = files();
  EXPECT_EQ(site.find(site_ + "/Template/Blue/Menu.html"), site_ + "/Template/Blue/Menu.html");
  EXPECT_EQ(site.find(site_ + "/TEMPLATE/blue/mENU.HTML"), site_ + "/Template/Blue/Menu.html");
  EXPECT_EQ(site.find(site_ + "\\template\\BLUE\\menu.html"), site_ + "/Template/Blue/Menu.html");
  EXPECT_EQ(site.read(site_ + "//template/./x/../blue/MENU.html"), "menu");
  EXPECT_FALSE(site.find(site_ + "/Template/Blue/Menu.htm"));
}

TEST_F(FilesTest, AFileOfTheExactCaseIsPreferred) {
  put(site_ + "/A.txt", "capital");
  put(site_ + "/a.txt", "small");
  PosixFiles site = files();
  EXPECT_EQ(site.read(site_ + "/A.txt"), "capital");
  EXPECT_EQ(site.read(site_ + "/a.txt"), "small");
  EXPECT_EQ(site.read(site_ + "/a.TXT"), "capital") << "the first in byte order";
}

TEST_F(FilesTest, FoldersThatDifferInLetterCaseOnlyAreAllLookedIn) {
  fs::create_directories(site_ + "/Inc/Sub");
  fs::create_directories(site_ + "/inc/sub");
  fs::create_directories(site_ + "/INC");
  put(site_ + "/Inc/only.asp", "upper");
  put(site_ + "/inc/config.asp", "lower");
  put(site_ + "/Inc/both.asp", "both upper");
  put(site_ + "/inc/both.asp", "both lower");
  put(site_ + "/inc/sub/deep.asp", "deep");
  const PosixFiles files = this->files();
  EXPECT_EQ(files.find(site_ + "/inc/ONLY.asp"), site_ + "/Inc/only.asp");
  EXPECT_EQ(files.find(site_ + "/INC/only.asp"), site_ + "/Inc/only.asp");
  EXPECT_EQ(files.find(site_ + "\\iNC\\Config.asp"), site_ + "/inc/config.asp");
  EXPECT_EQ(files.read(site_ + "/inc/both.ASP"), "both lower") << "the exact folder first";
  EXPECT_EQ(files.read(site_ + "/Inc/Both.asp"), "both upper");
  EXPECT_EQ(files.read(site_ + "/INC/Sub/Deep.asp"), "deep");
  EXPECT_EQ(files.find(site_ + "/INC/none.asp"), std::nullopt);
  EXPECT_TRUE(files.is_folder(site_ + "/inc/SUB"));
}

TEST_F(FilesTest, AFileIsNoFolderOfAnotherLetterCase) {
  put(site_ + "/shop", "a file");
  fs::create_directories(site_ + "/Shop");
  put(site_ + "/Shop/a.asp", "found");
  EXPECT_EQ(files().read(site_ + "/shop/a.asp"), "found");
  EXPECT_EQ(files().read(site_ + "/shop"), "a file");
}

TEST_F(FilesTest, AFileIsReplacedInWhicheverFolderItLies) {
  fs::create_directories(site_ + "/Log");
  fs::create_directories(site_ + "/log");
  put(site_ + "/Log/today.txt", "old");
  PosixFiles files = this->files();
  files.write(site_ + "/log/Today.txt", "new");
  files.write(site_ + "/log/other.txt", "made");
  EXPECT_EQ(content(site_ + "/Log/today.txt"), "new");
  EXPECT_EQ(content(site_ + "/log/other.txt"), "made") << "a new one in the folder named";
}

// A page may make them; looking into all of them would be a search for ever.
TEST_F(FilesTest, FoldersOfAllLetterCasesInsideOneAnotherAreNotAllLookedInto) {
  const auto fill = [](const auto& self, const std::string& under, int depth) -> void {
    for (const char* name : {"/ab", "/aB", "/Ab", "/AB"}) {
      fs::create_directories(under + name);
      if (depth > 1) self(self, under + name, depth - 1);
    }
  };
  fill(fill, site_, 5);
  put(site_ + "/Ab/AB/AB/AB/AB/near", "x");
  put(site_ + "/ab/ab/ab/ab/ab/last", "x");
  EXPECT_TRUE(files().find(site_ + "/AB/AB/AB/AB/AB/near"));
  EXPECT_TRUE(files().find(site_ + "/ab/ab/ab/ab/ab/LAST"));
  EXPECT_FALSE(files().find(site_ + "/AB/AB/AB/AB/AB/last")) << "the last of 1365 folders";
}

TEST_F(FilesTest, ANewFileAndARemovedOneAreNoticedAtOnce) {
  PosixFiles site = files();
  EXPECT_FALSE(site.find(site_ + "/NEW.TXT"));
  put(site_ + "/new.txt", "1");
  EXPECT_EQ(site.find(site_ + "/NEW.TXT"), site_ + "/new.txt");
  fs::remove(site_ + "/new.txt");
  EXPECT_FALSE(site.find(site_ + "/NEW.TXT"));
}

TEST_F(FilesTest, NoPathLeavesTheRoot) {
  fs::create_symlink(base_ + "/secret.txt", site_ + "/link.txt");
  fs::create_symlink("..", site_ + "/up");
  fs::create_symlink("../secret.txt", site_ + "/relative.txt");
  PosixFiles site = files();
  const std::string tries[] = {
      site_ + "/../secret.txt",
      site_ + "/x/../../secret.txt",
      site_ + "/..\\secret.txt",
      site_ + "/link.txt",
      site_ + "/LINK.TXT",
      site_ + "/up/secret.txt",
      site_ + "/relative.txt",
      base_ + "/secret.txt",
      base_ + "/sitelike/x.txt",
      "/etc/passwd",
      "secret.txt",
      "",
      site_ + "/../sitelike/x.txt",
  };
  for (const std::string& path : tries) {
    EXPECT_FALSE(site.find(path)) << path;
    EXPECT_FALSE(site.stamp(path)) << path;
    EXPECT_NE(number_of([&] { site.read(path); }), 0) << path;
    EXPECT_NE(number_of([&] { site.write(path, "x"); }), 0) << path;
    EXPECT_NE(number_of([&] { site.append(path, "x"); }), 0) << path;
  }
  EXPECT_EQ(content(base_ + "/secret.txt"), "secret");
  EXPECT_FALSE(site.find(std::string_view("/tmp\0/x", 7)));
  EXPECT_FALSE(site.find(site_ + std::string("/a\0b", 4)));
}

TEST_F(FilesTest, LinksThatStayInARootAreFollowed) {
  put(site_ + "/real.txt", "real");
  fs::create_directories(base_ + "/more");
  put(base_ + "/more/m.txt", "more");
  fs::create_symlink(site_ + "/real.txt", site_ + "/absolute.txt");
  fs::create_symlink("real.txt", site_ + "/relative.txt");
  fs::create_symlink(base_ + "/more", site_ + "/more");
  PosixFiles site({site_, base_ + "/more"}, pages_);
  EXPECT_EQ(site.read(site_ + "/absolute.txt"), "real");
  EXPECT_EQ(site.read(site_ + "/relative.txt"), "real");
  EXPECT_EQ(site.read(site_ + "/more/M.TXT"), "more");
  EXPECT_EQ(site.read(base_ + "/more/m.txt"), "more");
}

TEST_F(FilesTest, FoldersAreToldFromFiles) {
  put(site_ + "/a.txt", "");
  PosixFiles site = files();
  EXPECT_TRUE(site.is_folder(site_));
  EXPECT_TRUE(site.is_folder(site_ + "/"));
  EXPECT_TRUE(site.is_folder(site_ + "/template/BLUE/"));
  EXPECT_FALSE(site.is_folder(site_ + "/a.txt"));
  EXPECT_EQ(number_of([&] { site.read(site_ + "/Template"); }), 70);
  EXPECT_EQ(site.names(site_), (std::vector<std::string>{"Template", "a.txt"}));
  EXPECT_TRUE(site.names(site_ + "/none").empty());
}

TEST_F(FilesTest, AMissingFileIs53AndAMissingFolderIs76) {
  PosixFiles site = files();
  EXPECT_EQ(number_of([&] { site.read(site_ + "/none.txt"); }), 53);
  EXPECT_EQ(number_of([&] { site.read(site_ + "/none/none.txt"); }), 76);
  EXPECT_EQ(number_of([&] { site.write(site_ + "/none/none.txt", ""); }), 76);
  put(site_ + "/empty.txt", "");
  EXPECT_EQ(site.read(site_ + "/empty.txt"), "");
  EXPECT_EQ(number_of([&] { site.read_text(site_ + "/empty.txt"); }), 62);
}

TEST_F(FilesTest, AWrittenFileGoesIntoTheFolderThatIsThere) {
  PosixFiles site = files();
  site.write(site_ + "/TEMPLATE/blue/New.txt", "one");
  EXPECT_EQ(content(site_ + "/Template/Blue/New.txt"), "one");
  site.write(site_ + "/template/BLUE/NEW.TXT", "two");
  EXPECT_EQ(content(site_ + "/Template/Blue/New.txt"), "two");
  site.append(site_ + "/template/BLUE/NEW.TXT", "+");
  EXPECT_EQ(content(site_ + "/Template/Blue/New.txt"), "two+");
  site.append(site_ + "/template/BLUE/log.txt", "line");
  EXPECT_EQ(content(site_ + "/Template/Blue/log.txt"), "line");
  EXPECT_EQ(site.names(site_ + "/Template/Blue").size(), 2u) << "nothing temporary stays";
  EXPECT_FALSE(fs::exists(site_ + "/TEMPLATE"));
}

TEST_F(FilesTest, AReplacedFileKeepsItsPermissionsAndOpenReadersTheirBytes) {
  put(site_ + "/a.txt", "old");
  ASSERT_EQ(::chmod((site_ + "/a.txt").c_str(), 0640), 0);
  PosixFiles site = files();
  const auto reader = site.open(site_ + "/a.txt");
  site.write(site_ + "/a.txt", "new bytes");
  char bytes[8] = {};
  EXPECT_EQ(::pread(reader->descriptor->number(), bytes, sizeof bytes, 0), 3);
  EXPECT_STREQ(bytes, "old");
  struct stat status {};
  ASSERT_EQ(::stat((site_ + "/a.txt").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777u, 0640u);
}

// The bytes that a file may grow to, while in scope; beyond them a write fails as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : action_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit lower{bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &lower);
  }
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, action_);
  }

 private:
  void (*action_)(int);
  rlimit before_{};
};

TEST_F(FilesTest, AFileThatCannotBeWrittenWholeStaysAsItWas) {
  put(site_ + "/a.txt", "old");
  PosixFiles site = files();
  {
    const FileSizeLimit limit(10);
    EXPECT_EQ(number_of([&] { site.write(site_ + "/a.txt", "more than ten bytes"); }), 61);
    EXPECT_EQ(number_of([&] { site.write(site_ + "/new.txt", "more than ten bytes"); }), 61);
  }
  EXPECT_EQ(content(site_ + "/a.txt"), "old");
  EXPECT_FALSE(fs::exists(site_ + "/new.txt"));
  EXPECT_EQ(site.names(site_).size(), 2u) << "nothing temporary stays";
}

TEST_F(FilesTest, TheStampChangesWithTheFile) {
  put(site_ + "/a.txt", "1");
  PosixFiles site = files();
  const auto before = site.stamp(site_ + "/A.TXT");
  ASSERT_TRUE(before);
  EXPECT_EQ(before->size, 1u);
  site.write(site_ + "/a.txt", "2");
  EXPECT_NE(site.stamp(site_ + "/a.txt"), before);
}

TEST_F(FilesTest, AStampedFileThatBecomesALinkOutIsGone) {
  put(site_ + "/a.txt", "1");
  PosixFiles site = files();
  EXPECT_TRUE(site.stamp(site_ + "/a.txt"));
  EXPECT_TRUE(site.stamp(site_ + "/a.txt")) << "by what is known of it";
  fs::remove(site_ + "/a.txt");
  EXPECT_FALSE(site.stamp(site_ + "/a.txt"));
  fs::create_symlink(base_ + "/secret.txt", site_ + "/a.txt");
  EXPECT_FALSE(site.stamp(site_ + "/a.txt"));
  fs::remove(site_ + "/a.txt");
  put(site_ + "/a.txt", "22");
  EXPECT_EQ(site.stamp(site_ + "/a.txt")->size, 2u);
}

TEST_F(FilesTest, ANamedPipeIsNotReadAndDoesNotWait) {
  ASSERT_EQ(::mkfifo((site_ + "/pipe").c_str(), 0600), 0);
  PosixFiles site = files();
  EXPECT_FALSE(site.open(site_ + "/pipe"));
  EXPECT_EQ(number_of([&] { site.read(site_ + "/pipe"); }), 70);
}

TEST_F(FilesTest, TextIsReadByItsMarkElseByTheSettings) {
  put(site_ + "/mark.txt", "\xEF\xBB\xBF中");
  put(site_ + "/le.txt", std::string_view("\xFF\xFE\x2D\x4E"
                                          "a\0",
                                          6));
  put(site_ + "/be.txt", std::string_view("\xFE\xFF\x4E\x2D\0a", 6));
  put(site_ + "/gb.txt", "\xD6\xD0");
  put(site_ + "/utf8.txt", "中");
  PosixFiles site = files();
  EXPECT_EQ(site.read_text(site_ + "/mark.txt"), "中");
  EXPECT_EQ(site.read_text(site_ + "/le.txt"), "中a");
  EXPECT_EQ(site.read_text(site_ + "/be.txt"), "中a");
  EXPECT_EQ(site.read_text(site_ + "/gb.txt"), "中");
  EXPECT_EQ(site.read_text(site_ + "/utf8.txt"), "中");
  PosixFiles gb = files({.code_page = 936, .ansi = 936, .on_bad_bytes = {}});
  EXPECT_EQ(gb.read_text(site_ + "/gb.txt"), "中");
  EXPECT_NE(gb.read_text(site_ + "/utf8.txt"), "中");
}

TEST_F(FilesTest, BadBytesAreToldWithFileAndLine) {
  put(site_ + "/bad.txt", "one\ntwo\n\xFF\n");
  std::string told;
  PosixFiles site = files({.code_page = 65001,
                           .ansi = 936,
                           .on_bad_bytes = [&](const std::string& path, std::size_t line) {
                             told = path + ":" + std::to_string(line);
                           }});
  EXPECT_EQ(site.read_text(site_ + "/bad.txt"), "one\ntwo\n\xEF\xBF\xBD\n");
  EXPECT_EQ(told, site_ + "/bad.txt:3");
}

TEST_F(FilesTest, FilesAndFoldersAreMadeMovedAndRemovedInAnyLetterCase) {
  PosixFiles site = files();
  site.make_folder(site_ + "/Up");
  site.write(site_ + "/up/a.txt", "1");
  site.rename(site_ + "/UP/A.TXT", site_ + "/b.txt");
  EXPECT_EQ(site.read(site_ + "/b.txt"), "1");
  EXPECT_EQ(number_of([&] { site.make_folder(site_ + "/uP"); }), 58);
  site.remove_folder(site_ + "/UP");
  site.remove(site_ + "/B.txt");
  EXPECT_FALSE(site.find(site_ + "/b.txt"));
  EXPECT_FALSE(site.is_folder(site_ + "/Up"));
}

TEST_F(FilesTest, MovingReplacesNothingAndRemovingStaysInTheSite) {
  put(site_ + "/a.txt", "a");
  put(site_ + "/b.txt", "b");
  PosixFiles site = files();
  EXPECT_EQ(number_of([&] { site.rename(site_ + "/a.txt", site_ + "/b.txt"); }), 58);
  EXPECT_EQ(site.read(site_ + "/b.txt"), "b");
  EXPECT_EQ(number_of([&] { site.remove(site_ + "/../outside.txt"); }), 53);
  EXPECT_EQ(number_of([&] { site.remove_folder(site_); }), 76);
  EXPECT_EQ(number_of([&] { site.rename(site_ + "/a.txt", site_ + "/../a.txt"); }), 76);
}

}  // namespace
}  // namespace rk::posix
