#include "pagehost/components/row_view.h"

#include <gtest/gtest.h>

#include "pagehost/components/memory_rows.h"
#include "tests/support/object_calls.h"

namespace rk::pagehost {
namespace {

using tests::error_number;

class RowViews : public ::testing::Test {
 protected:
  // Rows 1 to `count` with the names given, Null where one is empty.
  std::unique_ptr<RowView> of(const std::vector<std::string>& names) {
    std::vector<std::vector<Value>> rows;
    for (const std::string& name : names) {
      rows.push_back({Value::long_integer(static_cast<std::int32_t>(rows.size()) + 1),
                      name.empty() ? Value::null() : Value::text(name)});
    }
    shared_ = std::make_shared<SharedRows>();
    shared_->rows = std::make_unique<MemoryRows>(
        std::vector<MemoryColumn>{{"Id", AdoType::Integer, 0}, {"Name", AdoType::VarWChar, 9}},
        std::move(rows));
    return std::make_unique<RowView>(shared_, false);
  }
  static std::string shown(RowView& view) {
    std::string out;
    if (view.record_count() == 0) return out;
    for (view.move_first(); !view.eof(); view.move_next()) {
      out += std::to_string(to_long(view.field("Id"))) + ";";
    }
    return out;
  }
  static void filter(RowView& view, std::string_view text) {
    const RowFilter chosen(text);
    view.show(&chosen, nullptr);
  }

  std::shared_ptr<SharedRows> shared_;
};

TEST_F(RowViews, AFilterShowsTheRowsThatItLetsThrough) {
  const auto view = of({"a", "B", "", "b", "c"});
  filter(*view, "Name = 'b'");
  EXPECT_EQ(shown(*view), "2;4;");
  filter(*view, "(Name='a' Or Name = 'c') And Id > 1");
  EXPECT_EQ(shown(*view), "5;");
  filter(*view, "Id<2 or Name Like 'b%' and Id=4");
  EXPECT_EQ(shown(*view), "1;4;");
  filter(*view, "Name = Null");
  EXPECT_EQ(shown(*view), "3;");
  view->show(nullptr, nullptr);
  EXPECT_EQ(shown(*view), "1;2;3;4;5;");
}

TEST_F(RowViews, WordsWithinTextsAndNamesDoNotPartACondition) {
  const auto view = of({"a and b", "x or y", "a)"});
  filter(*view, "Name='a and b' or [Name] = 'a)'");
  EXPECT_EQ(shown(*view), "1;3;");
}

TEST_F(RowViews, AFilterThatIsNoneIsRefused) {
  for (const char* text : {"Id", "Id = 1 And", "Or Id = 1", "(Id = 1", "Id = 1)", "Name = 'x", "()",
                           "Id = 1 Id = 2"}) {
    EXPECT_EQ(error_number([&] { const RowFilter refused(text); }), 3001) << text;
  }
  EXPECT_EQ(error_number([] { const RowFilter refused(std::string(1000, '(')); }), 3001);
}

TEST_F(RowViews, AnOrderSortsAndKeepsRowsOfOneKeyInPlace) {
  const auto view = of({"b", "A", "", "a", "B"});
  const RowOrder by_name("Name");
  view->show(nullptr, &by_name);
  EXPECT_EQ(shown(*view), "3;2;4;1;5;");
  const RowOrder both("[Name] DESC, Id desc");
  view->show(nullptr, &both);
  EXPECT_EQ(shown(*view), "5;1;4;2;3;");
  EXPECT_EQ(error_number([] { const RowOrder refused("Name Up"); }), 3001);
  const RowOrder unknown("Nope");
  EXPECT_EQ(error_number([&] { view->show(nullptr, &unknown); }), 3265);
}

TEST_F(RowViews, ViewsOfOneSetStandApartAndShowOneAnothersChanges) {
  const auto first = of({"a", "b", "c"});
  RowView second(shared_, false);
  first->move_last();
  EXPECT_EQ(to_long(second.field("Id")), 1);
  EXPECT_EQ(to_long(first->field("Id")), 3);
  second.set_field("Name", Value::text("z"));
  second.update();
  first->move_first();
  EXPECT_EQ(joined_text(first->field("Name")).view(), "z");
}

TEST_F(RowViews, ARowThatOneViewRemovesIsGoneFromAll) {
  const auto first = of({"a", "b", "c", "d"});
  RowView second(shared_, false);
  filter(second, "Id >= 2");
  second.move_last();
  first->move_next();
  first->remove();
  EXPECT_EQ(error_number([&] { first->field("Id"); }), 3021);
  first->move_next();
  EXPECT_EQ(to_long(first->field("Id")), 3);
  EXPECT_EQ(to_long(second.field("Id")), 4);
  EXPECT_EQ(shown(second), "3;4;");
}

TEST_F(RowViews, EveryRowOfAFilteredWalkCanBeRemoved) {
  const auto view = of({"x", "y", "x", "y", "x"});
  filter(*view, "Name='x'");
  for (; !view->eof(); view->move_next()) view->remove();
  EXPECT_EQ(view->record_count(), 0);
  view->show(nullptr, nullptr);
  EXPECT_EQ(shown(*view), "2;4;");
}

TEST_F(RowViews, ABookmarkStaysWithItsRow) {
  const auto view = of({"a", "b", "c", "d"});
  view->move(2, platform::Recordset::Origin::First);
  const std::int64_t third = view->bookmark();
  view->move_first();
  const std::int64_t first = view->bookmark();
  view->remove();
  view->go_to_bookmark(third);
  EXPECT_EQ(to_long(view->field("Id")), 3);
  EXPECT_EQ(view->bookmark(), third);
  EXPECT_EQ(error_number([&] { view->go_to_bookmark(first); }), 3001);
  view->show_bookmarked({third, first});
  EXPECT_EQ(shown(*view), "3;");
}

TEST_F(RowViews, ANewRowIsShownWhateverTheFilter) {
  const auto view = of({"a", "b"});
  filter(*view, "Name='a'");
  view->add_new();
  view->set_field("Name", Value::text("q"));
  view->update();
  EXPECT_EQ(joined_text(view->field("Name")).view(), "q");
  EXPECT_EQ(view->record_count(), 2);
  view->show(nullptr, nullptr);
  EXPECT_EQ(view->record_count(), 3);
}

}  // namespace
}  // namespace rk::pagehost
