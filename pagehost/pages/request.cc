#include "pagehost/pages/request.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "pagehost/pages/url_text.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

constexpr KnownError kBytesAfterForm{
    errors::kSqlFailure, "BinaryRead cannot read the body: it was read as a form before"};
constexpr std::string_view kFormType = "application/x-www-form-urlencoded";

std::string uppered(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return out;
}

// "Accept-Language" as pages name it: HTTP_ACCEPT_LANGUAGE.
std::string header_variable(std::string_view name) {
  std::string out = "HTTP_" + uppered(name);
  std::replace(out.begin(), out.end(), '-', '_');
  return out;
}

// Whether a header's name is the one that a HTTP_ variable names (without "HTTP_").
bool names_header(std::string_view variable, std::string_view header) {
  return variable.size() == header.size() &&
         std::equal(variable.begin(), variable.end(), header.begin(), [](char a, char b) {
           return ascii_lower(a) == ascii_lower(b) || (a == '_' && b == '-');
         });
}

bool is_form(const PageRequest& request) {
  const std::string_view type = request.header("content-type");
  return type.size() >= kFormType.size() &&
         equal_ignoring_case(type.substr(0, kFormType.size()), kFormType);
}

Value joined_values(const NameValues::Entry* entry) {
  return entry == nullptr ? Value() : Value::text(entry->joined());
}

std::string physical_path(std::string_view site_root, std::string_view path) {
  return std::string(site_root) + std::string(path);
}

constexpr std::string_view kVariableNames[] = {"ALL_HTTP",
                                               "ALL_RAW",
                                               "APPL_MD_PATH",
                                               "APPL_PHYSICAL_PATH",
                                               "AUTH_PASSWORD",
                                               "AUTH_TYPE",
                                               "AUTH_USER",
                                               "CACHE_URL",
                                               "CERT_COOKIE",
                                               "CERT_FLAGS",
                                               "CERT_ISSUER",
                                               "CERT_KEYSIZE",
                                               "CERT_SECRETKEYSIZE",
                                               "CERT_SERIALNUMBER",
                                               "CERT_SERVER_ISSUER",
                                               "CERT_SERVER_SUBJECT",
                                               "CERT_SUBJECT",
                                               "CONTENT_LENGTH",
                                               "CONTENT_TYPE",
                                               "GATEWAY_INTERFACE",
                                               "HTTPS",
                                               "HTTPS_KEYSIZE",
                                               "HTTPS_SECRETKEYSIZE",
                                               "HTTPS_SERVER_ISSUER",
                                               "HTTPS_SERVER_SUBJECT",
                                               "INSTANCE_ID",
                                               "INSTANCE_META_PATH",
                                               "LOCAL_ADDR",
                                               "LOGON_USER",
                                               "PATH_INFO",
                                               "PATH_TRANSLATED",
                                               "QUERY_STRING",
                                               "REMOTE_ADDR",
                                               "REMOTE_HOST",
                                               "REMOTE_PORT",
                                               "REMOTE_USER",
                                               "REQUEST_METHOD",
                                               "SCRIPT_NAME",
                                               "SCRIPT_TRANSLATED",
                                               "SERVER_NAME",
                                               "SERVER_PORT",
                                               "SERVER_PORT_SECURE",
                                               "SERVER_PROTOCOL",
                                               "SERVER_SOFTWARE",
                                               "UNMAPPED_REMOTE_USER",
                                               "URL"};

}  // namespace

std::string_view host_name(std::string_view host_header) {
  const std::size_t bracket = host_header.find(']');
  const std::size_t colon = host_header.find(':', bracket == std::string_view::npos ? 0 : bracket);
  return host_header.substr(0, colon);
}

Value RequestView::query(std::string_view name) {
  return joined_values(query_values().find(name));
}

Value RequestView::form(std::string_view name) {
  return joined_values(form_values().find(name));
}

Value RequestView::item(std::string_view name) {
  if (const auto* entry = query_values().find(name)) return joined_values(entry);
  if (const auto* entry = form_values().find(name)) return joined_values(entry);
  Value found = cookie(name);
  return found.is_empty() ? server_variable(name) : found;
}

const NameValues& RequestView::query_values() {
  forget_other_code_page();
  if (!query_) query_ = parsed_form(request_->query, code_page(), code_pages_);
  return *query_;
}

const NameValues& RequestView::form_values() {
  forget_other_code_page();
  if (!form_) {
    form_ = parsed_form(is_form(*request_) ? std::string_view(request_->body) : std::string_view(),
                        code_page(), code_pages_);
  }
  return *form_;
}

const std::vector<CookieText>& RequestView::cookies() {
  forget_other_code_page();
  if (cookies_ && cookie_changes_ == response_->cookie_changes()) return *cookies_;
  cookie_changes_ = response_->cookie_changes();
  std::string all;
  for (const auto& [name, value] : request_->headers) {
    if (!equal_ignoring_case(name, "cookie")) continue;
    if (!all.empty()) all += "; ";
    all += value;
  }
  cookies_ = parsed_cookies(all, code_page(), code_pages_);
  for (const ResponseCookie& set : response_->cookies()) {
    const auto sent = std::find_if(
        cookies_->begin(), cookies_->end(),
        [&](const CookieText& cookie) { return equal_ignoring_case(cookie.name, set.name); });
    if (sent == cookies_->end()) {
      cookies_->push_back({set.name, response_->cookie_value(set)});
    } else {
      sent->value = response_->cookie_value(set);
    }
  }
  std::erase_if(*cookies_, [](const CookieText& cookie) { return cookie.name == kSessionCookie; });
  return *cookies_;
}

Value RequestView::cookie(std::string_view name) {
  for (const CookieText& cookie : cookies()) {
    if (equal_ignoring_case(cookie.name, name)) return Value::text(cookie_text(cookie.value));
  }
  return {};
}

std::string RequestView::cookie_text(std::string_view sent_value) const {
  if (sent_value.find('=') == std::string_view::npos) return decoded(sent_value);
  return decoded_text(sent_value, code_page(), code_pages_);
}

NameValues RequestView::cookie_keys(std::string_view sent_value) const {
  if (sent_value.find('=') == std::string_view::npos) return {};
  return parsed_form(sent_value, code_page(), code_pages_);
}

std::string RequestView::decoded(std::string_view sent) const {
  return url_decoded(sent, code_page(), code_pages_);
}

std::string RequestView::raw_query() const {
  return decoded_text(request_->query, code_page(), code_pages_);
}

std::string RequestView::raw_form() const {
  return is_form(*request_) ? decoded_text(request_->body, code_page(), code_pages_)
                            : std::string();
}

Value RequestView::server_variable(std::string_view name) {
  const auto found = variable(uppered(name));
  return found ? Value::text(*found) : Value();
}

std::vector<std::string> RequestView::server_variable_names() const {
  std::vector<std::string> names(std::begin(kVariableNames), std::end(kVariableNames));
  for (const auto& header : request_->headers) {
    std::string name = header_variable(header.first);
    if (std::find(names.begin(), names.end(), name) == names.end())
      names.push_back(std::move(name));
  }
  return names;
}

std::string RequestView::header_list(bool raw) const {
  std::string out;
  for (const auto& [name, value] : request_->headers) {
    out += raw ? name + ": " : header_variable(name) + ":";
    out += decoded_text(value, code_page(), code_pages_) + (raw ? "\r\n" : "\n");
  }
  return out;
}

// What was asked for, as it came.
std::string RequestView::address() const {
  const std::string& path = request_->asked_path();
  return request_->query.empty() ? path : path + "?" + request_->query;
}

std::optional<std::string> RequestView::sent_header(std::string_view variable) const {
  std::optional<std::string> found;
  for (const auto& [header, value] : request_->headers) {
    if (!names_header(variable, header)) continue;
    found = found ? *found + ", " : std::string();
    *found += decoded_text(value, code_page(), code_pages_);
  }
  return found;
}

std::optional<std::string> RequestView::variable(std::string_view name) const {
  if (name.starts_with("HEADER_")) return sent_header(name.substr(7));
  if (name.starts_with("HTTP_")) {
    if (auto sent = sent_header(name.substr(5))) return sent;
    if (name == "HTTP_METHOD") return request_->method;
    if (name == "HTTP_VERSION") return request_->protocol;
    if (name == "HTTP_URL") return address();
    return std::nullopt;
  }
  if (name == "CACHE_URL") {
    return (request_->secure ? "https://" : "http://") + std::string(request_->header("host")) +
           address();
  }
  if (name == "SCRIPT_TRANSLATED") return physical_path(site_root_, request_->path);
  if (name == "SCRIPT_NAME" || name == "URL") return request_->path;
  if (name == "PATH_INFO") return request_->asked_path();
  if (name == "QUERY_STRING") return raw_query();
  if (name == "SERVER_NAME") return std::string(host_name(request_->header("host")));
  if (name == "REQUEST_METHOD") return request_->method;
  if (name == "REMOTE_ADDR" || name == "REMOTE_HOST") return request_->remote_address;
  if (name == "REMOTE_PORT") return std::to_string(request_->remote_port);
  if (name == "LOCAL_ADDR") return request_->local_address;
  if (name == "SERVER_PORT") return std::to_string(request_->local_port);
  if (name == "SERVER_PORT_SECURE") return request_->secure ? "1" : "0";
  if (name == "HTTPS") return request_->secure ? "on" : "off";
  if (name == "SERVER_PROTOCOL") return request_->protocol;
  if (name == "SERVER_SOFTWARE") return server_software_;
  if (name == "GATEWAY_INTERFACE") return "CGI/1.1";
  if (name == "CONTENT_TYPE") return std::string(request_->header("content-type"));
  if (name == "CONTENT_LENGTH") return std::to_string(request_->body.size());
  if (name == "APPL_PHYSICAL_PATH") return physical_path(site_root_, "/");
  if (name == "PATH_TRANSLATED") return physical_path(site_root_, request_->asked_path());
  if (name == "APPL_MD_PATH") return "/LM/W3SVC/1/ROOT";
  if (name == "INSTANCE_ID") return "1";
  if (name == "INSTANCE_META_PATH") return "/LM/W3SVC/1";
  if (name == "ALL_HTTP") return header_list(false);
  if (name == "ALL_RAW") return header_list(true);
  const auto known = std::find(std::begin(kVariableNames), std::end(kVariableNames), name);
  return known == std::end(kVariableNames) ? std::nullopt : std::optional<std::string>("");
}

void RequestView::use_body_as_form(const KnownError& otherwise) {
  if (request_->body.empty()) return;
  if (body_use_ == BodyUse::Bytes) raise(otherwise);
  body_use_ = BodyUse::Form;
}

std::string RequestView::read_body(std::size_t most) {
  if (body_use_ == BodyUse::Form) raise(kBytesAfterForm);
  body_use_ = BodyUse::Bytes;
  std::string part = request_->body.substr(body_read_, most);
  body_read_ += part.size();
  return part;
}

void RequestView::forget_request() {
  static const PageRequest kNone{};
  request_ = &kNone;
}

void RequestView::forget_other_code_page() {
  if (decoded_by_ == code_page()) return;
  decoded_by_ = code_page();
  query_.reset();
  form_.reset();
  cookies_.reset();
}

}  // namespace rk::pagehost
