#include "pagehost/pages/response_object.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "pagehost/pages/request_collections.h"
#include "value/array.h"

namespace rk::pagehost {
namespace {

// A cookie that scripts set: Response.Cookies(name). One that came with the request is where they
// begin: a changed key leaves the others, a new date the value.
class CookieObject final : public TabledObject<CookieObject> {
 public:
  CookieObject(std::shared_ptr<PageResponse> response, std::shared_ptr<RequestView> request,
               std::string name)
      : response_(std::move(response)), request_(std::move(request)), name_(std::move(name)) {}
  std::string_view type_name() const override { return "IWriteCookie"; }
  static std::span<const Member<CookieObject>> members() {
    static constexpr Member<CookieObject> kMembers[] = {
        {"Item", &CookieObject::item, 0, 1, Access::Both},
        {"Expires", &CookieObject::expires, 0, 0, Access::Write},
        {"Path", &CookieObject::path, 0, 0, Access::Write},
        {"Domain", &CookieObject::domain, 0, 0, Access::Write},
        {"Secure", &CookieObject::secure, 0, 0, Access::Write},
        {"HasKeys", &CookieObject::has_keys},
    };
    return kMembers;
  }

 private:
  // For a change.
  ResponseCookie& cookie() {
    if (response_->find_cookie(name_) != nullptr) return response_->cookie(name_);
    ResponseCookie begun;
    for (const CookieText& sent : request_->cookies()) {
      if (!equal_ignoring_case(sent.name, name_)) continue;
      begun.value = request_->cookie_text(sent.value);
      const NameValues keys = request_->cookie_keys(sent.value);
      for (const auto& entry : keys.entries()) begun.keys.emplace_back(entry.name, entry.joined());
    }
    ResponseCookie& cookie = response_->cookie(name_);
    cookie.value = std::move(begun.value);
    cookie.keys = std::move(begun.keys);
    return cookie;
  }

  Value read(const Call& call) {
    return request_cookie(*request_, name_)
        .as_object()
        ->invoke(kDefaultMember, CallKind::Get, call.arguments());
  }

  Value item(const Call& call) {
    if (!call.assigns()) return read(call);
    std::string value = joined_text(call.assigned()).string();
    ResponseCookie& changed = cookie();
    if (call.count() == 0) {
      changed.value = std::move(value);
      changed.keys.clear();
      return {};
    }
    const std::string key = call.text(0);
    for (auto& [name, old] : changed.keys) {
      if (!equal_ignoring_case(name, key)) continue;
      old = std::move(value);
      return {};
    }
    changed.keys.emplace_back(key, std::move(value));
    return {};
  }
  Value expires(const Call& call) {
    cookie().expires = to_date(call.assigned());
    return {};
  }
  Value path(const Call& call) {
    cookie().path = to_text(call.assigned()).string();
    return {};
  }
  Value domain(const Call& call) {
    cookie().domain = to_text(call.assigned()).string();
    return {};
  }
  Value secure(const Call& call) {
    cookie().secure = to_boolean(call.assigned());
    return {};
  }
  Value has_keys(const Call&) {
    const auto& cookies = request_->cookies();
    return Value::boolean(std::any_of(cookies.begin(), cookies.end(), [&](const CookieText& one) {
      return equal_ignoring_case(one.name, name_) && one.value.find('=') != std::string::npos;
    }));
  }

  std::shared_ptr<PageResponse> response_;
  std::shared_ptr<RequestView> request_;
  std::string name_;
};

// Walked, counted and read it is Request.Cookies: pages delete all cookies by walking this one.
class CookiesObject final : public TabledObject<CookiesObject> {
 public:
  CookiesObject(std::shared_ptr<PageResponse> response, std::shared_ptr<RequestView> request)
      : response_(std::move(response)),
        request_(std::move(request)),
        all_(request_collection(request_, RequestPart::Cookies)) {}
  std::string_view type_name() const override { return "IRequestDictionary"; }
  static std::span<const Member<CookiesObject>> members() {
    static constexpr Member<CookiesObject> kMembers[] = {
        {"Item", &CookiesObject::item, 1, 1, Access::Both},
        {"Count", &CookiesObject::count},
        {"Key", &CookiesObject::key, 1, 1},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override { return all_->enumerate(); }

 private:
  Value item(const Call& call) {
    auto cookie = make_ref<CookieObject>(response_, request_, call.text(0));
    if (!call.assigns()) return Value::object(cookie);
    Value* value[] = {const_cast<Value*>(&call.assigned())};
    return cookie->invoke(kDefaultMember, CallKind::Let, value);
  }
  Value count(const Call&) { return all_->invoke(all_->member("Count"), CallKind::Get, {}); }
  Value key(const Call& call) {
    return all_->invoke(all_->member("Key"), CallKind::Get, call.arguments());
  }

  std::shared_ptr<PageResponse> response_;
  std::shared_ptr<RequestView> request_;
  Ref<Object> all_;
};

// What BinaryWrite takes: an array of bytes, or the bytes of a text.
std::string bytes_of(const Value& value) {
  const Value plain = plain_value(value);
  if (plain.is_array() && plain.as_array().holds_bytes()) return plain.as_array().bytes();
  if (plain.is_array()) raise(errors::kTypeMismatch);
  return to_text(plain).bytes();
}

}  // namespace

std::span<const Member<ResponseObject>> ResponseObject::members() {
  using R = ResponseObject;
  static constexpr Member<R> kMembers[] = {
      {"Write", &R::write, 1, 1},
      {"BinaryWrite", &R::binary_write, 1, 1},
      {"End", &R::end},
      {"Flush", &R::flush},
      {"Clear", &R::clear},
      {"Redirect", &R::redirect, 1, 1},
      {"Buffer", &R::buffer, 0, 0, Access::Both},
      {"Status", &R::status, 0, 0, Access::Both},
      {"ContentType", &R::content_type, 0, 0, Access::Both},
      {"Charset", &R::charset, 0, 1, Access::Both},
      {"CodePage", &R::code_page, 0, 0, Access::Both},
      {"LCID", &R::lcid, 0, 0, Access::Both},
      {"CacheControl", &R::cache_control, 0, 0, Access::Both},
      {"Expires", &R::expires, 0, 0, Access::Both},
      {"ExpiresAbsolute", &R::expires_absolute, 0, 0, Access::Both},
      {"AddHeader", &R::add_header, 2, 2},
      {"AppendToLog", &R::append_to_log, 1, 1},
      {"Cookies", &R::cookies, 0, 1, Access::Both},
      {"IsClientConnected", &R::is_client_connected},
      {"PICS", &R::pics, 0, 1, Access::Both},
  };
  return kMembers;
}

Value ResponseObject::write(const Call& call) {
  response_->write(call.at(0));
  return {};
}

Value ResponseObject::binary_write(const Call& call) {
  response_->write_bytes(bytes_of(call.at(0)));
  return {};
}

Value ResponseObject::end(const Call&) {
  response_->end();
}

Value ResponseObject::flush(const Call&) {
  response_->flush();
  return {};
}

Value ResponseObject::clear(const Call&) {
  response_->clear();
  return {};
}

Value ResponseObject::redirect(const Call& call) {
  response_->redirect(call.text(0));
}

Value ResponseObject::buffer(const Call& call) {
  if (!call.assigns()) return Value::boolean(response_->buffered());
  response_->set_buffered(to_boolean(call.assigned()));
  return {};
}

Value ResponseObject::status(const Call& call) {
  if (!call.assigns()) return Value::text(response_->status());
  response_->set_status(to_text(call.assigned()).view());
  return {};
}

Value ResponseObject::content_type(const Call& call) {
  if (!call.assigns()) return Value::text(response_->content_type());
  response_->set_content_type(to_text(call.assigned()).string());
  return {};
}

// Old pages write it as a method as well: Response.Charset("gb2312").
Value ResponseObject::charset(const Call& call) {
  if (call.assigns() || call.has(0)) {
    response_->set_charset(
        to_text(call.assigns() ? call.assigned() : std::as_const(call.at(0))).string());
    return {};
  }
  return Value::text(response_->charset().empty() ? charset_name(response_->code_page())
                                                  : response_->charset());
}

Value ResponseObject::code_page(const Call& call) {
  if (!call.assigns()) return Value::long_integer(response_->code_page());
  response_->set_code_page(to_long(call.assigned()));
  return {};
}

Value ResponseObject::lcid(const Call& call) {
  if (!call.assigns()) return Value::long_integer(response_->lcid());
  response_->set_lcid(to_long(call.assigned()));
  return {};
}

Value ResponseObject::cache_control(const Call& call) {
  if (!call.assigns()) return Value::text(response_->cache_control());
  response_->set_cache_control(to_text(call.assigned()).string());
  return {};
}

// In minutes from now.
Value ResponseObject::expires(const Call& call) {
  if (!call.assigns()) return Value::long_integer(expires_minutes_);
  expires_minutes_ = to_long(call.assigned());
  response_->set_expires(clock_.now() + expires_minutes_ / 1440.0);
  return {};
}

Value ResponseObject::expires_absolute(const Call& call) {
  if (!call.assigns()) return response_->expires() ? Value::date(*response_->expires()) : Value();
  response_->set_expires(to_date(call.assigned()));
  return {};
}

Value ResponseObject::add_header(const Call& call) {
  response_->add_header(call.text(0), call.text(1));
  return {};
}

Value ResponseObject::append_to_log(const Call& call) {
  response_->append_to_log(call.text(0));
  return {};
}

Value ResponseObject::cookies(const Call& call) {
  auto cookies = make_ref<CookiesObject>(response_, request_);
  if (call.count() == 0 && !call.assigns()) return Value::object(cookies);
  return cookies->invoke(kDefaultMember, call.kind(), call.arguments());
}

Value ResponseObject::is_client_connected(const Call&) {
  return Value::boolean(response_->connected());
}

// A method and a property at once, as Charset is.
Value ResponseObject::pics(const Call& call) {
  if (!call.assigns() && !call.has(0)) return Value::text("");
  response_->add_header("PICS-Label",
                        call.assigns() ? to_text(call.assigned()).string() : call.text(0));
  return {};
}

}  // namespace rk::pagehost
