#include "catalogue/host_list.h"

#include <algorithm>
#include <array>
#include <memory>

#include "catalogue/style_block.h"
#include "site/repeat.h"
#include "site/storefront.h"
#include "site/tags.h"
#include "site/template_cache.h"
#include "value/comparison.h"
#include "value/conversions.h"

namespace rk::catalogue {

namespace {

using platform::Connection;
using platform::Recordset;
using platform::SqlText;

// Columns in the order in which host_list_sql selects them, and host_price_sql its own.
enum PlanField : std::size_t {
  kId,
  kHostSpace,
  kHostName,
  kScriptmaps,
  kMaxConnections,
  kMaxBandwidth,
  kPrice,
  kMonPrice,
  kFreeMail,
  kFreeMsSql,
  kFreeMySql,
};
enum OfferField : std::size_t { kAgentSetName, kAgentPrice, kAgentMonPrice };

constexpr std::array<std::string_view, 9> kPlanTags{
    "HostList_HostName", "DataBase",   "HostList_HostSpace",
    "MaxConnections",    "Scriptmaps", "HostListId",
    "ConLineHeight",     "Price",      "MonPrice"};

constexpr double kUnlimited = 9999;

// The numbers of {Page}, {Page+1} and {Page-1}: a visitor may ask for a fraction of a page.
struct PageTurn {
  double page = 1;
  double next = 1;
  double previous = 0;
};

// Moves to the page that the visitor asked for.
PageTurn turn_to(Recordset& rows, const Value& asked, std::int32_t page_count) {
  PageTurn turn;
  if (!equals(asked, "")) {
    turn.page = to_double(asked);
    if (turn.page > page_count) {
      rows.set_absolute_page(page_count);
      // QUIRK: {Page} keeps the number asked for, though the last page is shown.
      turn.next = page_count;
      turn.previous = turn.page - 1;
    } else if (turn.page <= 0) {
      turn = {.page = 1, .next = 1, .previous = 1};
    } else {
      rows.set_absolute_page(to_long(asked));
      turn.next = std::min<double>(turn.page + 1, page_count);
      turn.previous = turn.page - 1;
    }
  }
  // QUIRK: the last page's {Page+1} points past it.
  if (turn.next <= turn.page) turn.next += 1;
  if (turn.previous == 0) turn.previous = 1;
  return turn;
}

// Where a row of the layout ends: behind every NewLineNum-th plan but the last of all.
class RowBreaks {
 public:
  RowBreaks(const Value& new_line_num, std::int64_t record_count)
      : new_line_num_(new_line_num), record_count_(record_count) {}

  // Counts a plan. Raises what NewLineNum raises as a 16-bit number, so only where there is a plan.
  bool due() {
    ++rendered_;
    ++column_;
    if (rendered_ == 1) plans_in_a_row_ = to_integer(new_line_num_);
    // QUIRK: the count is that of the whole list, so the last row of a page is broken too unless
    // it ends the list.
    if (column_ != plans_in_a_row_ || rendered_ >= record_count_) return false;
    column_ = 0;
    return true;
  }

 private:
  const Value& new_line_num_;
  const std::int64_t record_count_;
  std::int16_t plans_in_a_row_ = 0;
  std::int64_t rendered_ = 0;
  std::int64_t column_ = 0;
};

// The databases that come with a plan, as {DataBase} shows them.
class DatabaseOptions {
 public:
  // QUIRK: an option once seen stays for all later plans of the list.
  void add(Recordset& plan) {
    if (differs_from(plan.field(kFreeMySql), 0)) my_sql_ = true;
    if (differs_from(plan.field(kFreeMsSql), 0)) sql_ = true;
  }
  std::string_view text() const {
    if (sql_) return my_sql_ ? "Access/Sql/MySql" : "Access/Sql";
    return my_sql_ ? "Access/MySql" : "Access";
  }

 private:
  bool sql_ = false;
  bool my_sql_ = false;
};

void fill_connections(site::Repeat& plans, Recordset& plan) {
  if (equals(to_number(plan.field(kMaxConnections)), kUnlimited)) {
    plans.fill("MaxConnections", "无限制");
  } else {
    plans.fill("MaxConnections", plan, kMaxConnections);
  }
}

void fill_prices(site::Repeat& plans, Recordset& offer, std::size_t price, std::size_t mon_price) {
  plans.fill("Price", offer, price);
  if (above(offer.field(mon_price), 0)) {
    plans.fill("MonPrice", offer, mon_price);
  } else {
    plans.fill("MonPrice", "-");
  }
}

// The agent's own row for a plan, or null where there is none.
std::unique_ptr<Recordset> own_offer(Connection& db, std::string_view agent_user, Recordset& plan) {
  if (agent_user.empty()) return nullptr;
  std::string id;
  plan.append_field_text(kId, id);
  return row_if_any(db, host_price_sql(agent_user, id));
}

// One plan's tags; name and prices out of the agent's own row where there is one.
void fill_plan(site::Repeat& plans, Recordset& plan, Recordset* own, DatabaseOptions& options,
               const Value& con_line_height) {
  if (own != nullptr) {
    plans.fill("HostList_HostName", *own, kAgentSetName);
  } else {
    plans.fill("HostList_HostName", plan, kHostName);
  }
  options.add(plan);
  plans.fill("DataBase", options.text());
  plans.fill("HostList_HostSpace", plan, kHostSpace);
  fill_connections(plans, plan);
  plans.fill("Scriptmaps", plan, kScriptmaps);
  plans.fill("HostListId", plan, kId);
  plans.fill("ConLineHeight", con_line_height);
  if (own != nullptr) {
    fill_prices(plans, *own, kAgentPrice, kAgentMonPrice);
  } else {
    fill_prices(plans, plan, kPrice, kMonPrice);
  }
}

// All plans of the page where `rows` stands.
void fill_plans(site::Repeat& plans, Connection& db, Recordset& rows,
                const HostListParameters& parameters, std::int64_t record_count) {
  const Text agent_user = joined_text(parameters.Agent_User);
  RowBreaks breaks(parameters.NewLineNum, record_count);
  DatabaseOptions options;
  for (std::int32_t left = rows.page_size(); left > 0 && !rows.eof(); --left) {
    if (breaks.due()) plans.append(parameters.LineCode);
    const auto own = own_offer(db, agent_user.view(), rows);
    fill_plan(plans, rows, own.get(), options, parameters.ConLineHeight);
    if (own != nullptr) own->close();
    plans.next();
    // OPTIMIZATION: a move behind the page's last plan would read rows that nobody sees.
    if (left > 1) rows.move_next();
  }
}

void fill_frame(std::string& block, const Value& list_line_height, const PageTurn& turn,
                std::int32_t page_count, std::string_view class_id) {
  site::fill(block, "ListLineHeight", list_line_height);
  site::fill(block, "PageCount", std::to_string(page_count));
  site::fill(block, "Page", number_text(turn.page));
  site::fill(block, "Page+1", number_text(turn.next));
  site::fill(block, "Page-1", number_text(turn.previous));
  // Again, because what stands in the block by now may have brought the tag.
  site::fill(block, "PageCount", std::to_string(page_count));
  site::fill(block, "ServerId", class_id);
}

Text list_html(const site::PageContext& page, Connection& db,
               const HostListParameters& parameters) {
  const Text file = site::template_text(page, "Host-HostList-LitInfo.html");
  const std::string_view style =
      style_block(file.view(), "<!--HostList Style", "<!--End HostList Style", parameters.Style);
  site::Repeat plans(site::cut(style, "<!--HostList For Index-->", "<!--End HostList For Index-->"),
                     kPlanTags);

  const std::string class_id = site::ReStr(page.request().query("ServerId"));
  const auto rows = db.open_recordset(host_list_sql(parameters, class_id),
                                      platform::CursorType::Keyset, platform::LockType::Optimistic);
  const std::int64_t record_count = rows->record_count();
  rows->set_page_size(to_long(parameters.PageSize));
  const std::int32_t page_count = rows->page_count();
  const PageTurn turn = turn_to(*rows, page.request().item("Page"), page_count);
  fill_plans(plans, db, *rows, parameters, record_count);
  rows->close();

  std::string block(style);
  fill_frame(block, parameters.ListLineHeight, turn, page_count, class_id);
  return plans.into(block);
}

}  // namespace

Text Show_HostList(const site::PageContext& page, const HostListParameters& parameters) {
  return site::read_region(page, [&](Connection& db) { return list_html(page, db, parameters); });
}

SqlText host_list_sql(const HostListParameters& parameters, std::string_view class_id) {
  const bool for_agent = !joined_text(parameters.Agent_User).empty();
  const Text list_num = joined_text(parameters.ListNum);
  const Text order = joined_text(parameters.OrderType);
  SqlText sql("Select ");
  if (list_num.view() != "0") sql.add("Top ").add(list_num.view()).add(" ");
  if (class_id.empty()) {
    return sql
        .add(
            "[Id],[HostSpace],[HostName],[Scriptmaps],[MaxConnections],[MaxBandwidth],[Price],"
            "[MonPrice],[freeMail],[freeMsSql],[freeMySql] From [Rk_HostList]")
        .add(for_agent ? " Where [AgentS]=1" : "")
        .add(" Order By [")
        .add(order.view())
        .add("] Desc");
  }
  if (for_agent) {
    // QUIRK: no condition on [bb].[AgentUser]: a plan is listed once for every agent's price row
    // in the class.
    return sql
        .add(
            "[aa].[Id],[aa].[HostSpace],[aa].[HostName],[aa].[Scriptmaps],[aa].[MaxConnections],"
            "[aa].[MaxBandwidth],[aa].[Price],[aa].[MonPrice],[aa].[freeMail],[aa].[freeMsSql],"
            "[aa].[freeMySql] From [Rk_HostList] As [aa],[Rk_AgentPriceSet] As [bb] "
            "Where [bb].[ProClass]=")
        .add_outside(class_id)
        .add(
            " And [aa].[AgentS]=1 And [aa].[Id]=[bb].[MastId] And [bb].[PriceType]='Host' "
            "Order By [aa].[")
        .add(order.view())
        .add("] Desc");
  }
  return sql
      .add(
          "[Id],[HostSpace],[HostName],[Scriptmaps],[MaxConnections],[MaxBandwidth],[Price],"
          "[MonPrice],[freeMail],[freeMsSql],[freeMySql] From [Rk_HostList] Where [ProClass]=")
      .add_outside(class_id)
      .add(" Order By [")
      .add(order.view())
      .add("] Desc");
}

std::string host_price_sql(std::string_view agent_user, std::string_view plan_id) {
  std::string sql;
  sql.reserve(160);
  sql.append("Select [AgentSetName],[Price],[MonPrice] From [Rk_AgentPriceSet] Where [AgentUser]='")
      .append(agent_user)
      .append("' And [MastId]=")
      .append(plan_id)
      .append(" And [PriceType]='Host'");
  return sql;
}

}  // namespace rk::catalogue
