// Show_HostInfo beside its plain version, on generated templates, plans and agents.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "catalogue/host_info.h"
#include "catalogue/host_list.h"
#include "tests/catalogue/generated.h"
#include "tests/plain/host_info.h"
#include "tests/support/fake_page.h"
#include "value/conversions.h"

namespace rk::catalogue {
namespace {

using tests::joined_pieces;
using tests::shown_value;
using tests::small_number;

const std::vector<std::string>& all_pieces() {
  static const std::vector<std::string> pieces{"{HostName}",
                                               "{HostSpace}",
                                               "{HostPrice}",
                                               "{id}",
                                               "{HostNo}",
                                               "{HostInfo}",
                                               "{CPU}",
                                               "{MaxBandwidth}",
                                               "{Scriptmaps}",
                                               "{vPathNo}",
                                               "{FreeMail}",
                                               "{FreeDB}",
                                               "{Update}",
                                               "{TestDay}",
                                               "{MaxConnections}",
                                               "{Host",
                                               "Name}",
                                               "{",
                                               "}",
                                               "<td>",
                                               "\r\n",
                                               "无",
                                               "{Id}"};
  return pieces;
}

rc::Gen<Value> limit() {
  return rc::gen::element(Value::long_integer(9999), Value::text("9999"), Value::long_integer(50),
                          Value::null());
}
rc::Gen<Value> free_id() {
  return rc::gen::element(Value::long_integer(0), Value::long_integer(3), Value::null());
}
rc::Gen<Value> amount() {
  return rc::gen::element(Value::long_integer(0), Value::real(9.5), Value::real(-1), Value::null());
}

plain::HostInfoCase generated_plan() {
  const auto shown = [] { return *shown_value(all_pieces()); };
  plain::HostInfoCase given;
  given.file = *joined_pieces(all_pieces(), 20);
  for (const char* name : {"HostName", "HostSpace", "HostNo", "Scriptmaps", "vPathNo", "TestDay"}) {
    given.plan[name] = shown();
  }
  given.plan["Id"] = Value::long_integer(5);
  given.plan["Price"] = *amount();
  given.plan["MonPrice"] = *amount();
  given.plan["HostInfo"] = Value::text(*joined_pieces(all_pieces(), 4));
  for (const char* name : {"MaxConnections", "MaxBandwidth"}) given.plan[name] = *limit();
  for (const char* name : {"freeMail", "freeMsSql", "freeMySql"}) given.plan[name] = *free_id();
  given.plan["AppModeName"] = *rc::gen::element(Value::text("pool"), Value::null());
  given.plan["canupdate"] =
      *rc::gen::element(Value::boolean(true), Value::boolean(false), Value::null());
  given.for_agent = *rc::gen::arbitrary<bool>();
  if (*rc::gen::arbitrary<bool>()) given.own = {shown(), *amount(), *amount()};
  given.cpu_limit = shown();
  given.mail_name = shown();
  given.sql_name = shown();
  given.my_sql_name = shown();
  return given;
}

void answer(tests::RecordingDatabase& db, const plain::HostInfoCase& given) {
  tests::Rows plan{{}, {{}}};
  for (const auto& [name, value] : given.plan) {
    plan.columns.push_back(name);
    plan.rows[0].push_back(value);
  }
  db.answer(host_info_sql("5", given.for_agent).text(), plan);
  tests::Rows own{{"AgentSetName", "Price", "MonPrice"}, {}};
  if (!given.own.empty()) own.rows.push_back(given.own);
  db.answer(host_price_sql("green", "5"), own);
  const std::string pool = joined_text(given.plan.at("AppModeName")).string();
  db.answer("Select CPULimit From Rk_AppPoolMode Where AppPoolMoldName='" + pool + "'",
            {{"CPULimit"}, {{given.cpu_limit}}});
  db.answer("Select [MailName] From [Rk_MailList] Where Id=3", {{"MailName"}, {{given.mail_name}}});
  db.answer("Select [DbName] From [Rk_SqlList] Where Id=3", {{"DbName"}, {{given.sql_name}}});
  db.answer("Select [DbName] From [Rk_mySqlList] Where Id=3", {{"DbName"}, {{given.my_sql_name}}});
}

TEST(HostInfoPlain, EqualsThePlainVersionOnGeneratedPlans) {
  int shown = 0;
  EXPECT_TRUE(rc::check([&] {
    const plain::HostInfoCase given = generated_plan();
    tests::FakePage page;
    page.put_template("Host-ShowHost-Info.html", given.file);
    page.request.queries["id"] = "5";
    answer(page.db, given);
    const Value html = Show_HostInfo(page.context, Value::text(given.for_agent ? "green" : ""));
    RC_ASSERT(joined_text(html).string() == plain::host_info(given));
    shown += html.as_view().empty() ? 0 : 1;
  }));
  EXPECT_GT(shown, 20) << "the generated plans show too little";
}

}  // namespace
}  // namespace rk::catalogue
