#include "pagehost/components/file_system.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

#include "adapters/posix/files.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/fixed_random.h"
#include "tests/support/memory_files.h"
#include "tests/support/object_calls.h"
#include "tests/support/toy_code_pages.h"

namespace rk::pagehost {
namespace {

using tests::error_number;
using tests::get;
using tests::text_of;

class FileSystemTest : public ::testing::Test {
 protected:
  static Value t(std::string_view text) { return Value::text(text); }
  static Value n(std::int16_t number) { return Value::integer(number); }

  tests::MemoryFiles files_;
  tests::ToyCodePages pages_;
  tests::FixedRandom random_;
  tests::FixedClock clock_;
  Value fso_ = Value::object(make_ref<FileSystemObject>(
      FileSystem{&files_, &pages_, platform::kGb2312}, random_, clock_, "/site"));
};

TEST_F(FileSystemTest, LinesAreReadToTheEnd) {
  files_.put("/site/a.txt", "one\r\ntwo\nthree");
  const Value stream = get(fso_, "OpenTextFile", {t("/site/a.txt")});
  EXPECT_EQ(text_of(get(stream, "ReadLine")), "one");
  EXPECT_EQ(text_of(get(stream, "Line")), "2");
  EXPECT_EQ(text_of(get(stream, "Read", {n(2)})), "tw");
  EXPECT_EQ(text_of(get(stream, "ReadAll")), "o\nthree");
  EXPECT_TRUE(get(stream, "AtEndOfStream").as_boolean());
  EXPECT_EQ(error_number([&] { get(stream, "ReadLine"); }), 62);
}

TEST_F(FileSystemTest, ThereIsOneDrive) {
  files_.put("/site/a/b.txt", "x");
  EXPECT_EQ(text_of(get(get(fso_, "Drives"), "Count")), "1");
  EXPECT_EQ(tests::walked(get(fso_, "Drives")), "/");
  const Value drive = get(get(fso_, "GetFile", {t("/site/a/b.txt")}), "Drive");
  EXPECT_TRUE(get(drive, "IsReady").as_boolean());
  EXPECT_EQ(text_of(get(drive, "DriveType")), "2");
  EXPECT_GE(get(drive, "FreeSpace").as_double(), 0);
  EXPECT_FALSE(get(fso_, "DriveExists", {t("c:")}).as_boolean());
  EXPECT_EQ(text_of(get(fso_, "GetDriveName", {t("c:\\x")})), "c:");
}

TEST_F(FileSystemTest, PathsOfDrivesAreCutAndJoinedAsTexts) {
  EXPECT_EQ(text_of(get(fso_, "BuildPath", {t("c:\\x"), t("y")})), "c:\\x\\y");
  EXPECT_EQ(text_of(get(fso_, "BuildPath", {t("c:\\"), t("y")})), "c:\\y");
  EXPECT_EQ(text_of(get(fso_, "GetParentFolderName", {t("c:\\x\\y")})), "c:\\x");
  EXPECT_EQ(text_of(get(fso_, "GetFileName", {t("c:\\x\\y.txt")})), "y.txt");
  EXPECT_EQ(text_of(get(fso_, "GetDriveName", {t("/site/x")})), "");
}

TEST_F(FileSystemTest, NoFolderOfTheSystemIsSeen) {
  EXPECT_EQ(error_number([&] { get(fso_, "GetSpecialFolder", {n(2)}); }), 76);
  EXPECT_EQ(error_number([&] { get(fso_, "GetSpecialFolder", {n(3)}); }), 5);
}

TEST_F(FileSystemTest, AnEmptyFileHasNothingToRead) {
  files_.put("/site/a.txt", "");
  const Value stream = get(fso_, "OpenTextFile", {t("/site/a.txt")});
  EXPECT_TRUE(get(stream, "AtEndOfStream").as_boolean());
  for (const char* member : {"ReadAll", "ReadLine", "SkipLine"}) {
    EXPECT_EQ(error_number([&] { get(stream, member); }), 62) << member;
  }
  EXPECT_EQ(error_number([&] { get(stream, "Read", {n(1)}); }), 62);
}

TEST_F(FileSystemTest, ModesAndFormatsAreThoseOfItsNumbers) {
  files_.put("/site/a.txt", "\xD6\xD0");
  const auto text = [&](std::int16_t format) {
    return text_of(
        get(get(fso_, "OpenTextFile", {t("/site/a.txt"), n(1), Value::boolean(false), n(format)}),
            "ReadAll"));
  };
  EXPECT_EQ(text(0), "\xE4\xB8\xAD");
  EXPECT_EQ(text(-2), "\xE4\xB8\xAD");
  EXPECT_EQ(text(-1), "\xED\x83\x96") << "as one unit of two bytes";
  EXPECT_EQ(error_number([&] { get(fso_, "OpenTextFile", {t("/site/a.txt"), n(3)}); }), 5);
  const Value file = get(fso_, "GetFile", {t("/site/a.txt")});
  EXPECT_EQ(error_number([&] { get(file, "OpenAsTextStream", {n(3)}); }), 5);
  get(get(file, "OpenAsTextStream", {n(8)}), "Write", {t("b")});
  EXPECT_EQ(files_.read("/site/a.txt"),
            "\xD6\xD0"
            "b");
}

TEST_F(FileSystemTest, FoldersAreMadeCopiedMovedAndRemovedWhole) {
  std::string pattern = (std::filesystem::temp_directory_path() / "folders-XXXXXX").string();
  const std::string root = ::mkdtemp(pattern.data());
  posix::PosixFiles disk({root}, pages_);
  const Value fso = Value::object(make_ref<FileSystemObject>(
      FileSystem{&disk, &pages_, platform::kGb2312}, random_, clock_, root));
  EXPECT_EQ(text_of(get(get(fso, "CreateFolder", {t("a")}), "Name")), "a");
  EXPECT_EQ(error_number([&] { get(fso, "CreateFolder", {t("A")}); }), 58);
  get(get(get(fso, "GetFolder", {t("a")}), "SubFolders"), "Add", {t("b")});
  disk.write(root + "/a/b/c.txt", "1");
  get(fso, "CopyFolder", {t("a"), t("d")});
  EXPECT_EQ(disk.read(root + "/d/b/c.txt"), "1");
  get(fso, "MoveFolder", {t("d"), t("e")});
  EXPECT_FALSE(get(fso, "FolderExists", {t("d")}).as_boolean());
  EXPECT_EQ(tests::walked(get(get(fso, "GetFolder", {t("e")}), "SubFolders")), root + "/e/b");
  get(fso, "DeleteFolder", {t("e")});
  EXPECT_EQ(disk.names(root), std::vector<std::string>{"a"});
  EXPECT_EQ(error_number([&] { get(fso, "DeleteFolder", {t("none")}); }), 76);
  std::filesystem::remove_all(root);
}

TEST_F(FileSystemTest, NamesForTheMomentAreOfOneForm) {
  const std::string name = text_of(get(fso_, "GetTempName"));
  ASSERT_EQ(name.size(), 12u);
  EXPECT_TRUE(name.starts_with("rad") && name.ends_with(".tmp")) << name;
  EXPECT_FALSE(files_.find("/site/" + name));
}

TEST_F(FileSystemTest, ARelativePathIsTakenFromTheSite) {
  files_.put("/site/a.txt", "x");
  EXPECT_TRUE(get(fso_, "FileExists", {t("a.txt")}).as_boolean());
}

TEST_F(FileSystemTest, TextIsWrittenAndReadInTheAnsiCodePage) {
  const Value stream = get(fso_, "CreateTextFile", {t("/site/a.txt")});
  get(stream, "WriteLine", {t("\xE4\xBD\xA0")});
  get(stream, "Close");
  EXPECT_EQ(files_.read("/site/a.txt"), "\xC4\xE3\r\n");
  const Value again = get(fso_, "OpenTextFile", {t("/site/a.txt"), n(1)});
  EXPECT_EQ(text_of(get(again, "ReadLine")), "\xE4\xBD\xA0");
}

TEST_F(FileSystemTest, UnicodeFilesHaveAMarkAndTwoBytesAUnit) {
  const Value stream =
      get(fso_, "CreateTextFile", {t("/site/a.txt"), Value::boolean(true), Value::boolean(true)});
  get(stream, "Write", {t("a")});
  get(stream, "Close");
  EXPECT_EQ(files_.read("/site/a.txt"), std::string("\xFF\xFE"
                                                    "a\0",
                                                    4));
  const Value again = get(fso_, "OpenTextFile", {t("/site/a.txt")});
  EXPECT_EQ(text_of(get(again, "ReadAll")), "a");
}

TEST_F(FileSystemTest, AppendingAddsBehindWhatIsThere) {
  files_.put("/site/a.txt", "1");
  get(get(fso_, "OpenTextFile", {t("/site/a.txt"), n(8)}), "Write", {t("2")});
  EXPECT_EQ(files_.read("/site/a.txt"), "12");
}

TEST_F(FileSystemTest, AMissingFileIsNotMadeUnlessAsked) {
  EXPECT_EQ(error_number([&] { get(fso_, "OpenTextFile", {t("/site/no.txt"), n(2)}); }), 53);
  get(fso_, "OpenTextFile", {t("/site/no.txt"), n(2), Value::boolean(true)});
  EXPECT_TRUE(files_.find("/site/no.txt"));
}

TEST_F(FileSystemTest, AReaderDoesNotWriteAndAWriterDoesNotRead) {
  files_.put("/site/a.txt", "x");
  const Value reader = get(fso_, "OpenTextFile", {t("/site/a.txt")});
  EXPECT_EQ(error_number([&] { get(reader, "Write", {t("y")}); }), 54);
  const Value writer = get(fso_, "OpenTextFile", {t("/site/a.txt"), n(8)});
  EXPECT_EQ(error_number([&] { get(writer, "ReadAll"); }), 54);
}

TEST_F(FileSystemTest, FoldersListTheirFiles) {
  files_.put("/site/up/b.txt", "22");
  files_.put("/site/up/deep/c.txt", "1");
  const Value folder = get(fso_, "GetFolder", {t("/site/up")});
  EXPECT_EQ(text_of(get(get(folder, "Files"), "Count")), "1");
  EXPECT_EQ(text_of(get(get(folder, "SubFolders"), "Count")), "1");
  EXPECT_EQ(text_of(get(folder, "Size")), "3");
  const Value file = get(fso_, "GetFile", {t("/site/up/b.txt")});
  EXPECT_EQ(text_of(get(file, "Name")), "b.txt");
  EXPECT_EQ(text_of(get(file, "Size")), "2");
  EXPECT_EQ(error_number([&] { get(fso_, "GetFile", {t("/site/up")}); }), 53);
  EXPECT_EQ(error_number([&] { get(fso_, "GetFolder", {t("/site/none")}); }), 76);
}

TEST_F(FileSystemTest, CopyingAnAccessFileTakesItsConvertedDatabaseAlong) {
  files_.put("/site/data/shop.mdb", "access");
  files_.put("/site/data/shop.db", "sqlite");
  get(fso_, "CopyFile", {t("/site/data/shop.mdb"), t("/site/data/copy.mdb")});
  EXPECT_EQ(files_.read("/site/data/copy.mdb"), "access");
  EXPECT_EQ(files_.read("/site/data/copy.db"), "sqlite");
}

TEST_F(FileSystemTest, ACopyReplacesOnlyWhereItMay) {
  files_.put("/site/a.txt", "a");
  files_.put("/site/b.txt", "b");
  const auto copy = [&](bool replace) {
    get(fso_, "CopyFile", {t("/site/a.txt"), t("/site/b.txt"), Value::boolean(replace)});
  };
  EXPECT_EQ(error_number([&] { copy(false); }), 58);
  copy(true);
  EXPECT_EQ(files_.read("/site/b.txt"), "a");
}

}  // namespace
}  // namespace rk::pagehost
