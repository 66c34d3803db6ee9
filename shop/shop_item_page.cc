#include "shop/shop_item_page.h"

#include <array>
#include <string>
#include <string_view>

#include "platform/database.h"
#include "site/storefront.h"
#include "site/tags.h"
#include "site/template_cache.h"
#include "value/comparison.h"
#include "value/conversions.h"

namespace rk::shop {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

// A period of service: the column of its price, its word in the summary and in the form.
struct Period {
  std::string_view column;
  std::string_view unit;
  std::string_view word;
};
constexpr Period kYear{"Price", "元/年", "年"};
constexpr Period kHalfYear{"HfyPrice", "元/半年", "半年"};
constexpr Period kQuarter{"ThMonPrice", "元/季", "季"};
constexpr Period kMonth{"MonPrice", "元/月", "月"};

// QUIRK: three orders of the same four periods.
constexpr std::array kSummaryOrder{kYear, kHalfYear, kQuarter, kMonth};
constexpr std::array kScriptOrder{kYear, kQuarter, kHalfYear, kMonth};
constexpr std::array kOptionOrder{kYear, kMonth, kQuarter, kHalfYear};

constexpr int kMostPeriods = 11;  // in the form's choice of how many

class PeriodPrices {
 public:
  explicit PeriodPrices(platform::Recordset& article) : article_(article) {}

  // A Null counts as 0.
  Value price(const Period& period) const {
    Value price = article_.field(period.column);
    return price.is_null() ? Value::integer(0) : price;
  }
  bool offered(const Period& period) const { return differs_from(price(period), 0); }
  void append(std::string& out, const Period& period) const { append_text(out, price(period)); }

 private:
  platform::Recordset& article_;
};

void add_line(std::string& script, std::string_view line) {
  script.append(line).append(kLineEnd);
}

std::string price_summary(const PeriodPrices& prices) {
  std::string summary;
  for (const Period& period : kSummaryOrder) {
    if (!prices.offered(period)) continue;
    summary.append(" ");
    prices.append(summary, period);
    summary.append(period.unit);
  }
  return summary;
}

void add_total(std::string& script, const PeriodPrices& prices, const Period& period) {
  script.append("   if(myfrm.BuyType.value==\"").append(period.word).append("\")").append(kLineEnd);
  add_line(script, "   {");
  script.append("       wmoney.innerHTML=myfrm.BuyYear.value*");
  prices.append(script, period);
  script.append("*myfrm.BuyNo.value;").append(kLineEnd);
  add_line(script, "   }");
}

void add_option(std::string& form, std::string_view value) {
  form.append("   <option value=\"").append(value).append("\">").append(value);
  form.append("</option>").append(kLineEnd);
}

std::string period_form(const PeriodPrices& prices) {
  std::string form;
  add_line(form, "<script language=\"javascript\">");
  add_line(form, "function showmoney()");
  add_line(form, "{");
  for (const Period& period : kScriptOrder) add_total(form, prices, period);
  add_line(form, "}");
  add_line(form, "</script>");
  add_line(form, "   <br>");
  add_line(form, "   <br>");
  add_line(form, "   购买年限：<select size=\"1\" name=\"BuyYear\" onchange=\"showmoney();\">");
  for (int count = 1; count <= kMostPeriods; ++count) {
    const std::string number = std::to_string(count);
    add_line(form, "   <option value=" + number + ">" + number + "</option>");
  }
  add_line(form, "   </select> <select size=\"1\" name=\"BuyType\" onchange=\"showmoney();\">");
  for (const Period& period : kOptionOrder) {
    if (prices.offered(period)) add_option(form, period.word);
  }
  add_line(form, "   </select>");
  return form;
}

std::string plain_script() {
  std::string script;
  add_line(script, "<script language=\"javascript\">");
  add_line(script, "function showmoney()");
  add_line(script, "{");
  add_line(script, "       wmoney.innerHTML={ShopPrice}*myfrm.BuyNo.value;");
  add_line(script, "}");
  add_line(script, "</script>  ");
  return script;
}

void fill_period_article(std::string& html, platform::Recordset& article) {
  const PeriodPrices prices(article);
  const std::string summary = price_summary(prices);
  site::fill(html, "Price", summary);
  site::fill(html, "SelectDate", period_form(prices));
  site::fill(html, "ShopPrice", summary);
}

void fill_plain_article(std::string& html, platform::Recordset& article) {
  // First, because the script holds {ShopPrice} itself.
  site::fill(html, "SelectDate", plain_script());
  std::string price;
  append_text(price, article.field("Price"));
  price.append("/");
  append_text(price, article.field("DanWei"));
  site::fill(html, "Price", price);
  site::fill(html, "ShopPrice", article.field("Price"));
}

platform::SqlText article_sql(std::string_view id) {
  platform::SqlText sql("Select * From Rk_ShopList Where Id=");
  return sql.add_outside(id);
}

std::string category_sql(const Value& item_id) {
  std::string sql = "Select * From Rk_ShopItem Where Id=";
  append_text(sql, item_id);
  return sql;
}

}  // namespace

Value Show_ShopInfo(const site::PageContext& page) {
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const Text file = site::template_text(page, "Shop-ShowShop-Info.html");
  const std::string id = site::ReStr(page.request().query("id"));
  if (!is_numeric(Value::text(id))) return {};

  const auto article = db->execute(article_sql(id));
  if (article->eof()) return {};
  const auto category = db->execute(category_sql(article->field("ItemId")));
  if (category->eof()) return {};
  const Value serv_day = category->field("ServDay");
  const bool by_period = !serv_day.is_null() && to_boolean(serv_day);
  category->close();

  std::string html = file.string();
  site::fill(html, "ShopName", article->field("ShopName"));
  if (by_period) {
    fill_period_article(html, *article);
  } else {
    fill_plain_article(html, *article);
  }
  site::fill(html, "Info", article->field("Info"));
  site::fill(html, "Image", article->field("PicUrl"));
  site::fill(html, "Id", article->field("Id"));
  article->close();
  db->close();
  return Value::text(html);
}

}  // namespace rk::shop
