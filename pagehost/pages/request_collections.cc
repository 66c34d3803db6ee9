#include "pagehost/pages/request_collections.h"

#include <string>
#include <utility>
#include <vector>

#include "pagehost/pages/tabled_object.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

constexpr KnownError kFormAfterBytes{
    errors::kSqlFailure, "Request.Form cannot be used: BinaryRead has read the body before"};

class TextWalk final : public Enumeration {
 public:
  explicit TextWalk(std::vector<std::string> texts) : texts_(std::move(texts)) {}
  bool next(Value& item) override {
    if (at_ >= texts_.size()) return false;
    item = Value::text(texts_[at_++]);
    return true;
  }

 private:
  std::vector<std::string> texts_;
  std::size_t at_ = 0;
};

std::size_t place_in(const Value& index, std::size_t count) {
  const std::int32_t place = to_long(index);
  if (place < 1 || static_cast<std::size_t>(place) > count) raise(errors::kSubscriptOutOfRange);
  return static_cast<std::size_t>(place) - 1;
}

std::string raw_text(RequestView& request, RequestPart part) {
  switch (part) {
    case RequestPart::Query:
      return request.raw_query();
    case RequestPart::Form:
      return request.raw_form();
    case RequestPart::Cookies:
      return std::string(request.sent().header("cookie"));
    default:
      return {};
  }
}

// The values of one name.
class ValuesObject final : public TabledObject<ValuesObject> {
 public:
  explicit ValuesObject(std::vector<std::string> values, std::string joined)
      : values_(std::move(values)), joined_(std::move(joined)) {}
  std::string_view type_name() const override { return "IStringList"; }
  static std::span<const Member<ValuesObject>> members() {
    static constexpr Member<ValuesObject> kMembers[] = {
        {"Item", &ValuesObject::item, 0, 1},
        {"Count", &ValuesObject::count},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override { return std::make_unique<TextWalk>(values_); }

 private:
  Value item(const Call& call) {
    if (call.has(0)) return Value::text(values_[place_in(call.at(0), values_.size())]);
    return values_.empty() ? Value() : Value::text(joined_);
  }
  Value count(const Call&) {
    return Value::long_integer(static_cast<std::int32_t>(values_.size()));
  }

  std::vector<std::string> values_;
  std::string joined_;
};

// A cookie that came with the request.
class SentCookieObject final : public TabledObject<SentCookieObject> {
 public:
  SentCookieObject(Value whole, NameValues keys)
      : whole_(std::move(whole)), keys_(std::move(keys)) {}
  std::string_view type_name() const override { return "IReadCookie"; }
  static std::span<const Member<SentCookieObject>> members() {
    static constexpr Member<SentCookieObject> kMembers[] = {
        {"Item", &SentCookieObject::item, 0, 1},
        {"HasKeys", &SentCookieObject::has_keys},
        {"Count", &SentCookieObject::count},
        {"Key", &SentCookieObject::key, 1, 1},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override {
    std::vector<std::string> names;
    for (const auto& entry : keys_.entries()) names.push_back(entry.name);
    return std::make_unique<TextWalk>(std::move(names));
  }

 private:
  Value item(const Call& call) {
    if (!call.has(0)) return whole_;
    const NameValues::Entry* entry = keys_.find(call.text(0));
    return entry == nullptr ? Value() : Value::text(entry->joined());
  }
  Value has_keys(const Call&) { return Value::boolean(!keys_.entries().empty()); }
  Value count(const Call&) {
    return Value::long_integer(static_cast<std::int32_t>(keys_.entries().size()));
  }
  Value key(const Call& call) {
    return Value::text(keys_.entries()[place_in(call.at(0), keys_.entries().size())].name);
  }

  Value whole_;
  NameValues keys_;
};

class CollectionObject final : public TabledObject<CollectionObject> {
 public:
  CollectionObject(std::shared_ptr<RequestView> request, RequestPart part)
      : request_(std::move(request)), part_(part) {}
  std::string_view type_name() const override { return "IRequestDictionary"; }
  static std::span<const Member<CollectionObject>> members() {
    static constexpr Member<CollectionObject> kMembers[] = {
        {"Item", &CollectionObject::item, 0, 1},
        {"Count", &CollectionObject::count},
        {"Key", &CollectionObject::key, 1, 1},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override { return std::make_unique<TextWalk>(names()); }

 private:
  // By name, or by place from 1.
  Value item(const Call& call) {
    begin_use();
    if (!call.has(0)) return Value::text(raw_text(*request_, part_));
    const Value index = plain_value(call.at(0));
    const std::string name = index.is_text() ? std::string(index.as_view()) : name_at(index);
    switch (part_) {
      case RequestPart::Query:
        return request_values(request_->query_values().find(name));
      case RequestPart::Form:
        return request_values(request_->form_values().find(name));
      case RequestPart::Cookies:
        return request_cookie(*request_, name);
      case RequestPart::ServerVariables:
        return request_variable(*request_, name);
      case RequestPart::None:
        break;
    }
    return {};
  }
  Value count(const Call&) {
    return Value::long_integer(static_cast<std::int32_t>(names().size()));
  }
  Value key(const Call& call) { return Value::text(name_at(call.at(0))); }

  std::string name_at(const Value& index) {
    const std::vector<std::string> all = names();
    return all[place_in(index, all.size())];
  }
  void begin_use() {
    if (part_ == RequestPart::Form) request_->use_body_as_form(kFormAfterBytes);
  }
  std::vector<std::string> names() {
    begin_use();
    std::vector<std::string> out;
    if (part_ == RequestPart::ServerVariables) return request_->server_variable_names();
    if (part_ == RequestPart::Cookies) {
      for (const CookieText& cookie : request_->cookies()) out.push_back(cookie.name);
    } else if (part_ != RequestPart::None) {
      const NameValues& values =
          part_ == RequestPart::Query ? request_->query_values() : request_->form_values();
      for (const auto& entry : values.entries()) out.push_back(entry.name);
    }
    return out;
  }

  std::shared_ptr<RequestView> request_;
  RequestPart part_;
};

}  // namespace

Ref<Object> request_collection(std::shared_ptr<RequestView> request, RequestPart part) {
  return make_ref<CollectionObject>(std::move(request), part);
}

Value request_values(const NameValues::Entry* entry) {
  if (entry == nullptr)
    return Value::object(make_ref<ValuesObject>(std::vector<std::string>(), ""));
  return Value::object(make_ref<ValuesObject>(entry->values, entry->joined()));
}

Value request_variable(RequestView& request, std::string_view name) {
  const Value found = request.server_variable(name);
  if (found.is_empty()) return request_values(nullptr);
  const std::string text(found.as_view());
  return Value::object(make_ref<ValuesObject>(std::vector<std::string>{text}, text));
}

Value request_cookie(RequestView& request, std::string_view name) {
  for (const CookieText& cookie : request.cookies()) {
    if (!equal_ignoring_case(cookie.name, name)) continue;
    return Value::object(make_ref<SentCookieObject>(Value::text(request.cookie_text(cookie.value)),
                                                    request.cookie_keys(cookie.value)));
  }
  // A cookie that did not come reads as "".
  return Value::object(make_ref<SentCookieObject>(Value::text(""), NameValues()));
}

}  // namespace rk::pagehost
