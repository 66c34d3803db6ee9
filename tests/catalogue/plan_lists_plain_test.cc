// The lists of database and mail plans and of domains beside their plain versions, on generated
// templates, rows and parameters.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>

#include "catalogue/domain_lists.h"
#include "catalogue/plan_lists.h"
#include "tests/catalogue/generated.h"
#include "tests/plain/plan_lists.h"
#include "tests/support/fake_page.h"
#include "value/conversions.h"

namespace rk::catalogue {
namespace {

using tests::joined_pieces;
using tests::shown_value;

const std::vector<std::string>& all_pieces() {
  static const std::vector<std::string> pieces{"{SqlList_SqlName}",
                                               "{MailList_MailName}",
                                               "{db_MaxSize}",
                                               "{lg_MaxSize}",
                                               "{Size}",
                                               "{SqlListId}",
                                               "{MailListId}",
                                               "{ConLineHeight}",
                                               "{Price}",
                                               "{Domain}",
                                               "{id}",
                                               "{Id}",
                                               "{UpdatePrice}",
                                               "{ListLineHeight}",
                                               "{Pri",
                                               "ce}",
                                               "{",
                                               "}",
                                               "<td>"};
  return pieces;
}

plain::Offers generated_offers(const tests::Rows& rows) {
  plain::Offers own;
  for (std::size_t id = 1; id <= rows.rows.size(); ++id) {
    if (!*rc::gen::arbitrary<bool>()) continue;
    own[std::to_string(id)] = {*shown_value(all_pieces()), *shown_value(all_pieces())};
  }
  return own;
}

template <class Sql>
void answer_offers(tests::FakePage& page, const tests::Rows& rows, const plain::Offers& offers,
                   const tests::Rows& columns, Sql sql) {
  for (std::size_t id = 1; id <= rows.rows.size(); ++id) {
    tests::Rows found = columns;
    const auto own = offers.find(std::to_string(id));
    if (own != offers.end()) found.rows.push_back(own->second);
    page.db.answer(sql(std::to_string(id)), found);
  }
}

// The text of a block's Style in the file; pages mostly ask for it.
std::string style_name() {
  return *rc::gen::element<std::string>("", "1", "Card");
}
Value asked_style(const std::string& in_file) {
  return *rc::gen::weightedElement<Value>(
      {{9, Value::text(in_file)}, {1, Value::text("1")}, {1, Value::null()}});
}
Value agent_user() {
  return *rc::gen::element(Value::text("green"), Value::text(""), Value::null(), Value());
}

struct Kind {
  PlanList list;
  const char* name;
  const char* file;
  Text (*show)(const site::PageContext&, const PlanListParameters&);
  std::vector<std::string> columns;
};

const std::array<Kind, 3>& kinds() {
  static const std::array<Kind, 3> all{Kind{PlanList::Sql,
                                            "SqlList",
                                            "DataBase-SqlList-LitInfo.html",
                                            Show_SqlList,
                                            {"Id", "DbName", "db_MaxSize", "lg_MaxSize", "Price"}},
                                       Kind{PlanList::MySql,
                                            "MySqlList",
                                            "DataBase-MySqlList-LitInfo.html",
                                            Show_MySqlList,
                                            {"Id", "DbName", "db_MaxSize", "Price"}},
                                       Kind{PlanList::Mail,
                                            "MailList",
                                            "Mail-MailList-LitInfo.html",
                                            Show_MailList,
                                            {"Id", "Size", "MailName", "Num", "Price"}}};
  return all;
}

PlanListParameters generated_parameters(const std::string& style) {
  return {.Style = asked_style(style),
          .ListNum = *rc::gen::element(Value::text("0"), Value::long_integer(0), Value::text("5")),
          .NewLineNum = *rc::gen::element(Value::long_integer(0), Value::long_integer(1),
                                          Value::text("2"), Value::real(2.6), Value::text("-3")),
          .LineCode = *rc::gen::weightedElement<Value>(
              {{6, Value::text("<br>")}, {2, Value::text("{Price}")}, {1, Value::null()}}),
          .OrderType = *rc::gen::element(Value::text("Id"), Value::text("Price")),
          .ConLineHeight = *shown_value(all_pieces()),
          .ListLineHeight = *shown_value(all_pieces()),
          .Agent_User = agent_user()};
}

TEST(PlanListsPlain, EqualThePlainVersionOnGeneratedLists) {
  int broken_rows = 0;
  EXPECT_TRUE(rc::check([&] {
    const Kind& kind = kinds()[*rc::gen::inRange<std::size_t>(0, 3)];
    const std::string name = kind.name;
    const std::string style = style_name();
    const std::string file =
        "<!--" + name + " Style" + style + "-->" + *joined_pieces(all_pieces(), 3) + "<!--" + name +
        " For Index-->" + *joined_pieces(all_pieces(), 9) + "<!--End " + name + " For Index-->" +
        *joined_pieces(all_pieces(), 3) + "<!--End " + name + " Style" + style + "-->";
    const tests::Rows rows = tests::numbered_rows(kind.columns, 0, all_pieces());
    const plain::Offers offers = generated_offers(rows);
    const PlanListParameters parameters = generated_parameters(style);
    const std::string class_id = *rc::gen::element<std::string>("", "7");

    tests::FakePage page;
    page.put_template(kind.file, file);
    page.request.queries["serverid"] = class_id;
    page.db.answer(plan_list_sql(kind.list, parameters, class_id).text(), rows);
    answer_offers(page, rows, offers, {{"AgentSetName", "Price"}, {}},
                  [&](const std::string& id) { return plan_price_sql(kind.list, "green", id); });
    const std::string html = kind.show(page.context, parameters).string();
    RC_ASSERT(html == plain::plan_list(kind.list, file, rows, offers, parameters));
    broken_rows += html.find("<br>") != std::string::npos ? 1 : 0;
  }));
  EXPECT_GT(broken_rows, 5) << "the generated lists show too little";
}

TEST(DomainPriceListPlain, EqualsThePlainVersionOnGeneratedLists) {
  int with_rows = 0;
  EXPECT_TRUE(rc::check([&] {
    const std::string style = style_name();
    const std::string file =
        "<!--PriceList Style" + style + "-->" + *joined_pieces(all_pieces(), 2) + "<!--Loop-->" +
        *joined_pieces(all_pieces(), 8) + "<!--End Loop--><!--End PriceList Style" + style + "-->";
    const tests::Rows rows =
        tests::numbered_rows({"Domain", "Money", "UpdateMoney", "Id"}, 3, all_pieces());
    const plain::Offers offers = generated_offers(rows);
    const Value asked = asked_style(style);
    const Value agent = agent_user();
    const bool for_agent = !joined_text(agent).empty();
    const auto language = *rc::gen::element<std::string>("EN", "CN", "en", "");

    tests::FakePage page;
    page.put_template("Domain-PriceList.html", file);
    page.db.answer(domain_price_list_sql(language, for_agent), rows);
    answer_offers(page, rows, offers, {{"Price", "UpdatePrice", "Id"}, {}},
                  [](const std::string& id) { return own_domain_price_sql("green", id); });
    const std::string html =
        Show_DomainPriceList(page.context, asked, Value::text(language), agent).string();
    RC_ASSERT(html == plain::domain_price_list(file, asked, rows, offers, for_agent));
    with_rows += html.find("<td>") != std::string::npos ? 1 : 0;
  }));
  EXPECT_GT(with_rows, 5) << "the generated lists show too little";
}

TEST(DomainBoxesPlain, EqualThePlainVersionOnGeneratedSuffixes) {
  EXPECT_TRUE(rc::check([] {
    tests::Rows rows{{"Type", "DefaultCheck"}, {}};
    for (int left = *rc::gen::inRange(0, 9); left > 0; --left) {
      rows.rows.push_back(
          {Value::text(*joined_pieces({".", "com", "cn", "公司", "{Id}"}, 4)),
           *rc::gen::element(Value::boolean(true), Value::boolean(false), Value::null())});
    }
    const DomainBoxParameters parameters{
        .TopNum = *rc::gen::element(Value::text("0"), Value::text("5"), Value::real(2.5), Value()),
        .InputWidth = *shown_value({"8", "0"}),
        .InputHeight = *shown_value({"2", "0"}),
        .DomainType = *rc::gen::element(Value::text("EN"), Value::text("CH"), Value::null()),
        .OrderType = Value::text("IdKey"),
        .Agent_User = agent_user()};

    tests::FakePage page;
    page.db.answer(domain_boxes_sql(parameters), rows);
    RC_ASSERT(Show_sDomainList(page.context, parameters) == plain::domain_boxes(rows, parameters));
  }));
}

}  // namespace
}  // namespace rk::catalogue
