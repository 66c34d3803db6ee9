#include "site/regions.h"

#include <memory>
#include <optional>

#include "platform/database.h"
#include "site/storefront.h"
#include "value/conversions.h"

namespace rk::site {

namespace {

using platform::Connection;
using platform::Recordset;

constexpr std::string_view kProvincesSql = "Select * From [Rk_CT] Where [PostCode] Like '%0000'";

std::string cities_sql(std::string_view index) {
  return std::string("Select * From [Rk_CT] Where [PostCode] Like '")
      .append(index)
      .append("%00' And [PostCode]<>'")
      .append(index)
      .append("0000'");
}

// A province without rows for cities offers itself.
std::string regions_and_province_sql(std::string_view index) {
  return std::string("Select * From [Rk_CT] Where [PostCode] Like '").append(index).append("%00'");
}

std::string region_sql(std::string_view code) {
  return std::string("Select * From [Rk_CT] Where [PostCode]='").append(code).append("'");
}

// `index` is read where a text needs it, and raises then where it has no text.
std::unique_ptr<Recordset> regions(Connection& db, std::string_view type, const Value& index) {
  auto rows = db.execute(type == "ct" ? cities_sql(joined_text(index).view())
                                      : std::string(type == "pro" ? kProvincesSql : ""));
  if (!rows->eof()) return rows;
  rows->close();
  return db.execute(regions_and_province_sql(joined_text(index).view()));
}

void append_options(std::string& html, Recordset& regions, const Value& now_value) {
  if (regions.eof()) return;
  const std::optional<Text> selected = try_text(now_value);
  const std::size_t code_field = regions.ordinal("PostCode");
  const std::size_t name_field = regions.ordinal("Name");
  std::string code;
  for (; !regions.eof(); regions.move_next()) {
    code.clear();
    const bool has_code = regions.append_field_text(code_field, code);
    html.append("<option value=\"").append(code).append("\"");
    if (has_code && selected && code == selected->view()) html.append(" selected");
    html.append(">");
    regions.append_field_text(name_field, html);
    html.append("</option>");
  }
}

struct Form {
  std::string_view show_type;
  std::string_view column;
  std::string_view of_beijing;
};
constexpr Form kForms[] = {{"0", "Name", "北京"},
                           {"1", "PinYin", "BeiJing"},
                           {"2", "PostCode", "110000"},
                           {"3", "simple", "BJ"}};

}  // namespace

std::string GetCTSelect(const PageContext& page, const Value& NowValue, const Value& GetType,
                        const Value& sIndex) {
  const auto db = open_database(page);
  std::string html;
  {
    const platform::ReadScope one_view(*db);
    const auto rows = regions(*db, joined_text(GetType).view(), sIndex);
    append_options(html, *rows, NowValue);
    rows->close();
  }
  db->close();
  return html;
}

Value GetCTName(const PageContext& page, const Value& ProvCode, const Value& ShowType) {
  const auto db = open_database(page);
  Value name;
  {
    const platform::ReadScope one_view(*db);
    const auto rows = db->execute(region_sql(joined_text(ProvCode).view()));
    const Text show_type = joined_text(ShowType);
    for (const Form& form : kForms) {
      if (form.show_type != show_type.view()) continue;
      name = rows->eof() ? Value::text(form.of_beijing) : rows->field(form.column);
    }
    rows->close();
  }
  db->close();
  return name;
}

}  // namespace rk::site
