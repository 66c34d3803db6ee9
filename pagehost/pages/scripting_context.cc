#include "pagehost/pages/scripting_context.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "pagehost/pages/application_object.h"
#include "pagehost/pages/page_run.h"
#include "pagehost/pages/request_object.h"
#include "pagehost/pages/response_object.h"
#include "pagehost/pages/stored_variables.h"

namespace rk::pagehost {
namespace {

// Application.StaticObjects and Session.StaticObjects.
class StaticObjects final : public TabledObject<StaticObjects> {
 public:
  StaticObjects(std::shared_ptr<ServerView> server, PageRun::Scope scope)
      : server_(std::move(server)), scope_(scope) {}
  std::string_view type_name() const override { return "IVariantDictionary"; }
  static std::span<const Member<StaticObjects>> members() {
    static constexpr Member<StaticObjects> kMembers[] = {
        {"Item", &StaticObjects::item, 1, 1},
        {"Count", &StaticObjects::count},
        {"Key", &StaticObjects::key, 1, 1},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override { return walk_over(names()); }

 private:
  Value item(const Call& call) { return server_->page().declared_object(call.text(0), scope_); }
  Value count(const Call&) {
    return Value::long_integer(static_cast<std::int32_t>(names().size()));
  }
  Value key(const Call& call) {
    const std::vector<std::string> all = names();
    const std::int32_t place = call.number(0);
    if (place < 1 || static_cast<std::size_t>(place) > all.size()) {
      raise(errors::kSubscriptOutOfRange);
    }
    return Value::text(all[static_cast<std::size_t>(place) - 1]);
  }
  std::vector<std::string> names() const { return server_->page().declared_names(scope_); }

  std::shared_ptr<ServerView> server_;
  PageRun::Scope scope_;
};

}  // namespace

ContextObject::ContextObject(PageParts parts, const platform::Clock& clock)
    : parts_(std::move(parts)), clock_(clock) {}

std::span<const Member<ContextObject>> ContextObject::members() {
  using C = ContextObject;
  static constexpr Member<C> kMembers[] = {
      {"", nullptr},
      {"Response", &C::response_object},
      {"Request", &C::request_object},
      {"Server", &C::server_object},
      {"Application", &C::application_object},
      {"Session", &C::session_object},
  };
  return kMembers;
}

Value ContextObject::response_object(const Call&) {
  if (!response_) response_ = make_ref<ResponseObject>(parts_.response, parts_.request, clock_);
  return Value::object(response_);
}

Value ContextObject::request_object(const Call&) {
  if (!request_) request_ = make_ref<RequestObject>(parts_.request);
  return Value::object(request_);
}

Value ContextObject::server_object(const Call&) {
  if (!server_) server_ = make_ref<ServerObject>(parts_.server);
  return Value::object(server_);
}

Value ContextObject::application_object(const Call&) {
  if (!application_) {
    application_ = make_ref<ApplicationObject>(parts_.application, static_objects(false));
  }
  return Value::object(application_);
}

Value ContextObject::session_object(const Call&) {
  if (!session_) session_ = make_ref<SessionObject>(parts_.session, static_objects(true));
  return Value::object(session_);
}

Ref<Object> ContextObject::static_objects(bool of_session) const {
  return make_ref<StaticObjects>(
      parts_.server, of_session ? PageRun::Scope::Session : PageRun::Scope::Application);
}

}  // namespace rk::pagehost
