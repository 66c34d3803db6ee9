#include "pagehost/components/http_request_object.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>
#include <variant>

#include "pagehost/components/charsets.h"
#include "pagehost/components/stream_object.h"
#include "pagehost/components/xml_document.h"
#include "pagehost/pages/url_text.h"
#include "value/array.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

using platform::HttpAnswer;
using platform::HttpFailure;

// Old classes send no method longer than a WebDAV one.
constexpr std::size_t kMaxMethodLength = 32;

constexpr KnownError kNotYet{-2147483638,
                             "The data necessary to complete this operation is not yet available."};
constexpr KnownError kNotOpened{-2147467259, "The request cannot be sent before it is opened."};
constexpr KnownError kNoHeader{-2147012746, "The requested header was not found."};

// Options of the two kinds of requests.
constexpr std::int32_t kIgnoreCertificateXml = 2;
constexpr std::int32_t kUserAgentPlain = 0;
constexpr std::int32_t kAddressPlain = 1;
constexpr std::int32_t kIgnoreCertificatePlain = 4;
constexpr std::int32_t kRedirectsPlain = 6;

KnownError error_of(HttpFailure failure) {
  switch (failure) {
    case HttpFailure::BadAddress:
      return {-2147012891, "The URL is invalid."};
    case HttpFailure::OtherScheme:
      return {-2147012890, "The URL does not use a recognized protocol."};
    case HttpFailure::NoSuchHost:
      return {-2147012889, "The server name or address could not be resolved."};
    case HttpFailure::NotConnected:
      return {-2147012867, "A connection with the server could not be established."};
    case HttpFailure::BadCertificate:
      return {-2147012721, "A security error occurred."};
    case HttpFailure::TimedOut:
      return {-2147012894, "The operation timed out."};
    case HttpFailure::TooLarge:
      return {-2147012695, "The answer is larger than this server takes."};
    case HttpFailure::BadAnswer:
      break;
  }
  return {-2147012744, "The server returned an invalid or unrecognized response."};
}

bool is_token(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return c > ' ' && c < 127 &&
           std::string_view("()<>@,;:\\\"/[]?={}").find(c) == std::string_view::npos;
  });
}

// Methods of common names are sent in capital letters, as servers know them.
std::string method_of(std::string_view given) {
  for (const std::string_view known : {"GET", "POST", "HEAD", "PUT", "DELETE", "OPTIONS"}) {
    if (equal_ignoring_case(known, given)) return std::string(known);
  }
  return std::string(given);
}

// In milliseconds; 0 and less: as long as the page may.
std::optional<std::chrono::milliseconds> phase(std::int32_t milliseconds) {
  if (milliseconds <= 0) return std::nullopt;
  return std::chrono::milliseconds(milliseconds);
}

bool has_header(const platform::HttpRequest& request, std::string_view name) {
  return std::any_of(request.headers.begin(), request.headers.end(),
                     [&](const auto& each) { return equal_ignoring_case(each.first, name); });
}

// Headers that say how the bytes travel are the connection's own.
bool is_of_connection(std::string_view name) {
  for (const std::string_view own : {"content-length", "transfer-encoding", "connection", "expect",
                                     "keep-alive", "te", "trailer", "upgrade"}) {
    if (equal_ignoring_case(own, name)) return true;
  }
  return false;
}

}  // namespace

std::span<const Member<HttpRequestObject>> HttpRequestObject::members() {
  using H = HttpRequestObject;
  static constexpr Member<H> kMembers[] = {
      {"", nullptr},
      {"open", &H::open, 2, 5},
      {"setRequestHeader", &H::set_request_header, 2, 2},
      {"send", &H::send, 0, 1},
      {"abort", &H::abort},
      {"waitForResponse", &H::wait, 0, 1},
      {"status", &H::status},
      {"statusText", &H::status_text},
      {"readyState", &H::ready_state},
      {"responseText", &H::response_text},
      {"responseBody", &H::response_body},
      {"responseStream", &H::response_stream},
      {"responseXML", &H::response_xml},
      {"getResponseHeader", &H::response_header, 1, 1},
      {"getAllResponseHeaders", &H::all_response_headers},
      {"setTimeouts", &H::set_timeouts, 4, 4},
      {"setOption", &H::set_option, 2, 2},
      {"getOption", &H::option, 1, 1},
      {"Option", &H::property_option, 1, 1, Access::Both},
      {"setCredentials", &H::set_credentials, 3, 3},
      {"setProxy", &H::ignored, 1, 3},
      {"setProxyCredentials", &H::ignored, 2, 2},
      {"setClientCertificate", &H::ignored, 1, 1},
      {"setAutoLogonPolicy", &H::ignored, 1, 1},
      {"onreadystatechange", &H::ignored, 0, 0, Access::Write},
  };
  return kMembers;
}

// Open(method, address, asynchronous, user, password). A space or a letter that is not ASCII goes
// out in percent bytes.
Value HttpRequestObject::open(const Call& call) {
  const std::string method = call.text(0);
  if (!is_token(method) || method.size() > kMaxMethodLength) raise(errors::kInvalidCall);
  const platform::HttpTimeouts timeouts = request_.timeouts;
  request_ = {};
  request_.timeouts = timeouts;
  request_.method = method_of(method);
  request_.address = header_safe_address(call.text(1));
  async_ = call.flag_or(2, flavour_ == HttpFlavour::Xml);
  request_.user = call.text_or(3, "");
  request_.password = call.text_or(4, "");
  answer_.reset();
  failure_.reset();
  document_ = nullptr;
  held_.set(0);
  state_ = State::Opened;
  for (const auto& [name, value] : options_) take_option(name, value);
  return {};
}

Value HttpRequestObject::set_request_header(const Call& call) {
  if (state_ != State::Opened) raise(kNotOpened);
  std::string name = call.text(0);
  std::string value = joined_text(call.at(1)).string();
  if (!is_token(name)) raise(errors::kInvalidCall);
  for (const char c : value) {
    if (c == '\r' || c == '\n' || c == '\0') raise(errors::kInvalidCall);
  }
  if (is_of_connection(name)) return {};
  std::size_t bytes = name.size() + value.size();
  for (const auto& [each, text] : request_.headers) bytes += each.size() + text.size();
  if (bytes > kMaxSentHeaderBytes) raise(errors::kOutOfMemory);
  std::erase_if(request_.headers,
                [&](const auto& each) { return equal_ignoring_case(each.first, name); });
  request_.headers.emplace_back(std::move(name), std::move(value));
  return {};
}

// Texts go out as UTF-8, arrays of bytes as they are, documents with the encoding they declare.
void HttpRequestObject::take_body(const Value& given) {
  if (given.is_object() && given.as_object() != nullptr) {
    const auto* document = dynamic_cast<XmlDocumentObject*>(given.as_object());
    if (document == nullptr) raise(errors::kTypeMismatch);
    request_.body = document->tree()->bytes();
    if (!has_header(request_, "content-type")) {
      request_.headers.emplace_back("Content-Type", "text/xml");
    }
    return;
  }
  if (given.is_array()) {
    if (!given.as_array().holds_bytes()) raise(errors::kTypeMismatch);
    request_.body = given.as_array().bytes();
    return;
  }
  request_.body = joined_text(given).string();
  if (!request_.body.empty() && !has_header(request_, "content-type")) {
    request_.headers.emplace_back("Content-Type", "text/plain; charset=utf-8");
  }
}

Value HttpRequestObject::send(const Call& call) {
  if (state_ != State::Opened) raise(kNotOpened);
  if (call.has(0)) take_body(call.at(0));
  auto came = services_.http->send(request_);
  state_ = State::Done;
  request_.body.clear();
  if (auto* answer = std::get_if<HttpAnswer>(&came)) {
    held_.set(answer->body.size());
    answer_ = std::move(*answer);
    return {};
  }
  failure_ = std::get<HttpFailure>(came);
  if (!async_) raise(error_of(*failure_));
  return {};
}

Value HttpRequestObject::abort(const Call&) {
  state_ = State::Fresh;
  answer_.reset();
  failure_.reset();
  document_ = nullptr;
  held_.set(0);
  return {};
}

// True: the answer is there.
Value HttpRequestObject::wait(const Call&) {
  if (failure_) raise(error_of(*failure_));
  return Value::boolean(answer_.has_value());
}

const HttpAnswer& HttpRequestObject::answer() {
  if (failure_) raise(error_of(*failure_));
  if (!answer_) raise(kNotYet);
  return *answer_;
}

Value HttpRequestObject::status(const Call&) {
  return Value::long_integer(answer().status);
}

Value HttpRequestObject::status_text(const Call&) {
  return Value::text(decoded_text(answer().reason, platform::kUtf8, *services_.system.code_pages));
}

Value HttpRequestObject::ready_state(const Call&) {
  return Value::long_integer(static_cast<std::int32_t>(state_));
}

// The charset that the answer's Content-Type names, or empty.
std::string HttpRequestObject::charset_of_answer() const {
  for (const auto& [name, value] : answer_->headers) {
    if (!equal_ignoring_case(name, "content-type")) continue;
    constexpr std::string_view kWord = "charset=";
    const std::size_t at = lowered_ascii(value).find(kWord);
    if (at == std::string::npos) return {};
    const std::string_view rest = std::string_view(value).substr(at + kWord.size());
    const std::size_t from = std::min(rest.find_first_not_of(" \"'"), rest.size());
    return std::string(rest.substr(from, rest.find_first_of("\"'; ", from) - from));
  }
  return {};
}

// By the byte-order mark, the answer's charset, or as UTF-8.
Value HttpRequestObject::response_text(const Call&) {
  std::string_view body = answer().body;
  const platform::CodePages& code_pages = *services_.system.code_pages;
  int code_page = code_page_of_charset(charset_of_answer()).value_or(platform::kUtf8);
  if (body.starts_with("\xEF\xBB\xBF")) {
    body.remove_prefix(3);
    code_page = platform::kUtf8;
  } else if (body.starts_with("\xFF\xFE")) {
    body.remove_prefix(2);
    code_page = kUtf16;
  }
  const bool known = code_page == kUtf16 || code_page == kLatin1 || code_pages.supports(code_page);
  return Value::text(charset_decoded(body, known ? code_page : platform::kUtf8, code_pages));
}

Value HttpRequestObject::response_body(const Call&) {
  return Value::array(Array::of_bytes(answer().body));
}

Value HttpRequestObject::response_stream(const Call&) {
  return Value::object(make_ref<StreamObject>(services_.system, answer().body));
}

// A document without nodes where the answer is no XML; the same one each time.
Value HttpRequestObject::response_xml(const Call&) {
  const std::string& body = answer().body;
  if (services_.xml == nullptr) return Value::nothing();
  if (!document_) {
    auto document = make_ref<XmlDocumentObject>(services_);
    const std::optional<int> code_page = code_page_of_charset(charset_of_answer());
    const bool two_bytes =
        code_page && *code_page != platform::kUtf8 && *code_page != kUtf16 && *code_page != kLatin1;
    if (two_bytes && services_.system.code_pages->supports(*code_page)) {
      document->load_text(charset_decoded(body, *code_page, *services_.system.code_pages));
    } else {
      document->load_bytes(body);
    }
    document_ = document;
  }
  return Value::object(document_);
}

// The values of a header that came several times are joined.
Value HttpRequestObject::response_header(const Call& call) {
  const std::string wanted = call.text(0);
  std::optional<std::string> found;
  for (const auto& [name, value] : answer().headers) {
    if (!equal_ignoring_case(name, wanted)) continue;
    found = found ? *found + ", " + value : value;
  }
  if (!found && flavour_ == HttpFlavour::Plain) raise(kNoHeader);
  return Value::text(
      decoded_text(found.value_or(""), platform::kUtf8, *services_.system.code_pages));
}

Value HttpRequestObject::all_response_headers(const Call&) {
  std::string out;
  for (const auto& [name, value] : answer().headers) out += name + ": " + value + "\r\n";
  return Value::text(decoded_text(out + "\r\n", platform::kUtf8, *services_.system.code_pages));
}

// SetTimeouts(resolve, connect, send, receive).
Value HttpRequestObject::set_timeouts(const Call& call) {
  request_.timeouts = {phase(call.number(0)), phase(call.number(1)), phase(call.number(2)),
                       phase(call.number(3))};
  return {};
}

void HttpRequestObject::take_option(std::int32_t name, const Value& value) {
  if (flavour_ == HttpFlavour::Xml) {
    if (name == kIgnoreCertificateXml) request_.check_certificate = to_long(value) == 0;
    return;
  }
  if (name == kUserAgentPlain) request_.user_agent = to_text(value).string();
  if (name == kIgnoreCertificatePlain) request_.check_certificate = to_long(value) == 0;
  if (name == kRedirectsPlain) request_.follow_redirects = to_boolean(value);
}

Value HttpRequestObject::kept_option(std::int32_t name) const {
  const auto found = options_.find(name);
  if (found != options_.end()) return found->second;
  if (flavour_ == HttpFlavour::Plain && name == kAddressPlain) return Value::text(request_.address);
  return flavour_ == HttpFlavour::Plain && name == kRedirectsPlain ? Value::boolean(true) : Value();
}

Value HttpRequestObject::set_option(const Call& call) {
  const std::int32_t name = call.number(0);
  take_option(name, plain_value(call.at(1)));
  options_[name] = plain_value(call.at(1));
  return {};
}

Value HttpRequestObject::option(const Call& call) {
  return kept_option(call.number(0));
}

Value HttpRequestObject::property_option(const Call& call) {
  const std::int32_t name = call.number(0);
  if (!call.assigns()) return kept_option(name);
  take_option(name, call.assigned_value());
  options_[name] = call.assigned_value();
  return {};
}

// For the server (0); a proxy is the site's setting.
Value HttpRequestObject::set_credentials(const Call& call) {
  if (call.number(2) != 0) return {};
  request_.user = call.text(0);
  request_.password = call.text(1);
  return {};
}

Value HttpRequestObject::ignored(const Call&) {
  return {};
}

}  // namespace rk::pagehost
