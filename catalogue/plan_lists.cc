#include "catalogue/plan_lists.h"

#include <array>
#include <memory>
#include <span>

#include "catalogue/style_block.h"
#include "site/repeat.h"
#include "site/storefront.h"
#include "site/tags.h"
#include "site/template_cache.h"
#include "value/conversions.h"

namespace rk::catalogue {

namespace {

using platform::Connection;
using platform::Recordset;
using platform::SqlText;

constexpr std::array<std::string_view, 7> kSqlTags{
    "SqlList_SqlName", "db_MaxSize",    "lg_MaxSize", "SqlListId",
    "ListLineHeight",  "ConLineHeight", "Price"};
constexpr std::array<std::string_view, 6> kMySqlTags{
    "SqlList_SqlName", "db_MaxSize", "SqlListId", "ListLineHeight", "ConLineHeight", "Price"};
constexpr std::array<std::string_view, 6> kMailTags{
    "MailList_MailName", "Size", "MailListId", "ListLineHeight", "ConLineHeight", "Price"};

// Where a tag's column stands in the select list.
struct ColumnTag {
  std::string_view tag;
  std::size_t column;
};
constexpr std::array kSqlSizes{ColumnTag{"db_MaxSize", 2}, ColumnTag{"lg_MaxSize", 3}};
constexpr std::array kMySqlSizes{ColumnTag{"db_MaxSize", 2}};
constexpr std::array kMailSizes{ColumnTag{"Size", 1}};

// Everything in which the three lists differ.
struct Texts {
  std::string_view file;
  std::string_view style_start, style_end;
  std::string_view item_start, item_end;

  std::string_view plain;
  std::string_view of_class;
  std::string_view of_class_bounded;
  std::string_view join_head;
  std::string_view join_tail;
  std::string_view price_type;

  std::span<const std::string_view> tags;
  ColumnTag name;
  std::span<const ColumnTag> sizes;
  std::string_view id_tag;
  std::size_t price_column;
  bool list_before_frame;
};

// QUIRK: the MySQL list sends "=False" for all plans of a class and "=0" for so many of them.
// QUIRK: the MySQL list's tags bear the names of the SQL Server list's.
// QUIRK: the join has no condition on [bb].[AgentUser]: a plan is listed once for every agent's
// price row in the class.
// QUIRK: the MySQL and mail lists fill the frame first, so an item that holds {ListLineHeight} is
// not found again in the block and its plans are not shown.
constexpr Texts kTexts[] = {
    {.file = "DataBase-SqlList-LitInfo.html",
     .style_start = "<!--SqlList Style",
     .style_end = "<!--End SqlList Style",
     .item_start = "<!--SqlList For Index-->",
     .item_end = "<!--End SqlList For Index-->",
     .plain = "Select [Id],[DbName],[db_MaxSize],[lg_MaxSize],[Price] From [Rk_SqlList] "
              "Where [freesql]=0",
     .of_class = "Select [Id],[DbName],[db_MaxSize],[lg_MaxSize],[Price] From [Rk_SqlList] "
                 "Where [freesql]=0 And [ProClass]=",
     .of_class_bounded = " [Id],[DbName],[db_MaxSize],[lg_MaxSize],[Price] From [Rk_SqlList] "
                         "Where [freesql]=0 And [ProClass]=",
     .join_head = "Select [aa].[Id],[aa].[DbName],[aa].[db_MaxSize],[aa].[lg_MaxSize],[aa].[Price] "
                  "From [Rk_SqlList] As [aa],[Rk_AgentPriceSet] As [bb] "
                  "Where [aa].[freesql]=0 And [bb].[ProClass]=",
     .join_tail = " And [aa].[AgentS]=1 And [aa].[Id]=[bb].[MastId] And [bb].[PriceType]='Sql' "
                  "Order By [aa].[",
     .price_type = " And [PriceType]='Sql'",
     .tags = kSqlTags,
     .name = {"SqlList_SqlName", 1},
     .sizes = kSqlSizes,
     .id_tag = "SqlListId",
     .price_column = 4,
     .list_before_frame = true},
    {.file = "DataBase-MySqlList-LitInfo.html",
     .style_start = "<!--MySqlList Style",
     .style_end = "<!--End MySqlList Style",
     .item_start = "<!--MySqlList For Index-->",
     .item_end = "<!--End MySqlList For Index-->",
     .plain = "Select [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] Where [freesql]=0",
     .of_class = "Select [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] "
                 "Where [freesql]=False And [ProClass]=",
     .of_class_bounded = " [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] "
                         "Where [freesql]=0 And [ProClass]=",
     .join_head = "Select [aa].[Id],[aa].[DbName],[aa].[db_MaxSize],[aa].[Price] "
                  "From [Rk_MySqlList] As [aa],[Rk_AgentPriceSet] As [bb] "
                  "Where [aa].[freesql]=0 And [bb].[ProClass]=",
     .join_tail = " And [aa].[AgentS]=1 And [aa].[Id]=[bb].[MastId] And [bb].[PriceType]='MySql' "
                  "Order By [aa].[",
     .price_type = " And [PriceType]='MySql'",
     .tags = kMySqlTags,
     .name = {"SqlList_SqlName", 1},
     .sizes = kMySqlSizes,
     .id_tag = "SqlListId",
     .price_column = 3,
     .list_before_frame = false},
    {.file = "Mail-MailList-LitInfo.html",
     .style_start = "<!--MailList Style",
     .style_end = "<!--End MailList Style",
     .item_start = "<!--MailList For Index-->",
     .item_end = "<!--End MailList For Index-->",
     .plain = "Select [Id],[Size],[MailName],[Num],[Price] From [Rk_MailList] Where [freemail]=0",
     .of_class = "Select [Id],[Size],[MailName],[Num],[Price] From [Rk_MailList] "
                 "Where [freemail]=0 And [ProClass]=",
     .of_class_bounded = " [Id],[Size],[MailName],[Num],[Price] From [Rk_MailList] "
                         "Where [freemail]=0 And [ProClass]=",
     .join_head = "Select [aa].[Id],[aa].[Size],[aa].[MailName],[aa].[Num],[aa].[Price] "
                  "From [Rk_MailList] As [aa],[Rk_AgentPriceSet] As [bb] "
                  "Where [aa].[freemail]=0 And [bb].[ProClass]=",
     .join_tail = " And [aa].[AgentS]=1 And [aa].[Id]=[bb].[MastId] And [bb].[PriceType]='Mail' "
                  "Order By [aa].[",
     .price_type = " And [PriceType]='Mail'",
     .tags = kMailTags,
     .name = {"MailList_MailName", 2},
     .sizes = kMailSizes,
     .id_tag = "MailListId",
     .price_column = 4,
     .list_before_frame = false},
};
constexpr std::size_t kId = 0;
enum OfferField : std::size_t { kAgentSetName, kAgentPrice };

const Texts& texts_of(PlanList list) {
  return kTexts[static_cast<std::size_t>(list)];
}

// "Select Top n " in the place of "Select ".
constexpr std::string_view without_select(std::string_view text) {
  return text.substr(std::string_view("Select").size());
}

// Where a row of the layout ends: behind every NewLineNum-th plan; the last plan does not count.
class RowBreaks {
 public:
  RowBreaks(const Value& new_line_num, std::int64_t record_count)
      : new_line_num_(new_line_num), record_count_(record_count) {}

  // Counts a plan. Raises what NewLineNum raises as a 16-bit number, but not for the last plan.
  bool due() {
    if (++rendered_ >= record_count_) return false;
    if (rendered_ == 1) plans_in_a_row_ = to_integer(new_line_num_);
    if (++column_ != plans_in_a_row_) return false;
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

std::unique_ptr<Recordset> own_offer(Connection& db, PlanList list, std::string_view agent_user,
                                     Recordset& plan) {
  if (agent_user.empty()) return nullptr;
  std::string id;
  plan.append_field_text(kId, id);
  return row_if_any(db, plan_price_sql(list, agent_user, id));
}

void fill_plan(site::Repeat& plans, const Texts& texts, Recordset& plan, Recordset* own,
               const PlanListParameters& parameters) {
  if (own != nullptr) {
    plans.fill(texts.name.tag, *own, kAgentSetName);
  } else {
    plans.fill(texts.name.tag, plan, texts.name.column);
  }
  for (const ColumnTag& size : texts.sizes) plans.fill(size.tag, plan, size.column);
  plans.fill(texts.id_tag, plan, kId);
  plans.fill("ListLineHeight", parameters.ListLineHeight);
  plans.fill("ConLineHeight", parameters.ConLineHeight);
  if (own != nullptr) {
    plans.fill("Price", *own, kAgentPrice);
  } else {
    plans.fill("Price", plan, texts.price_column);
  }
}

void fill_plans(site::Repeat& plans, PlanList list, Connection& db, Recordset& rows,
                const PlanListParameters& parameters) {
  const Text agent_user = joined_text(parameters.Agent_User);
  RowBreaks breaks(parameters.NewLineNum, rows.record_count());
  for (; !rows.eof(); rows.move_next()) {
    if (breaks.due()) plans.append(parameters.LineCode);
    const auto own = own_offer(db, list, agent_user.view(), rows);
    fill_plan(plans, texts_of(list), rows, own.get(), parameters);
    if (own != nullptr) own->close();
    plans.next();
  }
}

Text framed(site::Repeat& plans, std::string_view style, bool list_first,
            const Value& list_line_height) {
  if (list_first) return site::filled(plans.into(style), "ListLineHeight", list_line_height);
  std::string block(style);
  site::fill(block, "ListLineHeight", list_line_height);
  return plans.into(block);
}

Text list_html(PlanList list, const site::PageContext& page, Connection& db,
               const PlanListParameters& parameters) {
  const Texts& texts = texts_of(list);
  const Text file = site::template_text(page, texts.file);
  const std::string_view style =
      style_block(file.view(), texts.style_start, texts.style_end, parameters.Style);
  site::Repeat plans(site::cut(style, texts.item_start, texts.item_end), texts.tags);

  const std::string class_id = site::ReStr(page.request().query("ServerId"));
  const auto rows = db.open_recordset(plan_list_sql(list, parameters, class_id),
                                      platform::CursorType::Keyset, platform::LockType::Optimistic);
  fill_plans(plans, list, db, *rows, parameters);
  rows->close();

  return framed(plans, style, texts.list_before_frame, parameters.ListLineHeight);
}

Text show_list(PlanList list, const site::PageContext& page, const PlanListParameters& parameters) {
  return site::read_region(page,
                           [&](Connection& db) { return list_html(list, page, db, parameters); });
}

}  // namespace

Text Show_SqlList(const site::PageContext& page, const PlanListParameters& parameters) {
  return show_list(PlanList::Sql, page, parameters);
}

Text Show_MySqlList(const site::PageContext& page, const PlanListParameters& parameters) {
  return show_list(PlanList::MySql, page, parameters);
}

Text Show_MailList(const site::PageContext& page, const PlanListParameters& parameters) {
  return show_list(PlanList::Mail, page, parameters);
}

SqlText plan_list_sql(PlanList list, const PlanListParameters& parameters,
                      std::string_view class_id) {
  const Texts& texts = texts_of(list);
  const bool for_agent = !joined_text(parameters.Agent_User).empty();
  const Text list_num = joined_text(parameters.ListNum);
  const Text order = joined_text(parameters.OrderType);
  const bool bounded = list_num.view() != "0";
  SqlText sql;
  if (bounded) sql.add("Select Top ").add(list_num.view());
  const auto head = [&](std::string_view text) { return bounded ? without_select(text) : text; };
  if (class_id.empty()) {
    sql.add(head(texts.plain)).add(for_agent ? " And [AgentS]=1" : "").add(" Order By [");
  } else if (for_agent) {
    sql.add(head(texts.join_head)).add_outside(class_id).add(texts.join_tail);
  } else {
    sql.add(bounded ? texts.of_class_bounded : texts.of_class)
        .add_outside(class_id)
        .add(" Order By [");
  }
  return sql.add(order.view()).add("] Desc");
}

std::string plan_price_sql(PlanList list, std::string_view agent_user, std::string_view plan_id) {
  std::string sql;
  sql.reserve(160);
  sql.append("Select [AgentSetName],[Price] From [Rk_AgentPriceSet] Where [AgentUser]='")
      .append(agent_user)
      .append("' And [MastId]=")
      .append(plan_id)
      .append(texts_of(list).price_type);
  return sql;
}

}  // namespace rk::catalogue
