#include "pagehost/pages/request_object.h"

#include <string>
#include <utility>

#include "pagehost/pages/request_collections.h"
#include "value/array.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

constexpr KnownError kLookupAfterBytes{
    errors::kSqlFailure, "Request(name) cannot look into the form: BinaryRead has read the body"};

// Request.QueryString and Request.QueryString(name).
Value part_item(const std::shared_ptr<RequestView>& request, RequestPart part, const Call& call) {
  const Ref<Object> collection = request_collection(request, part);
  if (!call.has(0)) return Value::object(collection);
  return collection->invoke(kDefaultMember, CallKind::Get, call.arguments());
}

}  // namespace

std::span<const Member<RequestObject>> RequestObject::members() {
  using R = RequestObject;
  static constexpr Member<R> kMembers[] = {
      {"Item", &R::item, 1, 1},
      {"QueryString", &R::query_string, 0, 1},
      {"Form", &R::form, 0, 1},
      {"Cookies", &R::cookies, 0, 1},
      {"ServerVariables", &R::server_variables, 0, 1},
      {"ClientCertificate", &R::client_certificate, 0, 1},
      {"TotalBytes", &R::total_bytes},
      {"BinaryRead", &R::binary_read, 0, 1},
  };
  return kMembers;
}

Value RequestObject::item(const Call& call) {
  const std::string name = call.text(0);
  if (const auto* entry = request_->query_values().find(name)) return request_values(entry);
  request_->use_body_as_form(kLookupAfterBytes);
  if (const auto* entry = request_->form_values().find(name)) return request_values(entry);
  if (!request_->cookie(name).is_empty()) return request_cookie(*request_, name);
  return request_->server_variable(name);
}

Value RequestObject::query_string(const Call& call) {
  return part_item(request_, RequestPart::Query, call);
}

Value RequestObject::form(const Call& call) {
  return part_item(request_, RequestPart::Form, call);
}

Value RequestObject::cookies(const Call& call) {
  return part_item(request_, RequestPart::Cookies, call);
}

Value RequestObject::server_variables(const Call& call) {
  // OPTIMIZATION: the common use needs no collection object.
  if (call.has(0) && call.at(0).is_text()) {
    return request_variable(*request_, call.at(0).as_view());
  }
  return part_item(request_, RequestPart::ServerVariables, call);
}

// No client certificates are asked for, so there is never one.
Value RequestObject::client_certificate(const Call& call) {
  return part_item(request_, RequestPart::None, call);
}

Value RequestObject::total_bytes(const Call&) {
  return Value::long_integer(static_cast<std::int32_t>(request_->total_bytes()));
}

// The count is by reference: it becomes the number of bytes that were read.
Value RequestObject::binary_read(const Call& call) {
  const std::int32_t most = call.number_or(0, static_cast<std::int32_t>(request_->total_bytes()));
  if (most < 0) raise(errors::kInvalidCall);
  std::string bytes = request_->read_body(static_cast<std::size_t>(most));
  if (call.has(0)) call.at(0) = Value::long_integer(static_cast<std::int32_t>(bytes.size()));
  if (bytes.empty()) return {};
  return Value::array(Array::of_bytes(std::move(bytes)));
}

}  // namespace rk::pagehost
