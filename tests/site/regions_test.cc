#include "site/regions.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"
#include "value/array.h"
#include "value/conversions.h"

namespace rk::site {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::text;

class Regions : public testing::Test {
 protected:
  void regions(const std::string& sql, std::vector<std::vector<Value>> rows) {
    page.db.answer(sql, {{"PostCode", "Name", "PinYin", "simple"}, std::move(rows)});
  }
  std::vector<Value> hebei() { return {text("130000"), text("河北"), text("HeBei"), text("HB")}; }
  std::vector<Value> tangshan() {
    return {text("130200"), text("唐山"), text("TangShan"), Value::null()};
  }

  FakePage page;
};

constexpr char kProvinces[] = "Select * From [Rk_CT] Where [PostCode] Like '%0000'";

TEST_F(Regions, ListsProvincesAndMarksTheChosenOne) {
  regions(kProvinces, {hebei(), {text("140000"), text("山西"), text("ShanXi"), text("SX")}});
  EXPECT_EQ(
      GetCTSelect(page.context, text("140000"), text("pro"), Value()),
      "<option value=\"130000\">河北</option><option value=\"140000\" selected>山西</option>");
  EXPECT_EQ(
      GetCTSelect(page.context, number(130000), text("pro"), Value()),
      "<option value=\"130000\" selected>河北</option><option value=\"140000\">山西</option>");
  EXPECT_EQ(GetCTSelect(page.context, Value::null(), text("pro"), Value()),
            "<option value=\"130000\">河北</option><option value=\"140000\">山西</option>");
  EXPECT_EQ(page.db.reading(), 0);
}

TEST_F(Regions, ListsTheCitiesOfAProvince) {
  regions("Select * From [Rk_CT] Where [PostCode] Like '13%00' And [PostCode]<>'130000'",
          {tangshan()});
  EXPECT_EQ(GetCTSelect(page.context, text(""), text("ct"), number(13)),
            "<option value=\"130200\">唐山</option>");
}

TEST_F(Regions, ProvinceWithoutCitiesOffersItself) {
  regions("Select * From [Rk_CT] Where [PostCode] Like '13%00' And [PostCode]<>'130000'", {});
  regions("Select * From [Rk_CT] Where [PostCode] Like '13%00'", {hebei()});
  EXPECT_EQ(GetCTSelect(page.context, text(""), text("ct"), text("13")),
            "<option value=\"130000\">河北</option>");
  EXPECT_EQ(page.db.log(),
            (std::vector<std::string>{
                "open Data Source=shop.db",
                "execute Select * From [Rk_CT] Where [PostCode] Like '13%00' And "
                "[PostCode]<>'130000'",
                "close recordset", "execute Select * From [Rk_CT] Where [PostCode] Like '13%00'",
                "close recordset", "close"}));
}

TEST_F(Regions, NoProvincesFallBackByTheIndexToo) {
  regions(kProvinces, {});
  regions("Select * From [Rk_CT] Where [PostCode] Like '%00'", {tangshan()});
  EXPECT_EQ(GetCTSelect(page.context, text(""), text("pro"), Value()),
            "<option value=\"130200\">唐山</option>");
}

TEST_F(Regions, AnotherKindOfListRunsAnEmptyText) {
  EXPECT_EQ(error_of([&] { GetCTSelect(page.context, text(""), text("PRO"), Value()); }),
            errors::kSqlSyntax);
  EXPECT_EQ(page.db.statements(), std::vector<std::string>{""});
  EXPECT_EQ(page.db.log().back(), "close");
}

TEST_F(Regions, AnArgumentCountsOnlyWhereItIsNeeded) {
  regions(kProvinces, {hebei()});
  regions("Select * From [Rk_CT] Where [PostCode] Like 'zz%00' And [PostCode]<>'zz0000'", {});
  regions("Select * From [Rk_CT] Where [PostCode] Like 'zz%00'", {});
  const Value array = Value::array(Array::of({number(1)}));
  EXPECT_EQ(GetCTSelect(page.context, text(""), text("pro"), array),
            "<option value=\"130000\">河北</option>");
  EXPECT_EQ(GetCTSelect(page.context, array, text("ct"), text("zz")), "");
  EXPECT_EQ(error_of([&] { GetCTSelect(page.context, array, text("pro"), text("")); }), 13);
  EXPECT_EQ(error_of([&] { GetCTSelect(page.context, text(""), text("ct"), array); }), 13);
}

TEST_F(Regions, NameGoesByShowType) {
  regions("Select * From [Rk_CT] Where [PostCode]='130000'", {hebei()});
  const auto name = [&](const Value& show_type) {
    return joined_text(GetCTName(page.context, text("130000"), show_type)).string();
  };
  EXPECT_EQ(name(text("0")), "河北");
  EXPECT_EQ(name(number(1)), "HeBei");
  EXPECT_EQ(name(text("2")), "130000");
  EXPECT_EQ(name(number(3)), "HB");
  EXPECT_TRUE(GetCTName(page.context, text("130000"), text("9")).is_empty());
  EXPECT_TRUE(GetCTName(page.context, text("130000"), Value::null()).is_empty());
  EXPECT_EQ(page.db.log().back(), "close");
}

TEST_F(Regions, UnknownCodeIsBeijing) {
  regions("Select * From [Rk_CT] Where [PostCode]=''", {});
  const auto name = [&](const char* show_type) {
    return joined_text(GetCTName(page.context, Value(), text(show_type))).string();
  };
  EXPECT_EQ(name("0"), "北京");
  EXPECT_EQ(name("1"), "BeiJing");
  EXPECT_EQ(name("2"), "110000");
  EXPECT_EQ(name("3"), "BJ");
  EXPECT_EQ(name("4"), "");
}

}  // namespace
}  // namespace rk::site
