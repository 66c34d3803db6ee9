#include "pagehost/pages/session_object.h"

#include <unordered_set>
#include <utility>

#include "value/array.h"
#include "value/object.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

constexpr std::int32_t kMostMinutes = 1440;

std::size_t bytes_of(const Value& value) {
  if (value.is_text()) return sizeof(Value) + value.as_view().size();
  if (!value.is_array()) return sizeof(Value);
  std::size_t bytes = value.as_array().bytes().size();
  for (const Value& element : value.as_array().elements()) bytes += bytes_of(element);
  return bytes;
}

std::size_t bytes_of(std::string_view name, const Value& value) {
  return name.size() + bytes_of(value);
}

// What is alive through the objects in a list of values, each object, array and text once.
std::size_t bytes_held(rk::HeldMemory held) {
  std::unordered_set<const void*> seen;
  std::size_t bytes = 0;
  while (!held.values.empty()) {
    const Value& value = *held.values.back();
    held.values.pop_back();
    bytes += sizeof(Value);
    if (value.is_text()) {
      if (seen.insert(value.as_view().data()).second) bytes += value.as_view().size();
    } else if (value.is_array()) {
      if (!seen.insert(&value.as_array()).second) continue;
      bytes += value.as_array().bytes().size();
      for (const Value& element : value.as_array().elements()) held.values.push_back(&element);
    } else if (value.is_object() && value.as_object() != nullptr) {
      if (seen.insert(value.as_object()).second) value.as_object()->add_held(held);
    }
  }
  return bytes + held.bytes;
}

}  // namespace

std::size_t bytes_of_objects(const Session& session) {
  rk::HeldMemory held;
  for (const VariableStore* store : {&session.contents, &session.objects}) {
    for (std::size_t i = 0; i < store->size(); ++i) {
      if (store->at(i).value.is_object()) held.values.push_back(&store->at(i).value);
    }
  }
  return held.values.empty() ? 0 : bytes_held(std::move(held));
}

SessionHolder& SessionView::holder() {
  if (holder_ == nullptr) raise(errors::kObjectNotSet);
  return *holder_;
}

Session& SessionView::session() {
  return holder().session();
}

Value SessionView::stored(std::string_view name) {
  const Value* found = session().contents.find(name);
  return found == nullptr ? Value() : *found;
}

void SessionView::store(std::string_view name, Value value) {
  pagehost::Session& kept = session();
  const Value* old = kept.contents.find(name);
  const std::size_t before = old == nullptr ? 0 : bytes_of(name, *old);
  const std::size_t after = kept.bytes - before + bytes_of(name, value);
  if (after > kMaxSessionBytes && after > kept.bytes) raise(errors::kOutOfMemory);
  value.share();
  kept.contents.set(name, std::move(value));
  kept.bytes = after;
}

void SessionView::remove(std::string_view name) {
  pagehost::Session& kept = session();
  const Value* old = kept.contents.find(name);
  if (old == nullptr) return;
  kept.bytes -= bytes_of(name, *old);
  kept.contents.remove(name);
}

void SessionView::clear() {
  session().contents.clear();
  session().bytes = 0;
}

std::vector<std::string> SessionView::names() {
  std::vector<std::string> out;
  const VariableStore& contents = session().contents;
  for (std::size_t i = 0; i < contents.size(); ++i) out.push_back(contents.at(i).name);
  return out;
}

std::span<const Member<SessionObject>> SessionObject::members() {
  using S = SessionObject;
  static constexpr Member<S> kMembers[] = {
      {"Value", &S::item, 1, 1, Access::Both},         {"SessionID", &S::session_id},
      {"Timeout", &S::timeout, 0, 0, Access::Both},    {"Abandon", &S::abandon},
      {"Contents", &S::contents, 0, 1, Access::Both},  {"StaticObjects", &S::static_objects, 0, 1},
      {"CodePage", &S::code_page, 0, 0, Access::Both}, {"LCID", &S::lcid, 0, 0, Access::Both},
  };
  return kMembers;
}

std::unique_ptr<Enumeration> SessionObject::enumerate() {
  return walk_over(view_->names());
}

Value SessionObject::item(const Call& call) {
  return variable_item(*view_, call);
}

// A number, in text.
Value SessionObject::session_id(const Call&) {
  return Value::text(std::to_string(view_->session().number));
}

// In minutes.
Value SessionObject::timeout(const Call& call) {
  Session& session = view_->session();
  if (!call.assigns()) {
    return Value::long_integer(static_cast<std::int32_t>(session.timeout.count()));
  }
  const std::int32_t minutes = to_long(call.assigned());
  if (minutes < 1 || minutes > kMostMinutes) raise(errors::kInvalidCall);
  session.timeout = std::chrono::minutes(minutes);
  return {};
}

Value SessionObject::abandon(const Call&) {
  view_->session().abandoned = true;
  return {};
}

Value SessionObject::contents(const Call& call) {
  auto contents = make_ref<ContentsObject>(view_);
  if (call.arguments().empty()) return Value::object(contents);
  return contents->invoke(kDefaultMember, call.kind(), call.arguments());
}

Value SessionObject::static_objects(const Call& call) {
  if (call.arguments().empty()) return Value::object(static_objects_);
  return static_objects_->invoke(kDefaultMember, call.kind(), call.arguments());
}

Value SessionObject::code_page(const Call& call) {
  if (!call.assigns()) return Value::long_integer(view_->holder().response_code_page());
  const std::int32_t code_page = to_long(call.assigned());
  view_->holder().change_code_page(code_page);
  view_->session().code_page = code_page;
  return {};
}

Value SessionObject::lcid(const Call& call) {
  if (!call.assigns()) return Value::long_integer(view_->session().lcid);
  view_->session().lcid = to_long(call.assigned());
  return {};
}

}  // namespace rk::pagehost
