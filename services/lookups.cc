#include "services/lookups.h"

#include <array>
#include <string_view>

#include "site/random_letters.h"
#include "site/tags.h"
#include "site/trapped.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::services {

namespace {

const std::string& configured(const std::string& address, std::string_view key) {
  if (!address.empty()) return address;
  std::string text = "No address is configured for [endpoints] ";
  text += key;
  throw ScriptError(errors::kNotConfigured, std::move(text));
}

// Defeats caches along the way.
std::string fresh_letters(platform::Random& random) {
  return site::MyRandc(Value::integer(5), random);
}

std::string xinnet_address(const Endpoints& endpoints, platform::Random& random,
                           std::string_view tail) {
  return configured(endpoints.xinnet, "xinnet") +
         "/domain/api.gb?rktemstr=" + fresh_letters(random) + std::string(tail);
}

struct XinnetMethod {
  std::string_view apitype;
  std::string_view tail;
};
constexpr std::array<XinnetMethod, 4> kXinnetMethods = {{
    {"xinnetreg", "&method=Register&"},
    {"xinnetgetkey", "&method=GetProductKey&"},
    {"xinnetDomainRenew", "&method=DomainRenew&"},
    {"xinnetchangekey", "&method=ChangeProductKey&"},
}};

constexpr std::string_view kNotOnRecord = "您所查询的信息在备案库中不存在";

}  // namespace

Value chDomainReg(const Web& web, const Endpoints& endpoints, platform::Random& random,
                  const Value& domain) {
  std::string address = configured(endpoints.availability, "availability");
  address += "/cgi-bin/check_muitl.cgi?domain=";
  address += joined_text(domain).view();
  address += "&rktemstr=";
  address += fresh_letters(random);
  return client_fetch(web, Value::text(address));
}

Value getapiurl(const Endpoints& endpoints, platform::Random& random, const Value& apitype) {
  Text key;
  // What has no text is no key.
  if (site::trapped([&] { key = joined_text(apitype); })) return Value();
  if (key.view() == "netcn") {
    return Value::text(configured(endpoints.hichina, "hichina") +
                       "/wwwnetcn.aspx?rktemstr=" + fresh_letters(random));
  }
  for (const XinnetMethod& method : kXinnetMethods) {
    if (key.view() == method.apitype) {
      return Value::text(xinnet_address(endpoints, random, method.tail));
    }
  }
  return Value();
}

Value Getbeian(const Web& web, const Endpoints& endpoints, platform::Server& server,
               const Value& sStr, const Value& domain) {
  const std::string& site = configured(endpoints.filing, "filing");
  const Value form = server_fetch(web, Value::text(site + "/chaxun/ggcx.jsp"));
  // The path changes from visit to visit, so it is read each time.
  const std::string_view path = site::cut(form.as_view(), "document.frame.action=\"/", "\";");
  std::string number;
  site::trapped([&] { number = server.url_encode(joined_text(sStr).view()); });
  std::string address = site + "/";
  address += path;
  address += "?cxfs=3&baxh=";
  address += number;
  const Value reply = server_fetch(web, Value::text(address));
  if (reply.as_view().find(kNotOnRecord) != std::string_view::npos) return Value::text("0");
  const Value row = site::GetKey(reply, Value::text("OnTrMouseOut(this)"), Value::text("</a>\r"));
  // QUIRK: the empty text is found in any row, but not where there is no row at all.
  bool named = false;
  site::trapped([&] {
    named =
        row.is_text() && row.as_view().find(joined_text(domain).view()) != std::string_view::npos;
  });
  return Value::text(named ? "1" : "2");
}

}  // namespace rk::services
