// Show_HostList beside its plain version, on generated templates, plans and parameters.
#include <gtest/gtest.h>

#include <array>
#include <random>

#include "catalogue/host_list.h"
#include "tests/plain/host_list.h"
#include "tests/support/fake_page.h"
#include "value/conversions.h"

namespace rk::catalogue {
namespace {

class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t n) { return random_() % n; }
  bool one_in(std::size_t n) { return below(n) == 0; }
  int number(int most) { return static_cast<int>(below(static_cast<std::size_t>(most) + 1)); }

  std::string pieces(std::size_t most, std::size_t kinds = kPieces.size()) {
    std::string text;
    for (std::size_t n = below(most + 1); n > 0; --n) text += kPieces[below(kinds)];
    return text;
  }
  // Mostly a template as owners write it: tags of the frame in the item hide the list.
  std::string item() { return one_in(3) ? pieces(12) : pieces(12, kHarmless); }
  Value shown() {
    if (one_in(60)) return Value::null();
    if (one_in(6)) return Value::text(pieces(3));
    return one_in(2) ? Value::text("v") : Value::long_integer(number(99));
  }
  Value amount() {
    if (one_in(60)) return Value::null();
    return one_in(3) ? Value::long_integer(0) : Value::real(number(40) / 4.0 - 2);
  }

  plain::HostListCase host_list() {
    plain::HostListCase given;
    given.file = pieces(2) + "<!--HostList Style-->" + pieces(5) + "<!--HostList For Index-->" +
                 item() + "<!--End HostList For Index-->" + pieces(5) +
                 "<!--End HostList Style-->" + pieces(2);
    given.plans.columns = {"Id",           "HostSpace", "HostName", "Scriptmaps", "MaxConnections",
                           "MaxBandwidth", "Price",     "MonPrice", "freeMail",   "freeMsSql",
                           "freeMySql"};
    for (int id = 1, count = number(12); id <= count; ++id) {
      given.plans.rows.push_back({Value::long_integer(id), shown(), shown(), shown(),
                                  one_in(4) ? Value::long_integer(9999) : amount(), Value(),
                                  shown(), amount(), Value(), amount(), amount()});
      if (one_in(2)) given.offers[std::to_string(id)] = {shown(), shown(), amount()};
    }
    if (!given.plans.rows.empty() && one_in(2)) given.page = std::to_string(number(9) - 2);
    given.parameters = {.Style = Value(),
                        .ListNum = Value::text("0"),
                        .NewLineNum = Value::long_integer(number(4)),
                        .LineCode = Value::text(one_in(3) ? pieces(3) : "<br>"),
                        .OrderType = Value::text("Id"),
                        .ConLineHeight = shown(),
                        .ListLineHeight = shown(),
                        .PageSize = Value::long_integer(number(8) + 1),
                        .Agent_User = Value::text(one_in(2) ? "green" : "")};
    return given;
  }

 private:
  static constexpr std::array<std::string_view, 21> kPieces{"<td>",
                                                            "无",
                                                            "{HostList_HostName}",
                                                            "{DataBase}",
                                                            "{HostList_HostSpace}",
                                                            "{MaxConnections}",
                                                            "{Scriptmaps}",
                                                            "{HostListId}",
                                                            "{Price}",
                                                            "{MonPrice}",
                                                            "{ConLineHeight}",
                                                            "{Pri",
                                                            "ce}",
                                                            "{",
                                                            "}",
                                                            "{ListLineHeight}",
                                                            "{PageCount}",
                                                            "{Page}",
                                                            "{Page+1}",
                                                            "{Page-1}",
                                                            "<!--HostList For Index-->"};
  static constexpr std::size_t kHarmless = 10;

  std::mt19937 random_;
};

std::string rendered(const plain::HostListCase& given) {
  tests::FakePage page;
  page.put_template("Host-HostList-LitInfo.html", given.file);
  page.db.answer(host_list_sql(given.parameters, "").text(), given.plans);
  for (const auto& plan : given.plans.rows) {
    const std::string id = joined_text(plan[0]).string();
    tests::Rows offer{{"AgentSetName", "Price", "MonPrice"}, {}};
    const auto own = given.offers.find(id);
    if (own != given.offers.end()) offer.rows.push_back(own->second);
    page.db.answer(host_price_sql("green", id), offer);
  }
  if (!given.page.empty()) page.request.queries["page"] = given.page;
  return Show_HostList(page.context, given.parameters).string();
}

TEST(HostListPlain, EqualsThePlainVersionOnGeneratedLists) {
  std::size_t with_plans = 0;
  for (unsigned seed = 0; seed < 4000; ++seed) {
    const plain::HostListCase given = Generator(seed).host_list();
    const std::string html = rendered(given);
    ASSERT_EQ(html, plain::host_list(given)) << "seed " << seed;
    with_plans += html.find("<br>") != std::string::npos ? 1 : 0;
  }
  EXPECT_GT(with_plans, 400u) << "the generated lists show too little";
}

}  // namespace
}  // namespace rk::catalogue
