#include "adapters/sqlite/script.h"

#include <gtest/gtest.h>

#include "tests/adapters/sqlite/disk_folder.h"
#include "tests/support/fake_page.h"

namespace rk::sqlite {
namespace {

using tests::error_of;

class Script : public testing::Test {
 protected:
  tests::DiskFolder folder_;
  const std::string file_ = folder_.path("made.db");
};

TEST_F(Script, MakesTheFileAndRunsEveryStatement) {
  run_script(file_, "Create Table t (n INTEGER); Insert Into t Values (1), (2);");
  // The second run finds the table and both rows.
  run_script(file_, "Insert Into t Select n + 2 From t;");
  EXPECT_EQ(error_of([&] { run_script(file_, "Create Table t (n INTEGER);"); }), -2147217900);
}

TEST_F(Script, AFailureLeavesNothingOfTheScript) {
  EXPECT_NE(
      error_of([&] { run_script(file_, "Create Table t (n INTEGER); Insert Into u Values (1);"); }),
      0);
  run_script(file_, "Create Table t (n INTEGER);");
}

TEST_F(Script, AFileThatCannotBeMadeRaises) {
  EXPECT_EQ(error_of([&] { run_script(file_ + "/x/y.db", "Select 1;"); }), -2147467259);
}

}  // namespace
}  // namespace rk::sqlite
