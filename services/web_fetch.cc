#include "services/web_fetch.h"

#include "services/text_codecs.h"
#include "site/trapped.h"
#include "value/conversions.h"

namespace rk::services {

namespace {

constexpr std::chrono::milliseconds kServerPhase{50000};
constexpr std::string_view kNoAnswer = "0119";

Value fetched(const Web& web, const Value& url, const platform::HttpTimeouts& timeouts) {
  std::optional<std::string> body;
  site::trapped([&] { body = web.http.body_of(to_text(url).view(), timeouts); });
  if (!body) return Value::text(kNoAnswer);
  return Value::text(decoded(*body, web.code_pages, web.ansi_code_page));
}

}  // namespace

Value server_fetch(const Web& web, const Value& url) {
  return fetched(web, url, {kServerPhase, kServerPhase, kServerPhase, kServerPhase});
}

Value client_fetch(const Web& web, const Value& url) {
  return fetched(web, url, {});
}

}  // namespace rk::services
