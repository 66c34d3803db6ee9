#include "tests/plain/plan_lists.h"

#include "tests/plain/repeat.h"
#include "value/conversions.h"

namespace rk::plain {

namespace {

using catalogue::PlanList;

std::string joined(const Value& value) {
  return joined_text(value).string();
}

void fill(std::string& text, const std::string& tag, const Value& content) {
  if (content.is_null()) {
    text.clear();
  } else {
    text = replaced(text, std::string("{").append(tag).append("}"), joined(content));
  }
}

void fill_plan(Repeat& plans, PlanList list, const std::vector<Value>& plan, const Value& name,
               const Value& price, const catalogue::PlanListParameters& p) {
  const bool mail = list == PlanList::Mail;
  plans.fill(mail ? "MailList_MailName" : "SqlList_SqlName", name);
  if (mail) {
    plans.fill("Size", plan[1]);
  } else {
    plans.fill("db_MaxSize", plan[2]);
    if (list == PlanList::Sql) plans.fill("lg_MaxSize", plan[3]);
  }
  plans.fill(mail ? "MailListId" : "SqlListId", plan[0]);
  plans.fill("ListLineHeight", p.ListLineHeight);
  plans.fill("ConLineHeight", p.ConLineHeight);
  plans.fill("Price", price);
}

}  // namespace

std::string plan_list(PlanList list, const std::string& file, const tests::Rows& plans,
                      const Offers& offers, const catalogue::PlanListParameters& p) {
  static const std::string kNames[] = {"SqlList", "MySqlList", "MailList"};
  const std::string& kind = kNames[static_cast<std::size_t>(list)];
  std::string block = cut(file, "<!--" + kind + " Style-->", "<!--End " + kind + " Style-->");
  const std::string item =
      cut(block, "<!--" + kind + " For Index-->", "<!--End " + kind + " For Index-->");
  Repeat filled(item);
  std::size_t rendered = 0;
  int column = 0;
  for (const std::vector<Value>& plan : plans.rows) {
    ++rendered;
    if (rendered < plans.rows.size()) {
      ++column;
      if (column == to_integer(p.NewLineNum)) {
        filled.append(p.LineCode);
        column = 0;
      }
    }
    Value name = plan[list == PlanList::Mail ? 2 : 1];
    Value price = plan.back();
    const auto offer = offers.find(joined(plan[0]));
    if (!joined(p.Agent_User).empty() && offer != offers.end()) {
      name = offer->second[0];
      price = offer->second[1];
    }
    fill_plan(filled, list, plan, name, price, p);
    filled.next();
  }
  if (list != PlanList::Sql) fill(block, "ListLineHeight", p.ListLineHeight);
  block = filled.into(block);
  if (list == PlanList::Sql) fill(block, "ListLineHeight", p.ListLineHeight);
  return block;
}

std::string domain_price_list(const std::string& file, const tests::Rows& domains,
                              const Offers& offers, bool for_agent) {
  const std::string block = cut(file, "<!--PriceList Style-->", "<!--End PriceList Style-->");
  Repeat filled(cut(block, "<!--Loop-->", "<!--End Loop-->"));
  for (const std::vector<Value>& domain : domains.rows) {
    Value price = domain[1];
    Value update_price = domain[2];
    const auto offer = offers.find(joined(domain[3]));
    if (for_agent && offer != offers.end()) {
      price = offer->second[0];
      update_price = offer->second[1];
    }
    filled.fill("Domain", domain[0]);
    filled.fill("id", domain[3]);
    filled.fill("Price", price);
    filled.fill("UpdatePrice", update_price);
    filled.fill("Id", domain[3]);
    filled.next();
  }
  return filled.into(block);
}

}  // namespace rk::plain
