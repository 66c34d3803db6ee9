// ShowPro_List and Show_ServerList beside their plain versions, on generated products and classes.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>
#include <utility>

#include "catalogue/selectors.h"
#include "tests/catalogue/generated.h"
#include "tests/plain/selectors.h"
#include "tests/support/fake_page.h"
#include "value/conversions.h"

namespace rk::catalogue {
namespace {

using tests::numbered_rows;
using tests::shown_value;

const std::vector<std::string>& all_pieces() {
  static const std::vector<std::string> pieces{"主机", "<b>", "\"", "'", "&amp;", " "};
  return pieces;
}

struct Table {
  const char* columns;  // and the table, without conditions
  const char* name;
  const char* master;
  const char* agent;
  const char* type;
};
constexpr std::array<Table, 4> kTables{{
    {"Select [ID],[HostName] From [Rk_HostList]", "HostName", "", " Where [AgentS]=1", "Host"},
    {"Select [ID],[DbName] From [Rk_SqlList]", "DbName", " Where [freeSql]=0",
     " Where [freeSql]=0 And [AgentS]=1", "Sql"},
    {"Select [ID],[DbName] From [Rk_MySqlList]", "DbName", " Where [freeSql]=0",
     " Where [freeSql]=0 And [AgentS]=1", "MySql"},
    {"Select [ID],[MailName] From [Rk_MailList]", "MailName", " Where [freeMail]=0",
     " Where [freeMail]=0 And AgentS=1", "Mail"},
}};

std::string own_name_sql(const std::string& id, const char* type) {
  return "Select [AgentSetName] From [Rk_AgentPriceSet] Where [AgentUser]='green' And [MastId]=" +
         id + " And [PriceType]='" + type + "'";
}

void answer_products(tests::RecordingDatabase& db, const plain::ProductListCase& given,
                     std::size_t kind) {
  const Table& table = kTables[kind];
  db.answer(std::string(table.columns) + (given.for_agent ? table.agent : table.master),
            given.products[kind]);
  for (const auto& product : given.products[kind].rows) {
    const std::string id = joined_text(product[0]).string();
    tests::Rows own{{"AgentSetName"}, {}};
    const auto name = given.own_names[kind].find(id);
    if (name != given.own_names[kind].end()) own.rows.push_back({name->second});
    db.answer(own_name_sql(id, table.type), own);
  }
}

TEST(ProductListPlain, EqualsThePlainVersionOnGeneratedProducts) {
  EXPECT_TRUE(rc::check([] {
    plain::ProductListCase given;
    given.for_agent = *rc::gen::arbitrary<bool>();
    tests::FakePage page;
    for (std::size_t kind = 0; kind < kTables.size(); ++kind) {
      given.products[kind] = numbered_rows({"ID", kTables[kind].name}, 0, all_pieces(), 4);
      for (std::size_t id = 1; id <= given.products[kind].rows.size(); ++id) {
        if (!*rc::gen::arbitrary<bool>()) continue;
        given.own_names[kind][std::to_string(id)] = *shown_value(all_pieces());
      }
      answer_products(page.db, given, kind);
    }
    const std::string html =
        ShowPro_List(page.context, Value::text(given.for_agent ? "green" : ""));
    RC_ASSERT(html == plain::product_list(given));
  }));
}

TEST(ServerListPlain, EqualsThePlainVersionOnGeneratedClasses) {
  EXPECT_TRUE(rc::check([] {
    using Pair = std::pair<std::string, std::string>;
    const auto [show_page, type] = *rc::gen::element(
        Pair{"/host", "host"}, Pair{"/Host", "host"}, Pair{"/MAIL/mail.asp", "mail"},
        Pair{"/DataBase", "sql"}, Pair{"/host/", ""}, Pair{"", ""});
    const auto agent = *rc::gen::element<std::string>("", "green");
    const tests::Rows rows = numbered_rows({"Id", "ClassName"}, 0, all_pieces());
    const ServerListParameters parameters{.Width = *shown_value(all_pieces()),
                                          .sHeight = *shown_value(all_pieces()),
                                          .ShowPage = Value::text(show_page),
                                          .Agent_User = Value::text(agent)};
    tests::FakePage page;
    page.db.answer(product_classes_sql(type, agent), rows);
    RC_ASSERT(Show_ServerList(page.context, parameters) == plain::server_list(rows, parameters));
  }));
}

}  // namespace
}  // namespace rk::catalogue
