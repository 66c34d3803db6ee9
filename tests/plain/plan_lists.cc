#include "tests/plain/plan_lists.h"

#include "tests/plain/repeat.h"
#include "value/conversions.h"

namespace rk::plain {

namespace {

using catalogue::PlanList;

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
  const std::string style = " Style" + plain_text(p.Style) + "-->";
  std::string block = cut(file, "<!--" + kind + style, "<!--End " + kind + style);
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
    const auto offer = offers.find(plain_text(plan[0]));
    if (!plain_text(p.Agent_User).empty() && offer != offers.end()) {
      name = offer->second[0];
      price = offer->second[1];
    }
    fill_plan(filled, list, plan, name, price, p);
    filled.next();
  }
  if (list != PlanList::Sql) fill_tag(block, "ListLineHeight", p.ListLineHeight);
  block = filled.into(block);
  if (list == PlanList::Sql) fill_tag(block, "ListLineHeight", p.ListLineHeight);
  return block;
}

std::string domain_price_list(const std::string& file, const Value& style,
                              const tests::Rows& domains, const Offers& offers, bool for_agent) {
  const std::string marker = "PriceList Style" + plain_text(style) + "-->";
  const std::string block = cut(file, "<!--" + marker, "<!--End " + marker);
  Repeat filled(cut(block, "<!--Loop-->", "<!--End Loop-->"));
  for (const std::vector<Value>& domain : domains.rows) {
    Value price = domain[1];
    Value update_price = domain[2];
    const auto offer = offers.find(plain_text(domain[3]));
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

std::string domain_boxes(const tests::Rows& domains, const catalogue::DomainBoxParameters& p) {
  std::string html;
  for (const std::vector<Value>& domain : domains.rows) {
    const std::string type = plain_text(domain[0]);
    html += "<div style=\"width:" + plain_text(p.InputWidth) +
            "px;height:" + plain_text(p.InputHeight) + "px;float:left;\"><input type=checkbox ";
    if (!domain[1].is_null() && domain[1].as_boolean()) html += "checked";
    html += " value=\"yes\" name=\"" + replaced(type, ".", "") + "\">" + type + "</div>";
  }
  return html + "<div style=\"font: 0px/0px sans-serif;clear: both;display: block\"> </div>";
}

}  // namespace rk::plain
