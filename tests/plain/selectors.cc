#include "tests/plain/selectors.h"

#include "tests/plain/repeat.h"

namespace rk::plain {

namespace {

std::string name_of(const ProductListCase& given, std::size_t kind,
                    const std::vector<Value>& product) {
  const auto& names = given.own_names[kind];
  const auto own = names.find(plain_text(product[0]));
  return plain_text(given.for_agent && own != names.end() ? own->second : product[1]);
}

}  // namespace

std::string product_list(const ProductListCase& given) {
  constexpr std::size_t kHosts = 0;
  constexpr std::size_t kMails = 3;
  std::string html =
      "<select size=\"1\" name=\"D1\" onchange=location.href=this.value style=\"padding-left: 4px; "
      "padding-right: 4px; padding-top: 1px; padding-bottom: 1px\">\r\n"
      "  <option>产品服务快速通道</option>\r\n"
      "  <option value=\"/Host\">＝＝虚拟主机＝＝</option>\r\n";
  for (const auto& product : given.products[kHosts].rows) {
    html += "  <option value=\"/Host/ShowHost.asp?id=" + plain_text(product[0]) + "\">┠" +
            name_of(given, kHosts, product) + "</option>\r\n";
  }
  html += "  <option value=\"/DataBase.Index.asp\">＝＝数据库＝＝</option>\r\n";
  for (std::size_t kind = kHosts + 1; kind < kMails; ++kind) {
    for (const auto& product : given.products[kind].rows) {
      html += "  <option value=\"/DataBase/Index.asp\">" + name_of(given, kind, product) +
              "</option>\r\n";
    }
  }
  html += "  <option value=\"/Mail/Mail.asp\">＝＝企业邮局＝＝</option>\r\n";
  for (const auto& product : given.products[kMails].rows) {
    html += "  <option value=\"/Mail/Mail.asp?id=" + plain_text(product[0]) + "\">┠" +
            name_of(given, kMails, product) + "</option>\r\n";
  }
  return html + "</select>";
}

std::string server_list(const tests::Rows& classes, const catalogue::ServerListParameters& p) {
  std::string html;
  for (const auto& product_class : classes.rows) {
    html += "<div style=\"width:" + plain_text(p.Width) + "px;height:" + plain_text(p.sHeight) +
            "px;float:left;\"><a href=\"" + plain_text(p.ShowPage) +
            "?ServerId=" + plain_text(product_class[0]) + "\">" + plain_text(product_class[1]) +
            "</a></div>";
  }
  return html + "<div style=\"font: 0px/0px sans-serif;clear: both;display: block\"> </div>";
}

}  // namespace rk::plain
