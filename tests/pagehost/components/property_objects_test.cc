#include "pagehost/components/property_objects.h"

#include <gtest/gtest.h>

#include "pagehost/components/connection_object.h"
#include "pagehost/components/recordset_object.h"
#include "tests/support/object_calls.h"
#include "tests/support/recording_database.h"

namespace rk::pagehost {
namespace {

using tests::error_number;
using tests::get;
using tests::let;
using tests::text_of;

class Properties : public ::testing::Test {
 protected:
  std::shared_ptr<tests::RecordingDatabase> database_ =
      std::make_shared<tests::RecordingDatabase>();
};

TEST_F(Properties, AreReadAndSetByTheirNames) {
  const Value rows = Value::object(make_ref<RecordsetObject>(database_));
  let(get(rows, "Properties", {Value::text("unique table")}), "Value", {Value::text("t")});
  EXPECT_EQ(text_of(get(get(rows, "Properties"), "Item", {Value::text("Unique Table")})), "t");
  let(rows, "Properties", {Value::text("Batch Size"), Value::long_integer(3)});
  EXPECT_EQ(text_of(get(rows, "Properties", {Value::text("Batch Size")})), "3");
  EXPECT_EQ(error_number([&] { get(rows, "Properties", {Value::text("nope")}); }), 3265);
  EXPECT_EQ(error_number([&] { get(rows, "Properties", {Value::long_integer(99)}); }), 3265);
}

TEST_F(Properties, AreWalked) {
  const Value rows = Value::object(make_ref<RecordsetObject>(database_));
  const Value all = get(rows, "Properties");
  int count = 0;
  const auto walk = all.as_object()->enumerate();
  for (Value item; walk->next(item); ++count) EXPECT_NE(text_of(get(item, "Name")), "");
  EXPECT_EQ(text_of(get(all, "Count")), std::to_string(count));
}

TEST_F(Properties, TheFileOfAConnectionMayBeSetAmongThem) {
  const Value cn = Value::object(make_ref<ConnectionObject>(database_));
  let(cn, "ConnectionString", {Value::text("Provider=Some.Thing")});
  let(cn, "Properties", {Value::text("Data Source"), Value::text("a.db")});
  get(cn, "Open");
  EXPECT_EQ(database_->log().front(), "open Provider=Some.Thing;Data Source=a.db");
}

TEST_F(Properties, AConnectionTellsItsFile) {
  const Value cn = Value::object(make_ref<ConnectionObject>(database_));
  get(cn, "Open", {Value::text("Data Source=b.db")});
  EXPECT_EQ(text_of(get(cn, "Properties", {Value::text("Data Source")})), "b.db");
  EXPECT_EQ(text_of(get(cn, "Properties", {Value::text("Data Source Name")})), "b.db");
}

}  // namespace
}  // namespace rk::pagehost
