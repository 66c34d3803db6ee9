#include "jetsql/updatable.h"

#include <gtest/gtest.h>

#include "tests/jetsql/engine.h"

namespace rk::jetsql {
namespace {

class UpdatableJoin : public testing::Test {
 protected:
  UpdatableJoin() : engine_(file_text(std::string(RK_SOURCE_DIR) + "/tests/jetsql/shop.sql")) {}
  // The table that a record set over the text writes to, and its key; empty: none.
  std::string written(const std::string& sql) {
    const Translation made = translate(sql, engine_);
    return made.table + (made.row_key.empty() ? "" : " " + made.row_key);
  }

  Engine engine_;
};

TEST_F(UpdatableJoin, TheTableWhoseRowsHaveOnePartnerEachIsWrittenTo) {
  EXPECT_EQ(written("select g.*, c.title from goods g inner join class c on g.class=c.id"),
            "goods [g].rowid");
  EXPECT_EQ(written("select * from class c inner join goods g on c.id=g.class"), "goods [g].rowid");
  EXPECT_EQ(written("select * from goods, class where goods.class=class.id and goods.id>2"),
            "goods [goods].rowid");
  EXPECT_EQ(written("select * from (sale s inner join goods g on s.goods=g.id) inner join class c "
                    "on g.class=c.id"),
            "sale [s].rowid");
}

TEST_F(UpdatableJoin, AnOuterJoinIsWrittenToOnEitherSide) {
  EXPECT_EQ(written("select * from goods g left join class c on g.class=c.id"), "goods [g].rowid");
  EXPECT_EQ(written("select * from class c left join goods g on g.class=c.id"), "goods [g].rowid");
  EXPECT_EQ(written("select * from class c right join goods g on g.class=c.id"), "goods [g].rowid");
}

TEST_F(UpdatableJoin, WhereRowsMeetSeveralPartnersNoneIsWrittenTo) {
  EXPECT_EQ(written("select * from goods, class"), "");
  EXPECT_EQ(written("select * from goods g inner join sale s on g.class=s.count"), "");
  EXPECT_EQ(written("select * from goods g, class c where g.class=c.id or g.id=1"), "");
  EXPECT_EQ(written("select * from goods g inner join class c on g.class<c.id"), "");
}

TEST_F(UpdatableJoin, OneRowOfTheOtherTableIsEnough) {
  EXPECT_EQ(written("select * from sale, class where class.id=2"), "sale [sale].rowid");
  EXPECT_EQ(written("select * from sale, class where ?=class.id"), "sale [sale].rowid");
  // The condition of an outer join leaves all rows of the side that it keeps.
  EXPECT_EQ(written("select * from class left join sale on class.id=2"), "");
}

TEST_F(UpdatableJoin, APartnerThatMayBeMissingSettlesNothingFurther) {
  // A sale without goods comes with every class.
  EXPECT_EQ(written("select * from (sale s inner join class c on s.count>c.parent) left join "
                    "goods g on (g.id=s.goods and g.class=c.id)"),
            "");
}

TEST_F(UpdatableJoin, GroupsDerivedTablesAndBracketsAreNotWrittenTo) {
  EXPECT_EQ(written("select g.class from goods g inner join class c on g.class=c.id group by "
                    "g.class"),
            "");
  EXPECT_EQ(written("select distinct g.id from goods g inner join class c on g.class=c.id"), "");
  EXPECT_EQ(written("select * from goods g inner join (select id from class) c on g.class=c.id"),
            "");
  EXPECT_EQ(written("select * from class c left join (sale s inner join goods g on s.goods=g.id) "
                    "on g.class=c.id"),
            "");
}

TEST_F(UpdatableJoin, AColumnTellsWhereItComesFrom) {
  const Translation made = translate(
      "select g.name, c.title as t, g.id*2 from goods g inner join class c on g.class=c.id",
      engine_);
  ASSERT_EQ(made.columns.size(), 3U);
  EXPECT_EQ(made.columns[0].base_column, "name");
  EXPECT_EQ(made.columns[0].origin_table, "goods");
  EXPECT_EQ(made.columns[1].base_column, "");
  EXPECT_EQ(made.columns[1].origin_table, "class");
  EXPECT_EQ(made.columns[1].origin_column, "title");
  EXPECT_EQ(made.columns[2].origin_table, "");
}

TEST_F(UpdatableJoin, OneRowIsAskedForWithinTheCondition) {
  const Translation made = translate(
      "select g.id, c.title from goods g, class c where g.class=c.id and (g.id=3 or g.id=4)",
      engine_);
  std::vector<Literal> values(3);
  for (Literal& value : values) value.kind = Literal::Kind::Integer;
  values[0].integer = 3;
  values[1].integer = 4;
  values[2].integer = 4;
  EXPECT_EQ(engine_.rows(made.row_text(), values), std::vector<std::string>{"4|Dried|4"});
  values[2].integer = 1;
  EXPECT_TRUE(engine_.rows(made.row_text(), values).empty());
}

}  // namespace
}  // namespace rk::jetsql
