// The lists of database and mail plans and of domain prices beside their plain versions, on
// generated templates, rows and parameters.
#include <gtest/gtest.h>

#include <array>
#include <random>

#include "catalogue/domain_lists.h"
#include "catalogue/plan_lists.h"
#include "tests/plain/plan_lists.h"
#include "tests/support/fake_page.h"
#include "value/conversions.h"

namespace rk::catalogue {
namespace {

class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t n) { return random_() % n; }
  bool one_in(std::size_t n) { return below(n) == 0; }
  std::string pieces(std::size_t most) {
    static constexpr std::array<std::string_view, 19> kPieces{"{SqlList_SqlName}",
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
    std::string text;
    for (std::size_t n = below(most + 1); n > 0; --n) text += kPieces[below(kPieces.size())];
    return text;
  }
  Value shown() {
    if (one_in(60)) return Value::null();
    if (one_in(6)) return Value::text(pieces(3));
    return one_in(2) ? Value::text("v") : Value::long_integer(static_cast<int>(below(99)));
  }
  // Rows of so many columns with numbers 1, 2, 3 ... in one of them.
  tests::Rows rows(std::vector<std::string> columns, std::size_t id_column) {
    tests::Rows made{std::move(columns), {}};
    for (std::size_t id = 1, count = below(8); id <= count; ++id) {
      std::vector<Value> row;
      for (std::size_t i = 0; i < made.columns.size(); ++i) row.push_back(shown());
      row[id_column] = Value::long_integer(static_cast<int>(id));
      made.rows.push_back(std::move(row));
    }
    return made;
  }
  plain::Offers offers(const tests::Rows& rows) {
    plain::Offers own;
    for (std::size_t id = 1; id <= rows.rows.size(); ++id) {
      if (one_in(2)) own[std::to_string(id)] = {shown(), shown()};
    }
    return own;
  }

 private:
  std::mt19937 random_;
};

void answer_offers(tests::FakePage& page, const tests::Rows& rows, const plain::Offers& offers,
                   const tests::Rows& columns, std::string (*sql)(const std::string& id)) {
  for (std::size_t id = 1; id <= rows.rows.size(); ++id) {
    tests::Rows found = columns;
    const auto own = offers.find(std::to_string(id));
    if (own != offers.end()) found.rows.push_back(own->second);
    page.db.answer(sql(std::to_string(id)), found);
  }
}

struct Kind {
  PlanList list;
  const char* name;
  const char* file;
  Text (*show)(const site::PageContext&, const PlanListParameters&);
  std::vector<std::string> columns;
  std::string (*price_sql)(const std::string& id);
};

const std::array<Kind, 3>& kinds() {
  static const std::array<Kind, 3> all{
      Kind{PlanList::Sql,
           "SqlList",
           "DataBase-SqlList-LitInfo.html",
           Show_SqlList,
           {"Id", "DbName", "db_MaxSize", "lg_MaxSize", "Price"},
           [](const std::string& id) { return plan_price_sql(PlanList::Sql, "green", id); }},
      Kind{PlanList::MySql,
           "MySqlList",
           "DataBase-MySqlList-LitInfo.html",
           Show_MySqlList,
           {"Id", "DbName", "db_MaxSize", "Price"},
           [](const std::string& id) { return plan_price_sql(PlanList::MySql, "green", id); }},
      Kind{PlanList::Mail,
           "MailList",
           "Mail-MailList-LitInfo.html",
           Show_MailList,
           {"Id", "Size", "MailName", "Num", "Price"},
           [](const std::string& id) { return plan_price_sql(PlanList::Mail, "green", id); }}};
  return all;
}

TEST(PlanListsPlain, EqualThePlainVersionOnGeneratedLists) {
  std::size_t broken_rows = 0;
  for (unsigned seed = 0; seed < 3000; ++seed) {
    Generator generate(seed);
    const Kind& kind = kinds()[generate.below(3)];
    const std::string name = kind.name;
    const std::string file = "<!--" + name + " Style-->" + generate.pieces(3) + "<!--" + name +
                             " For Index-->" + generate.pieces(9) + "<!--End " + name +
                             " For Index-->" + generate.pieces(3) + "<!--End " + name + " Style-->";
    const tests::Rows rows = generate.rows(kind.columns, 0);
    const plain::Offers offers = generate.offers(rows);
    const PlanListParameters parameters{
        .Style = Value(),
        .ListNum = Value::text("0"),
        .NewLineNum = Value::long_integer(static_cast<int>(generate.below(4))),
        .LineCode = Value::text(generate.one_in(3) ? generate.pieces(2) : "<br>"),
        .OrderType = Value::text("Id"),
        .ConLineHeight = generate.shown(),
        .ListLineHeight = generate.shown(),
        .Agent_User = Value::text(generate.one_in(2) ? "green" : "")};

    tests::FakePage page;
    page.put_template(kind.file, file);
    page.db.answer(plan_list_sql(kind.list, parameters, "").text(), rows);
    answer_offers(page, rows, offers, {{"AgentSetName", "Price"}, {}}, kind.price_sql);
    const std::string html = kind.show(page.context, parameters).string();
    ASSERT_EQ(html, plain::plan_list(kind.list, file, rows, offers, parameters)) << "seed " << seed;
    broken_rows += html.find("<br>") != std::string::npos ? 1 : 0;
  }
  EXPECT_GT(broken_rows, 200u) << "the generated lists show too little";
}

TEST(DomainPriceListPlain, EqualsThePlainVersionOnGeneratedLists) {
  std::size_t with_rows = 0;
  for (unsigned seed = 0; seed < 3000; ++seed) {
    Generator generate(seed);
    const std::string file = "<!--PriceList Style-->" + generate.pieces(2) + "<!--Loop-->" +
                             generate.pieces(8) + "<!--End Loop--><!--End PriceList Style-->";
    const tests::Rows rows = generate.rows({"Domain", "Money", "UpdateMoney", "Id"}, 3);
    const plain::Offers offers = generate.offers(rows);
    const bool for_agent = generate.one_in(2);

    tests::FakePage page;
    page.put_template("Domain-PriceList.html", file);
    page.db.answer(domain_price_list_sql("", for_agent), rows);
    answer_offers(page, rows, offers, {{"Price", "UpdatePrice", "Id"}, {}},
                  [](const std::string& id) { return own_domain_price_sql("green", id); });
    const std::string html =
        Show_DomainPriceList(page.context, Value(), Value(), Value::text(for_agent ? "green" : ""))
            .string();
    ASSERT_EQ(html, plain::domain_price_list(file, rows, offers, for_agent)) << "seed " << seed;
    with_rows += html.find("<td>") != std::string::npos ? 1 : 0;
  }
  EXPECT_GT(with_rows, 500u) << "the generated lists show too little";
}

}  // namespace
}  // namespace rk::catalogue
